#include "PanelFixture.h"

#include "../widgets_itemmodel/SignalChecker.h"

#include <TestMain.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkQt4Ext/QNKSearchBox.h>
#include <nkQt4Ext/QNKViewBase.h>

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>

/// What the panels list: rows that follow the scene, names, the search, and scenes of any size.
class TestPanelRows : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyPanelListsItsObjectsWithIcons_data() { addPanelRows(); }
    void everyPanelListsItsObjectsWithIcons();
    void rowsFollowCreationDeletionUndoAndRedo_data() { addPanelRows(); }
    void rowsFollowCreationDeletionUndoAndRedo();
    void everyChangeOfRowsIsAnnounced();
    void anotherSceneTakesThePlace_data() { addPanelRows(); }
    void anotherSceneTakesThePlace();
    void anotherSceneIsUnfoldedAsFarAsItFits();
    void expansionAndPlaceSurviveAChange();
    void theFirstChildOfALeafGivesItAnExpander();
    void aRenamingIsShownOncePerTurn();
    void aNameIsEditedInPlaceAndUndone();
    void aLockedNameCannotBeEdited();
    void anOpenEditorSurvivesAChangeOfTheScene();
    void aSearchShowsMatchesAndWhatStandsAbove();
    void aSearchKeepsTheSelectionAndWhatWasOpen();
    void aRenamedObjectLeavesTheSearch();
    void anEmptyPanelSaysWhatToDo_data() { addPanelRows(); }
    void anEmptyPanelSaysWhatToDo();
    void everyControlHasAName_data() { addPanelRows(); }
    void everyControlHasAName();
    void aHundredThousandNodesMakeFewRows();
    void aHundredThousandLightsSelectAndFollow();
};

void TestPanelRows::everyPanelListsItsObjectsWithIcons()
{
    QFETCH(EditorModule, module);
    QFETCH(QString, rows);
    QFETCH(QString, second);
    PanelFixture f(module);
    QCOMPARE(f.rows(), rows);
    QVERIFY(!f.row(second).data(Qt::DecorationRole).value<QIcon>().isNull());
}

void TestPanelRows::rowsFollowCreationDeletionUndoAndRedo()
{
    QFETCH(EditorModule, module);
    QFETCH(QString, rows);
    QFETCH(QString, second);
    PanelFixture f(module);
    kernel::Document &document = kernel::Document::the();
    QCOMPARE(f.rows(), rows);
    const nkObjectType type = document.typeOf(f.idsOf({second}).constFirst());
    QVERIFY(document.createObject(type, QStringLiteral("Late")) != 0);
    QCOMPARE(f.rows(), QString(rows + " Late"));
    QVERIFY(document.deleteObjects(f.idsOf({second})));
    QVERIFY(!f.rows().contains(second));
    QVERIFY(document.undo());
    QCOMPARE(f.rows(), QString(rows + " Late"));
    QVERIFY(document.undo());
    QCOMPARE(f.rows(), rows);
    QVERIFY(document.redo());
    QCOMPARE(f.rows(), QString(rows + " Late"));
}

void TestPanelRows::everyChangeOfRowsIsAnnounced()
{
    PanelFixture f(EditorModule::Scenegraph);
    const QAbstractItemModelTester tester(f.panel->model(),
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    SignalChecker checker(f.panel->model());
    kernel::Document &document = kernel::Document::the();
    {
        const nkScopedUndo scope(true);
        document.deleteObjects(f.idsOf({"Eye", "Lamp", "Board"}));
        document.createObject(nkObjectType::Node, QStringLiteral("Finger"), f.id("Hand"));
        document.createObject(nkObjectType::Node, QStringLiteral("Toe"), f.id("Plain"));
        PanelFixture::node(f.id("Arm")).setName(QStringLiteral("Leg"));
    }
    QCoreApplication::processEvents();
    QCOMPARE(checker.fault(), QString());
    QCOMPARE(f.rows(), QStringLiteral("Root(Spare Sun Plate Leg(Hand(Finger))) Plain(Toe)"));
    while (document.undo()) {
        QCoreApplication::processEvents();
        QCOMPARE(checker.fault(), QString());
    }
    QCOMPARE(checker.count("reset"), 0);
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp Sun Plate Board Arm(Hand)) Plain"));
}

