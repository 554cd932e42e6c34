#include "TestMain.h"
#include "harness/BenchmarkOptions.h"
#include "harness/BenchmarkRunner.h"
#include "harness/PaintWait.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QLabel>

#include <memory>

/// What the benchmarks print is what happened.
class BenchmarkHarness : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesTurnsAndWarmsUp();
    void timesTheRunAlone();
    void dividesTheGrownHeapByTheRows();
    void measuresNoMemoryWithoutRows();
    void namesMissedAims();
    void namesMissedAimsOfMemory();
    void takesTheMiddleOfTheTimes();
    void writesTheAgreedFields();
    void choosesByTheBeginningOfTheName();
    void refusesAnUnknownName();
    void refusesAWrongCommandLine_data();
    void refusesAWrongCommandLine();
    void waitsForThePaintEvent();
};

namespace {

BenchmarkCase benchmarkNamed(const char *name, const Comparison &comparison = {})
{
    return {QLatin1String(name), {100}, [comparison](qint64) { return comparison; }};
}

void busyFor(int ms)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < ms) {}
}

} // namespace

void BenchmarkHarness::takesTurnsAndWarmsUp()
{
    QString order;
    Comparison comparison;
    comparison.ours.run = [&order] { order += QLatin1Char('o'); };
    comparison.baseline.run = [&order] { order += QLatin1Char('b'); };
    BenchmarkRunner(3).run(benchmarkNamed("turns", comparison), 100);
    QCOMPARE(order, QStringLiteral("obobboob"));
}

void BenchmarkHarness::timesTheRunAlone()
{
    const int around = 300;
    Comparison comparison;
    comparison.ours = {[] { busyFor(around); }, {}, [] { busyFor(around); }};
    const BenchmarkResult result = BenchmarkRunner(1).run(benchmarkNamed("time", comparison), 100);
    QVERIFY2(result.oursMs < around, qPrintable(QString::number(result.oursMs)));
    comparison.ours = {{}, [] { busyFor(5); }, {}};
    QVERIFY(BenchmarkRunner(1).run(benchmarkNamed("time", comparison), 100).oursMs >= 5);
}

void BenchmarkHarness::dividesTheGrownHeapByTheRows()
{
    const int rows = 1000;
    Comparison comparison;
    auto held = std::make_shared<QVector<QByteArray>>();
    comparison.ours.run = [held] {
        for (int i = 0; i < rows; ++i)
            held->append(QByteArray(1000, 'x'));
    };
    comparison.ours.finish = [held] { *held = {}; };
    comparison.rows = rows;
    const BenchmarkResult result = BenchmarkRunner(3).run(benchmarkNamed("memory", comparison), rows);
    QVERIFY(result.withMemory);
    // The bytes, a header each and the vector.
    QVERIFY2(result.oursBytesPerRow >= 1000 && result.oursBytesPerRow < 1100,
             qPrintable(QString::number(result.oursBytesPerRow)));
}

void BenchmarkHarness::measuresNoMemoryWithoutRows()
{
    const BenchmarkResult result = BenchmarkRunner(1).run(benchmarkNamed("time"), 100);
    QVERIFY(!result.withMemory);
    QVERIFY(
        !BenchmarkReport::toJson({result}).first().toObject().contains(QStringLiteral("ours_bytes_per_row")));
}

void BenchmarkHarness::namesMissedAims()
{
    Comparison comparison;
    comparison.ours.run = [] { busyFor(1); };
    comparison.baseline.run = [] { busyFor(1); };
    // Aims that no delay of the machine can turn round.
    comparison.timeAim = 1e-6;
    QCOMPARE(BenchmarkRunner(1).run(benchmarkNamed("aim", comparison), 100).missedAims.size(), 1);
    comparison.timeAim = 1e6;
    QCOMPARE(BenchmarkRunner(1).run(benchmarkNamed("aim", comparison), 100).missedAims, QStringList());
}

