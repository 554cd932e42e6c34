#include "SetFileMaterial.h"
#include "harness/BenchmarkRegistry.h"

#include <nkKernelServices/nkdMetadataSet.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

namespace {

/// A file of sets, and what either side has read from it.
struct LoadedFile
{
    SetFileMaterial material;
    QJsonDocument document;
    QList<nkdMetadataSet> sets;
};

void readByQt(LoadedFile &loaded)
{
    QFile file(loaded.material.path("sets.json"));
    if (file.open(QIODevice::ReadOnly))
        loaded.document = QJsonDocument::fromJson(file.readAll());
}

std::unique_ptr<LoadedFile> makeFile(qint64 entries)
{
    auto loaded = std::make_unique<LoadedFile>();
    nkMetadataService::the().saveSets(loaded->material.makeScene(entries),
                                      loaded->material.path("sets.json"));
    kernel::Document::the().clear();
    return loaded;
}

} // namespace

/// Loading a file of sets until the sets stand in the scene, with undo, against reading the same file into a JSON
/// document of Qt and nothing more.
static Comparison compareSetsLoad(qint64 entries)
{
    const auto loaded = std::make_shared<std::unique_ptr<LoadedFile>>();
    Comparison comparison;
    comparison.ours.prepare = [loaded, entries] { *loaded = makeFile(entries); };
    comparison.ours.run = [loaded] {
        (*loaded)->sets = nkMetadataService::the().loadSets((*loaded)->material.path("sets.json"), {});
    };
    comparison.ours.finish = [loaded] { loaded->reset(); };
    comparison.baseline.prepare = comparison.ours.prepare;
    comparison.baseline.run = [loaded] { readByQt(**loaded); };
    comparison.baseline.finish = comparison.ours.finish;
    comparison.rows = entries;
    comparison.timeAim = 1;
    comparison.memoryAim = 1;
    return comparison;
}
NK_BENCHMARK("sets-load", compareSetsLoad, 1000000)
