#include "BenchmarkOptions.h"
#include "BenchmarkRegistry.h"
#include "BenchmarkRunner.h"

#include <QApplication>
#include <QFile>
#include <QJsonDocument>

#include <cstdio>

namespace {

const qint64 smokeSize = 100;

void say(FILE *where, const QString &text)
{
    std::fprintf(where, "%s\n", qPrintable(text));
    std::fflush(where);
}

int complain(const QString &text, int status)
{
    say(stderr, QStringLiteral("bench: ") + text);
    return status;
}

void list(const QVector<BenchmarkCase> &benchmarks)
{
    for (const BenchmarkCase &benchmark : benchmarks) {
        QStringList sizes;
        for (qint64 size : benchmark.sizes)
            sizes.append(QString::number(size));
        say(stdout, benchmark.name + QLatin1Char(' ') + sizes.join(QLatin1Char(' ')));
    }
}

QVector<BenchmarkResult> measure(const QVector<BenchmarkCase> &benchmarks, const BenchmarkOptions &options)
{
    QVector<BenchmarkResult> results;
    const BenchmarkRunner runner(options.smoke ? 1 : options.repetitions);
    say(stdout, BenchmarkReport::heading());
    for (const BenchmarkCase &benchmark : benchmarks) {
        for (qint64 size : options.smoke ? QVector<qint64>{smokeSize} : benchmark.sizes) {
            results.append(runner.run(benchmark, size));
            say(stdout, BenchmarkReport::line(results.last()));
        }
    }
    return results;
}

bool missedAny(const QVector<BenchmarkResult> &results)
{
    for (const BenchmarkResult &result : results)
        if (!result.missedAims.isEmpty())
            return true;
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    BenchmarkOptions options = BenchmarkOptions::parse(QCoreApplication::arguments().mid(1));
    const QVector<BenchmarkCase> benchmarks = options.choose(BenchmarkRegistry::all());
    if (!options.fault.isEmpty())
        return complain(options.fault, 2);
    if (options.help) {
        std::fputs(qPrintable(BenchmarkOptions::usage()), stdout);
        return 0;
    }
    if (options.list) {
        list(benchmarks);
        return 0;
    }
    QFile json(options.jsonFile);
    // Opened first: nobody waits for minutes to learn that the results cannot be written.
    if (!options.jsonFile.isEmpty() && !json.open(QFile::WriteOnly | QFile::Truncate))
        return complain(QStringLiteral("%1 cannot be written: %2").arg(json.fileName(), json.errorString()),
                        2);
    const QVector<BenchmarkResult> results = measure(benchmarks, options);
    const QByteArray text = QJsonDocument(BenchmarkReport::toJson(results)).toJson();
    if (json.isOpen() && (json.write(text) != text.size() || !json.flush()))
        return complain(QStringLiteral("%1 cannot be written: %2").arg(json.fileName(), json.errorString()),
                        1);
    // Small sizes say nothing about aims.
    return options.check && !options.smoke && missedAny(results) ? 1 : 0;
}
