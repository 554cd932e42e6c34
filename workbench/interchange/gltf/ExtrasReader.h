#pragma once

#include <interchange/ImportReport.h>
#include <interchange/gltf/ExtrasEntry.h>
#include <interchange/json/JsonValue.h>

#include <QSet>

#include <string_view>
#include <unordered_map>
#include <vector>

namespace interchange {

/// Turns the extras of nodes and materials into entries.
///
/// | JSON | entry |
/// |---|---|
/// | string | String |
/// | number without point and exponent, 32 bits signed | Integer |
/// | the same, longer | String that remembers being a number |
/// | any other number | Float; String that remembers, when no double holds it (1e400, 1e-400) |
/// | true, false | Boolean |
/// | null | Tag |
/// | array of these, empty too | List |
/// | object with members | its members, with path keys |
///
/// Everything else stays in the file and is named in the report. No extras, however odd, are an error. Of members
/// with the same key in one object the last counts, as with other JSON readers; the earlier ones are left alone.
class ExtrasReader
{
public:
    /// Whose extras are read; says the JSON path in front of them: `$.nodes[3].extras`.
    struct Owner
    {
        QLatin1String collection;
        quint32 index;
    };

    /// Appends to `entries` and `report`, which must outlive the reader.
    ExtrasReader(std::vector<ExtrasEntry> &entries, ImportReport &report);

    /// Appends the entries of these extras (absent: none) and answers which ones they are. All values handed to
    /// one reader must belong to the same JsonTree.
    IndexRange read(const JsonValue &extras, const Owner &owner);

private:
    struct Open
    {
        JsonValue object;
        QString pathKey; ///< empty for the extras themselves
    };
    /// What an entry will hold: one value, or a whole list.
    struct Content
    {
        QVariant value;
        ExtrasType type = ExtrasType::String;
        bool isNumber = false;
        bool isConverted = false;
        ImportReason reason = ImportReason::LongInteger; ///< only where it is converted
    };

    void walk(const JsonValue &extras);
    quint32 readMember(const JsonValue &member);
    void open(const JsonValue &object);
    void readArray(const JsonValue &array);
    void addEntry(const JsonValue &member, const Content &content);
    void nameEntry(ExtrasEntry &entry, const JsonValue &member);
    void makeKeysUnique(const IndexRange &range);

    QString keyOf(const JsonValue &member);
    QString pathTo(const JsonValue &member) const;
    static Content contentOf(const JsonValue &value);
    static Content numberOf(const JsonValue &value);
    static Content textOf(const JsonValue &value);

    std::vector<ExtrasEntry> &m_entries;
    ImportReport &m_report;
    Owner m_owner{QLatin1String(), 0};
    std::vector<Open> m_open;
    QSet<quint32> m_hidden;
    std::unordered_map<std::string_view, QString> m_keys; ///< few keys, many members: each is decoded once
};

} // namespace interchange
