#include "frame/nkMetadataEditorModule.h"

#include "actions/nkMetadataActions.h"
#include "actions/nkMetadataActionsHandler.h"
#include "frame/nkMetadataContextMenu.h"
#include "frame/nkMetadataEditorMenubar.h"
#include "frame/nkMetadataEditorUpdater.h"
#include "frame/nkMetadataQuickActions.h"
#include "frame/nkMetadataSelectedEntries.h"
#include "frame/nkMetadataTabOrder.h"
#include "frame/nkMetadataTableColumnTexts.h"
#include "frame/nkMetadataTableEntries.h"
#include "frame/nkMetadataTableFilters.h"
#include "table/nkMetadataIconDelegate.h"
#include "table/nkMetadataIconFilterBar.h"
#include "table/nkMetadataKeyDelegate.h"
#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataKeyValueHeader.h"
#include "table/nkMetadataKeyValueModel.h"
#include "table/nkMetadataKeyValueRootModelItem.h"
#include "table/nkMetadataKeyValueTreeView.h"
#include "table/nkMetadataSearchBar.h"
#include "table/nkMetadataTableFilterModel.h"
#include "table/nkMetadataValueDelegate.h"
#include "table/nkMetadataValueTypeDelegate.h"
#include "tree/nkMetadataTreeWidget.h"

#include <nkKernelServices/nkMainWindowService.h>
#include <nkKernelServices/nkQueryService.h>
#include <nkKernelServicesGUI/nkAdvancedSearch.h>
#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>
#include <nkKernelServicesGUI/nkBaseControl.h>
#include <nkKernelServicesGUI/nkMetadataSetItemFilter.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>
#include <nkKernelServicesGUI/nkPropertyEditorWidget.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QItemSelectionModel>
#include <QTimer>
#include <QVBoxLayout>

using namespace nkMetadataKeyValue;

namespace {

nkMetadataEditorModule *theWindow = nullptr;

/// Stacks the widgets in the frame, without margins; the last takes the height the others leave.
void fillFrame(QFrame *frame, const QList<QWidget *> &widgets)
{
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget *widget : widgets) {
        layout->addWidget(widget, widget == widgets.last() ? 1 : 0);
    }
}

/// The editor's number among the modules that search.
constexpr int searchModule = 5;

/// The control of a property; one that is not shown is left out.
void enableControl(const nkPropertyEditorWidget *panel, const char *property, bool isEnabled)
{
    if (nkBaseControl *control = panel->getControl(QLatin1String(property))) {
        control->setEnabled(isEnabled);
    }
}

} // namespace

nkMetadataEditorModule::nkMetadataEditorModule(QWidget *parent, const QString &objectName)
    : QMainWindow(parent)
{
    theWindow = this;
    setObjectName(objectName);
    // First of all children: its actions are children of the window too, and go with the catalogue before them.
    m_actions = new nkMetadataActions(this);
    m_contextMenu = new nkMetadataContextMenu(this);
    setupUi(this);
    setMenuBar(new nkMetadataEditorMenubar(this));
    m_horizontalSplitter->setSizes({10, 20});
    createUpdater();
    createTrees();
    createAdvancedSearch();
    createTable();
    createPropertyPanel();
    createQuickActionBar();
    nkMetadataTabOrder::follow({m_advancedSearch->getWidget(), m_upperTree, m_lowerTree});
    connectHost();
    m_actions->handler()->updateActionStates();
    registerWithHost();
}

nkMetadataEditorModule::~nkMetadataEditorModule()
{
    delete m_tableFilterModel;
    delete m_keyValueModel;
    delete m_updater;
    delete m_propertyEditor;
    theWindow = nullptr;
}

nkMetadataEditorModule *nkMetadataEditorModule::instance()
{
    return theWindow;
}

QList<nkMetadataTreeWidget *> nkMetadataEditorModule::treeWidgets() const
{
    return {m_upperTree, m_lowerTree};
}

void nkMetadataEditorModule::createTrees()
{
    m_upperTree = new nkMetadataTreeWidget(this);
    m_upperTree->setMode(TreeMode::Sets);
    m_upperTree->setHasLastFocus(true);
    fillFrame(m_upperTreeFrame, {m_upperTree});
    m_lowerTree = new nkMetadataTreeWidget(this);
    m_lowerTree->setMode(TreeMode::LastSelection);
    fillFrame(m_lowerTreeFrame, {m_lowerTree});
    connectTree(m_upperTree, m_lowerTree);
    connectTree(m_lowerTree, m_upperTree);
}

void nkMetadataEditorModule::connectTree(nkMetadataTreeWidget *tree, nkMetadataTreeWidget *other)
{
    connect(tree, &nkMetadataTreeWidget::metadataSelectionChanged, this,
            &nkMetadataEditorModule::onMetadataSelectionChanged);
    connect(tree, &nkMetadataTreeWidget::treeFocusChanged, this, [this, tree, other](bool hasFocus) {
        if (hasFocus) {
            other->clearSelection();
            other->setHasLastFocus(false);
            tree->setHasLastFocus(true);
        }
        m_actions->handler()->updateActionStates();
    });
    connect(tree, &nkMetadataTreeWidget::showContextMenu, this, &nkMetadataEditorModule::onShowContextMenu);
}

