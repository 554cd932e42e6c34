#include <nkQt4Ext/QNKSortFilterProxyModel.h>

#include "NaturalOrder.h"

struct QNKSortFilterProxyModel::Private
{
    bool recursiveAccept = false;
};

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
