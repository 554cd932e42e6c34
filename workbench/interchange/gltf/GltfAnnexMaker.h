#pragma once

#include <interchange/SceneSource.h>
#include <interchange/gltf/GltfAnnex.h>
#include <interchange/gltf/GltfScene.h>

#include <kernel/document/Document.h>
#include <kernel/document/Store.h>

namespace interchange {

class GltfKnownObjects;
class GltfObjectPatch;

/// Finds out what reading a file without its annex would miss of the document: that becomes the annex.
class GltfAnnexMaker
{
public:
    /// @param scene what reading the file gives
    /// @param source the origins of the document's objects: nodes and materials of the file at the same indices
    /// @param folder of the file; images of sceneplates below it are named relative to it
    /// @param patched who patched the file since the origins were noted; null where nobody did
    /// @param known objects that are what they were and were not read again; null where all were read
    GltfAnnexMaker(const GltfScene &scene, const SceneSource &source, const QString &folder,
                   const GltfObjectPatch *patched, const GltfKnownObjects *known = nullptr);

    /// To be called once.
    GltfAnnex make();

    /// Per entry, object after object in the order of the origins and each object's entries in their order: its place
    /// in the scene's entries, -1 for one that stands in the annex alone. Of living objects that were read. After
    /// make().
    const std::vector<qint32> &places() const { return m_places; }
    /// Whether the extras of an object that was read say all of its own set. After make().
    bool isPlain(quint64 objectId) const { return m_plain.contains(objectId); }

private:
    using Slots = QVector<kernel::Slot>;

    void addObject(const SceneSource::ObjectOrigin &origin);
    bool findPlaces(const SceneSource::ObjectOrigin &origin, const Slots &entries,
                    std::vector<qint32> &places);
    void addGroup(quint64 id, const GltfAnnex::Reference &reference);
    void keep(quint64 id, GltfAnnex::Object &&object);
    GltfAnnex::Object objectOf(const kernel::ObjectRecord &record, kernel::Slot slot,
                               const GltfAnnex::Reference &reference) const;
    bool needsOwn(const kernel::SetRecord &set) const;
    GltfAnnex::Reference referenceTo(SceneSource::List list, quint32 index) const;
    GltfAnnex::Reference referenceTo(const SceneSource::ObjectOrigin &origin) const
    {
        return referenceTo(origin.list, origin.index);
    }
    void addRemoved();
    void addRoots();
    void addMaterials();
    bool isMaterialListEnough() const;
    QString imageOf(const QString &path) const;
    IndexRange entriesOf(const SceneSource::ObjectOrigin &origin) const;
    bool isSame(const IndexRange &range, const Slots &entries) const;
    std::vector<qint32> placesOf(const SceneSource::ObjectOrigin &origin, const IndexRange &range,
                                 const Slots &entries) const;
    std::vector<qint32> patchedPlaces(const IndexRange &range, const Slots &entries) const;
    std::vector<qint32> readPlaces(const SceneSource::ObjectOrigin &origin, const IndexRange &range) const;
    void describe(GltfAnnex::Object &object, const Slots &entries, const std::vector<qint32> &places) const;
    kernel::SetCopy copyOf(kernel::Slot set) const;
    void addSets();
    void addRuns();

    const GltfScene &m_scene;
    const SceneSource &m_source;
    const QString m_folder;
    const GltfObjectPatch *m_patched;
    const GltfKnownObjects *m_known;
    const kernel::Document &m_document;
    const kernel::Store &m_store;
    GltfAnnex m_annex;
    std::vector<qint32> m_places;
    QSet<quint64> m_plain;
    QVector<kernel::Document::Assignment> m_assignments;
    QHash<quint64, quint32> m_assigned; ///< ids of objects with assigned sets, and their place in the annex
};

} // namespace interchange
