#include <nkQt4Ext/QNKCustomFilterProxyModel.h>

#include "Wildcard.h"

#include <nkQt4Ext/QNKItemFilter.h>

struct QNKCustomFilterProxyModel::Private
{
    QVector<QNKItemFilter *> filters;
    QString pattern;
    Wildcard wildcard;
};

QNKCustomFilterProxyModel::QNKCustomFilterProxyModel(QObject *parent)
    : QNKSortFilterProxyModel(parent), d(std::make_unique<Private>())
{}

QNKCustomFilterProxyModel::~QNKCustomFilterProxyModel() = default;

void QNKCustomFilterProxyModel::addCustomFilter(QNKItemFilter *filter)
{
    if (!filter || d->filters.contains(filter))
        return;
    d->filters.append(filter);
    connect(filter, &QNKItemFilter::filterChanged, this, &QNKCustomFilterProxyModel::refilter);
    connect(filter, &QObject::destroyed, this, [this, filter] {
        if (d->filters.removeOne(filter)) // it is half gone: not asked whether it was enabled
            refilter();
    });
    if (filter->isEnabled())
        refilter();
}

void QNKCustomFilterProxyModel::removeCustomFilter(QNKItemFilter *filter)
{
    if (!d->filters.removeOne(filter))
        return;
    disconnect(filter, nullptr, this, nullptr);
    if (filter->isEnabled())
        refilter();
}

void QNKCustomFilterProxyModel::setFilterWildcard(const QString &pattern)
{
    if (pattern == d->pattern)
        return;
    d->pattern = pattern;
    d->wildcard = Wildcard(pattern);
    refilter();
}

bool QNKCustomFilterProxyModel::acceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    if (!QNKSortFilterProxyModel::acceptsRow(sourceRow, sourceParent))
        return false;
    const QModelIndex index = sourceModel()->index(sourceRow, 0, sourceParent);
    if (!d->wildcard.isEmpty() && !d->wildcard.matches(index.data().toString()))
        return false;
    for (const QNKItemFilter *filter : qAsConst(d->filters)) {
        if (filter->isEnabled() && !filter->accepts(index))
            return false;
    }
    return true;
}

bool QNKCustomFilterProxyModel::appendSortKey(const QModelIndex &sourceIndex, QByteArray &key) const
{
    const QVariant text = sourceIndex.data();
    if (text.userType() != QMetaType::QString)
        return false;
    appendTextSortKey(text.toString(), key);
    return true;
}
