#include "ViewportFixture.h"

#include <TestMain.h>
#include <nkKernelServices/nkInternalUiService.h>

using How = ViewportSelection::How;

/// The selection of the viewport is the scene graph's.
class TestViewportSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aChoiceGoesToTheSceneGraphOnce();
    void aChoiceMovesTheLastSelectionBeforeItIsTold();
    void whatOthersSelectIsShownAndMovesNothing();
    void addsAndTogglesInTheOrderOfSelection();
    void bringsTheChoiceIntoViewInTheSceneGraph();
    void showMetadataTellsTheEditor();
    void showMetadataMakesTheSceneGraphTheLastSelection();
};

void TestViewportSelection::aChoiceGoesToTheSceneGraphOnce()
{
    const ViewportFixture f;
    ViewportSelection selection;
    QSignalSpy told(&nkScenegraphService::the(), &nkScenegraphService::selectionChanged);
    QSignalSpy changed(&selection, &ViewportSelection::changed);
    selection.choose(f.idsOf({"Right", "Eye"}), How::Replace);
    QCOMPARE(told.count(), 1);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(f.selection(), QStringList({"Right", "Eye"}));
    QCOMPARE(selection.ids(), f.idsOf({"Right", "Eye"}));
}

void TestViewportSelection::aChoiceMovesTheLastSelectionBeforeItIsTold()
{
    const ViewportFixture f;
    ViewportSelection selection;
    int lastWhenTold = -1;
    QSignalSpy moved(&nkMetadataModuleSelection::the(),
                     &nkMetadataModuleSelection::lastSelectionModuleChanged);
    connect(&nkScenegraphService::the(), &nkScenegraphService::selectionChanged, &selection,
            [&lastWhenTold] { lastWhenTold = ViewportFixture::last(); });
    selection.choose(f.idsOf({"Right"}), How::Replace);
    QCOMPARE(lastWhenTold, 0);
    QCOMPARE(moved.count(), 1);
}

void TestViewportSelection::whatOthersSelectIsShownAndMovesNothing()
{
    const ViewportFixture f;
    ViewportSelection selection;
    QSignalSpy told(&nkScenegraphService::the(), &nkScenegraphService::selectionChanged);
    QSignalSpy changed(&selection, &ViewportSelection::changed);
    f.select({"Left"});
    QCOMPARE(told.count(), 1); // and not once more from here
    QCOMPARE(changed.count(), 1);
    QCOMPARE(selection.ids(), f.idsOf({"Left"}));
    QCOMPARE(f.last(), 1);
}

void TestViewportSelection::addsAndTogglesInTheOrderOfSelection()
{
    const ViewportFixture f;
    ViewportSelection selection;
    selection.choose(f.idsOf({"Lamp", "Left"}), How::Replace);
    selection.choose(f.idsOf({"Right", "Lamp"}), How::Add);
    QCOMPARE(f.selection(), QStringList({"Lamp", "Left", "Right"}));
    selection.choose(f.idsOf({"Left", "Eye"}), How::Toggle);
    QCOMPARE(f.selection(), QStringList({"Lamp", "Right", "Eye"}));
    selection.choose({}, How::Add);
    QCOMPARE(f.selection().size(), 3);
    selection.choose({}, How::Replace);
    QCOMPARE(f.selection(), QStringList());
}

void TestViewportSelection::bringsTheChoiceIntoViewInTheSceneGraph()
{
    const ViewportFixture f;
    ViewportSelection selection;
    QSignalSpy scrolled(&nkScenegraphService::the(), &nkScenegraphService::scrollToSelectedRequested);
    f.select({"Left"});
    QCOMPARE(scrolled.count(), 0);
    selection.choose(f.idsOf({"Right"}), How::Replace);
    QCOMPARE(scrolled.count(), 1);
}

void TestViewportSelection::showMetadataTellsTheEditor()
{
    const ViewportFixture f;
    ViewportSelection selection;
    selection.choose(f.idsOf({"Right"}), How::Replace);
    QSignalSpy asked(&nkInternalUiService::the(),
                     &nkInternalUiService::requestMetadataEditorSelectionModeInLowerTree);
    QSignalSpy wanted(&selection, &ViewportSelection::metadataRequested);
    QSignalSpy told(&nkScenegraphService::the(), &nkScenegraphService::selectionChanged);
    selection.showMetadata();
    QCOMPARE(asked.count(), 1);
    QCOMPARE(wanted.count(), 1);
    QCOMPARE(told.count(), 0);
}

void TestViewportSelection::showMetadataMakesTheSceneGraphTheLastSelection()
{
    const ViewportFixture f;
    ViewportSelection selection;
    f.select({"Left"});
    QCOMPARE(f.last(), 1);
    selection.showMetadata();
    QCOMPARE(f.last(), 0);
    QCOMPARE(f.selection(), QStringList{"Left"});
}

NK_TEST_MAIN(TestViewportSelection)
#include "test_viewport_selection.moc"
