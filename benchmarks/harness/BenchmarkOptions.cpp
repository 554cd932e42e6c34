#include "BenchmarkOptions.h"

#include <QCommandLineParser>

namespace {

const int mostRepetitions = 1000;

void addOptions(QCommandLineParser &parser)
{
    parser.addOptions({
        {QStringLiteral("json"), QStringLiteral("json"), QStringLiteral("file")},
        {QStringLiteral("repeat"), QStringLiteral("repeat"), QStringLiteral("number"), QStringLiteral("5")},
        {QStringLiteral("list"), QStringLiteral("list")},
        {QStringLiteral("smoke"), QStringLiteral("smoke")},
        {QStringLiteral("check"), QStringLiteral("check")},
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("help")},
    });
}

} // namespace

BenchmarkOptions BenchmarkOptions::parse(const QStringList &arguments)
{
    BenchmarkOptions options;
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(QStringList(QStringLiteral("bench")) + arguments)) {
        options.fault = parser.errorText();
        return options;
    }
    bool isNumber = false;
    options.repetitions = parser.value(QStringLiteral("repeat")).toInt(&isNumber);
    if (!isNumber || options.repetitions < 1 || options.repetitions > mostRepetitions)
        options.fault = QStringLiteral("--repeat takes a number from 1 to %1").arg(mostRepetitions);
    if (parser.isSet(QStringLiteral("json")) && parser.value(QStringLiteral("json")).isEmpty())
        options.fault = QStringLiteral("--json needs the name of a file");
    options.names = parser.positionalArguments();
    options.jsonFile = parser.value(QStringLiteral("json"));
    options.list = parser.isSet(QStringLiteral("list"));
    options.smoke = parser.isSet(QStringLiteral("smoke"));
    options.check = parser.isSet(QStringLiteral("check"));
    options.help = parser.isSet(QStringLiteral("help"));
    return options;
}

QVector<BenchmarkCase> BenchmarkOptions::choose(const QVector<BenchmarkCase> &all)
{
    QStringList unused = names;
    QVector<BenchmarkCase> chosen;
    for (const BenchmarkCase &benchmark : all) {
        bool fits = names.isEmpty();
        for (const QString &name : qAsConst(names)) {
            if (!benchmark.name.startsWith(name))
                continue;
            fits = true;
            unused.removeAll(name);
        }
        if (fits)
            chosen.append(benchmark);
    }
    if (!unused.isEmpty())
        fault = QStringLiteral("no benchmark's name begins with %1; --list shows them").arg(unused.first());
    return chosen;
}

QString BenchmarkOptions::usage()
{
    return QStringLiteral("usage: ./bench [--json OUT] [--repeat N] [--check] [--smoke] [--list] [NAME...]\n"
                          "  NAME      benchmarks whose names begin so; none: all\n"
                          "  --json    writes the results to a file\n"
                          "  --repeat  how often each side is measured (5)\n"
                          "  --check   ends with status 1 where an aim is missed\n"
                          "  --smoke   runs everything once at a small size\n"
                          "  --list    names the benchmarks and their sizes\n");
}
