#include "../support/SceneFixture.h"

#include "history/RowsView.h"
#include "history/UndoHistoryDock.h"
#include "history/UndoHistoryModel.h"
#include "panels/EditorPanel.h"
#include "panels/SceneObjectModel.h"
#include "panels/SceneObjectView.h"

#include <TestMain.h>
#include <nkKernelServices/nkScopedUndo.h>

#include <QAbstractItemModelTester>
#include <QAction>
#include <QLineEdit>
#include <QUndoStack>

using kernel::Document;

/// The history of the scene's changes: what it lists, and how it leads to any state.
class TestUndoHistory : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { SceneFixture::reset(); }
    void everyStepIsListedBehindTheStart();
    void undoneStepsStayUntilAnotherComes();
    void aClickGoesToTheState();
    void enterGoesToTheState();
    void whatIsBeingTypedBecomesAStepFirst();
    void nothingHappensWhileAScopeIsOpen();
    void theSavedStateIsMarked();
    void anEmptyHistorySaysWhatItIs();
    void theActionShowsAndHidesTheDock();
    void thousandsOfStepsCostNoMoreThanTheFirst();

private:
    static void make(const char *name)
    {
        Document::the().createObject(nkObjectType::Node, QLatin1String(name));
    }
    static QStringList rows(const UndoHistoryDock &dock)
    {
        QStringList texts;
        const QAbstractItemModel *model = dock.view()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            texts << model->index(row, 0).data(Qt::AccessibleTextRole).toString();
        }
        return texts;
    }
    static void show(UndoHistoryDock &dock)
    {
        dock.show();
        dock.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dock));
        dock.view()->setFocus();
    }
    static void click(const UndoHistoryDock &dock, int row)
    {
        const QRect place = dock.view()->visualRect(dock.view()->model()->index(row, 0));
        QTest::mouseClick(dock.view()->viewport(), Qt::LeftButton, {}, place.center());
    }
};

