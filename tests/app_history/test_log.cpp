#include "history/LogDock.h"
#include "history/LogModel.h"
#include "history/LogPanel.h"
#include "history/RowsView.h"

#include "kernel/services/LogService.h"
#include "kernel/services/ServiceRegistry.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKSearchBox.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QGuiApplication>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPlainTextEdit>
#include <QScrollBar>

using kernel::LogService;

/// The log in its panel: what it lists, hides, copies and says whole.
class TestLog : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // The log's mirror on the terminal would be ten thousand lines.
    void initTestCase() { QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false")); }
    void init() { service().clear(); }
    void linesAreListedWithLevelsInWordsAndIcons();
    void linesOfOneTurnAreAppendedTogether();
    void theOldestLinesGo();
    void aLevelHidesWhatIsBelowIt();
    void aSearchLooksIntoSourceAndMessage();
    void theSelectedLineIsShownWholeAsPlainText();
    void selectedAndAllLinesAreCopied();
    void clearingEmptiesTheLogItself();
    void theEndStaysInSightOnlyForThoseWhoLookAtIt();
    void anEmptyLogSaysSo();
    void everyControlHasAName();

private:
    static LogService &service() { return kernel::ServiceRegistry::the().service<LogService>(); }
    static void fill(int count)
    {
        for (int i = 0; i < count; ++i) {
            service().reportInformation(QStringLiteral("Test"), QStringLiteral("line %1").arg(i));
        }
    }
    static QStringList messages(const LogPanel &panel)
    {
        QStringList texts;
        const QAbstractItemModel *model = panel.view()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            texts << model->index(row, LogModel::Message).data().toString();
        }
        return texts;
    }
    static void reportThree()
    {
        service().reportInformation(QStringLiteral("Open"), QStringLiteral("all well"));
        service().reportWarning(QStringLiteral("Open"), QStringLiteral("a little odd"));
        service().reportError(QStringLiteral("Save"), QStringLiteral("Disk full\nFree some room."));
    }
};

void TestLog::linesAreListedWithLevelsInWordsAndIcons()
{
    reportThree();
    LogPanel panel;
    QCOMPARE(messages(panel), (QStringList{"all well", "a little odd", "Disk full Free some room."}));
    QStringList levels;
    for (int row = 0; row < 3; ++row) {
        const QModelIndex index = panel.view()->model()->index(row, LogModel::Level);
        levels << index.data().toString();
    }
    QCOMPARE(levels, (QStringList{"Information", "Warning", "Error"}));
    for (const QString &level : qAsConst(levels)) {
        QVERIFY(QFile::exists(QStringLiteral(":/iconmanager/resources/General/%1.svg").arg(level)));
    }
}

