#pragma once

#include <interchange/JsonSpan.h>

#include <QString>

#include <vector>

namespace interchange {

/// Where the open scene came from: its file, and for every object and entry read from it the bytes it stands in.
/// Saving patches the file's text at these places. Kept beside the document, not in it: an id that the document
/// does not know any more simply has no use for its place.
///
/// Spans count in the JSON text, which begins at byte jsonOffset() of the file.
class SceneSource
{
public:
    /// In which list of the file an object stands.
    enum class List : quint8 { Nodes, Materials };

    struct ObjectOrigin
    {
        quint64 id = 0;    ///< of the object in the document
        quint32 index = 0; ///< its position in the list
        List list = List::Nodes;
        JsonSpan span;       ///< the whole JSON object
        JsonSpan extrasSpan; ///< the value of its `extras`; empty when it has none
    };

    struct EntryOrigin
    {
        quint64 id = 0;           ///< of the entry in the document
        quint32 memberOffset = 0; ///< the quote of its key
        JsonSpan valueSpan;
        /// The value stands inside nested objects: the entry's key was an ExtrasKey path key when it was read.
        bool isPath = false;

        JsonSpan memberSpan() const { return {memberOffset, valueSpan.end() - memberOffset}; }
    };

    /// Absolute path of the file.
    QString filePath;
    /// Whether the JSON text stands in the frame of a binary file.
    bool isBinary = false;
    /// First byte of the JSON text in the file, and its length without padding.
    qint64 jsonOffset = 0;
    qint64 jsonLength = 0;
    JsonSpan rootSpan;       ///< the outermost JSON object
    JsonSpan rootExtrasSpan; ///< the value of its `extras`; empty when it has none

    void reserve(size_t objectCount, size_t entryCount);
    void add(const ObjectOrigin &origin);
    void add(const EntryOrigin &origin);

    /// Where the object with this id stands in the file; nothing for objects that were not read from it. Takes
    /// logarithmic time, as entry() does. The pointer is good until the next add().
    const ObjectOrigin *object(quint64 id) const;
    const EntryOrigin *entry(quint64 id) const;

    int objectCount() const { return static_cast<int>(m_objects.size()); }
    int entryCount() const { return static_cast<int>(m_entries.size()); }

private:
    std::vector<ObjectOrigin> m_objects; ///< both ordered by id
    std::vector<EntryOrigin> m_entries;
};

} // namespace interchange