void TestPanelRows::anotherSceneTakesThePlace()
{
    QFETCH(EditorModule, module);
    QFETCH(QString, first);
    PanelFixture f(module);
    f.show();
    f.click(first);
    const nkObjectType type = kernel::Document::the().typeOf(f.idsOf({first}).constFirst());
    f.forgetCounts();
    kernel::DocumentLoader loader;
    const quint64 id = loader.addObject(type, QStringLiteral("Other"));
    loader.commit();
    QCOMPARE(f.rows(), QStringLiteral("Other"));
    QCOMPARE(f.selection(), QStringList());
    QCOMPARE(f.shownSelection(), QStringList());
    QCOMPARE(f.told, 1);
    f.service.select({id});
    QCOMPARE(f.shownSelection(), QStringList{"Other"});
}

void TestPanelRows::anotherSceneIsUnfoldedAsFarAsItFits()
{
    PanelFixture f(EditorModule::Scenegraph);
    kernel::DocumentLoader loader;
    const quint64 small = loader.addObject(nkObjectType::Node, QStringLiteral("Small"));
    loader.addObject(nkObjectType::Node, QStringLiteral("Child"), small);
    const quint64 large = loader.addObject(nkObjectType::Node, QStringLiteral("Large"));
    for (int i = 0; i < 1000; ++i) {
        loader.addObject(nkObjectType::Node, QString::number(i), large);
    }
    loader.commit();
    QVERIFY(f.view->isExpanded(f.panel->model()->indexOf(small)));
    QVERIFY(!f.view->isExpanded(f.panel->model()->indexOf(large)));
}

void TestPanelRows::expansionAndPlaceSurviveAChange()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.panel->resize(300, 140);
    f.show();
    f.panel->resize(300, 140);
    QVERIFY(f.view->isExpanded(f.row(QStringLiteral("Arm"))));
    f.view->scrollTo(f.row(QStringLiteral("Plain")));
    QVERIFY(f.view->verticalScrollBar()->value() > 0);
    const int top = f.view->visualRect(f.row(QStringLiteral("Board"))).top();
    kernel::Document::the().deleteObjects(f.idsOf({"Eye"}));
    QCOMPARE(f.view->visualRect(f.row(QStringLiteral("Board"))).top(), top);
    QVERIFY(kernel::Document::the().undo());
    QCOMPARE(f.view->visualRect(f.row(QStringLiteral("Board"))).top(), top);
    QVERIFY(f.view->isExpanded(f.row(QStringLiteral("Arm"))));
}

void TestPanelRows::theFirstChildOfALeafGivesItAnExpander()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.service.select(f.idsOf({"Plain"}));
    const QImage leaf = f.view->viewport()->grab().toImage();
    kernel::Document::the().createObject(nkObjectType::Node, QStringLiteral("Child"), f.id("Plain"));
    QVERIFY(f.view->viewport()->grab().toImage() != leaf);
    QTest::keyClick(f.view, Qt::Key_Right);
    QVERIFY(f.view->isExpanded(f.row(QStringLiteral("Plain"))));
}

void TestPanelRows::aRenamingIsShownOncePerTurn()
{
    PanelFixture f(EditorModule::Light);
    QCOMPARE(f.rows(), QStringLiteral("Lamp Sun"));
    QSignalSpy changes(f.panel->model(), &QAbstractItemModel::dataChanged);
    for (int i = 0; i < 100; ++i) {
        PanelFixture::node(f.id("Lamp")).setName(QString::number(i));
        PanelFixture::node(f.id("Sun")).setName(QStringLiteral("S%1").arg(i));
    }
    QTRY_COMPARE(changes.count(), 1);
    QCOMPARE(f.rows(), QStringLiteral("99 S99"));
}