void BenchmarkHarness::namesMissedAimsOfMemory()
{
    auto held = std::make_shared<QByteArray>();
    Comparison comparison;
    comparison.ours = {{}, [held] { *held = QByteArray(10000, 'x'); }, [held] { held->clear(); }};
    comparison.baseline = {{}, [held] { *held = QByteArray(5000, 'x'); }, [held] { held->clear(); }};
    comparison.rows = 100;
    comparison.memoryAim = 1.5;
    comparison.bytesPerRowAim = 90;
    QCOMPARE(BenchmarkRunner(1).run(benchmarkNamed("aim", comparison), 100).missedAims.size(), 2);
    comparison.memoryAim = 2.5;
    comparison.bytesPerRowAim = 110;
    QCOMPARE(BenchmarkRunner(1).run(benchmarkNamed("aim", comparison), 100).missedAims, QStringList());
}

void BenchmarkHarness::takesTheMiddleOfTheTimes()
{
    QCOMPARE(BenchmarkRunner::median({9, 1, 2}), 2.0);
    QCOMPARE(BenchmarkRunner::median({9, 1, 2, 4}), 3.0);
    QCOMPARE(BenchmarkRunner::median({}), 0.0);
}

void BenchmarkHarness::writesTheAgreedFields()
{
    BenchmarkResult result;
    result.name = QStringLiteral("table-show");
    result.size = 100000;
    result.oursMs = 1;
    result.baselineMs = 4;
    result.withMemory = true;
    result.oursBytesPerRow = 10;
    result.baselineBytesPerRow = 100;
    const QJsonObject written = BenchmarkReport::toJson({result}).first().toObject();
    const QJsonObject expected{{QStringLiteral("name"), QStringLiteral("table-show")},
                               {QStringLiteral("size"), 100000},
                               {QStringLiteral("ours_ms"), 1},
                               {QStringLiteral("baseline_ms"), 4},
                               {QStringLiteral("ratio"), 0.25},
                               {QStringLiteral("ours_bytes_per_row"), 10},
                               {QStringLiteral("baseline_bytes_per_row"), 100},
                               {QStringLiteral("bytes_ratio"), 0.1}};
    QCOMPARE(written, expected);
}

void BenchmarkHarness::choosesByTheBeginningOfTheName()
{
    BenchmarkOptions options = BenchmarkOptions::parse(
        {QStringLiteral("table"), QStringLiteral("undo-bulk")});
    const auto chosen = options.choose({benchmarkNamed("handle-copy"), benchmarkNamed("table-show"),
                                        benchmarkNamed("table-sort"), benchmarkNamed("undo-bulk")});
    QStringList names;
    for (const BenchmarkCase &benchmark : chosen)
        names.append(benchmark.name);
    QCOMPARE(names, QStringList({QStringLiteral("table-show"), QStringLiteral("table-sort"),
                                 QStringLiteral("undo-bulk")}));
    QCOMPARE(options.fault, QString());
}

void BenchmarkHarness::refusesAnUnknownName()
{
    BenchmarkOptions options = BenchmarkOptions::parse({QStringLiteral("tabel")});
    options.choose({benchmarkNamed("table-show")});
    QVERIFY2(options.fault.contains(QLatin1String("tabel")), qPrintable(options.fault));
}

void BenchmarkHarness::refusesAWrongCommandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("--fast")};
    QTest::newRow("no file") << QStringList{QStringLiteral("--json")};
    QTest::newRow("empty file") << QStringList{QStringLiteral("--json="), QStringLiteral("noise")};
    QTest::newRow("no number") << QStringList{QStringLiteral("--repeat=often")};
    QTest::newRow("never") << QStringList{QStringLiteral("--repeat=0")};
}

void BenchmarkHarness::refusesAWrongCommandLine()
{
    QFETCH(QStringList, arguments);
    QVERIFY(!BenchmarkOptions::parse(arguments).fault.isEmpty());
}

void BenchmarkHarness::waitsForThePaintEvent()
{
    QLabel label(QStringLiteral("Hello"));
    PaintWait painted(&label);
    label.show();
    QVERIFY(painted.wait());
    label.setText(QStringLiteral("Again"));
    QVERIFY(painted.wait());
}

NK_TEST_MAIN(BenchmarkHarness)
#include "test_benchmark_harness.moc"
