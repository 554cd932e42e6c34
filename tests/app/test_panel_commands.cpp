#include "EditorScene.h"
#include "PanelFixture.h"

#include "panels/EditorCommands.h"
#include "panels/MoveTargetDialog.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkQt4Ext/QNKSearchBox.h>

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>

using kernel::Document;
using C = EditorCommand;

Q_DECLARE_METATYPE(EditorCommand)

/// Creating, grouping, moving, locking and deleting in the panels of the editors.
class TestPanelCommands : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aNewObjectIsSelectedAndItsNameEdited_data();
    void aNewObjectIsSelectedAndItsNameEdited();
    void aNewGroupComesBehindTheSelectedObject();
    void aNewMaterialComesIntoTheSelectedGroup();
    void groupingPutsTheSelectionIntoANewGroupInItsPlace();
    void groupingIsOneStep();
    void ungroupingPutsTheMaterialsInThePlaceOfTheirGroup();
    void deletingSelectsTheNextRow_data();
    void deletingSelectsTheNextRow();
    void deletingAndUndoingBringsBackTheWholeDocument_data();
    void deletingAndUndoingBringsBackTheWholeDocument();
    void aLockedObjectIsNeitherDeletedNorMovedNorGrouped();
    void lockingIsUndoneLikeAnythingElse();
    void whatASearchHidesIsNotDeleted();
    void keysMoveTheSelectionUpAndDown();
    void objectsOfDifferentParentsAreNotMovedUp();
    void moveToAsksForTheNewParent();
    void moveToOffersNothingBelowWhatMoves();
    void moveToTheTopLevel();
    void theKeysOfAnOpenNameAreItsOwn();
    void undoStepsAreTitled();
    void thePersonsGestureMovesTheLastSelection();
    void everyCommandStandsInTheMenuAndIsNamed_data() { addPanelRows(); }
    void everyCommandStandsInTheMenuAndIsNamed();

private:
    static void trigger(const PanelFixture &f, C command)
    {
        QAction *action = f.panel->commands()->action(command);
        QVERIFY(action && action->isEnabled());
        action->trigger();
    }
    static QLineEdit *nameEditor(const PanelFixture &f)
    {
        return f.view->viewport()->findChild<QLineEdit *>();
    }
    static QString undoText() { return Document::the().undoStack()->undoText(); }
};

void TestPanelCommands::aNewObjectIsSelectedAndItsNameEdited_data()
{
    QTest::addColumn<EditorModule>("module");
    QTest::addColumn<EditorCommand>("command");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("step");
    QTest::newRow("camera") << EditorModule::Camera << C::NewCamera << "Eye Spare Made"
                            << "Create Camera";
    QTest::newRow("light") << EditorModule::Light << C::NewLight << "Lamp Sun Made"
                           << "Create Light";
    QTest::newRow("material") << EditorModule::Material << C::NewMaterial << "Paints(Red Blue) Gold Made"
                              << "Create Material";
    QTest::newRow("material group") << EditorModule::Material << C::NewGroup << "Paints(Red Blue) Gold Made"
                                    << "Create Group";
    QTest::newRow("group") << EditorModule::Scenegraph << C::NewGroup
                           << "Root(Eye Spare Lamp Sun Plate Board Arm(Hand)) Plain Made"
                           << "Create Group";
}

void TestPanelCommands::aNewObjectIsSelectedAndItsNameEdited()
{
    QFETCH(EditorModule, module);
    QFETCH(EditorCommand, command);
    QFETCH(QString, rows);
    QFETCH(QString, step);
    PanelFixture f(module);
    f.show();
    const QString before = f.rows();
    trigger(f, command);
    QCOMPARE(undoText(), step);
    QCOMPARE(f.selection().size(), 1);
    QVERIFY(f.selection().constFirst().startsWith(QLatin1String("New ")));
    QCOMPARE(f.shownSelection(), f.selection());
    QLineEdit *editor = nameEditor(f);
    QVERIFY(editor);
    QCOMPARE(editor->selectedText(), f.selection().constFirst());
    QTest::keyClicks(editor, QStringLiteral("Made"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(f.rows(), rows);
    Document::the().undo();
    Document::the().undo();
    QCOMPARE(f.rows(), before);
}

void TestPanelCommands::aNewGroupComesBehindTheSelectedObject()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.click(QStringLiteral("Lamp"));
    trigger(f, C::NewGroup);
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp New Group Sun Plate Board Arm(Hand)) Plain"));
    QCOMPARE(Document::the().undoStack()->count(), 1);
}

