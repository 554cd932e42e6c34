#include "tree/nkMetadataTreeWidget.h"

#include "table/nkMetadataIconFilterBar.h"
#include "tree/nkMetadataModeWidget.h"
#include "tree/nkMetadataTreeCommands.h"
#include "tree/nkMetadataTreeHint.h"
#include "tree/nkMetadataTreeSelection.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>
#include <nkQt4Ext/QNKTreeExpandSlider.h>

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace {

const char hasLastFocusProperty[] = "hasLastFocus";

/// The border of the list that had the focus last, in focus mode.
const char focusStyleSheet[] =
    "nkMetadataTreeView[hasLastFocus=\"true\"] { border: 1px solid rgb(180, 180, 180); }";

/// Rows are sets and objects: one level of children, so the slider expands to depth 0 or 1.
constexpr int deepestLevel = 1;

} // namespace

bool nkMetadataTreeWidget::s_handsOverSelection = false;
quint64 nkMetadataTreeWidget::s_selectionSerial = 0;

nkMetadataTreeWidget::nkMetadataTreeWidget(QWidget *parent) : QWidget(parent)
{
    createModels();
    createFilterBar();
    createView();
    createModeWidget();
    connectView();
    connectFilterBar();
    layOut();
    new nkMetadataTreeCommands(this, m_treeModel);
    updateHint();
}

nkMetadataTreeWidget::~nkMetadataTreeWidget() = default;

void nkMetadataTreeWidget::createModels()
{
    m_treeModel = new nkMetadataTreeModel(this);
    m_rootItem = new nkMetadataRootModelItem;
    m_treeModel->setRootItem(m_rootItem);
}

void nkMetadataTreeWidget::createFilterBar()
{
    m_filterBar = new nkMetadataIconFilterBar(this);
    // The bar of the table hides what the bar of a tree is for.
    m_filterBar->setSearchVisible(true, false);
    m_filterBar->setRecursiveFilterVisible(true);
    m_filterBar->setRecursiveFilteringEnabled(true);
    m_filterBar->setNameFilterToolTip(tr(
        "The search simply searches for strings no matter of the chosen list type or hierarchy level of the "
        "list entry.<br>If you want to just search for sets or objects only choose the list type accordingly "
        "and disable the search depth icon."));
    m_stateFilter.setEnabled(m_filterBar->isTypeFilteringEnabled());
    m_stateFilter.setIntegers(m_filterBar->typeFilter());
    m_proxyModel = new QNKCustomFilterProxyModel(this);
    m_proxyModel->setSourceModel(m_treeModel);
    m_proxyModel->setRecursiveFilteringEnabled(m_filterBar->isRecursiveFilteringEnabled());
    m_proxyModel->setRecursiveAcceptEnabled(true);
    m_proxyModel->setDynamicSortFilter(true);
    m_proxyModel->addCustomFilter(&m_stateFilter);
}

void nkMetadataTreeWidget::createView()
{
    m_treeView = new nkMetadataTreeView(this);
    m_treeView->setModel(m_proxyModel);
    m_treeView->setSingleColumnLayout(true);
    m_treeView->setHeaderHidden(false);
    m_treeView->header()->setSortIndicator(0, Qt::AscendingOrder);
    m_treeView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_treeView->setContextMenuPolicy(Qt::CustomContextMenu);
    m_treeView->setSortingEnabled(true);
}

/// The mode is set before the connection is made: this first setting reloads nothing.
void nkMetadataTreeWidget::createModeWidget()
{
    m_modeWidget = new nkMetadataModeWidget(this);
    m_modeWidget->setMode(m_rootItem->getTreeMode());
    connect(m_modeWidget, &nkMetadataModeWidget::modeChanged, this, &nkMetadataTreeWidget::applyMode);
}

void nkMetadataTreeWidget::connectFilterBar()
{
    connect(m_filterBar, &QNKFilterBar::nameFilterChanged, m_proxyModel,
            &QNKCustomFilterProxyModel::setFilterWildcard);
    connect(m_filterBar, &QNKFilterBar::recursiveFilteringToggled, m_proxyModel,
            [this](bool enabled) { m_proxyModel->setRecursiveFilteringEnabled(enabled); });
    connect(m_filterBar, &QNKFilterBar::typeFilteringToggled, &m_stateFilter, &QNKItemFilter::setEnabled);
    connect(m_filterBar, &QNKFilterBar::typeFilterChanged, &m_stateFilter, &QNKIntegerFilter::setIntegers);
}

