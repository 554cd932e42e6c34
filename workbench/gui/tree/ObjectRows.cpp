#include "ObjectRows.h"

#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkQt4Ext/QNKItemModel.h>

#include <algorithm>

namespace {

// Selection models compare every range with every other: above this the order is given up for few ranges.
constexpr int manyRanges = 1000;

QItemSelection mergeNeighbours(const QModelIndexList &rows)
{
    QItemSelection selection;
    int begin = 0;
    for (int i = 1; i <= rows.size(); ++i) {
        const bool goesOn = i < rows.size() && rows.at(i).row() == rows.at(i - 1).row() + 1
                            && rows.at(i).parent() == rows.at(i - 1).parent();
        if (!goesOn) {
            selection.append(QItemSelectionRange(rows.at(begin), rows.at(i - 1)));
            begin = i;
        }
    }
    return selection;
}

bool standsBefore(const QModelIndex &left, const QModelIndex &right)
{
    const QModelIndex leftParent = left.parent();
    const QModelIndex rightParent = right.parent();
    return leftParent == rightParent ? left.row() < right.row() : leftParent < rightParent;
}

template <typename Handle>
QList<quint64> idsOf(const QList<Handle> &objects)
{
    QList<quint64> ids;
    for (const Handle &object : objects) {
        ids.append(object.getObjectId());
    }
    return ids;
}

// The objects of the rows below which a row of this object can stand.
QList<quint64> holdersOf(const nkdObject &object)
{
    const nkdMetadataSet set(object);
    return set.isNull() ? idsOf(nkdMetadata(object.getObjectId()).getSets()) : idsOf(set.getObjects());
}

} // namespace

ObjectRows::ObjectRows(QAbstractItemModel *top)
    : m_chain(top), m_model(qobject_cast<QNKItemModel *>(m_chain.source()))
{}

QModelIndexList ObjectRows::find(const QList<nkdObject> &objects) const
{
    QModelIndexList rows;
    if (!m_model) {
        return rows;
    }
    for (const nkdObject &object : objects) {
        const QModelIndex row = topLevelRow(object);
        if (row.isValid()) {
            rows.append(m_chain.fromSource(row));
        } else {
            rows.append(childRows(object));
        }
    }
    rows.removeAll(QModelIndex());
    return rows;
}

QModelIndex ObjectRows::topLevelRow(const nkdObject &object) const
{
    return m_model->indexFromId(object.getObjectId());
}

QModelIndexList ObjectRows::childRows(const nkdObject &object) const
{
    QModelIndexList rows;
    const QString id = QString::number(object.getObjectId());
    for (quint64 holder : holdersOf(object)) {
        rows.append(m_chain.fromSource(m_model->indexFromId(QString(id + QString::number(holder)))));
    }
    return rows;
}

QItemSelection ObjectRows::selectionOf(const QModelIndexList &rows)
{
    const QItemSelection inOrder = mergeNeighbours(rows);
    if (inOrder.size() <= manyRanges) {
        return inOrder;
    }
    QModelIndexList sorted = rows;
    std::sort(sorted.begin(), sorted.end(), standsBefore);
    return mergeNeighbours(sorted);
}