void TestPanelCommands::aNewMaterialComesIntoTheSelectedGroup()
{
    PanelFixture f(EditorModule::Material);
    f.show();
    f.click(QStringLiteral("Red"));
    trigger(f, C::NewMaterial);
    QCOMPARE(f.rows(), QStringLiteral("Paints(Red New Material Blue) Gold"));
    f.click(QStringLiteral("Paints"));
    trigger(f, C::NewMaterial);
    QCOMPARE(f.rows(), QStringLiteral("Paints(Red New Material Blue New Material) Gold"));
}

void TestPanelCommands::groupingPutsTheSelectionIntoANewGroupInItsPlace()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.click(QStringLiteral("Plain"));
    f.click(QStringLiteral("Sun"), Qt::ControlModifier);
    f.click(QStringLiteral("Hand"), Qt::ControlModifier);
    QTest::keyClick(f.view, Qt::Key_G, Qt::ControlModifier);
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp New Group(Sun Hand Plain) Plate Board Arm)"));
    QCOMPARE(f.selection(), QStringList{"New Group"});
    QVERIFY(nameEditor(f));
}

void TestPanelCommands::groupingIsOneStep()
{
    PanelFixture f(EditorModule::Material);
    f.show();
    const QString before = EditorScene::text();
    f.click(QStringLiteral("Blue"));
    f.click(QStringLiteral("Gold"), Qt::ControlModifier);
    trigger(f, C::GroupSelected);
    QCOMPARE(f.rows(), QStringLiteral("Paints(Red New Group(Blue Gold))"));
    QCOMPARE(undoText(), QStringLiteral("Group Selected"));
    QVERIFY(Document::the().undo());
    QCOMPARE(EditorScene::text(), before);
    QVERIFY(!Document::the().undo());
}

void TestPanelCommands::ungroupingPutsTheMaterialsInThePlaceOfTheirGroup()
{
    PanelFixture f(EditorModule::Material);
    f.show();
    f.click(QStringLiteral("Gold"));
    QVERIFY(!f.panel->commands()->action(C::Ungroup)->isEnabled());
    f.click(QStringLiteral("Paints"));
    trigger(f, C::Ungroup);
    QCOMPARE(f.rows(), QStringLiteral("Red Blue Gold"));
    QCOMPARE(f.selection(), (QStringList{"Red", "Blue"}));
    QVERIFY(Document::the().undo());
    QCOMPARE(f.rows(), QStringLiteral("Paints(Red Blue) Gold"));
}

void TestPanelCommands::deletingSelectsTheNextRow_data()
{
    QTest::addColumn<EditorModule>("module");
    QTest::addColumn<QStringList>("deleted");
    QTest::addColumn<QStringList>("next");
    QTest::newRow("one in the middle")
        << EditorModule::Scenegraph << QStringList{"Lamp"} << QStringList{"Sun"};
    QTest::newRow("with what is below")
        << EditorModule::Scenegraph << QStringList{"Arm"} << QStringList{"Plain"};
    QTest::newRow("parent and child")
        << EditorModule::Scenegraph << QStringList{"Arm", "Hand"} << QStringList{"Plain"};
    QTest::newRow("the last") << EditorModule::Scenegraph << QStringList{"Plain"} << QStringList{"Hand"};
    QTest::newRow("the last of a list") << EditorModule::Light << QStringList{"Sun"} << QStringList{"Lamp"};
    QTest::newRow("all") << EditorModule::Light << QStringList{"Lamp", "Sun"} << QStringList{};
}

