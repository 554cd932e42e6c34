#include "tree/nkMetadataTreeCommands.h"

#include "actions/nkMetadataActions.h"
#include "actions/nkMetadataActionsHandler.h"
#include "tree/nkMetadataTreeWidget.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include <QAbstractProxyModel>
#include <QItemSelectionModel>
#include <QPair>

using Handler = nkMetadataActionsHandler;

namespace {

using Assignment = QPair<nkdMetadataSet, nkdSceneObject>;

/// The title of an undo step of the editor. Made on the heap: the host keeps it.
nkUndoString undoTitle(const QString &title)
{
    return nkUndoString(title, QString::fromLatin1("Metadata Editor"), QString());
}

/// The assignment that a row shows; null members where it shows none.
Assignment assignmentOf(const nkMetadataTreeView *view, const QModelIndex &index, TreeMode mode)
{
    const nkdObject own = view->getObject(index);
    const nkdObject above = view->getObject(index.parent());
    if (mode == TreeMode::Sets) {
        return {nkdMetadataSet(above), nkdSceneObject(own)};
    }
    return {nkdMetadataSet(own), nkdSceneObject(above)};
}

/// Handles only: removing the first assignment may bring a reload, and rows do not outlive that.
QList<Assignment> selectedAssignments(const nkMetadataTreeView *view, TreeMode mode)
{
    QList<Assignment> assignments;
    const QModelIndexList indexes = view->selectionModel()->selectedIndexes();
    for (const QModelIndex &index : indexes) {
        const Assignment assignment = assignmentOf(view, index, mode);
        if (!assignment.first.isNull() && !assignment.second.isNull()) {
            assignments.append(assignment);
        }
    }
    return assignments;
}

// The kinds of nkMetadataTreeView::getSelectedObjects.
constexpr int sceneObjects = 3;
constexpr int metadataSets = 4;

void removeFromAllObjects(const QList<nkdObject> &sets)
{
    for (const nkdObject &object : sets) {
        const nkdMetadataSet set(object);
        nkMetadataService::the().removeAssignments({set}, set.getObjects());
    }
}

void removeAllSets(const QList<nkdObject> &objects)
{
    for (const nkdObject &object : objects) {
        const nkdSceneObject carrier(object);
        nkMetadataService::the().removeAssignments(nkdMetadata::fromObject(carrier).getSets(), {carrier});
    }
}

} // namespace

nkMetadataTreeCommands::nkMetadataTreeCommands(nkMetadataTreeWidget *tree, nkMetadataTreeModel *model)
    : QObject(tree), m_tree(tree), m_model(model), m_view(tree->getTreeView())
{
    if (nkMetadataActions::instance()) {
        addActions();
        connectHandler();
    }
}

nkMetadataTreeCommands::~nkMetadataTreeCommands() = default;

void nkMetadataTreeCommands::addActions()
{
    nkMetadataActions *const actions = nkMetadataActions::instance();
    m_view->addActions({actions->selectAllEditorsAction(), actions->createSetAction(),
                        actions->renameAction(), actions->copyAction(), actions->pasteAction(),
                        actions->duplicateAction(), actions->deleteAction(),
                        actions->removeSelectedAssignmentsAction()});
}

void nkMetadataTreeCommands::connectHandler()
{
    using Commands = nkMetadataTreeCommands;
    const Handler *const handler = nkMetadataActions::instance()->handler();
    connect(handler, &Handler::setCreated, this, &Commands::onSetCreated);
    connect(handler, &Handler::entryCreated, this, &Commands::onEntryCreated);
    connect(handler, &Handler::renameSet, this, &Commands::rename);
    connect(handler, &Handler::removeSelectedAssignments, this, &Commands::removeSelectedAssignments);
    connect(handler, &Handler::removeAllAssignments, this, &Commands::removeAllAssignments);
    connect(handler, &Handler::selectAll, this, &Commands::selectAll);
    connect(handler, &Handler::deselectAll, this, &Commands::deselectAll);
    connect(handler, &Handler::invertSelection, this, &Commands::invertSelection);
}

bool nkMetadataTreeCommands::hasFocus() const
{
    return m_view->window()->focusWidget() == m_view;
}

QModelIndex nkMetadataTreeCommands::viewIndexOf(const QString &rowId) const
{
    const QModelIndex index = m_model->indexFromId(rowId, 0);
    const auto *proxy = qobject_cast<const QAbstractProxyModel *>(m_view->model());
    return proxy ? proxy->mapFromSource(index) : index;
}

void nkMetadataTreeCommands::onSetCreated(const nkdMetadataSet &set, const nkdSceneObject &object)
{
    m_tree->reload();
    if (!hasFocus()) {
        return;
    }
    QString rowId = QString::number(set.getObjectId());
    if (!object.isNull()) {
        rowId += QString::number(object.getObjectId());
    }
    if (!m_model->indexFromId(rowId, 0).isValid()) {
        return;
    }
    // The second reload is meant.
    m_tree->reload();
    const QModelIndex index = viewIndexOf(rowId);
    if (index.isValid()) {
        m_view->setCurrentIndex(index);
        rename();
    }
}

void nkMetadataTreeCommands::onEntryCreated()
{
    const QItemSelection selection = m_view->selectionModel()->selection();
    const auto *proxy = qobject_cast<const QAbstractProxyModel *>(m_view->model());
    m_model->reloadIndices((proxy ? proxy->mapSelectionToSource(selection) : selection).indexes());
}

void nkMetadataTreeCommands::rename()
{
    const QModelIndex index = m_view->currentIndex();
    // Asking a view to edit what cannot be edited prints a warning.
    if (hasFocus() && index.flags().testFlag(Qt::ItemIsEditable)) {
        m_view->edit(index);
    }
}

void nkMetadataTreeCommands::selectAll()
{
    if (hasFocus()) {
        m_view->selectAll();
    }
}

void nkMetadataTreeCommands::deselectAll()
{
    if (hasFocus()) {
        m_view->clearSelection();
    }
}

void nkMetadataTreeCommands::invertSelection()
{
    const QAbstractItemModel *model = m_view->model();
    if (!hasFocus() || model->rowCount() == 0) {
        return;
    }
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(undoTitle(nkMetadataTreeWidget::tr("Invert selection")), true);
    const QItemSelection topLevel(model->index(0, 0),
                                  model->index(model->rowCount() - 1, model->columnCount() - 1));
    m_view->selectionModel()->select(topLevel, QItemSelectionModel::Toggle);
}

void nkMetadataTreeCommands::removeSelectedAssignments()
{
    if (!m_view->selectionModel()->hasSelection()) {
        return;
    }
    const QList<Assignment> assignments = selectedAssignments(m_view, m_tree->getMode());
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(undoTitle(nkMetadataTreeWidget::tr("Remove Selected Assignments")),
                                       true);
    for (const Assignment &assignment : assignments) {
        nkMetadataService::the().removeAssignments({assignment.first}, {assignment.second});
    }
}

void nkMetadataTreeCommands::removeAllAssignments()
{
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(undoTitle(nkMetadataTreeWidget::tr("Remove All Assignments")), true);
    if (m_tree->getMode() == TreeMode::Sets) {
        removeFromAllObjects(m_view->getSelectedObjects(metadataSets));
    } else {
        removeAllSets(m_view->getSelectedObjects(sceneObjects));
    }
}
