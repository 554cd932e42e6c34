#include "tree/nkMetadataTreeWidget.h"

#include "tree/nkMetadataTreeSelection.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>
#include <nkQt4Ext/QNKCustomFilterProxyModel.h>

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace {

const char hasLastFocusProperty[] = "hasLastFocus";

} // namespace

bool nkMetadataTreeWidget::s_handsOverSelection = false;
quint64 nkMetadataTreeWidget::s_selectionSerial = 0;

nkMetadataTreeWidget::nkMetadataTreeWidget(QWidget *parent) : QWidget(parent)
{
    createModels();
    createView();
    connectView();
    layOut();
}

nkMetadataTreeWidget::~nkMetadataTreeWidget() = default;

void nkMetadataTreeWidget::createModels()
{
    m_treeModel = new nkMetadataTreeModel(this);
    m_rootItem = new nkMetadataRootModelItem;
    m_treeModel->setRootItem(m_rootItem);
    m_proxyModel = new QNKCustomFilterProxyModel(this);
    m_proxyModel->setSourceModel(m_treeModel);
    m_proxyModel->setRecursiveAcceptEnabled(true);
    m_proxyModel->setDynamicSortFilter(true);
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

void nkMetadataTreeWidget::connectView()
{
    connect(m_treeView, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &pos) { Q_EMIT showContextMenu(m_treeView->viewport()->mapToGlobal(pos)); });
    connect(m_treeView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &nkMetadataTreeWidget::publishSelection);
    connect(m_treeView, &nkMetadataTreeView::focusChanged, this, &nkMetadataTreeWidget::treeFocusChanged);
}

void nkMetadataTreeWidget::layOut()
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_treeView);
}

void nkMetadataTreeWidget::setMode(TreeMode mode)
{
    if (mode != getMode()) {
        m_rootItem->setTreeMode(mode);
        reload();
    }
}

TreeMode nkMetadataTreeWidget::getMode() const
{
    return m_rootItem->getTreeMode();
}

bool nkMetadataTreeWidget::hasLastFocus() const
{
    return m_treeView->property(hasLastFocusProperty).toBool();
}

void nkMetadataTreeWidget::setHasLastFocus(bool hasLastFocus)
{
    m_treeView->setProperty(hasLastFocusProperty, hasLastFocus);
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
    if (serial == s_selectionSerial) {
        Q_EMIT metadataSelectionChanged(selection.sets());
    }
}
