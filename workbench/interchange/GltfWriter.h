#pragma once

#include <interchange/GltfReader.h>
#include <interchange/SceneSource.h>

#include <kernel/services/Progress.h>

#include <QCoreApplication>

#include <memory>

namespace interchange {

class GltfObjectPatch;
class JsonPatches;

/// Makes the JSON text of the open scene: the text that it was read from, with patches where the document has
/// changed. Where nothing has, the text is the same, byte for byte.
class GltfWriter
{
    Q_DECLARE_TR_FUNCTIONS(GltfWriter)

public:
    /// @param source where the document's objects stand; outlives the writer
    GltfWriter(const SceneSource &source, kernel::Progress &progress);

    /// False with error(), or where the person cancelled. Reads the text back before it says true.
    bool write();

    const QByteArray &json() const { return m_json; }
    /// Where everything stands in json(), without anything about a file.
    std::shared_ptr<SceneSource> takeSource() { return std::move(m_written); }
    /// A clause that says what cannot be saved and what to do, each without capital and full stop.
    const QString &reason() const { return m_reason; }
    const QString &advice() const { return m_advice; }

private:
    bool checkObjects();
    bool patchObjects(GltfObjectPatch &objects, const JsonPatches &patches);
    bool read(GltfScene &scene, JsonTree &tree, double from, double to);
    bool patchAnnex(const JsonTree &tree, const QByteArray &annex);
    void noteWhereEverythingStands(const GltfScene &scene, const std::vector<qint32> &places);
    bool fail(const QString &reason, const QString &advice);

    const SceneSource &m_source;
    kernel::Progress &m_progress;
    QByteArray m_json;
    std::shared_ptr<SceneSource> m_written;
    QString m_reason;
    QString m_advice;
};

} // namespace interchange
