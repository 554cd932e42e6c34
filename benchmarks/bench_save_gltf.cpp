#include "SceneFileMaterial.h"
#include "harness/BenchmarkRegistry.h"

#include <nkKernelServices/nkdMetadata.h>

#include <memory>

namespace {

/// An open scene.
struct OpenScene
{
    explicit OpenScene(qint64 nodes) : material(nodes), opened(SceneFile::open(material.path())) {}

    void edit() const
    {
        const QList<quint64> nodes = kernel::Document::the().objects(nkObjectType::Node);
        const nkdSceneObject object{nkdObject(nodes.at(nodes.size() / 2))};
        nkdMetadata::fromObject(object).getObjectSet().setValue(QStringLiteral("property 1"),
                                                                QStringLiteral("changed"));
    }

    SceneFileMaterial material;
    SceneFile::Result opened;
    SceneFile::Saved saved;
};

} // namespace

/// Saving a scene in which one value was changed (compared with the file on the disk, written, synced, read back and
/// understood), against opening it.
static Comparison compareSaveGltf(qint64 nodes)
{
    const auto scene = std::make_shared<std::unique_ptr<OpenScene>>();
    const auto file = std::make_shared<std::unique_ptr<SceneFileMaterial>>();
    Comparison comparison;
    comparison.ours.prepare = [scene, nodes] {
        *scene = std::make_unique<OpenScene>(nodes);
        (*scene)->edit();
    };
    comparison.ours.run = [scene] {
        (*scene)->saved = SceneFile::save((*scene)->material.path(), (*scene)->opened.source);
    };
    comparison.ours.finish = [scene] { scene->reset(); };
    comparison.baseline.prepare = [file, nodes] { *file = std::make_unique<SceneFileMaterial>(nodes); };
    comparison.baseline.run = [file] { SceneFile::open((*file)->path()); };
    comparison.baseline.finish = [file] { file->reset(); };
    comparison.timeAim = 1;
    return comparison;
}
NK_BENCHMARK("save-gltf", compareSaveGltf, 12603, 100000)