void TestPanelCommands::deletingSelectsTheNextRow()
{
    QFETCH(EditorModule, module);
    QFETCH(QStringList, deleted);
    QFETCH(QStringList, next);
    PanelFixture f(module);
    f.show();
    for (const QString &name : qAsConst(deleted)) {
        f.click(name, name == deleted.constFirst() ? Qt::NoModifier : Qt::ControlModifier);
    }
    f.forgetCounts();
    QTest::keyClick(f.view, Qt::Key_Delete);
    QCOMPARE(f.selection(), next);
    QCOMPARE(f.shownSelection(), next);
    QVERIFY(f.told <= 2); // what died, and what is selected instead
    QCOMPARE(f.view->currentIndex().isValid(), !next.isEmpty());
}

void TestPanelCommands::deletingAndUndoingBringsBackTheWholeDocument_data()
{
    addPanelRows();
}

void TestPanelCommands::deletingAndUndoingBringsBackTheWholeDocument()
{
    QFETCH(EditorModule, module);
    QFETCH(QString, first);
    QFETCH(QString, second);
    PanelFixture f(module);
    f.show();
    nkMetadataService::the().createSet(
        QStringLiteral("Shared"),
        {nkdSceneObject(nkdObject(f.ids.value(first))), nkdSceneObject(nkdObject(f.ids.value(second)))});
    nkdMetadataSet own = nkdMetadata(f.ids.value(second)).getObjectSet();
    own.setValue(QStringLiteral("weight"), 12);
    const QString before = EditorScene::text();
    f.click(first);
    f.click(second, Qt::ControlModifier);
    trigger(f, C::Delete);
    QVERIFY(undoText().startsWith(QLatin1String("Delete ")));
    const QString after = EditorScene::text();
    QVERIFY(!after.contains(QLatin1String("weight")) && after.contains(QLatin1String("set Shared on 0")));
    QVERIFY(Document::the().undo());
    QCOMPARE(EditorScene::text(), before);
    QVERIFY(Document::the().redo());
    QCOMPARE(EditorScene::text(), after);
}

void TestPanelCommands::aLockedObjectIsNeitherDeletedNorMovedNorGrouped()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    PanelFixture::node(f.id("Hand")).setLocked(true);
    const QString before = EditorScene::text();
    QSignalSpy told(f.panel.get(), &EditorPanel::statusMessage);
    f.click(QStringLiteral("Arm")); // has the locked one below
    trigger(f, C::Delete);
    QCOMPARE(told.takeFirst().value(0).toString(), QStringLiteral("“Hand” is locked; unlock it first."));
    f.click(QStringLiteral("Hand"));
    trigger(f, C::GroupSelected);
    QCOMPARE(told.count(), 1);
    trigger(f, C::MoveUp);
    QCOMPARE(told.count(), 2);
    f.panel->commands()->move(f.idsOf({"Hand"}), 0, 0);
    QCOMPARE(told.count(), 3);
    QVERIFY(!f.panel->commands()->action(C::Rename)->isEnabled());
    QCOMPARE(EditorScene::text(), before);
    QCOMPARE(f.selection(), QStringList{"Hand"});
}

void TestPanelCommands::lockingIsUndoneLikeAnythingElse()
{
    PanelFixture f(EditorModule::Material);
    f.show();
    f.click(QStringLiteral("Red"));
    f.click(QStringLiteral("Gold"), Qt::ControlModifier);
    QAction *lock = f.panel->commands()->action(C::Lock);
    QVERIFY(!lock->isChecked());
    lock->trigger();
    QVERIFY(nkdMaterial(nkdObject(f.id("Red"))).getLocked()
            && nkdMaterial(nkdObject(f.id("Gold"))).getLocked());
    QVERIFY(lock->isChecked());
    QVERIFY(Document::the().undo());
    QVERIFY(!nkdMaterial(nkdObject(f.id("Red"))).getLocked());
    QVERIFY(!Document::the().undo());
    QTRY_VERIFY(!lock->isChecked());
}

