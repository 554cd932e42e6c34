#include "TestMain.h"
#include <kernel/services/LogService.h>

using kernel::LogLine;
using kernel::LogService;

/// What is reported reaches listeners, the kept lines and the logging category.
class TestLogService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void tellsListenersInOrder();
    void keepsLinesWithTheirLevel();
    void keepsTheNewestLinesOnly();
    void handsOutNewLinesAlone();
    void mirrorsEveryLevelAsInformation();
    void neverMirrorsASecondLine();
    void mayBeCalledByItsListeners();

private:
    static void mute() { QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false")); }
};

void TestLogService::init()
{
    QLoggingCategory::setFilterRules(QString());
}

void TestLogService::tellsListenersInOrder()
{
    mute();
    nkLogService &log = nkLogService::the();
    QSignalSpy spy(&log, &nkLogService::reported);
    log.reportError(QStringLiteral("E"), QStringLiteral("<b>one</b>"));
    log.reportWarning(QStringLiteral("W"), QStringLiteral("two"));
    log.reportInformation(QStringLiteral("I"), QStringLiteral("three"));
    QCOMPARE(spy.size(), 3);
    QCOMPARE(spy.at(0), QVariantList({2, QStringLiteral("E"), QStringLiteral("<b>one</b>")}));
    QCOMPARE(spy.at(1), QVariantList({1, QStringLiteral("W"), QStringLiteral("two")}));
    QCOMPARE(spy.at(2), QVariantList({0, QStringLiteral("I"), QStringLiteral("three")}));
}

void TestLogService::keepsLinesWithTheirLevel()
{
    mute();
    LogService log;
    log.reportWarning(QStringLiteral("Files"), QStringLiteral("gone"));
    const QVector<LogLine> lines = log.lines();
    QCOMPARE(lines.size(), 1);
    QCOMPARE(lines.first().level, int(LogService::Warning));
    QCOMPARE(lines.first().title, QStringLiteral("Files"));
    QCOMPARE(lines.first().text, QStringLiteral("gone"));
    QVERIFY(lines.first().time.isValid());
    log.clear();
    QVERIFY(log.lines().isEmpty());
}

void TestLogService::handsOutNewLinesAlone()
{
    mute();
    LogService log;
    log.reportWarning(QStringLiteral("W"), QStringLiteral("one"));
    const quint64 seen = log.lineCount();
    QVERIFY(log.linesSince(seen).isEmpty());
    log.reportWarning(QStringLiteral("W"), QStringLiteral("two"));
    log.reportWarning(QStringLiteral("W"), QStringLiteral("three"));
    QCOMPARE(log.linesSince(seen).size(), 2);
    QCOMPARE(log.linesSince(seen).constFirst().text, QStringLiteral("two"));
    log.clear();
    QVERIFY(log.linesSince(seen).isEmpty()); // no longer kept
    QVERIFY(log.linesSince(log.lineCount() + 5).isEmpty());
}

void TestLogService::keepsTheNewestLinesOnly()
{
    mute();
    LogService log;
    for (int i = 0; i < LogService::capacity + 5; ++i) {
        log.reportInformation(QString(), QString::number(i));
    }
    const QVector<LogLine> lines = log.lines();
    QCOMPARE(lines.size(), 10000);
    QCOMPARE(lines.first().text, QStringLiteral("5"));
    QCOMPARE(lines.last().text, QStringLiteral("10004"));
}

void TestLogService::mirrorsEveryLevelAsInformation()
{
    LogService log;
    QTest::ignoreMessage(QtInfoMsg, "error: T: %1 & text");
    QTest::ignoreMessage(QtInfoMsg, "warning: T: text");
    QTest::ignoreMessage(QtInfoMsg, "information: T: text");
    log.reportError(QStringLiteral("T"), QStringLiteral("%1 & text"));
    log.reportWarning(QStringLiteral("T"), QStringLiteral("text"));
    log.reportInformation(QStringLiteral("T"), QStringLiteral("text"));
}

void TestLogService::neverMirrorsASecondLine()
{
    LogService log;
    const QString forged = QStringLiteral("a\nerror: b\t\x1b[31m");
    QTest::ignoreMessage(QtInfoMsg, QStringLiteral("warning: T: a error: b \uFFFD[31m").toUtf8().constData());
    log.reportWarning(QStringLiteral("T"), forged);
    QCOMPARE(log.lines().last().text, forged);
}

void TestLogService::mayBeCalledByItsListeners()
{
    mute();
    LogService log;
    connect(&log, &nkLogService::reported, this, [&log](int level, const QString &, const QString &text) {
        if (level == LogService::Error) {
            log.reportInformation(QString(), QStringLiteral("about ") + text);
        }
    });
    log.reportError(QString(), QStringLiteral("x"));
    QCOMPARE(log.lines().size(), 2);
    QCOMPARE(log.lines().last().text, QStringLiteral("about x"));
}

NK_GUILESS_TEST_MAIN(TestLogService)
#include "test_log_service.moc"
