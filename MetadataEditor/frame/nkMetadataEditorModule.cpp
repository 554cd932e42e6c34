#include "frame/nkMetadataEditorModule.h"

#include "actions/nkMetadataActions.h"
#include "actions/nkMetadataActionsHandler.h"
#include "frame/nkMetadataContextMenu.h"
#include "frame/nkMetadataEditorMenubar.h"
#include "frame/nkMetadataEditorUpdater.h"
#include "frame/nkMetadataTableEntries.h"
#include "frame/nkMetadataTableFilters.h"
#include "table/nkMetadataIconDelegate.h"
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

#include <nkKernelServices/nkAssetsService.h>
#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMainWindowService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkObjectService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QCoreApplication>
#include <QEvent>
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

QString iconInfo(const char *text)
{
    return QCoreApplication::translate("MetadataIconInfo", text);
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
    createUpdater();
    createTrees();
    createTable();
    connectActions();
    connectHost();
    m_actions->handler()->updateActionStates();
    registerWithHost();
}

nkMetadataEditorModule::~nkMetadataEditorModule()
{
    delete m_tableFilterModel;
    delete m_keyValueModel;
    delete m_updater;
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

void nkMetadataEditorModule::createUpdater()
{
    m_horizontalSplitter->setSizes({10, 20});
    m_updater = new nkMetadataEditorUpdater;
    m_updater->setEnabled(false);
    connect(m_updater, &QNKUpdateScheduler::updateScheduled, this,
            &nkMetadataEditorModule::onUpdateScheduled);
    connect(m_updater, &QNKUpdateScheduler::enabled, m_updater,
            [updater = m_updater] { updater->requestUpdate(nkMetadataUpdate::AllButSelectionLists); });
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

void nkMetadataEditorModule::connectActions()
{
    const nkMetadataActionsHandler *handler = m_actions->handler();
    connect(handler, &nkMetadataActionsHandler::graphFocusedAction, this,
            &nkMetadataEditorModule::setFocusMode);
    connect(handler, &nkMetadataActionsHandler::entryCreated, this,
            [this](const nkdMetadataEntry &entry) { onEntryCreated(entry, entry.getSet()); });
    m_keyValueView->setCreateEntryMenu(m_actions->createEntryMenu());
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

void nkMetadataEditorModule::onShowContextMenu(const QPoint &pos)
{
    m_contextMenu->hideTearOffMenu();
    m_contextMenu->exec(pos);
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
    m_tableHeader->initialise();
    m_propertyFrame->hide();
}

void nkMetadataEditorModule::createTableModel()
{
    m_rootItem = new nkMetadataKeyValueRootModelItem;
    m_keyValueModel = new nkMetadataKeyValueModel;
    m_keyValueModel->setHeader({QString(), tr("Assignment"), tr("Key"), tr("Value"), tr("Type")});
    m_keyValueModel->setRootItem(m_rootItem);
    nameTableColumns();
    m_tableFilterModel = new nkMetadataTableFilterModel;
    m_tableFilterModel->setSourceModel(m_keyValueModel);
}

void nkMetadataEditorModule::createTableView()
{
    m_keyValueView = new nkMetadataKeyValueTreeView(this);
    m_keyValueView->setModel(m_tableFilterModel);
    m_tableHeader = new nkMetadataKeyValueHeader(m_keyValueView, this);
    m_keyValueView->setHeader(m_tableHeader);
    m_keyValueView->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
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

void nkMetadataEditorModule::nameTableColumns()
{
    const auto setData = [this](int column, int role, const QString &text) {
        m_keyValueModel->setHeaderData(column, Qt::Horizontal, text, role);
    };
    setData(IconColumn, Qt::UserRole, tr("Icon"));
    setData(IconColumn, Qt::ToolTipRole,
            QStringLiteral("%1<br>&#x2022; %2<br>&#x2022; %3<br>&#x2022; %4<br>&#x2022; %5")
                .arg(tr("Icon Column - lists 4 different icon types:"),
                     iconInfo(QT_TRANSLATE_NOOP("MetadataIconInfo", "Tag on Object")),
                     iconInfo(QT_TRANSLATE_NOOP("MetadataIconInfo", "Entry on Object")),
                     iconInfo(QT_TRANSLATE_NOOP("MetadataIconInfo", "Tag inside Set")),
                     iconInfo(QT_TRANSLATE_NOOP("MetadataIconInfo", "Entry inside Set"))));
    setData(AssignmentColumn, Qt::ToolTipRole,
            tr("Assignment Column - lists the Set or Object where entries are assigned to."));
    setData(KeyColumn, Qt::ToolTipRole, tr("Metadata Key Column - lists the chosen names of the Keys."));
    setData(ValueColumn, Qt::ToolTipRole, tr("Metadata Value Column - lists the defined Value of its type."));
    setData(TypeColumn, Qt::ToolTipRole, tr("Metadata Type Column - indicates the type of the entry."));
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

void nkMetadataEditorModule::registerWithHost()
{
    // Texts that the host keeps are copied to the heap: literals of the plug-in go when it is unloaded.
    nkMainWindowService::the().registerModule(
        QString(QLatin1String("Metadata Editor")), QString(QLatin1String("Scene")), this,
        QString(QLatin1String("Toolclip_Metadata")),
        nkIconManager::getIcon(QString(QLatin1String("ModuleMetadataEditor")), QString()), tr("Metadata"),
        false);
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
    if (bits & nkMetadataUpdate::SelectionLists) {
        reloadSelectionLists();
    }
}

void nkMetadataEditorModule::reloadTable()
{
    m_keyValueView->setSortingEnabled(false);
    m_keyValueModel->reload();
    m_keyValueView->setSortingEnabled(true);
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
