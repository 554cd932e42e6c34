#include "frame/nkMetadataEditorMenubar.h"

#include "actions/nkMetadataActions.h"

nkMetadataEditorMenubar::nkMetadataEditorMenubar(QWidget *parent) : QMenuBar(parent)
{
    nkMetadataActions *const actions = nkMetadataActions::instance();
    add(&m_fileMenu, tr("File"));
    m_fileMenu.addAction(actions->loadMetadataAction());
    m_fileMenu.addAction(actions->saveMetadataAction());
    add(&m_editMenu, tr("Edit"));
    fillEdit(actions);
    add(&m_createMenu, tr("Create"));
    m_createMenu.addAction(actions->createSetAction());
    m_createMenu.addMenu(actions->createEntryMenu());
    add(&m_selectionMenu, tr("Selection"));
    fillSelection(actions);
    add(&m_windowMenu, tr("Window"));
    m_windowMenu.addAction(actions->focusModeAction());
}

nkMetadataEditorMenubar::~nkMetadataEditorMenubar() = default;

void nkMetadataEditorMenubar::add(QMenu *menu, const QString &title)
{
    menu->setTitle(title);
    menu->setTearOffEnabled(true);
    addMenu(menu);
}

void nkMetadataEditorMenubar::fillEdit(nkMetadataActions *actions)
{
    m_editMenu.addActions({actions->renameAction(), actions->copyAction(), actions->pasteAction(),
                           actions->duplicateAction(), actions->deleteAction()});
    m_editMenu.addSeparator();
    m_editMenu.addActions({actions->lockAction(), actions->unlockAction()});
    m_editMenu.addSeparator();
    m_editMenu.addMenu(actions->assignMenu());
    m_editMenu.addActions({actions->removeSelectedAssignmentsAction(), actions->removeAllAssignmentsAction(),
                           actions->deleteAllEntriesAction()});
}

void nkMetadataEditorMenubar::fillSelection(nkMetadataActions *actions)
{
    m_selectionMenu.addActions(actions->selectObjectsMenu()->actions());
    m_selectionMenu.addSeparator();
    m_selectionMenu.addActions(
        {actions->selectAllAction(), actions->deselectAllAction(), actions->invertSelectionAction()});
}
