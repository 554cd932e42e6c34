#pragma once

#include "Clipboard.h"
#include "EntryValue.h"

#include <nkKernelServices/nkdMetadataEntry.h>

#include <QList>

#include <optional>
#include <vector>

namespace kernel {

class Document;

/// What an entry handle reads: a living entry of the scene, or one of the entry clipboard.
class EntryReading
{
public:
    EntryReading(const Document &document, quint64 id);

    /// False for ids of neither; the rest reads as empty then.
    bool isReadable() const { return m_key != nullptr; }
    QString key() const { return m_key ? *m_key : QString(); }
    QVariant value() const { return m_value ? m_value->toVariant() : QVariant(); }
    nkMetadataTypes::ValueType type() const { return m_value ? m_value->type() : nkMetadataTypes::String; }
    bool isTag() const { return m_value && m_value->isTag(); }
    /// To be called where it is readable.
    EntryCopy copy() const { return {*m_key, *m_value}; }

private:
    const QString *m_key = nullptr;
    const EntryValue *m_value = nullptr;
};

/// Copies of the readable ones among the entries, in order, repetitions included.
std::vector<EntryCopy> copiesOf(const Document &document, const QList<nkdMetadataEntry> &entries);

} // namespace kernel
