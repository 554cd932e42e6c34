#include "frame/nkMetadataEditorModule.h"

#include "actions/nkMetadataActions.h"
#include "actions/nkMetadataActionsHandler.h"
#include "frame/nkMetadataEditorUpdater.h"
#include "table/nkMetadataKeyValueModel.h"
#include "table/nkMetadataKeyValueRootModelItem.h"
#include "table/nkMetadataKeyValueTreeView.h"
#include "tree/nkMetadataTreeWidget.h"

#include <nkKernelServices/nkAssetsService.h>
#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkObjectService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>

#include <QAction>
#include <QCoreApplication>
#include <QEvent>
#include <QItemSelectionModel>
#include <QMenu>
#include <QTimer>

// How the window follows the host's changes.

void nkMetadataEditorModule::createUpdater()
{
    m_updater = new nkMetadataEditorUpdater;
    m_updater->setEnabled(false);
    connect(m_updater, &QNKUpdateScheduler::updateScheduled, this,
            &nkMetadataEditorModule::onUpdateScheduled);
    connect(m_updater, &QNKUpdateScheduler::enabled, m_updater,
            [updater = m_updater] { updater->requestUpdate(nkMetadataUpdate::AllButSelectionLists); });
}

void nkMetadataEditorModule::connectHost()
{
    connect(&nkObjectService::the(), &nkObjectService::propertyChanged, this,
            &nkMetadataEditorModule::onPropertyChanged);
    connect(&nkAssetsService::the(), &nkAssetsService::assetsChanged, this, [this] {
        m_updater->requestUpdate(nkMetadataUpdate::Table);
        m_updater->requestUpdate(nkMetadataUpdate::BothTrees);
    });
    connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, this,
            &nkMetadataEditorModule::onMetadataChanged);
    connect(&nkMetadataService::the(), &nkMetadataService::selectionChanged, m_upperTree,
            &nkMetadataTreeWidget::selectObjects);
    // The host must not find the trees changed inside the call in which it asks.
    connect(&nkInternalUiService::the(), &nkInternalUiService::requestMetadataEditorSelectionModeInLowerTree,
            this, [this] { QTimer::singleShot(0, this, &nkMetadataEditorModule::showLastSelection); });
    connectEditorSelections();
}

void nkMetadataEditorModule::showLastSelection()
{
    m_upperTree->clearSelection();
    if (m_lowerTree->getMode() == TreeMode::LastSelection) {
        // The selection that the host means may not have been delivered to the list yet.
        m_lowerTree->reload();
    }
    m_lowerTree->setMode(TreeMode::LastSelection);
    m_lowerTree->getTreeView()->selectAll();
}

void nkMetadataEditorModule::connectEditorSelections()
{
    const auto requestLists = [this] { m_updater->requestUpdate(nkMetadataUpdate::SelectionLists); };
    connect(&nkScenegraphService::the(), &nkScenegraphService::selectionChanged, this, requestLists);
    connect(&nkMaterialService::the(), &nkMaterialService::selectionChanged, this, requestLists);
    connect(&nkLightService::the(), &nkLightService::nodeSelectionChanged, this, requestLists);
    connect(&nkCameraService::the(), &nkCameraService::selectionChanged, this, requestLists);
    connect(&nkSceneplateService::the(), &nkSceneplateService::nodesSelected, this, requestLists);
}

void nkMetadataEditorModule::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    m_updater->enable();
}

void nkMetadataEditorModule::hideEvent(QHideEvent *event)
{
    m_updater->disable();
    QMainWindow::hideEvent(event);
}

void nkMetadataEditorModule::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    // The table remembers its text colours, which come from the palette.
    if (event->type() == QEvent::PaletteChange && m_updater) {
        m_updater->requestUpdate(nkMetadataUpdate::Table);
    }
}

void nkMetadataEditorModule::onPropertyChanged(const nkdObject &object, const QString &property)
{
    if (object.isTypeOf(nkdMetadataEntry::staticMetaObject)) {
        m_updater->requestUpdate(nkMetadataUpdate::Table);
        m_updater->requestUpdate(nkMetadataUpdate::PropertyPanel);
        return;
    }
    const bool isRenamedObject = property == QLatin1String("name")
                                 && (object.isTypeOf(nkdNode::staticMetaObject)
                                     || object.isTypeOf(nkdMaterial::staticMetaObject));
    if (isRenamedObject || object.isTypeOf(nkdMetadataSet::staticMetaObject)) {
        m_updater->requestUpdate(nkMetadataUpdate::UpperTree);
        m_updater->requestUpdate(nkMetadataUpdate::LowerTree);
        m_updater->requestUpdate(nkMetadataUpdate::Table);
    }
}

void nkMetadataEditorModule::onMetadataChanged(nkMetadataTypes::ChangeFlag flags)
{
    m_actions->handler()->updateActionStates();
    if (flags & (nkMetadataTypes::SetsChanged | nkMetadataTypes::AssignmentsChanged)) {
        m_updater->requestUpdate(nkMetadataUpdate::BothTrees);
    }
    if (flags & nkMetadataTypes::EntriesChanged) {
        m_updater->requestUpdate(nkMetadataUpdate::Table);
        m_updater->requestUpdate(nkMetadataUpdate::PropertyPanel);
    }
}

void nkMetadataEditorModule::onUpdateScheduled(uint bits)
{
    if (bits & nkMetadataUpdate::UpperTree) {
        m_upperTree->reload();
    }
    if (bits & nkMetadataUpdate::LowerTree) {
        m_lowerTree->reload();
    }
    if (bits & nkMetadataUpdate::Table) {
        reloadTable();
    }
    if (bits & nkMetadataUpdate::PropertyPanel) {
        updatePropertyEditor(false);
    }
    if (bits & nkMetadataUpdate::SelectionLists) {
        reloadSelectionLists();
    }
}

void nkMetadataEditorModule::reloadTable()
{
    m_keyValueView->setSortingEnabled(false);
    m_keyValueModel->reload();
    m_keyValueView->setSortingEnabled(true);
    m_keyValueView->setEmptyText(tableHint());
}

QString nkMetadataEditorModule::tableHint() const
{
    if (m_keyValueModel->rowCount() > 0) {
        return tr("No entry matches the filters.");
    }
    if (m_actions->focusModeAction()->isChecked()) {
        return tr("The list that had the focus last has no entries.");
    }
    const auto hasSelection = [](const nkMetadataTreeWidget *tree) {
        return tree->getTreeView()->selectionModel()->hasSelection();
    };
    // Objects without metadata are selected and yet bring no set.
    if (m_rootItem->sets().isEmpty() && !hasSelection(m_upperTree) && !hasSelection(m_lowerTree)) {
        return tr("Select sets or objects to see their entries.");
    }
    return tr("No entries. Create one with %1 > %2.")
        .arg(QCoreApplication::translate("nkMetadataEditorMenubar", "Create"),
             m_actions->createEntryMenu()->title());
}

void nkMetadataEditorModule::reloadSelectionLists()
{
    const QList<nkMetadataTreeWidget *> trees = treeWidgets();
    for (nkMetadataTreeWidget *tree : trees) {
        if (tree->getMode() == TreeMode::LastSelection) {
            tree->reload();
        }
    }
}
