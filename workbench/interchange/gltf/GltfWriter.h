#pragma once

#include <interchange/SceneSource.h>
#include <interchange/gltf/GltfReader.h>

#include <kernel/document/SlotList.h>
#include <kernel/services/Progress.h>

#include <QCoreApplication>

#include <memory>

namespace interchange {

class GltfAnnexMaker;
class GltfKnownObjects;
class GltfObjectPatch;
class GltfStructurePlan;
class JsonPatches;

/// Makes the JSON text of the open scene: the text that it was read from, with patches where the document has
/// changed. Where nothing has, the text is the same, byte for byte.
class GltfWriter
{
    Q_DECLARE_TR_FUNCTIONS(GltfWriter)

public:
    /// @param source where the document's objects stand; outlives the writer
    /// @param folder of the file to be; images below it are named relative to it
    GltfWriter(const SceneSource &source, const QString &folder, kernel::Progress &progress);

    /// False with error(), or where the person cancelled. Reads the text back before it says true.
    bool write();

    const QByteArray &json() const { return m_json; }
    /// Where everything stands in json(), without anything about a file.
    std::shared_ptr<SceneSource> takeSource() { return std::move(m_written); }
    /// A clause that says what is to be known although all is well; mostly empty.
    const QString &note() const { return m_note; }
    /// A clause that says what cannot be saved and what to do, each without capital and full stop.
    const QString &reason() const { return m_reason; }
    const QString &advice() const { return m_advice; }

private:
    bool patchStructure(const GltfStructurePlan &plan, SceneSource &placed);
    bool patchObjects(const SceneSource &source, GltfObjectPatch &objects, const JsonPatches &patches,
                      GltfKnownObjects &known);
    bool read(GltfScene &scene, JsonTree &tree, double from, double to, const GltfReader::IsKnown &isKnown);
    bool patchAnnex(const JsonTree &tree, const QByteArray &annex);
    void noteWhereEverythingStands(const SceneSource &source, const GltfScene &scene,
                                   const GltfAnnexMaker &maker, const GltfKnownObjects &known);
    SceneSource::EntryOrigin entryOf(kernel::Slot entry, qint32 place, const GltfScene &scene) const;
    bool fail(const QString &reason, const QString &advice);

    const SceneSource &m_source;
    const QString m_folder;
    kernel::Progress &m_progress;
    QByteArray m_json;
    std::shared_ptr<SceneSource> m_written;
    QString m_note;
    QString m_reason;
    QString m_advice;
};

} // namespace interchange