void TestPanelRows::aNameIsEditedInPlaceAndUndone()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.click(QStringLiteral("Arm"));
    QTest::keyClick(f.view, Qt::Key_F2);
    auto *editor = f.view->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QVERIFY(!editor->accessibleName().isEmpty());
    QTest::keyClicks(editor, QStringLiteral("Leg"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(PanelFixture::node(f.id("Arm")).getName(), QStringLiteral("Leg"));
    QCOMPARE(f.row(QStringLiteral("Arm")).data().toString(), QStringLiteral("Leg"));
    QVERIFY(kernel::Document::the().undo());
    QCOMPARE(f.row(QStringLiteral("Arm")).data().toString(), QStringLiteral("Arm"));
    QVERIFY(!kernel::Document::the().undo()); // one step
}

void TestPanelRows::aLockedNameCannotBeEdited()
{
    PanelFixture f(EditorModule::Material);
    f.show();
    nkdMaterial(nkdObject(f.id("Gold"))).setLocked(true);
    f.click(QStringLiteral("Gold"));
    QTest::keyClick(f.view, Qt::Key_F2);
    QVERIFY(!f.view->viewport()->findChild<QLineEdit *>());
    QVERIFY(!f.panel->model()->setData(f.row(QStringLiteral("Gold")), QStringLiteral("x")));
    QCOMPARE(f.row(QStringLiteral("Gold")).data().toString(), QStringLiteral("Gold"));
}

void TestPanelRows::anOpenEditorSurvivesAChangeOfTheScene()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.click(QStringLiteral("Sun"));
    QTest::keyClick(f.view, Qt::Key_F2);
    auto *editor = f.view->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("Moon"));
    kernel::Document::the().deleteObjects(f.idsOf({"Eye"}));
    QCoreApplication::processEvents();
    QCOMPARE(f.view->viewport()->findChild<QLineEdit *>(), editor);
    QCOMPARE(editor->text(), QStringLiteral("Moon"));
    QNKViewBase::commitOpenEditors();
    QCOMPARE(PanelFixture::node(f.id("Sun")).getName(), QStringLiteral("Moon"));
}

void TestPanelRows::aSearchShowsMatchesAndWhatStandsAbove()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    QTest::keyClicks(f.panel->searchBox()->lineEdit(), QStringLiteral("HA*d"));
    QCOMPARE(f.rows(), QStringLiteral("Root(Arm(Hand))"));
    QVERIFY(f.view->isExpanded(f.row(QStringLiteral("Arm"))));
    QTest::keyClick(f.panel->searchBox()->lineEdit(), Qt::Key_Escape);
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp Sun Plate Board Arm(Hand)) Plain"));
    PanelFixture lights(EditorModule::Light);
    lights.panel->searchBox()->lineEdit()->setText(QStringLiteral("s?n"));
    QCOMPARE(lights.rows(), QStringLiteral("Sun"));
}

void TestPanelRows::aSearchKeepsTheSelectionAndWhatWasOpen()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.view->collapse(f.row(QStringLiteral("Arm")));
    f.click(QStringLiteral("Sun"));
    f.forgetCounts();
    f.panel->searchBox()->lineEdit()->setText(QStringLiteral("hand"));
    QCOMPARE(f.shownSelection(), QStringList());
    QCOMPARE(f.selection(), QStringList{"Sun"});
    f.panel->searchBox()->lineEdit()->clear();
    QCOMPARE(f.shownSelection(), QStringList{"Sun"});
    QCOMPARE(f.told, 0);
    QVERIFY(f.view->isExpanded(f.row(QStringLiteral("Root"))));
    QVERIFY(!f.view->isExpanded(f.row(QStringLiteral("Arm"))));
}

