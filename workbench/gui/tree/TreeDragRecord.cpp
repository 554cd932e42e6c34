#include "TreeDragRecord.h"

#include <QCoreApplication>
#include <QMimeData>

namespace {

// Counted up whenever the layout of the record changes.
constexpr quint8 recordVersion = 1;

} // namespace

TreeDragRecord::TreeDragRecord(quint64 objectId, quint64 parentId)
    : m_objectId(objectId), m_parentId(parentId), m_process(QCoreApplication::applicationPid())
{}

bool TreeDragRecord::isValid() const
{
    return m_objectId != 0 && m_process == QCoreApplication::applicationPid();
}

QList<TreeDragRecord> TreeDragRecord::fromMimeData(const QMimeData *data)
{
    QList<TreeDragRecord> records;
    QDataStream stream(data ? data->data(mimeType()) : QByteArray());
    stream.setVersion(QDataStream::Qt_5_15);
    while (!stream.atEnd()) {
        TreeDragRecord record;
        stream >> record;
        if (stream.status() != QDataStream::Ok) {
            return {};
        }
        if (record.isValid()) {
            records.append(record);
        }
    }
    return records;
}

QDataStream &operator<<(QDataStream &stream, const TreeDragRecord &record)
{
    return stream << recordVersion << record.m_process << record.m_objectId << record.m_parentId;
}

QDataStream &operator>>(QDataStream &stream, TreeDragRecord &record)
{
    quint8 version = 0;
    stream >> version >> record.m_process >> record.m_objectId >> record.m_parentId;
    if (version != recordVersion) {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
    if (stream.status() != QDataStream::Ok) {
        record = TreeDragRecord();
    }
    return stream;
}
