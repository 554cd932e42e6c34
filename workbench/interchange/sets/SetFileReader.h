#pragma once

#include <interchange/json/JsonTree.h>
#include <interchange/sets/KeyTable.h>
#include <interchange/sets/SetFileError.h>
#include <interchange/sets/SetFileLimits.h>
#include <interchange/sets/SetValueReader.h>

#include <kernel/document/Clipboard.h>

#include <QCoreApplication>

#include <functional>
#include <vector>

namespace interchange {

/// Reads the sets of a JSON text in the layout of set files. Anything that is not as it should be ends the
/// reading; what was given out before is to be thrown away then.
class SetFileReader
{
    Q_DECLARE_TR_FUNCTIONS(SetFileReader)

public:
    /// Takes one set after the other, in order. @param share how much of the text has been read, 0 to 1.
    /// @return false to end the reading
    using Sink = std::function<bool(kernel::SetCopy &&set, double share)>;

    /// @param tree outlives the reader
    SetFileReader(const JsonTree &tree, const SetFileLimits &limits);

    /// Reads a whole file. False with error() set, or without where the sink ended it.
    bool readSets(const Sink &sink);
    /// Reads a text of one set, or of a file with exactly one.
    bool readSet(kernel::SetCopy &set);
    /// Reads a text of entries that stand in no set; a key may come more than once.
    bool readEntries(std::vector<kernel::EntryCopy> &entries);

    /// Whether the text says that it is of this format (one of SetFileNames).
    bool isOfFormat(std::string_view format) const;
    const SetFileError &error() const { return m_error; }

private:
    bool readHead(std::string_view format, const char *list, JsonValue &array);
    bool checkVersion(std::string_view format);
    bool readSetValue(const JsonValue &json, kernel::SetCopy &set);
    bool readColor(const JsonValue &json, QColor &color);
    bool readEntryArray(const JsonValue &array, std::vector<kernel::EntryCopy> &entries);
    bool readEntry(const JsonValue &json, kernel::EntryCopy &entry);
    bool readKey(const JsonValue &json, QString &key);
    bool fail(const JsonValue &json, const QString &reason);

    const JsonTree &m_tree;
    SetFileLimits m_limits;
    KeyTable m_keys;
    SetValueReader m_values;
    bool m_areKeysUnique = true;
    qint64 m_entryCount = 0;
    SetFileError m_error;
};

} // namespace interchange
