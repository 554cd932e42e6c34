#pragma once

#include <QModelIndex>
#include <QVector>

class QAbstractItemModel;
class QAbstractProxyModel;

/// The proxies between a view's model and the model that holds the rows.
class ProxyChain
{
public:
    /// @param top the view's model; null gives an empty chain
    explicit ProxyChain(QAbstractItemModel *top);

    /// The model below all proxies; null in an empty chain.
    QAbstractItemModel *source() const { return m_source; }
    /// An index of source() as one of the top model; invalid where a proxy filters it out.
    QModelIndex fromSource(const QModelIndex &index) const;

private:
    QVector<QAbstractProxyModel *> m_proxies; // top first
    QAbstractItemModel *m_source;
};
