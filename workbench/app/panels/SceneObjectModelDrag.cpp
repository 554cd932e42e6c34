// How rows are dragged: onto metadata, where they are assigned, and within trees, where they are moved.

#include "SceneObjectModel.h"

#include "gui/tree/TreeDragRecord.h"
#include "kernel/document/Document.h"

#include <nkKernelServices/nkdSceneObject.h>

#include <QDataStream>
#include <QMimeData>

using kernel::Document;

namespace {

QList<quint64> draggedObjects(const QMimeData *data)
{
    QList<quint64> ids;
    for (const TreeDragRecord &record : TreeDragRecord::fromMimeData(data)) {
        ids.append(record.objectId());
    }
    return ids;
}

bool isAmongOrBelow(quint64 id, const QList<quint64> &ids)
{
    const QSet<quint64> known(ids.cbegin(), ids.cend());
    for (quint64 at = id; at != 0; at = Document::the().parentOf(at)) {
        if (known.contains(at)) {
            return true;
        }
    }
    return false;
}

} // namespace

Qt::ItemFlags SceneObjectModel::flags(const QModelIndex &index) const
{
    if (!index.isValid()) {
        return isTree() ? Qt::ItemIsDropEnabled : Qt::NoItemFlags;
    }
    Qt::ItemFlags row = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
    const quint64 id = idOf(index);
    if (isTree() && Document::the().typeOf(id) != nkObjectType::Material) {
        row |= Qt::ItemIsDropEnabled;
    }
    return nkdSceneObject(nkdObject(id)).isEditable() ? row | Qt::ItemIsEditable : row;
}

QStringList SceneObjectModel::mimeTypes() const
{
    return {TreeDragRecord::mimeType()};
}

QMimeData *SceneObjectModel::mimeData(const QModelIndexList &indexes) const
{
    QByteArray records;
    QDataStream stream(&records, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    for (const QModelIndex &index : indexes) {
        // From below nothing: what is dragged onto a set stays where it is.
        stream << TreeDragRecord(idOf(index), 0);
    }
    auto *data = new QMimeData;
    data->setData(TreeDragRecord::mimeType(), records);
    return data;
}

bool SceneObjectModel::canDropMimeData(const QMimeData *data, Qt::DropAction action, int, int,
                                       const QModelIndex &parent) const
{
    if (action != Qt::MoveAction || !isTree() || Document::the().isTreeFixed()
        || !flags(parent).testFlag(Qt::ItemIsDropEnabled)) {
        return false;
    }
    const QList<quint64> ids = draggedObjects(data);
    return !ids.isEmpty() && !isAmongOrBelow(idOf(parent), ids);
}

bool SceneObjectModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                    const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent)) {
        return false;
    }
    // A search hides rows: the place is told by the row that they come before.
    const quint64 parentId = idOf(parent);
    const quint64 next = row < 0 ? 0 : idOf(index(row, 0, parent));
    Q_EMIT moveRequested(draggedObjects(data), parentId, m_listing.positionOf(next));
    return true;
}
