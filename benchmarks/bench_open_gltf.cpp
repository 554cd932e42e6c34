#include "SceneFileMaterial.h"
#include "harness/BenchmarkRegistry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <memory>

namespace {

/// A scene file, and what either side has read from it.
struct OpenedFile
{
    std::unique_ptr<SceneFileMaterial> material;
    SceneFile::Result result;
    QJsonDocument document;
    qint64 walked = 0;
};

/// Looks at every value once, as whoever wants to do something with it has to.
qint64 walk(const QJsonValue &value)
{
    qint64 sum = 0;
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto at = object.begin(); at != object.end(); ++at)
            sum += at.key().size() + walk(at.value());
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (const QJsonValue element : array)
            sum += walk(element);
    } else {
        sum += value.isString() ? value.toString().size() : int(value.toDouble());
    }
    return sum;
}

void readByQt(OpenedFile &opened)
{
    QFile file(opened.material->path());
    if (!file.open(QIODevice::ReadOnly))
        return;
    opened.document = QJsonDocument::fromJson(file.readAll());
    opened.walked = walk(opened.document.object());
}

} // namespace

/// Opening a scene until its objects and their entries stand in the document and every place in the text is noted,
/// against reading the same file into a JSON document of Qt and looking at each value.
static Comparison compareOpenGltf(qint64 nodes)
{
    const auto opened = std::make_shared<OpenedFile>();
    Comparison comparison;
    comparison.ours.prepare = [opened, nodes] {
        opened->material = std::make_unique<SceneFileMaterial>(nodes);
    };
    comparison.ours.run = [opened] { opened->result = SceneFile::open(opened->material->path()); };
    comparison.ours.finish = [opened] { *opened = OpenedFile(); };
    comparison.baseline.prepare = comparison.ours.prepare;
    comparison.baseline.run = [opened] { readByQt(*opened); };
    comparison.baseline.finish = comparison.ours.finish;
    comparison.timeAim = 2;
    return comparison;
}
NK_BENCHMARK("open-gltf", compareOpenGltf, 12603, 100000)
