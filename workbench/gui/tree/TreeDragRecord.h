#pragma once

#include <QDataStream>
#include <QLatin1String>
#include <QList>

class QMimeData;

/// The drag record of one row of a tree of metadata: which object is dragged, and from below which one.
/// Ids mean nothing outside their process, so a record tells which one it comes from.
class TreeDragRecord
{
public:
    /// The type under which trees drag their rows.
    static constexpr QLatin1String mimeType()
    {
        return QLatin1String("application/calyx-metadata-object-item");
    }

    TreeDragRecord() = default;
    /// @param parentId the object of the row above; 0 for a top-level row
    TreeDragRecord(quint64 objectId, quint64 parentId);

    /// The records of a drag from a tree of this process, in row order; empty for any other data.
    static QList<TreeDragRecord> fromMimeData(const QMimeData *data);

    quint64 objectId() const { return m_objectId; }
    quint64 parentId() const { return m_parentId; }
    /// Whether the record is whole and was written by this process.
    bool isValid() const;

private:
    friend QDataStream &operator<<(QDataStream &stream, const TreeDragRecord &record);
    friend QDataStream &operator>>(QDataStream &stream, TreeDragRecord &record);

    quint64 m_objectId = 0;
    quint64 m_parentId = 0;
    qint64 m_process = 0;
};

QDataStream &operator<<(QDataStream &stream, const TreeDragRecord &record);
QDataStream &operator>>(QDataStream &stream, TreeDragRecord &record);
