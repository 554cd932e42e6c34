#include <nkQt4Ext/QNKSortFilterProxyModel.h>

#include "NaturalOrder.h"
#include "OpenEditor.h"

#include <QAbstractItemView>

struct QNKSortFilterProxyModel::Private
{
    bool recursiveAccept = false;

    /// Whether the proxy shows a source row, once it has been filtered anew.
    static bool shows(const QNKSortFilterProxyModel *proxy, const QModelIndex &sourceIndex);
    static bool acceptsAnyBelow(const QNKSortFilterProxyModel *proxy, const QModelIndex &sourceIndex);
    static void commitEditorsOfHidden(const QNKSortFilterProxyModel *proxy);
};

bool QNKSortFilterProxyModel::Private::shows(const QNKSortFilterProxyModel *proxy,
                                             const QModelIndex &sourceIndex)
{
    for (QModelIndex row = sourceIndex; row.isValid(); row = row.parent()) {
        if (!proxy->filterAcceptsRow(row.row(), row.parent()) && !acceptsAnyBelow(proxy, row))
            return false;
    }
    return true;
}

bool QNKSortFilterProxyModel::Private::acceptsAnyBelow(const QNKSortFilterProxyModel *proxy,
                                                       const QModelIndex &sourceIndex)
{
    if (!proxy->isRecursiveFilteringEnabled())
        return false;
    const QModelIndex parent = sourceIndex.sibling(sourceIndex.row(), 0);
    const int rows = proxy->sourceModel()->rowCount(parent);
    for (int row = 0; row < rows; ++row) {
        if (proxy->filterAcceptsRow(row, parent)
            || acceptsAnyBelow(proxy, proxy->sourceModel()->index(row, 0, parent)))
            return true;
    }
    return false;
}

/// What is being typed into a row that the filter is about to hide is not lost.
void QNKSortFilterProxyModel::Private::commitEditorsOfHidden(const QNKSortFilterProxyModel *proxy)
{
    const QVector<QAbstractItemView *> views = OpenEditor::views();
    for (QAbstractItemView *view : views) {
        const OpenEditor editor = OpenEditor::of(view);
        if (editor.isNull() || editor.isBeingCommitted())
            continue;
        QModelIndex index = editor.index;
        auto above = qobject_cast<const QAbstractProxyModel *>(view->model());
        while (above && above != proxy) {
            index = above->mapToSource(index);
            above = qobject_cast<const QAbstractProxyModel *>(above->sourceModel());
        }
        if (above && !shows(proxy, proxy->mapToSource(index)))
            editor.commit(view);
    }
}

QNKSortFilterProxyModel::QNKSortFilterProxyModel(QObject *parent)
    : QSortFilterProxyModel(parent), d(std::make_unique<Private>())
{}

QNKSortFilterProxyModel::~QNKSortFilterProxyModel() = default;

bool QNKSortFilterProxyModel::lessThan(const QString &left, const QString &right) const
{
    return compareNaturally(left, right) < 0;
}

void QNKSortFilterProxyModel::setRecursiveAcceptEnabled(bool enabled)
{
    if (enabled == d->recursiveAccept)
        return;
    d->recursiveAccept = enabled;
    refilter();
}

bool QNKSortFilterProxyModel::isRecursiveAcceptEnabled() const
{
    return d->recursiveAccept;
}

void QNKSortFilterProxyModel::refilter()
{
    prepareFilter();
    Private::commitEditorsOfHidden(this);
    invalidate();
}

bool QNKSortFilterProxyModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const QVariant a = left.data(sortRole());
    const QVariant b = right.data(sortRole());
    if (a.userType() == QMetaType::QString && b.userType() == QMetaType::QString)
        return lessThan(a.toString(), b.toString());
    return QSortFilterProxyModel::lessThan(left, right);
}

bool QNKSortFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    if (acceptsRow(sourceRow, sourceParent))
        return true;
    if (!d->recursiveAccept)
        return false;
    for (QModelIndex above = sourceParent; above.isValid(); above = above.parent()) {
        if (acceptsRow(above.row(), above.parent()))
            return true;
    }
    return false;
}

bool QNKSortFilterProxyModel::acceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    return QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
}

void QNKSortFilterProxyModel::prepareFilter() {}