void nkMetadataEditorModule::onShowContextMenu(const QPoint &pos)
{
    m_contextMenu->hideTearOffMenu();
    m_contextMenu->exec(pos);
}

void nkMetadataEditorModule::createAdvancedSearch()
{
    m_setItemFilter = new nkMetadataSetItemFilter(this);
    auto *proxy = qobject_cast<QNKCustomFilterProxyModel *>(m_upperTree->getTreeView()->model());
    proxy->addCustomFilter(m_setItemFilter);
    m_advancedSearch = new nkAdvancedSearch(searchModule, m_upperTree->findChild<nkMetadataIconFilterBar *>(),
                                            this);
    connect(m_advancedSearch, &nkAdvancedSearch::searchChanged, this,
            &nkMetadataEditorModule::onSearchChanged);
    const nkQueryService *service = &nkQueryService::the();
    connect(service, &nkQueryService::asyncMetadataQueryStarted, this,
            [this] { m_advancedSearch->getSearchBar()->setState(nkAdvancedSearchBar::Running); });
    connect(service, &nkQueryService::asyncMetadataQueryFinished, this,
            &nkMetadataEditorModule::onSearchFinished);
    QWidget *bar = m_advancedSearch->getWidget();
    // No higher than it needs to be, as the frame it stands for.
    bar->setSizePolicy(m_searchFrame->sizePolicy());
    delete centralwidget->layout()->replaceWidget(m_searchFrame, bar, Qt::FindChildrenRecursively);
    delete m_searchFrame;
    m_searchFrame = nullptr;
}

void nkMetadataEditorModule::onSearchChanged(bool enabled, const QString &query)
{
    m_setItemFilter->setEnabled(enabled);
    if (enabled) {
        nkQueryService::the().startAsyncMetadataQuery(query);
    } else {
        nkQueryService::the().cancelAsyncMetadataQuery();
    }
}

void nkMetadataEditorModule::onSearchFinished(bool ok, const QList<nkdMetadataSet> &sets)
{
    m_advancedSearch->getSearchBar()->setState(ok ? nkAdvancedSearchBar::Succeeded
                                                  : nkAdvancedSearchBar::Failed);
    m_setItemFilter->setMetadataSets(sets);
}

void nkMetadataEditorModule::createTable()
{
    createTableModel();
    createTableView();
    createTableDelegates();
    createTableFilters();
    connect(m_keyValueView, &nkMetadataKeyValueTreeView::copyEntries, this,
            &nkMetadataEditorModule::copyEntries);
    connect(m_keyValueView, &nkMetadataKeyValueTreeView::pasteEntries, this,
            &nkMetadataEditorModule::pasteEntries);
    connect(m_keyValueView, &nkMetadataKeyValueTreeView::deleteEntries, this,
            &nkMetadataEditorModule::deleteEntries);
    connect(m_actions->handler(), &nkMetadataActionsHandler::entryCreated, this,
            [this](const nkdMetadataEntry &entry) { onEntryCreated(entry, entry.getSet()); });
    m_tableHeader->initialise();
    m_keyValueView->setEmptyText(tableHint());
}

void nkMetadataEditorModule::createTableModel()
{
    m_rootItem = new nkMetadataKeyValueRootModelItem;
    m_keyValueModel = new nkMetadataKeyValueModel;
    m_keyValueModel->setHeader(nkMetadataTableColumnTexts::titles());
    m_keyValueModel->setRootItem(m_rootItem);
    nkMetadataTableColumnTexts::explain(m_keyValueModel);
    m_tableFilterModel = new nkMetadataTableFilterModel;
    m_tableFilterModel->setSourceModel(m_keyValueModel);
}

void nkMetadataEditorModule::createTableView()
{
    m_keyValueView = new nkMetadataKeyValueTreeView(this);
    m_keyValueView->setAccessibleName(tr("Metadata entries"));
    m_keyValueView->setModel(m_tableFilterModel);
    m_tableHeader = new nkMetadataKeyValueHeader(m_keyValueView, this);
    m_keyValueView->setHeader(m_tableHeader);
    m_keyValueView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_keyValueView->setCreateEntryMenu(m_actions->createEntryMenu());
    connect(m_keyValueView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &nkMetadataEditorModule::onTableSelectionChanged);
}

void nkMetadataEditorModule::createTableDelegates()
{
    const auto install = [this](int column, std::unique_ptr<QAbstractItemDelegate> delegate) {
        m_keyValueView->setItemDelegateForColumn(column, delegate.get());
        m_delegates.push_back(std::move(delegate));
    };
    install(IconColumn, std::make_unique<nkMetadataIconDelegate>());
    install(KeyColumn, std::make_unique<nkMetadataKeyDelegate>());
    install(ValueColumn, std::make_unique<nkMetadataValueDelegate>());
    install(TypeColumn, std::make_unique<nkMetadataValueTypeDelegate>());
}

