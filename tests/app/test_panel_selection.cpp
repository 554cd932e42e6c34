#include "PanelFixture.h"

#include <TestMain.h>
#include <nkKernelServices/nkInternalUiService.h>

#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>

/// The panels of the editors and the selections of their services, in both directions.
class TestPanelSelection : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aClickSelectsInTheServiceOnceAndMovesTheLastSelection_data() { addPanelRows(); }
    void aClickSelectsInTheServiceOnceAndMovesTheLastSelection();
    void whatTheServiceSelectsIsShownAndMovesNothing_data() { addPanelRows(); }
    void whatTheServiceSelectsIsShownAndMovesNothing();
    void theLastSelectionHasMovedWhenTheServiceTells();
    void severalAreSelectedByKeysAndModifiersInTheirOrder();
    void aClickOnWhatIsSelectedMovesTheLastSelectionOnly();
    void theFocusAloneMovesNothing();
    void whatAListenerSelectsInsteadIsShown();
    void aDeletedObjectLeavesTheSelectionQuietly_data() { addPanelRows(); }
    void aDeletedObjectLeavesTheSelectionQuietly();
    void aScopeThatCreatesAndSelectsIsShown();
    void theSceneGraphScrollsOnlyWhenItIsAsked();
    void materialsScrollWhereTheSelectionWantsIt();
    void aListShowsWhatWasSelectedOutOfSight();
    void showMetadataTellsTheEditor();
    void showMetadataNeedsASelection();
};

void TestPanelSelection::aClickSelectsInTheServiceOnceAndMovesTheLastSelection()
{
    QFETCH(EditorModule, module);
    QFETCH(QString, second);
    PanelFixture f(module);
    f.show();
    f.click(second);
    QCOMPARE(f.selection(), QStringList{second});
    QCOMPARE(f.shownSelection(), QStringList{second});
    QCOMPARE(f.told, 1);
    QCOMPARE(f.viewChanges, 1);
    QCOMPARE(f.last(), int(module));
}

void TestPanelSelection::whatTheServiceSelectsIsShownAndMovesNothing()
{
    QFETCH(EditorModule, module);
    QFETCH(QString, first);
    QFETCH(QString, second);
    PanelFixture f(module);
    f.show();
    f.service.select(f.idsOf({second, first}));
    const QStringList shown = f.shownSelection();
    QCOMPARE(QSet<QString>(shown.cbegin(), shown.cend()), QSet<QString>({first, second}));
    QCOMPARE(f.selection(), QStringList({second, first}));
    QCOMPARE(f.told, 1);
    QCOMPARE(f.viewChanges, 1);
    f.service.select(f.idsOf({second, first}));
    QCOMPARE(f.viewChanges, 1);
    f.service.select({});
    QCOMPARE(f.shownSelection(), QStringList());
    QCOMPARE(f.told, 3);
    QCOMPARE(f.last(), f.elsewhere());
}

void TestPanelSelection::theLastSelectionHasMovedWhenTheServiceTells()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    int lastWhenTold = -1;
    connect(&nkLightService::the(), &nkLightService::nodeSelectionChanged, f.panel.get(),
            [&] { lastWhenTold = PanelFixture::last(); });
    f.click(QStringLiteral("Sun"));
    QCOMPARE(lastWhenTold, int(EditorModule::Light));
}

void TestPanelSelection::severalAreSelectedByKeysAndModifiersInTheirOrder()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.service.select(f.idsOf({"Sun", "Lamp"}));
    f.forgetCounts();
    f.click(QStringLiteral("Arm"), Qt::ControlModifier);
    QCOMPARE(f.selection(), QStringList({"Sun", "Lamp", "Arm"}));
    f.click(QStringLiteral("Eye"));
    QCOMPARE(f.selection(), QStringList({"Eye"}));
    QTest::keyClick(f.view, Qt::Key_Down);
    QCOMPARE(f.selection(), QStringList({"Spare"}));
    QTest::keyClick(f.view, Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(f.selection(), QStringList({"Spare", "Lamp"}));
    QCOMPARE(f.told, 4);
    QCOMPARE(f.last(), int(EditorModule::Scenegraph));
    QTest::keyClick(f.view, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(f.selection().size(), 10);
    QCOMPARE(f.told, 5);
}

void TestPanelSelection::aClickOnWhatIsSelectedMovesTheLastSelectionOnly()
{
    PanelFixture f(EditorModule::Camera);
    f.show();
    f.service.select(f.idsOf({"Eye"}));
    f.forgetCounts();
    f.click(QStringLiteral("Eye"));
    QCOMPARE(f.last(), int(EditorModule::Camera));
    QCOMPARE(f.told, 1); // whoever lists the last selection hears of it
    QCOMPARE(f.viewChanges, 0);
    f.click(QStringLiteral("Eye"));
    QCOMPARE(f.told, 1);
    QCOMPARE(f.selection(), QStringList{"Eye"});
}

void TestPanelSelection::theFocusAloneMovesNothing()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    f.view->clearFocus();
    f.view->setFocus();
    QCOMPARE(f.told, 0);
    QCOMPARE(f.last(), f.elsewhere());
}

