#include "../widgets_itemmodel/SignalChecker.h"
#include "PanelFixture.h"

#include "gui/tree/TreeDragRecord.h"

#include <TestMain.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkQt4Ext/QNKSearchBox.h>

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QMimeData>
#include <QScopedPointer>
#include <QUndoStack>

using kernel::Document;

/// Rows that are dragged within the trees, and rows that change their places.
class TestPanelDrops : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aRowDroppedOnAnotherComesBelowIt();
    void aRowDroppedBetweenOthersComesBetweenThem();
    void aSearchDoesNotShiftThePlaceOfADrop();
    void nothingIsDroppedBelowItself();
    void materialsAreDroppedOnGroupsAlone();
    void listsTakeNoDrops();
    void treesTakeTheirOwnRowsAndListsNone();
    void dragsCarryWhatTreesOfMetadataUnderstand();
    void everyMoveOfRowsIsAnnounced();
    void manyRowsThatGoAtOnceAreAnnounced();
    void selectionAndExpansionSurviveAMove();

private:
    /// Drops rows below parent, before the row of that number; -1: on the parent itself.
    static bool drop(const PanelFixture &f, const QStringList &names, const QModelIndex &parent, int row)
    {
        QModelIndexList rows;
        for (const QString &name : names) {
            rows << f.row(name);
        }
        SceneObjectModel *model = f.panel->model();
        const QScopedPointer<QMimeData> data(model->mimeData(rows));
        return model->canDropMimeData(data.data(), Qt::MoveAction, row, 0, parent)
               && model->dropMimeData(data.data(), Qt::MoveAction, row, 0, parent);
    }
};

void TestPanelDrops::aRowDroppedOnAnotherComesBelowIt()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    QVERIFY(drop(f, {"Sun", "Eye"}, f.row("Plain"), -1));
    QCOMPARE(f.rows(), QStringLiteral("Root(Spare Lamp Plate Board Arm(Hand)) Plain(Eye Sun)"));
    QCOMPARE(f.selection(), (QStringList{"Eye", "Sun"}));
    QCOMPARE(Document::the().undoStack()->count(), 1);
    QVERIFY(drop(f, {"Hand"}, {}, -1));
    QCOMPARE(f.rows(), QStringLiteral("Root(Spare Lamp Plate Board Arm) Plain(Eye Sun) Hand"));
}

void TestPanelDrops::aRowDroppedBetweenOthersComesBetweenThem()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    QVERIFY(drop(f, {"Hand"}, f.row("Root"), 1));
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Hand Spare Lamp Sun Plate Board Arm) Plain"));
    QVERIFY(drop(f, {"Plain"}, {}, 0));
    QCOMPARE(f.rows(), QStringLiteral("Plain Root(Eye Hand Spare Lamp Sun Plate Board Arm)"));
}

void TestPanelDrops::aSearchDoesNotShiftThePlaceOfADrop()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.panel->searchBox()->lineEdit()->setText(QStringLiteral("*a*"));
    QCOMPARE(f.rows(), QStringLiteral("Root(Spare Lamp Plate Board Arm(Hand)) Plain"));
    QVERIFY(drop(f, {"Plain"}, f.row("Root"), 2)); // before Plate; Sun is hidden
    f.panel->searchBox()->lineEdit()->clear();
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp Sun Plain Plate Board Arm(Hand))"));
}

void TestPanelDrops::nothingIsDroppedBelowItself()
{
    PanelFixture f(EditorModule::Scenegraph);
    QVERIFY(!drop(f, {"Plain", "Root"}, f.row("Hand"), -1));
    QVERIFY(!drop(f, {"Root"}, f.row("Root"), 0));
    QCOMPARE(Document::the().undoStack()->count(), 0);
}

void TestPanelDrops::materialsAreDroppedOnGroupsAlone()
{
    PanelFixture f(EditorModule::Material);
    f.show();
    QVERIFY(!drop(f, {"Gold"}, f.row("Red"), -1));
    QVERIFY(drop(f, {"Gold"}, f.row("Paints"), 1));
    QCOMPARE(f.rows(), QStringLiteral("Paints(Red Gold Blue)"));
}

void TestPanelDrops::listsTakeNoDrops()
{
    PanelFixture f(EditorModule::Light);
    QVERIFY(!drop(f, {"Sun"}, {}, 0));
    QVERIFY(f.row("Sun").flags().testFlag(Qt::ItemIsDragEnabled));
    QVERIFY(!f.row("Sun").flags().testFlag(Qt::ItemIsDropEnabled));
}

