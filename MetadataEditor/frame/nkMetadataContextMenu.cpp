#include "frame/nkMetadataContextMenu.h"

#include "actions/nkMetadataActions.h"

nkMetadataContextMenu::nkMetadataContextMenu(QWidget *parent) : QMenu(parent)
{
    nkMetadataActions *const actions = nkMetadataActions::instance();
    setTitle(tr("Metadata Editor Menu"));
    setTearOffEnabled(true);
    addAction(actions->createSetAction());
    addMenu(actions->createEntryMenu());
    addSeparator();
    addMenu(actions->editMenu());
    addMenu(actions->assetMenu());
    addSeparator();
    addMenu(actions->selectObjectsMenu());
    addAction(actions->selectAllAction());
    addAction(actions->deselectAllAction());
    addAction(actions->invertSelectionAction());
    addSeparator();
    addMenu(actions->assignMenu());
    addAction(actions->removeSelectedAssignmentsAction());
    addAction(actions->removeAllAssignmentsAction());
    // The quick action bar has these two the other way round; both orders are meant.
    addAction(actions->deleteUnassignedSetsAction());
    addAction(actions->deleteAllEntriesAction());
    addSeparator();
    addAction(actions->loadMetadataAction());
    addAction(actions->saveMetadataAction());
}

nkMetadataContextMenu::~nkMetadataContextMenu() = default;