void TestPanelSelection::whatAListenerSelectsInsteadIsShown()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    bool once = true;
    connect(&nkLightService::the(), &nkLightService::nodeSelectionChanged, f.panel.get(), [&] {
        if (std::exchange(once, false)) {
            f.service.select(f.idsOf({"Lamp"}));
        }
    });
    f.click(QStringLiteral("Sun"));
    QCOMPARE(f.selection(), QStringList{"Lamp"});
    QCOMPARE(f.shownSelection(), QStringList{"Lamp"});
    QCOMPARE(f.told, 2);
}

void TestPanelSelection::aDeletedObjectLeavesTheSelectionQuietly()
{
    QFETCH(EditorModule, module);
    QFETCH(QString, rows);
    QFETCH(QString, first);
    QFETCH(QString, second);
    PanelFixture f(module);
    f.show();
    f.click(first);
    f.click(second, Qt::ControlModifier);
    nkMetadataModuleSelection::the().setLastSelectionModule(f.elsewhere());
    f.forgetCounts();
    QVERIFY(kernel::Document::the().deleteObjects(f.idsOf({second})));
    const QStringList left = module == EditorModule::Material ? QStringList{"Paints"} : QStringList{first};
    QCOMPARE(f.selection(), left);
    QCOMPARE(f.shownSelection(), left);
    QVERIFY(!f.rows().contains(second));
    QCOMPARE(f.told, 1);
    QCOMPARE(f.last(), f.elsewhere());
    QVERIFY(kernel::Document::the().undo());
    QCOMPARE(f.rows(), rows);
    QCOMPARE(f.shownSelection(), left);
    QCOMPARE(f.told, 1);
}

void TestPanelSelection::aScopeThatCreatesAndSelectsIsShown()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        f.ids.insert(QStringLiteral("New"),
                     loader.addObject(nkObjectType::Light, QStringLiteral("New"), f.id("Root")));
        f.service.select(f.idsOf({"New"}));
        loader.commit();
    }
    QCOMPARE(f.shownSelection(), QStringList{"New"});
    QCOMPARE(f.told, 1);
}

void TestPanelSelection::theSceneGraphScrollsOnlyWhenItIsAsked()
{
    PanelFixture f(EditorModule::Scenegraph);
    f.show();
    f.view->collapseAll();
    f.service.select(f.idsOf({"Hand"}));
    QVERIFY(!f.view->isExpanded(f.row(QStringLiteral("Root"))));
    QCOMPARE(f.shownSelection(), QStringList{"Hand"});
    nkScenegraphService::the().scrollToSelected();
    QVERIFY(f.view->isExpanded(f.row(QStringLiteral("Arm"))));
    const QRect place = f.view->visualRect(f.row(QStringLiteral("Hand")));
    QVERIFY(!place.isEmpty() && f.view->viewport()->rect().contains(place.center()));
    QCOMPARE(f.selection(), QStringList{"Hand"});
}

void TestPanelSelection::materialsScrollWhereTheSelectionWantsIt()
{
    PanelFixture f(EditorModule::Material);
    f.show();
    f.view->collapseAll();
    const QList<nkMaterialEntryId> blue{nkMaterialEntryId(nkdMaterial(nkdObject(f.id("Blue"))))};
    nkMaterialService::the().setSelection(blue, false, false);
    QVERIFY(!f.view->isExpanded(f.row(QStringLiteral("Paints"))));
    nkMaterialService::the().setSelection(blue, true, false);
    QVERIFY(f.view->isExpanded(f.row(QStringLiteral("Paints"))));
}

void TestPanelSelection::aListShowsWhatWasSelectedOutOfSight()
{
    PanelFixture f(EditorModule::Light);
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        for (int i = 0; i < 200; ++i) {
            f.ids.insert(QStringLiteral("far"), loader.addObject(nkObjectType::Light, QString::number(i)));
        }
        loader.commit();
    }
    f.show();
    f.service.select(f.idsOf({"far"}));
    const QRect place = f.view->visualRect(f.row(QStringLiteral("far")));
    QVERIFY(f.view->viewport()->rect().contains(place.center()));
    f.view->scrollToTop();
    f.service.select(f.idsOf({"far"})); // nothing new: a person may look elsewhere
    QCOMPARE(f.view->verticalScrollBar()->value(), 0);
}

void TestPanelSelection::showMetadataTellsTheEditor()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    f.service.select(f.idsOf({"Sun"}));
    f.forgetCounts();
    QSignalSpy asked(&nkInternalUiService::the(),
                     &nkInternalUiService::requestMetadataEditorSelectionModeInLowerTree);
    QSignalSpy wanted(f.panel.get(), &EditorPanel::metadataRequested);
    ModalAnswer answer = ModalAnswer::menu(QStringLiteral("Show Metadata"));
    Q_EMIT f.view->customContextMenuRequested(f.view->visualRect(f.row(QStringLiteral("Sun"))).center());
    QCOMPARE(asked.count(), 1);
    QCOMPARE(wanted.count(), 1);
    QCOMPARE(f.last(), int(EditorModule::Light));
    QCOMPARE(f.selection(), QStringList{"Sun"});
}

void TestPanelSelection::showMetadataNeedsASelection()
{
    PanelFixture f(EditorModule::Light);
    f.show();
    bool enabled = true;
    ModalAnswer answer = ModalAnswer::menu([&](QMenu *menu) {
        enabled = menu->actions().constFirst()->isEnabled();
        menu->close();
    });
    Q_EMIT f.view->customContextMenuRequested(QPoint(5, 300));
    QVERIFY(!enabled);
}

NK_TEST_MAIN(TestPanelSelection)
#include "test_panel_selection.moc"
