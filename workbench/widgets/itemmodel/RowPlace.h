#pragma once

#include <nkQt4Ext/QNKItemModel.h>

#include <QModelIndex>
#include <QPointer>
#include <QVector>

class QAbstractProxyModel;

/// The way between a view's model and the QNKItemModel below its proxies. A row is named by its slot, which
/// stays with the row's id while proxies and resets change every index.
class RowPlace
{
public:
    using Slot = quintptr;
    static constexpr Slot None = ~Slot(0);

    RowPlace() = default;
    /// @param top a view's model: a QNKItemModel or any chain of proxies over one
    explicit RowPlace(QAbstractItemModel *top);

    /// Whether there is a QNKItemModel at the end of the chain.
    bool isValid() const { return !m_source.isNull(); }
    QAbstractItemModel *top() const { return m_top; }
    QNKItemModel *source() const { return m_source; }
    /// From the view's model down.
    const QVector<QAbstractProxyModel *> &proxies() const { return m_proxies; }

    /// The slot of the row of an index of the view's model; None for no row.
    Slot slot(const QModelIndex &index) const;
    /// The row's index in the view's model; invalid where the row is gone or filtered out.
    QModelIndex index(Slot slot, int column = 0) const;
    /// Whether the row is in the source model, shown or not.
    bool exists(Slot slot) const;
    /// The rows that have children which somebody has counted: no other can be expanded. Parents first.
    QVector<Slot> parents() const;

private:
    QPointer<QAbstractItemModel> m_top;
    QPointer<QNKItemModel> m_source;
    QVector<QAbstractProxyModel *> m_proxies;
};
