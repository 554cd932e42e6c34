#pragma once

#include "ProxyChain.h"

#include <nkKernelServices/nkdObject.h>

#include <QItemSelection>
#include <QList>

class QNKItemModel;

/// Finds the rows of objects in a tree of metadata, without a look at any other row.
class ObjectRows
{
public:
    /// @param top the view's model, an nkMetadataTreeModel below any chain of proxies
    explicit ObjectRows(QAbstractItemModel *top);

    /// The shown rows of the objects, as indexes of the view's model, in the order of the objects: an
    /// object's top-level row; where it has none, its rows below the objects or sets it is assigned to.
    QModelIndexList find(const QList<nkdObject> &objects) const;

    /// Rows as a selection. The order of the rows stays the order of selection unless it takes very many
    /// ranges, with which selection models get slow.
    static QItemSelection selectionOf(const QModelIndexList &rows);

private:
    QModelIndex topLevelRow(const nkdObject &object) const;
    QModelIndexList childRows(const nkdObject &object) const;

    ProxyChain m_chain;
    QNKItemModel *m_model;
};