void TestPanelCommands::whatASearchHidesIsNotDeleted()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.click(QStringLiteral("Sun"));
    f.click(QStringLiteral("Hand"), Qt::ControlModifier);
    f.panel->searchBox()->lineEdit()->setText(QStringLiteral("sun"));
    trigger(f, C::Delete);
    f.panel->searchBox()->lineEdit()->clear();
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp Plate Board Arm(Hand)) Plain"));
    f.panel->searchBox()->lineEdit()->setText(QStringLiteral("eye"));
    f.service.select(f.idsOf({"Hand"}));
    QVERIFY(!f.panel->commands()->action(C::Delete)->isEnabled());
}

void TestPanelCommands::keysMoveTheSelectionUpAndDown()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.click(QStringLiteral("Lamp"));
    f.click(QStringLiteral("Plate"), Qt::ControlModifier);
    QTest::keyClick(f.view, Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Lamp Plate Spare Sun Board Arm(Hand)) Plain"));
    QCOMPARE(f.selection(), (QStringList{"Lamp", "Plate"}));
    QTest::keyClick(f.view, Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp Plate Sun Board Arm(Hand)) Plain"));
    QCOMPARE(f.shownSelection(), (QStringList{"Lamp", "Plate"}));
    for (int turn = 0; turn < 6; ++turn) {
        QTest::keyClick(f.view, Qt::Key_Up, Qt::AltModifier);
    }
    QCOMPARE(f.rows(), QStringLiteral("Root(Lamp Plate Eye Spare Sun Board Arm(Hand)) Plain"));
}

void TestPanelCommands::objectsOfDifferentParentsAreNotMovedUp()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    QSignalSpy told(f.panel.get(), &EditorPanel::statusMessage);
    f.click(QStringLiteral("Hand"));
    f.click(QStringLiteral("Plain"), Qt::ControlModifier);
    trigger(f, C::MoveUp);
    QCOMPARE(told.count(), 1);
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp Sun Plate Board Arm(Hand)) Plain"));
}

void TestPanelCommands::moveToAsksForTheNewParent()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.click(QStringLiteral("Arm"));
    const ModalAnswer answer([](QDialog *box) {
        auto *dialog = qobject_cast<MoveTargetDialog *>(box);
        QVERIFY(dialog);
        QVERIFY(!dialog->moveButton()->isEnabled());
        QTest::keyClick(dialog->view(), Qt::Key_End);
        QVERIFY(dialog->moveButton()->isEnabled());
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    QTest::keyClick(f.view, Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(f.rows(), QStringLiteral("Root(Eye Spare Lamp Sun Plate Board) Plain(Arm(Hand))"));
    QCOMPARE(f.shownSelection(), QStringList{"Arm"});
    QCOMPARE(undoText(), QStringLiteral("Move Nodes"));
}

void TestPanelCommands::moveToOffersNothingBelowWhatMoves()
{
    PanelFixture f(EditorModule::Scenegraph);
    MoveTargetDialog dialog(EditorModule::Scenegraph, f.idsOf({"Root"}));
    const auto choose = [&](const char *name) {
        auto *model = qobject_cast<SceneObjectModel *>(dialog.view()->model());
        dialog.view()->setCurrentIndex(model->indexOf(f.id(name)));
    };
    choose("Hand");
    QVERIFY(!dialog.moveButton()->isEnabled());
    choose("Plain");
    QVERIFY(dialog.moveButton()->isEnabled());
    choose("Root");
    QVERIFY(!dialog.moveButton()->isEnabled());
    PanelFixture m(EditorModule::Material);
    MoveTargetDialog groups(EditorModule::Material, m.idsOf({"Gold"}));
    auto *model = qobject_cast<SceneObjectModel *>(groups.view()->model());
    groups.view()->setCurrentIndex(model->indexOf(m.id("Red")));
    QVERIFY(!groups.moveButton()->isEnabled());
    groups.view()->setCurrentIndex(model->indexOf(m.id("Paints")));
    QVERIFY(groups.moveButton()->isEnabled());
}

void TestPanelCommands::moveToTheTopLevel()
{
    PanelFixture f(EditorModule::Material);
    f.show();
    f.click(QStringLiteral("Red"));
    const ModalAnswer answer([](QDialog *box) {
        auto *dialog = qobject_cast<MoveTargetDialog *>(box);
        QVERIFY(dialog);
        dialog->topLevelButton()->click();
    });
    trigger(f, C::MoveTo);
    QCOMPARE(f.rows(), QStringLiteral("Paints(Blue) Gold Red"));
    QCOMPARE(undoText(), QStringLiteral("Move Materials"));
}

void TestPanelCommands::theKeysOfAnOpenNameAreItsOwn()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    f.click(QStringLiteral("Sun"));
    QTest::keyClick(f.view, Qt::Key_F2);
    QLineEdit *editor = nameEditor(f);
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_Home);
    QTest::keyClick(editor, Qt::Key_Delete);
    QCOMPARE(editor->text(), QStringLiteral("un"));
    QCOMPARE(f.rows(), QStringLiteral("Lamp Sun"));
}

