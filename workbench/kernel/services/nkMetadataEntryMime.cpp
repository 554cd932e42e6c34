#include <nkKernelServices/nkMetadataEntryMime.h>

#include "EntryValueStream.h"
#include <nkKernelServices/nkdMetadataSet.h>

namespace {

constexpr quint16 recordVersion = 1;

/// The stored type that belongs to each value type, in the order of their numbers.
constexpr int storedTypes[] = {QMetaType::QString,   QMetaType::Int,         QMetaType::Double,
                               QMetaType::Bool,      QMetaType::QTime,       QMetaType::QDate,
                               QMetaType::QDateTime, QMetaType::QVariantList};

bool valueFits(qint32 valueType, bool tag, const QVariant &value)
{
    if (valueType < nkMetadataTypes::String || valueType > nkMetadataTypes::List) {
        return false;
    }
    return tag ? !value.isValid() : value.userType() == storedTypes[valueType];
}

void fail(QDataStream &stream)
{
    // A stream cut short already says ReadPastEnd, and keeps its first status unless it is reset.
    stream.resetStatus();
    stream.setStatus(QDataStream::ReadCorruptData);
}

} // namespace

nkMetadataEntryMime::nkMetadataEntryMime(const nkdMetadataEntry &entry)
{
    if (!entry.isAlive()) {
        return;
    }
    m_entryId = entry.getObjectId();
    m_setId = entry.getSet().getObjectId();
    m_key = entry.getKey();
    m_tag = entry.isTag();
    m_valueType = entry.getValueType();
    m_value = entry.getValue();
}

QDataStream &operator<<(QDataStream &stream, const nkMetadataEntryMime &record)
{
    stream << recordVersion << record.m_entryId;
    if (record.isValid()) {
        stream << record.m_setId << record.m_key << record.m_tag << qint32(record.m_valueType);
        kernel::EntryValueStream::write(stream, record.m_value);
    }
    return stream;
}

QDataStream &operator>>(QDataStream &stream, nkMetadataEntryMime &record)
{
    record = nkMetadataEntryMime();
    if (stream.status() != QDataStream::Ok) {
        return stream;
    }
    quint16 version = 0;
    nkMetadataEntryMime read;
    stream >> version >> read.m_entryId;
    if (stream.status() != QDataStream::Ok || version != recordVersion) {
        fail(stream);
        return stream;
    }
    if (read.m_entryId == 0) {
        return stream;
    }
    qint32 valueType = 0;
    stream >> read.m_setId >> read.m_key >> read.m_tag >> valueType;
    read.m_value = kernel::EntryValueStream::read(stream);
    if (stream.status() != QDataStream::Ok || !valueFits(valueType, read.m_tag, read.m_value)) {
        fail(stream);
        return stream;
    }
    read.m_valueType = nkMetadataTypes::ValueType(valueType);
    record = read;
    return stream;
}