void TestPanelRows::aRenamedObjectLeavesTheSearch()
{
    PanelFixture f(EditorModule::Light);
    f.panel->searchBox()->lineEdit()->setText(QStringLiteral("u"));
    f.service.select(f.idsOf({"Sun"}));
    f.forgetCounts();
    QCOMPARE(f.rows(), QStringLiteral("Sun"));
    PanelFixture::node(f.id("Sun")).setName(QStringLiteral("Moon"));
    QCOMPARE(f.rows(), QString());
    QCOMPARE(f.selection(), QStringList{"Moon"}); // hidden, and selected as before
    QCOMPARE(f.told, 0);
    PanelFixture::node(f.id("Lamp")).setName(QStringLiteral("Bulb"));
    QCOMPARE(f.rows(), QStringLiteral("Bulb"));
}

void TestPanelRows::anEmptyPanelSaysWhatToDo()
{
    QFETCH(EditorModule, module);
    PanelFixture f(module);
    QCOMPARE(f.view->accessibleDescription(), QString());
    f.panel->searchBox()->lineEdit()->setText(QStringLiteral("nothing is called that"));
    QVERIFY(f.view->accessibleDescription().contains(QLatin1String("No name matches")));
    f.panel->searchBox()->lineEdit()->clear();
    kernel::Document::the().clear();
    QVERIFY(f.view->emptyText().startsWith(QLatin1String("This scene has no ")));
    QVERIFY(f.view->emptyText().contains(module == EditorModule::Sceneplate ? QLatin1String("New Sceneplate")
                                                                            : QLatin1String("File > Open")));
    QCOMPARE(f.view->accessibleDescription(), f.view->emptyText());
    f.show();
    const QImage said = f.view->viewport()->grab().toImage();
    f.view->setEmptyText(QString());
    QVERIFY(said != f.view->viewport()->grab().toImage());
}

void TestPanelRows::everyControlHasAName()
{
    QFETCH(EditorModule, module);
    PanelFixture f(module);
    QVERIFY(!f.view->accessibleName().isEmpty());
    QCOMPARE(f.view->accessibleName(), f.panel->accessibleName());
    QVERIFY(!f.panel->searchBox()->lineEdit()->accessibleName().isEmpty());
    for (const auto *button : f.panel->searchBox()->findChildren<QAbstractButton *>()) {
        // The line edit's own clear button stands in the field and is never focused.
        QVERIFY(button->parent() != f.panel->searchBox() || !button->accessibleName().isEmpty());
    }
}

void TestPanelRows::aHundredThousandNodesMakeFewRows()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    kernel::DocumentLoader loader;
    for (int i = 0; i < 100; ++i) {
        const quint64 parent = loader.addObject(nkObjectType::Node, QStringLiteral("part %1").arg(i));
        for (int j = 0; j < 999; ++j) {
            f.ids.insert(QStringLiteral("deep"),
                         loader.addObject(nkObjectType::Node, QString::number(j), parent));
        }
    }
    loader.commit();
    f.view->grab();
    QCOMPARE(f.panel->model()->madeRowCount(), 100);
    f.service.select(f.idsOf({"deep"}));
    nkScenegraphService::the().scrollToSelected();
    QCOMPARE(f.panel->model()->madeRowCount(), 100 + 999);
    QVERIFY(f.view->visualRect(f.row(QStringLiteral("deep"))).isValid());
}

void TestPanelRows::aHundredThousandLightsSelectAndFollow()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    kernel::DocumentLoader loader;
    for (int i = 0; i < 100000; ++i) {
        f.ids.insert(QStringLiteral("late"), loader.addObject(nkObjectType::Light, QString::number(i)));
    }
    loader.commit();
    f.view->selectAll();
    QCOMPARE(f.selection().size(), 100000);
    QVERIFY(kernel::Document::the().deleteObjects(f.idsOf({"late"})));
    QCOMPARE(f.panel->model()->rowCount(), 99999);
    QCOMPARE(f.shownSelection().size(), 99999);
}

NK_TEST_MAIN(TestPanelRows)
#include "test_panel_rows.moc"