void nkMetadataEditorModule::createTableFilters()
{
    auto *row = new nkMetadataSearchBar(m_tableHeader, this);
    m_tableFilters = new nkMetadataTableFilters(m_tableFilterModel, row);
    row->setWidgets(m_tableFilters->widgets());
    fillFrame(m_keyValueFrame, {row, m_keyValueView});
    connect(m_tableHeader, &nkMetadataKeyValueHeader::columnVisibilityChanged, m_tableFilters,
            [filters = m_tableFilters](int column, bool isShown) {
                if (!isShown) {
                    filters->clear(column);
                }
            });
}

void nkMetadataEditorModule::createPropertyPanel()
{
    m_propertyEditor = new nkPropertyEditorWidget(this, {}, false, false);
    m_propertyEditor->setDocumentMode(true);
    fillFrame(m_propertyFrame, {m_propertyEditor});
    m_keyValueFrame->setMinimumWidth(m_propertyEditor->minimumWidth());
    m_propertyFrame->hide();
}

void nkMetadataEditorModule::onTableSelectionChanged()
{
    const bool hasSelection = m_keyValueView->selectionModel()->hasSelection();
    const bool appears = hasSelection && m_propertyFrame->isHidden();
    m_propertyFrame->setVisible(hasSelection);
    updatePropertyEditor(true);
    if (appears) {
        // The panel takes its room from the table with the next events, perhaps from the very row.
        QTimer::singleShot(0, m_keyValueView,
                           [view = m_keyValueView] { view->scrollTo(view->currentIndex()); });
    }
}

void nkMetadataEditorModule::updatePropertyEditor(bool force)
{
    if (!m_propertyEditor || (!force && !m_propertyEditor->isVisible())) {
        return;
    }
    const auto selected = nkMetadataSelectedEntries::of(nkMetadataTableEntries::selectedRows(m_keyValueView));
    m_propertyEditor->setCurrentObjects(selected.wrappers, false);
    enableControl(m_propertyEditor, "key", !selected.shareASet);
    enableControl(m_propertyEditor, "value", !selected.hasTag);
    enableControl(m_propertyEditor, "valueType", !selected.hasTag);
    m_propertyEditor->resize();
    m_propertyEditor->setEnabled(selected.areEditable);
    m_propertyFrame->setFixedHeight(m_propertyEditor->height());
}

void nkMetadataEditorModule::createQuickActionBar()
{
    m_createAction = nkMetadataQuickActions::makeCreateAction(this);
    m_quickActionBar = nkMetadataQuickActions::makeBar(this, m_createAction);
    connect(m_actions->handler(), &nkMetadataActionsHandler::graphFocusedAction, this,
            &nkMetadataEditorModule::setFocusMode);
}

void nkMetadataEditorModule::setFocusMode(bool on)
{
    m_rootItem->setSets({});
    const QList<nkMetadataTreeWidget *> trees = treeWidgets();
    for (nkMetadataTreeWidget *tree : trees) {
        tree->setFocusMode(on);
    }
    reloadTable();
}

void nkMetadataEditorModule::registerWithHost()
{
    // Texts that the host keeps are copied to the heap: literals of the plug-in go when it is unloaded.
    nkMainWindowService::the().registerModule(
        QString(QLatin1String("Metadata Editor")), QString(QLatin1String("Scene")), this,
        QString(QLatin1String("Toolclip_Metadata")),
        nkIconManager::getIcon(QString(QLatin1String("ModuleMetadataEditor")), QString()), tr("Metadata"),
        false);
}

void nkMetadataEditorModule::onMetadataSelectionChanged(const QList<nkdMetadataSet> &sets)
{
    m_rootItem->setSets(sets);
    reloadTable();
}

void nkMetadataEditorModule::copyEntries()
{
    nkMetadataTableEntries::copy(nkMetadataTableEntries::selectedRows(m_keyValueView));
}

void nkMetadataEditorModule::pasteEntries()
{
    nkMetadataTableEntries::paste();
}

void nkMetadataEditorModule::deleteEntries()
{
    nkMetadataTableEntries::remove(nkMetadataTableEntries::selectedRows(m_keyValueView));
    m_updater->requestUpdate(nkMetadataUpdate::PropertyPanel);
}

void nkMetadataEditorModule::onEntryCreated(const nkdMetadataEntry &entry, const nkdMetadataSet &set)
{
    if (entry.isNull()) {
        return;
    }
    m_rootItem->addSets({set});
    reloadTable();
    const QModelIndex cell = m_tableFilterModel->mapFromSource(
        m_keyValueModel->indexFromId(entry.getObjectId(), KeyColumn));
    if (cell.isValid()) {
        m_keyValueView->scrollTo(cell, QAbstractItemView::EnsureVisible);
        m_keyValueView->setCurrentIndex(cell);
        m_keyValueView->edit(cell);
    }
}
