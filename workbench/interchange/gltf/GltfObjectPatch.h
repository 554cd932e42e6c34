#pragma once

#include <interchange/SceneSource.h>
#include <interchange/json/JsonEdit.h>
#include <interchange/json/JsonTree.h>

#include <kernel/document/Store.h>

#include <QHash>
#include <QSet>

#include <memory>
#include <unordered_map>

namespace interchange {

/// Brings one object of a glTF text (a node or a material) to what the document says: its name, and its entries as
/// members of its extras. Only what differs is patched.
///
/// An entry keeps its place: nested ones stay at their path as long as their key leads there. New ones come to the
/// end of the extras. An entry whose key is taken there by something that is no entry, or for which there are no
/// extras that could hold it, gets no place and has to be kept elsewhere.
class GltfObjectPatch
{
public:
    /// @param source, store outlive this
    GltfObjectPatch(const SceneSource &source, const kernel::Store &store, JsonPatches &patches);

    /// Whether name and entries are what was read from the file.
    bool isAsRead(const SceneSource::ObjectOrigin &origin) const;
    /// Makes the patches for an object that is not as it was read.
    void patch(const SceneSource::ObjectOrigin &origin);

    /// Whether there are patches for the object.
    bool isPatched(quint64 objectId) const { return m_patched.contains(objectId); }
    /// Where the entry of a patched object stands in its extras then, as a path key of ExtrasKey; empty for an entry
    /// without a place.
    QString pathOf(quint64 entryId) const { return m_paths.value(entryId); }

private:
    /// Where an entry stands in the text as it was read.
    struct Place
    {
        JsonValue object;
        JsonValue member;
        QStringList path;
    };

    void patchName(const SceneSource::ObjectOrigin &origin);
    void findPlaces(const JsonValue &extras);
    void planKeys(const SceneSource::ObjectOrigin &origin);
    void patchEntry(const SceneSource::EntryOrigin &origin);
    void moveOrRename(kernel::Slot entry, const Place &place);
    void removeMember(const Place &place);
    void removeHidden(const Place &place);
    void addEntry(kernel::Slot entry);
    void flushAdded();
    bool take(const JsonValue &object, const QString &key);
    QString segmentFor(const QString &key, const QStringList &path) const;
    const Place *placeOf(const SceneSource::EntryOrigin &origin) const;

    const SceneSource &m_source;
    const kernel::Store &m_store;
    JsonPatches &m_patches;
    QSet<quint64> m_patched;
    QHash<quint64, QString> m_paths;

    // Of the object that is being patched:
    JsonTree m_tree;
    quint32 m_base = 0;
    JsonValue m_extras;
    std::unique_ptr<JsonEdit> m_edit;
    std::unordered_map<quint32, Place> m_places;        ///< by the member's offset in the whole text
    std::unordered_map<quint32, QSet<QString>> m_taken; ///< keys by the index of their object
    QVector<JsonEdit::Member> m_added;
};

} // namespace interchange
