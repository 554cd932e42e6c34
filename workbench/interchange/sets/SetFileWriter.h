#pragma once

#include <interchange/sets/TextBuffer.h>

#include <kernel/document/Clipboard.h>

namespace interchange {

/// Writes metadata sets as text, one after the other, so that a file of any length can be written piece by
/// piece. One entry a line; the same sets always give the same bytes.
class SetFileWriter
{
public:
    /// @param out takes the text at its end; may be emptied by the caller between any two calls
    explicit SetFileWriter(TextBuffer &out) : m_out(out) {}

    void beginSets();
    void addSet(const kernel::SetCopy &set);
    void endSets();

    /// The set as it stands in a file.
    void writeSet(const kernel::SetCopy &set);
    /// A text of entries that stand in no set.
    void writeEntries(const std::vector<kernel::EntryCopy> &entries);

private:
    void beginFormat(std::string_view format, std::string_view list);
    void addEntries(const std::vector<kernel::EntryCopy> &entries);
    void addEntry(const kernel::EntryCopy &entry);
    void addValue(nkMetadataTypes::ValueType type, const QVariant &value);
    void addFloat(double number);
    void addElement(const QVariant &element);
    void addList(const QVariantList &list);
    void addTyped(nkMetadataTypes::ValueType type, const QVariant &value);
    void addQuoted(const QByteArray &ascii);

    TextBuffer &m_out;
    bool m_isFirst = true;
};

} // namespace interchange
