#pragma once

#include "nkMetadataTypes.h"
#include "nkdMetadataEntry.h"

#include <QDataStream>

/// The drag record of one entry: what the entry is called and holds, and where it comes from, so that a drop
/// can copy it also after the entry has changed or in another scene.
class NK_KERNEL_SERVICES_EXPORT nkMetadataEntryMime
{
public:
    nkMetadataEntryMime() = default;
    /// Copies key, type, value, and the ids of entry and set. A null or dead entry gives an invalid record.
    explicit nkMetadataEntryMime(const nkdMetadataEntry &entry);

    bool isValid() const { return m_entryId != 0; }
    quint64 getEntryId() const { return m_entryId; }
    quint64 getSetId() const { return m_setId; }
    QString getKey() const { return m_key; }
    bool isTag() const { return m_tag; }
    nkMetadataTypes::ValueType getValueType() const { return m_valueType; }
    QVariant getValue() const { return m_value; }

private:
    friend NK_KERNEL_SERVICES_EXPORT QDataStream &operator<<(QDataStream &, const nkMetadataEntryMime &);
    friend NK_KERNEL_SERVICES_EXPORT QDataStream &operator>>(QDataStream &, nkMetadataEntryMime &);

    quint64 m_entryId = 0;
    quint64 m_setId = 0;
    QString m_key;
    bool m_tag = false;
    nkMetadataTypes::ValueType m_valueType = nkMetadataTypes::String;
    QVariant m_value;
};

/// Writes the record, with a version number ahead of it.
NK_KERNEL_SERVICES_EXPORT QDataStream &operator<<(QDataStream &stream, const nkMetadataEntryMime &record);
/// Reads a record; one of an unknown version, or cut short, leaves the stream with ReadCorruptData and the
/// record invalid.
NK_KERNEL_SERVICES_EXPORT QDataStream &operator>>(QDataStream &stream, nkMetadataEntryMime &record);
