#include "RowPlace.h"

#include "QNKItemModelPrivate.h"

#include <QAbstractProxyModel>

RowPlace::RowPlace(QAbstractItemModel *top) : m_top(top)
{
    while (auto *proxy = qobject_cast<QAbstractProxyModel *>(top)) {
        m_proxies.append(proxy);
        top = proxy->sourceModel();
    }
    m_source = qobject_cast<QNKItemModel *>(top);
}

RowPlace::Slot RowPlace::slot(const QModelIndex &index) const
{
    QModelIndex below = index;
    for (const QAbstractProxyModel *proxy : m_proxies)
        below = proxy->mapToSource(below);
    return below.isValid() ? below.internalId() : None;
}

QModelIndex RowPlace::index(Slot slot, int column) const
{
    const QNKModelItem *const row = m_source && slot != None ? m_source->d->rows.row(slot) : nullptr;
    if (!row || !m_source->d->isColumn(column))
        return {};
    QModelIndex above = m_source->d->indexOf(row, column);
    for (auto proxy = m_proxies.crbegin(); proxy != m_proxies.crend(); ++proxy)
        above = (*proxy)->mapFromSource(above);
    return above;
}

bool RowPlace::exists(Slot slot) const
{
    return m_source && slot != None && m_source->d->rows.row(slot);
}

QVector<RowPlace::Slot> RowPlace::parents() const
{
    QVector<Slot> slots;
    if (!m_source || !m_source->rootItem() || !m_source->d->rows.hasNestedRows())
        return slots;
    QVector<const QNKModelItem *> level{m_source->rootItem()};
    while (!level.isEmpty()) {
        QVector<const QNKModelItem *> next;
        for (const QNKModelItem *parent : qAsConst(level)) {
            for (const QNKModelItem *row : parent->m_children) {
                if (row->m_children.isEmpty())
                    continue;
                slots.append(m_source->d->rows.internalId(row));
                next.append(row);
            }
        }
        level = next;
    }
    return slots;
}