void nkMetadataTreeWidget::connectView()
{
    connect(m_treeView, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &pos) { Q_EMIT showContextMenu(m_treeView->viewport()->mapToGlobal(pos)); });
    connect(m_treeView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &nkMetadataTreeWidget::publishSelection);
    connect(m_treeModel, &QAbstractItemModel::modelReset, this, &nkMetadataTreeWidget::updateHint);
    connect(m_treeModel, &QAbstractItemModel::rowsInserted, this, &nkMetadataTreeWidget::updateHint);
    connect(m_treeModel, &QAbstractItemModel::rowsRemoved, this, &nkMetadataTreeWidget::updateHint);
    connect(m_treeView, &nkMetadataTreeView::focusChanged, this, &nkMetadataTreeWidget::onFocusChanged);
}

void nkMetadataTreeWidget::layOut()
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *expandSlider = new QNKTreeExpandSlider(m_treeView, this);
    expandSlider->setMaximum(deepestLevel);
    layout->addWidget(m_filterBar);
    layout->addWidget(m_modeWidget);
    layout->addWidget(m_treeView);
    layout->addWidget(expandSlider);
}

void nkMetadataTreeWidget::setMode(TreeMode mode)
{
    m_modeWidget->setMode(mode);
}

TreeMode nkMetadataTreeWidget::getMode() const
{
    return m_modeWidget->getMode();
}

void nkMetadataTreeWidget::applyMode(TreeMode mode)
{
    m_rootItem->setTreeMode(mode);
    reload();
    updateHint();
}

void nkMetadataTreeWidget::updateHint()
{
    // The view shows it only while it has no rows: rows that the model has are hidden then.
    m_treeView->setEmptyText(m_treeModel->rowCount() > 0 ? nkMetadataTreeHint::ofHiddenRows()
                                                         : nkMetadataTreeHint::ofEmptyList(getMode()));
}

void nkMetadataTreeWidget::setFocusMode(bool on)
{
    if (int(on) == m_focusMode) {
        return;
    }
    m_focusMode = int(on);
    if (on) {
        m_treeView->setStyleSheet(QLatin1String(focusStyleSheet));
        if (hasLastFocus()) {
            publishAllSets();
        }
        return;
    }
    m_treeView->setStyleSheet(QString());
    if (m_treeView->selectionModel()->hasSelection()) {
        publishSelection();
    }
}

void nkMetadataTreeWidget::publishAllSets()
{
    Q_EMIT metadataSelectionChanged(m_treeView->getAllMetadataSets());
}

void nkMetadataTreeWidget::onFocusChanged(bool hasFocus)
{
    Q_EMIT treeFocusChanged(hasFocus);
    // Only now: whoever listens has moved the mark of the last focus.
    if (m_focusMode == 1 && hasLastFocus()) {
        publishAllSets();
    }
}

bool nkMetadataTreeWidget::hasLastFocus() const
{
    return m_treeView->property(hasLastFocusProperty).toBool();
}

void nkMetadataTreeWidget::setHasLastFocus(bool hasLastFocus)
{
    m_treeView->setProperty(hasLastFocusProperty, hasLastFocus);
    if (m_focusMode == 1) {
        // The style looks at the property only when a style sheet is set.
        m_treeView->setStyleSheet(QLatin1String(focusStyleSheet));
    }
}

void nkMetadataTreeWidget::selectObjects(const QList<nkdObject> &objects)
{
    if (!s_handsOverSelection) {
        m_treeView->selectObjects(objects);
    }
}

void nkMetadataTreeWidget::reload()
{
    m_treeView->setSortingEnabled(false);
    m_treeModel->reload();
    m_treeView->setSortingEnabled(true);
}

void nkMetadataTreeWidget::clearSelection()
{
    m_treeView->selectionModel()->clear();
}

void nkMetadataTreeWidget::publishSelection()
{
    const nkMetadataTreeSelection selection(m_treeView, m_treeView->selectionModel()->selectedIndexes(),
                                            getMode());
    const quint64 serial = ++s_selectionSerial;
    {
        const QScopedValueRollback<bool> echoGuard(s_handsOverSelection, true);
        nkMetadataService::the().setSelection(selection.objects());
    }
    // Whoever listened to the host may have moved a selection meanwhile; that one is the newer and has been
    // told already.
    if (m_focusMode == 0 && serial == s_selectionSerial) {
        Q_EMIT metadataSelectionChanged(selection.sets());
    }
}
