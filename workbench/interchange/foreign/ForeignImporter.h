#pragma once

#include <interchange/SceneSource.h>
#include <interchange/foreign/ForeignOrigin.h>
#include <interchange/foreign/ForeignScene.h>
#include <interchange/sidecar/Sidecar.h>

#include <kernel/document/DocumentLoader.h>

#include <QHash>

#include <vector>

namespace interchange {

/// Makes the document out of a scene whose file is never written. Of the objects that the sidecar knows, it says all;
/// those that are new in the model since have the metadata of the model.
class ForeignImporter
{
public:
    /// @param sidecar null where there is none
    /// All must outlive the importer. The scene's report is continued; source and origin are filled.
    ForeignImporter(ForeignScene &scene, const Sidecar *sidecar, SceneSource &source, ForeignOrigin &origin);

    /// Puts the scene in the place of the present one, in one go and not undoable. False when the document refuses,
    /// as it does while a change is being made: then nothing has changed there.
    bool import();

private:
    using Loader = kernel::DocumentLoader;

    void findKnown();
    bool addNodes(Loader &loader);
    bool addMaterials(Loader &loader);
    quint64 addObject(Loader &loader, nkObjectType type, const QString &name, quint64 parentId, qint32 known);
    void note(quint64 id, quint32 index, SceneSource::List list, const QString &name);
    void addContent(Loader &loader, quint64 id, const IndexRange &range, qint32 known);
    void addEntries(Loader &loader, quint64 setId, const IndexRange &range);
    void addSavedSets(Loader &loader);
    void assignSaved(Loader &loader);
    void noteGone();
    void addModelSets(Loader &loader);
    quint64 modelSet(Loader &loader, const ForeignScene::Set &set);
    qint32 savedSet(const ForeignScene::Set &set) const;
    bool hasSame(const kernel::SetCopy &saved, const IndexRange &range) const;
    static void add(Loader &loader, quint64 setId, const kernel::EntryCopy &entry);

    ForeignScene &m_scene;
    const Sidecar *m_sidecar;
    SceneSource &m_source;
    ForeignOrigin &m_origin;
    std::vector<qint32> m_knownNodes; ///< by node: the place in the sidecar's objects; -1 for a new one
    std::vector<qint32> m_knownMaterials;
    std::vector<quint64> m_nodeIds;
    std::vector<quint64> m_savedIds; ///< of the sidecar's sets
    QHash<quint32, quint64> m_ids;   ///< from the place in the sidecar's objects to the object
    QMultiHash<QString, qint32>
        m_savedByName; ///< sets of the sidecar, without numbers at the end of their names
};

} // namespace interchange