void TestLog::linesOfOneTurnAreAppendedTogether()
{
    LogPanel panel;
    const QAbstractItemModelTester tester(panel.view()->model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy inserts(panel.view()->model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy resets(panel.view()->model(), &QAbstractItemModel::modelReset);
    fill(500);
    QTRY_COMPARE(panel.view()->model()->rowCount(), 500);
    QCOMPARE(inserts.count(), 1);
    fill(1);
    QTRY_COMPARE(panel.view()->model()->rowCount(), 501);
    QCOMPARE(resets.count(), 0);
}

void TestLog::theOldestLinesGo()
{
    LogModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    fill(LogService::capacity - 5);
    QTRY_COMPARE(model.rowCount(), LogService::capacity - 5);
    fill(20);
    QTRY_COMPARE(model.rowCount(), LogService::capacity);
    QCOMPARE(model.line(0).text, QStringLiteral("line 15"));
    fill(LogService::capacity + 7); // more than the log holds in one turn
    QTRY_COMPARE(model.line(0).text, QStringLiteral("line 7"));
    QCOMPARE(model.rowCount(), LogService::capacity);
}

void TestLog::aLevelHidesWhatIsBelowIt()
{
    reportThree();
    LogPanel panel;
    panel.levels()->setCurrentIndex(1);
    QCOMPARE(messages(panel).size(), 2);
    panel.levels()->setCurrentIndex(2);
    QCOMPARE(messages(panel), QStringList{"Disk full Free some room."});
    service().reportWarning(QStringLiteral("Open"), QStringLiteral("hidden"));
    service().reportError(QStringLiteral("Open"), QStringLiteral("seen"));
    QTRY_COMPARE(messages(panel), (QStringList{"Disk full Free some room.", "seen"}));
    panel.levels()->setCurrentIndex(0);
    QCOMPARE(messages(panel).size(), 5);
}

void TestLog::aSearchLooksIntoSourceAndMessage()
{
    reportThree();
    LogPanel panel;
    panel.searchBox()->lineEdit()->setText(QStringLiteral("OPEN"));
    QCOMPARE(messages(panel).size(), 2);
    panel.searchBox()->lineEdit()->setText(QStringLiteral("room"));
    QCOMPARE(messages(panel).size(), 1);
    panel.searchBox()->lineEdit()->setText(QStringLiteral("no such text"));
    QVERIFY(panel.view()->emptyText().startsWith(QLatin1String("No line matches")));
    panel.searchBox()->lineEdit()->clear();
    QCOMPARE(messages(panel).size(), 3);
}

void TestLog::theSelectedLineIsShownWholeAsPlainText()
{
    service().reportWarning(QStringLiteral("<b>x</b>"), QStringLiteral("one\n<i>two</i>\tthree"));
    LogPanel panel;
    QVERIFY(panel.detail()->toPlainText().isEmpty());
    panel.view()->selectAll();
    QVERIFY(panel.detail()->toPlainText().endsWith(QLatin1String("<b>x</b>: one\n<i>two</i>\tthree")));
    QVERIFY(panel.detail()->isReadOnly());
}

void TestLog::selectedAndAllLinesAreCopied()
{
    reportThree();
    LogPanel panel;
    panel.show();
    panel.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    panel.view()->setFocus();
    QVERIFY(!panel.copyAction()->isEnabled());
    panel.view()->setCurrentIndex(panel.view()->model()->index(1, 0));
    QTest::keyClick(panel.view(), Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QGuiApplication::clipboard()->text().endsWith(QLatin1String("Warning  Open: a little odd")));
    panel.levels()->setCurrentIndex(1);
    panel.copyAllAction()->trigger();
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
    QCOMPARE(lines.size(), 3); // one of the two has a line break
    QVERIFY(lines.at(1).endsWith(QLatin1String("Error  Save: Disk full")));
}

void TestLog::clearingEmptiesTheLogItself()
{
    reportThree();
    LogPanel panel;
    panel.clearAction()->trigger();
    QCOMPARE(messages(panel), QStringList());
    QVERIFY(service().lines().isEmpty());
    QVERIFY(!panel.clearAction()->isEnabled());
    fill(1);
    QTRY_COMPARE(messages(panel), QStringList{"line 0"});
}

void TestLog::theEndStaysInSightOnlyForThoseWhoLookAtIt()
{
    fill(200);
    LogPanel panel;
    panel.resize(600, 300);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QScrollBar *bar = panel.view()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    bar->setValue(bar->maximum());
    fill(50);
    QTRY_COMPARE(panel.view()->model()->rowCount(), 250);
    QTRY_COMPARE(bar->value(), bar->maximum());
    bar->setValue(3);
    fill(50);
    QTRY_COMPARE(panel.view()->model()->rowCount(), 300);
    panel.view()->grab();
    QCOMPARE(bar->value(), 3);
}

void TestLog::anEmptyLogSaysSo()
{
    const LogDock dock;
    QVERIFY(dock.panel()->view()->emptyText().startsWith(QLatin1String("Nothing to tell yet")));
    QCOMPARE(dock.widget(), dock.panel());
}

void TestLog::everyControlHasAName()
{
    const LogPanel panel;
    for (const QWidget *control :
         QVector<QWidget *>{panel.view(), panel.searchBox()->lineEdit(), panel.levels(), panel.detail()}) {
        QVERIFY(!control->accessibleName().isEmpty());
    }
    for (const QAction *action : {panel.copyAction(), panel.copyAllAction(), panel.clearAction()}) {
        QVERIFY(!action->toolTip().isEmpty() && !action->text().isEmpty());
    }
}

NK_TEST_MAIN(TestLog)
#include "test_log.moc"