void TestUndoHistory::everyStepIsListedBehindTheStart()
{
    UndoHistoryDock dock;
    const QAbstractItemModelTester tester(dock.view()->model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    make("a");
    Document::the().deleteObjects(Document::the().topLevelNodes());
    QCOMPARE(rows(dock), (QStringList{"Start, saved", "Create Object", "Delete Objects, current"}));
    Document::the().undo();
    QCOMPARE(rows(dock), (QStringList{"Start, saved", "Create Object, current", "Delete Objects, undone"}));
    QCOMPARE(dock.view()->currentIndex().row(), 1);
}

void TestUndoHistory::undoneStepsStayUntilAnotherComes()
{
    UndoHistoryDock dock;
    const QAbstractItemModelTester tester(dock.view()->model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    for (int count = 0; count < 3; ++count) {
        make("a");
    }
    Document::the().undo();
    QSignalSpy changes(dock.view()->model(), &QAbstractItemModel::dataChanged);
    Document::the().deleteObjects(Document::the().topLevelNodes());
    QCOMPARE(rows(dock).constLast(), QStringLiteral("Delete Objects, current"));
    QVERIFY(changes.count() > 0); // in the place of another
    Document::the().undo();
    Document::the().undo();
    make("b");
    QCOMPARE(rows(dock), (QStringList{"Start, saved", "Create Object", "Create Object, current"}));
    Document::the().clear();
    QCOMPARE(rows(dock), QStringList());
}

void TestUndoHistory::aClickGoesToTheState()
{
    UndoHistoryDock dock;
    show(dock);
    for (const char *name : {"a", "b", "c"}) {
        make(name);
    }
    QSignalSpy told(&Document::the(), &Document::sceneChanged);
    click(dock, 1);
    QCOMPARE(Document::the().topLevelNodes().size(), 1);
    QCOMPARE(told.count(), 1);
    click(dock, 3);
    QCOMPARE(Document::the().topLevelNodes().size(), 3);
    click(dock, 0);
    QCOMPARE(Document::the().topLevelNodes().size(), 0);
}

void TestUndoHistory::enterGoesToTheState()
{
    UndoHistoryDock dock;
    show(dock);
    make("a");
    make("b");
    QTest::keyClick(dock.view(), Qt::Key_Up);
    QCOMPARE(Document::the().topLevelNodes().size(), 2); // looking is not going
    QTest::keyClick(dock.view(), Qt::Key_Return);
    QCOMPARE(Document::the().topLevelNodes().size(), 1);
}

void TestUndoHistory::whatIsBeingTypedBecomesAStepFirst()
{
    const quint64 id = SceneFixture::node(QStringLiteral("a")).getObjectId();
    EditorPanel panel(EditorModule::Scenegraph);
    panel.show();
    panel.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    UndoHistoryDock dock;
    make("b");
    make("c");
    Document::the().undo();
    panel.renameObject(id);
    auto *editor = panel.view()->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("typed"));
    Q_EMIT dock.view()->clicked(dock.view()->model()->index(0, 0));
    QCOMPARE(rows(dock), (QStringList{"Start, current", "Create Object, undone", "Rename Object, undone"}));
    Document::the().redo();
    Document::the().redo();
    QCOMPARE(nkdNode(nkdObject(id)).getName(), QStringLiteral("typed"));
}

void TestUndoHistory::nothingHappensWhileAScopeIsOpen()
{
    UndoHistoryDock dock;
    make("a");
    make("b");
    const nkScopedUndo scope(true);
    Q_EMIT dock.view()->clicked(dock.view()->model()->index(0, 0));
    QCOMPARE(Document::the().topLevelNodes().size(), 2);
    QCOMPARE(dock.view()->currentIndex().row(), 2);
}

void TestUndoHistory::theSavedStateIsMarked()
{
    UndoHistoryDock dock;
    make("a");
    Document::the().markSaved();
    make("b");
    QCOMPARE(rows(dock), (QStringList{"Start", "Create Object, saved", "Create Object, current"}));
    QCOMPARE(dock.view()->model()->index(1, 0).data(UndoHistoryModel::NoteRole).toString(),
             QStringLiteral("saved"));
    Document::the().markSaved();
    QCOMPARE(rows(dock).constLast(), QStringLiteral("Create Object, current, saved"));
    Document::the().clear();
    SceneFixture::node(QStringLiteral("added")); // modified, without a step
    make("c");
    Document::the().undo();
    QCOMPARE(rows(dock).constFirst(), QStringLiteral("Start, current"));
}

void TestUndoHistory::anEmptyHistorySaysWhatItIs()
{
    UndoHistoryDock dock;
    show(dock);
    QVERIFY(dock.view()->emptyText().contains(QLatin1String("click one to go back")));
    QVERIFY(!dock.view()->accessibleName().isEmpty());
    const QImage said = dock.view()->viewport()->grab().toImage();
    dock.view()->setEmptyText(QString());
    QVERIFY(said != dock.view()->viewport()->grab().toImage());
}

void TestUndoHistory::theActionShowsAndHidesTheDock()
{
    UndoHistoryDock dock;
    show(dock);
    QVERIFY(dock.action()->isChecked());
    dock.action()->trigger();
    QVERIFY(dock.isHidden() && !dock.action()->isChecked());
    dock.action()->trigger();
    QVERIFY(!dock.isHidden() && dock.action()->isChecked());
}

void TestUndoHistory::thousandsOfStepsCostNoMoreThanTheFirst()
{
    UndoHistoryDock dock;
    show(dock);
    int rowsTold = 0;
    connect(dock.view()->model(), &QAbstractItemModel::dataChanged, &dock,
            [&rowsTold](const QModelIndex &first, const QModelIndex &last) {
                rowsTold += last.row() - first.row() + 1;
            });
    for (int step = 0; step < 3000; ++step) {
        make("n");
    }
    QCOMPARE(dock.view()->model()->rowCount(), 3001);
    QVERIFY(rowsTold < 4 * 3000);
}

NK_TEST_MAIN(TestUndoHistory)
#include "test_undo_history.moc"
