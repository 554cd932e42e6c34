#include "ProxyChain.h"

#include <QAbstractProxyModel>

ProxyChain::ProxyChain(QAbstractItemModel *top) : m_source(top)
{
    while (QAbstractProxyModel *proxy = qobject_cast<QAbstractProxyModel *>(m_source)) {
        m_proxies.append(proxy);
        m_source = proxy->sourceModel();
    }
}

QModelIndex ProxyChain::fromSource(const QModelIndex &index) const
{
    QModelIndex mapped = index;
    for (int i = m_proxies.size() - 1; i >= 0; --i) {
        mapped = m_proxies.at(i)->mapFromSource(mapped);
    }
    return mapped;
}
