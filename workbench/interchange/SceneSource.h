#pragma once

#include <interchange/FileHash.h>
#include <interchange/gltf/ExtrasEntry.h>
#include <interchange/json/JsonSpan.h>

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QFile;
QT_END_NAMESPACE

namespace interchange {

struct ForeignOrigin;
struct GltfScene;
struct SceneGeometry;

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
        QString name;        ///< the object's name when it was read
        IndexRange entries;  ///< those of its own set, in entries()
        IndexRange children; ///< of a node: what its `children` name, in children()
        /// Of a node: what it stands below, 0 at the top level; of one that was deleted, what it stood below then.
        quint64 parentId = 0;
        /// A save has put the object into the file since the scene was opened: nothing else there can refer to it.
        bool isMade = false;
        /// It was deleted when the text was read or written.
        bool isGone = false;
        /// Its extras say all of its entries: the annex needs to say nothing about them.
        bool isPlain = false;
    };

    /// An object that stands in the file and has been deleted from the scene: saving leaves it where others may
    /// refer to it, and the annex says that it is not to be shown.
    struct Removed
    {
        List list = List::Nodes;
        quint32 index = 0;
    };

    struct EntryOrigin
    {
        quint64 id = 0;           ///< of the entry in the document
        quint32 memberOffset = 0; ///< the quote of its key
        JsonSpan valueSpan;
        /// The value stands inside nested objects: the entry's key was an ExtrasKey path key when it was read.
        bool isPath = false;
        QString key; ///< the entry's key when it was read

        /// False for an entry that stands in the annex alone; its spans are empty then.
        bool isInExtras() const { return !valueSpan.isEmpty(); }

        JsonSpan memberSpan() const { return {memberOffset, valueSpan.end() - memberOffset}; }
        /// The same where the extras that it stands in begin elsewhere.
        EntryOrigin moved(quint32 from, quint32 to) const
        {
            EntryOrigin copy = *this;
            if (isInExtras()) {
                copy.memberOffset += to - from;
                copy.valueSpan.offset += to - from;
            }
            return copy;
        }
    };

    /// Absolute path of the file; empty for a scene that was never in one.
    QString filePath;
    /// Whether the JSON text stands in the frame of a binary file.
    bool isBinary = false;
    /// First byte of the JSON text in the file, and its length without padding.
    qint64 jsonOffset = 0;
    qint64 jsonLength = 0;
    JsonSpan rootSpan;       ///< the outermost JSON object
    JsonSpan rootExtrasSpan; ///< the value of its `extras`; empty when it has none
    /// The JSON text, shared with whoever reads it. What is saved is this text with changes.
    QByteArray json;

    /// What the annex of the scene (see GltfAnnex) would be if it were written now that the scene has been read: as
    /// long as it stays this, the one in the file is left as it is. Empty where there is none to write.
    QByteArray annex;
    /// Something stands in the annex's place that is none, or none that this program can read.
    bool isAnnexForeign = false;

    /// Objects that were deleted before the scene was opened. Those deleted since have an origin in objects().
    std::vector<Removed> removed;
    /// The nodes at the top level when the scene was read or saved last.
    std::vector<quint64> rootIds;
    /// How many elements at the end of the file's `cameras` and lights have been put there since it was opened.
    quint32 madeCameras = 0;
    quint32 madeLights = 0;

    /// The content of the file when it was read: as long as it hashes to this, nobody else has changed it.
    FileHash hash;
    /// In binary files, everything behind the JSON chunk.
    FileHash restHash;
    qint64 restOffset = 0;
    /// The file as it was read, held open: its geometry can be copied from here also when the file has been
    /// replaced or removed. Null for text.
    std::shared_ptr<QFile> original;

    /// What can be drawn, where reading the scene brought it along (files of other kinds than glTF); else null.
    std::shared_ptr<const SceneGeometry> geometry;

    /// Of a scene whose file is never written, and whose metadata stands in a sidecar: all that saving needs beside
    /// the objects here, whose spans are empty then. Null for glTF.
    std::shared_ptr<const ForeignOrigin> foreign;

    void reserve(size_t objectCount, size_t entryCount);
    /// The next object; ids ascend.
    void add(const ObjectOrigin &origin);
    /// An entry of the object that was added last.
    void add(const EntryOrigin &origin);

    /// Notes how the nodes stand, once all objects are added: their children as the file has them, their parents, and
    /// the present document's top level. A deleted node that is no node's child keeps the parent that it had.
    void noteTree(const GltfScene &scene);

    /// A scene without a file: a JSON text with nothing in it.
    static std::shared_ptr<SceneSource> blank();

    /// All objects in order of their ids.
    const std::vector<ObjectOrigin> &objects() const { return m_objects; }
    /// All entries, object after object, those of one object in order of their ids.
    const std::vector<EntryOrigin> &entries() const { return m_entries; }

    /// Ids of the children of all nodes that stand in the file, deleted ones among them.
    const std::vector<quint64> &children() const { return m_children; }

    /// Where the object with this id stands in the file; nothing for objects that were not read from it. Takes
    /// logarithmic time, as entry() mostly does. The pointer is good until the next add().
    const ObjectOrigin *object(quint64 id) const;
    const EntryOrigin *entry(quint64 id) const;

    int objectCount() const { return static_cast<int>(m_objects.size()); }
    int entryCount() const { return static_cast<int>(m_entries.size()); }

private:
    std::vector<ObjectOrigin> m_objects;
    std::vector<EntryOrigin> m_entries;
    std::vector<quint64> m_children;
    /// Places in m_entries, ordered by id; made when it is first asked for.
    mutable std::vector<quint32> m_byId;
};

} // namespace interchange