void TestPanelDrops::treesTakeTheirOwnRowsAndListsNone()
{
    const PanelFixture tree(EditorModule::Material);
    QCOMPARE(tree.view->dragDropMode(), QAbstractItemView::InternalMove);
    // What is proposed as a copy, for the trees of metadata, has to be taken.
    QVERIFY(tree.panel->model()->supportedDropActions().testFlag(Qt::CopyAction));
    QVERIFY(tree.panel->model()->supportedDragActions().testFlag(Qt::MoveAction));
    const PanelFixture list(EditorModule::Camera);
    QCOMPARE(list.view->dragDropMode(), QAbstractItemView::DragOnly);
}

void TestPanelDrops::dragsCarryWhatTreesOfMetadataUnderstand()
{
    PanelFixture f(EditorModule::Camera);
    const QScopedPointer<QMimeData> data(f.panel->model()->mimeData({f.row("Spare"), f.row("Eye")}));
    const QList<TreeDragRecord> records = TreeDragRecord::fromMimeData(data.data());
    QCOMPARE(records.size(), 2);
    QCOMPARE(records.at(0).objectId(), f.id("Spare"));
    QCOMPARE(records.at(1).parentId(), quint64(0));
}

void TestPanelDrops::everyMoveOfRowsIsAnnounced()
{
    PanelFixture f(EditorModule::Scenegraph);
    const QAbstractItemModelTester tester(f.panel->model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    SignalChecker checker(f.panel->model());
    Document &document = Document::the();
    const QString before = f.rows();
    QVERIFY(document.moveObjects(f.idsOf({"Arm", "Eye"}), 0, 1));
    QCOMPARE(checker.fault(), QString());
    QCOMPARE(f.rows(), QStringLiteral("Root(Spare Lamp Sun Plate Board) Arm(Hand) Eye Plain"));
    QVERIFY(document.moveObjects(f.idsOf({"Root"}), f.id("Hand")));
    QCOMPARE(checker.fault(), QString());
    {
        const nkScopedUndo scope(true);
        document.moveObjects(f.idsOf({"Lamp"}), f.id("Root"), 0);
        document.moveObjects(f.idsOf({"Sun"}), f.id("Plain"));
        document.deleteObjects(f.idsOf({"Spare"}));
        document.createObject(nkObjectType::Node, QStringLiteral("Late"), f.id("Root"));
        document.moveObjects(f.idsOf({"Hand"}), 0);
    }
    QCOMPARE(checker.fault(), QString());
    QCOMPARE(f.rows(), QStringLiteral("Arm Eye Plain(Sun) Hand(Root(Lamp Plate Board Late))"));
    while (document.undo()) {
        QCOMPARE(checker.fault(), QString());
    }
    QCOMPARE(f.rows(), before);
    QCOMPARE(checker.count("reset"), 0);
}

void TestPanelDrops::manyRowsThatGoAtOnceAreAnnounced()
{
    PanelFixture f(EditorModule::Scenegraph);
    Document &document = Document::the();
    QList<quint64> ids;
    for (int i = 0; i < 400; ++i) {
        ids << document.createObject(nkObjectType::Node, QString::number(i), f.id("Plain"));
    }
    QList<quint64> odd;
    for (int i = 1; i < 400; i += 2) {
        odd << ids.at(i);
    }
    QCOMPARE(f.panel->model()->rowCount(f.row("Plain")), 400);
    SignalChecker checker(f.panel->model());
    document.deleteObjects(odd);
    QCOMPARE(checker.fault(), QString());
    QCOMPARE(f.panel->model()->rowCount(f.row("Plain")), 200);
    QVERIFY(document.undo());
    QCOMPARE(checker.fault(), QString());
    QCOMPARE(f.panel->model()->rowCount(f.row("Plain")), 400);
    QCOMPARE(checker.count("removed"), 0); // told in one go
}

void TestPanelDrops::selectionAndExpansionSurviveAMove()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.view->expandAll();
    f.view->collapse(f.row("Plain"));
    f.service.select(f.idsOf({"Hand", "Lamp"}));
    f.forgetCounts();
    kernel::Document::the().createObject(nkObjectType::Node, QStringLiteral("Child"), f.id("Plain"));
    QVERIFY(Document::the().moveObjects(f.idsOf({"Arm"}), 0, 0));
    QVERIFY(!f.view->isExpanded(f.row("Plain")));
    QVERIFY(f.view->isExpanded(f.row("Arm")) && f.view->isExpanded(f.row("Root")));
    QCOMPARE(f.selection(), (QStringList{"Hand", "Lamp"}));
    QStringList shown = f.shownSelection();
    shown.sort();
    QCOMPARE(shown, (QStringList{"Hand", "Lamp"}));
    QCOMPARE(f.told, 0);
}

NK_TEST_MAIN(TestPanelDrops)
#include "test_panel_drops.moc"
