#pragma once

#include <QCoreApplication>
#include <QString>
#include <QVector>

namespace interchange {

/// Why something in a file did not become exactly the entry one might expect, or none at all.
enum class ImportReason : quint8 {
    LongInteger,      ///< converted: an integer beyond 32 bits became text
    UnboundedNumber,  ///< converted: a number beyond the range of doubles became text
    BrokenText,       ///< converted: half a surrogate pair became U+FFFD
    ExtrasNoObject,   ///< untouched: the extras are a bare value
    EmptyObject,      ///< untouched
    NestedArray,      ///< untouched: an array inside an array
    ObjectInArray,    ///< untouched: an array that holds objects
    HiddenByLaterKey, ///< untouched: a later member of the object has the same key
    OtherOwner,       ///< untouched: extras of something that carries no metadata here (a mesh, a scene…)
    RootHasParent,    ///< a scene names a node as root that has a parent; it is shown below its parent
    ChangedElsewhere, ///< converted: another program has changed an entry that the annex knows; its value counts
    GoneElsewhere,    ///< refused: another program has removed the place of an entry that the annex knows
    ForeignAnnex,     ///< refused: what stands in the annex's place cannot be read; it stays in the file
    UnknownObject,    ///< refused: the annex speaks of an object that the file does not have (any more)
    InvalidText,      ///< converted: bytes that are no UTF-8 became U+FFFD
    CutText,          ///< converted: a text longer than the importer keeps
    RenamedKey,       ///< converted: a key was empty or came twice in its object
    OutsideFolder,    ///< refused: the file refers to another one that is not in its folder
    UnknownLogical,     ///< converted: a logical value that is neither true nor false became text
    BrokenRecord,       ///< untouched: a record of the file is damaged
    DoubledRecord,      ///< untouched: an earlier record has the same number
    DoubledProperty,    ///< untouched: an earlier property of the set or the object has the same key
    UnreadableProperty, ///< untouched: a table, a reference or something else that is no entry
    UnassignedSet,      ///< untouched: no object has the set
    MissingRecord,      ///< the file speaks of a record that it does not have
    SecondPlace,        ///< the file places an object a second time
    LoopInTree,         ///< objects stand below each other in a ring
    TooDeepInTree,      ///< an object stands too many levels below others; it is shown at the top level
    DoubledIdentifier,  ///< objects have the same identifier
    OtherSchema,        ///< the file follows another schema than the one that is known
    NewObject,          ///< the sidecar does not know an object; it has the metadata of its file
    GoneObject,    ///< refused: the sidecar speaks of an object that the file does not have; it is kept there
    ForeignSidecar ///< refused: the sidecar cannot be read; it stays as it is
};

/// What came of the metadata of a file: how many entries were read as they stand, which values were converted,
/// and what was left alone in the file because it has no form as an entry. Saving leaves the latter as it is.
class ImportReport
{
    Q_DECLARE_TR_FUNCTIONS(ImportReport)

public:
    struct Item
    {
        QString path; ///< JSON path of the value; in IFC the record's number and the property's name
        ImportReason reason;
        QString detail; ///< what exactly; mostly empty
    };

    /// Counts an entry whose value says exactly what the file says.
    void addKept() { ++m_keptCount; }
    void addConverted(const QString &path, ImportReason reason) { m_converted.append({path, reason, {}}); }
    void addUntouched(const QString &path, ImportReason reason) { m_untouched.append({path, reason, {}}); }
    void addNote(const QString &path, ImportReason reason) { m_notes.append({path, reason, {}}); }
    void addRefused(const QString &path, ImportReason reason, const QString &detail = QString())
    {
        m_refused.append({path, reason, detail});
    }

    /// Entries read without any change of meaning; each knows its place itself (ExtrasEntry, JSON path by key).
    int keptCount() const { return m_keptCount; }
    /// Entries whose value had to take another form, one item each, in the order of the file.
    const QVector<Item> &converted() const { return m_converted; }
    /// Members of extras that became no entry, in the order of the file.
    const QVector<Item> &untouched() const { return m_untouched; }
    /// Oddities of the scene itself that were read around.
    const QVector<Item> &notes() const { return m_notes; }

    /// What was not taken in although it speaks of metadata.
    const QVector<Item> &refused() const { return m_refused; }

    bool isClean() const
    {
        return m_converted.isEmpty() && m_untouched.isEmpty() && m_notes.isEmpty() && m_refused.isEmpty();
    }

    /// The reason as a clause for people.
    static QString text(ImportReason reason);
    /// The reason of an item, with what exactly.
    static QString text(const Item &item);
    /// "3 entries read, 1 converted, 2 left untouched in the file", or that there is nothing; refusals only where there
    /// are any.
    QString summary() const;
    /// One line an item, path and reason, at most `limit` lines; a last line says how many more there are.
    QString details(int limit) const;

private:
    static QString textOfForeign(ImportReason reason);

    int m_keptCount = 0;
    QVector<Item> m_converted;
    QVector<Item> m_untouched;
    QVector<Item> m_notes;
    QVector<Item> m_refused;
};

} // namespace interchange