void TestPanelCommands::undoStepsAreTitled()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.click(QStringLiteral("Sun"));
    trigger(f, C::Delete);
    QCOMPARE(undoText(), QStringLiteral("Delete Lights"));
    f.click(QStringLiteral("Lamp"));
    f.click(QStringLiteral("Eye"), Qt::ControlModifier);
    trigger(f, C::MoveDown);
    QCOMPARE(undoText(), QStringLiteral("Move Nodes"));
    trigger(f, C::Delete);
    QCOMPARE(undoText(), QStringLiteral("Delete Nodes"));
}

void TestPanelCommands::thePersonsGestureMovesTheLastSelection()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    QVERIFY(PanelFixture::last() != int(EditorModule::Light));
    trigger(f, C::NewLight);
    QCOMPARE(PanelFixture::last(), int(EditorModule::Light));
    nkMetadataModuleSelection::the().setLastSelectionModule(f.elsewhere());
    Document::the().undo(); // the light goes, and takes nobody's gesture
    QCOMPARE(PanelFixture::last(), f.elsewhere());
}

void TestPanelCommands::everyCommandStandsInTheMenuAndIsNamed()
{
    QFETCH(EditorModule, module);
    PanelFixture f(module);
    f.show();
    const QList<QAction *> tools = f.panel->commands()->toolBarActions();
    QVERIFY(tools.size() >= 2);
    auto *bar = f.panel->findChild<QToolBar *>();
    QVERIFY(bar);
    for (QAction *action : tools) {
        QVERIFY(action->toolTip().size() > action->text().size());
        auto *button = qobject_cast<QToolButton *>(bar->widgetForAction(action));
        QVERIFY(button && button->focusPolicy() != Qt::NoFocus);
    }
    QStringList entries;
    const ModalAnswer answer = ModalAnswer::menu([&entries](QMenu *menu) {
        for (const QAction *action : menu->actions()) {
            entries << action->objectName();
        }
        menu->close();
    });
    Q_EMIT f.view->customContextMenuRequested({5, 5});
    for (const EditorCommandRow &row : editorCommands(module)) {
        QVERIFY(entries.contains(row.objectName));
        const QString category = row.iconCategory.isEmpty() ? QStringLiteral("Various") : row.iconCategory;
        QVERIFY(
            row.icon.isEmpty()
            || QFile::exists(QStringLiteral(":/iconmanager/resources/%1/%2.svg").arg(category, row.icon)));
        QVERIFY(!row.isInToolBar || !row.icon.isEmpty());
    }
}

NK_TEST_MAIN(TestPanelCommands)
#include "test_panel_commands.moc"
