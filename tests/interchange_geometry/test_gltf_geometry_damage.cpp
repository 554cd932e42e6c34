#include "GeometryFile.h"
#include "TestMain.h"

#include <QTemporaryFile>

#include <random>

using interchange::SceneGeometry;

/// Geometry damaged in thousands of ways: whatever comes holds together, and nothing crashes.
class TestGltfGeometryDamage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void survivesChangedText();
    void survivesChangedNumbers();
    void survivesChangedChunks();
    void survivesChunksCutAnywhere();
};

namespace {

constexpr int Times = 1700;

QByteArray sample()
{
    QFile file(QStringLiteral(NK_SAMPLES_DIR "/showroom.gltf"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isSound(const SceneGeometry &scene)
{
    const auto isIndex = [](qint32 index, size_t size) { return index >= -1 && index < qint32(size); };
    for (const SceneGeometry::Node &node : scene.nodes) {
        if (!isIndex(node.parent, scene.nodes.size()) || !isIndex(node.mesh, scene.meshes.size())
            || !isIndex(node.camera, scene.cameras.size()) || !isIndex(node.light, scene.lights.size()))
            return false;
    }
    for (const SceneGeometry::Mesh &mesh : scene.meshes) {
        for (const SceneGeometry::Part &part : mesh.parts) {
            const size_t vertices = part.positions.size() / 3;
            const bool fits = part.positions.size() % 3 == 0 && part.indices.size() % 3 == 0
                              && (part.normals.empty() || part.normals.size() == part.positions.size())
                              && isIndex(part.material, scene.materials.size());
            const auto isBeyond = [vertices](uint32_t index) { return index >= vertices; };
            if (!fits || std::any_of(part.indices.begin(), part.indices.end(), isBeyond))
                return false;
        }
    }
    return true;
}

/// A binary scene as opening a file leaves it, over a file that is there.
interchange::SceneSource binarySource(const QByteArray &json, const QByteArray &rest, const QString &path)
{
    interchange::SceneSource source;
    source.json = json;
    source.isBinary = true;
    source.filePath = path;
    source.restOffset = 20;
    source.original = std::make_shared<QFile>(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray(20, ' ') + rest) < 20 || !file.flush()
        || !source.original->open(QIODevice::ReadOnly))
        qFatal("The scene cannot be written");
    return source;
}

} // namespace

void TestGltfGeometryDamage::survivesChangedText()
{
    const QByteArray json = sample();
    QVERIFY(!json.isEmpty());
    std::mt19937 random(11);
    for (int i = 0; i < Times; ++i) {
        QByteArray changed = json;
        for (int k = 0; k < 3; ++k) {
            changed[int(random() % quint32(json.size()))] = "0123456789-.e[]{},:\"ax"[random() % 22];
        }
        QVERIFY2(isSound(GeometryFile::read(changed)), qPrintable(QString::number(i)));
    }
}

void TestGltfGeometryDamage::survivesChangedNumbers()
{
    const QByteArray json = sample();
    const QByteArrayList others{"0",    "-1",         "1e300",   "4294967296", "9007199254740991",
                                "0.5",  "null",       "[]",      "255",        "5126",
                                "5121", "2147483648", "4000000", "{}",         "\"VEC3\""};
    std::mt19937 random(12);
    for (int i = 0; i < Times; ++i) {
        QByteArray changed = json;
        for (int k = 0; k < 2; ++k) {
            int at = int(random() % quint32(changed.size()));
            while (at < changed.size() && !(changed[at] >= '0' && changed[at] <= '9')) {
                ++at;
            }
            int end = at;
            while (end < changed.size() && changed[end] >= '0' && changed[end] <= '9') {
                ++end;
            }
            changed.replace(at, end - at, others[int(random() % quint32(others.size()))]);
        }
        QVERIFY2(isSound(GeometryFile::read(changed)), qPrintable(QString::number(i)));
    }
}

void TestGltfGeometryDamage::survivesChangedChunks()
{
    GeometryFile file;
    file.positions({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0});
    file.indices({0, 1, 2, 1, 2, 3});
    const QByteArray json = file.json(
        R"("meshes":[{"primitives":[{"attributes":{"POSITION":0,"NORMAL":0},"indices":1}]}],)"
        R"("nodes":[{"mesh":0}])",
        {});
    const QByteArray whole = file.binary({});
    const QByteArray rest = whole.mid(whole.indexOf("BIN") - 4);
    QTemporaryDir folder;
    std::mt19937 random(13);
    for (int i = 0; i < Times; ++i) {
        QByteArray changed = rest;
        for (int k = 0; k < 2; ++k) {
            changed[int(random() % quint32(rest.size()))] = char(random());
        }
        const auto source = binarySource(json, changed, folder.filePath(QStringLiteral("a.glb")));
        QVERIFY2(isSound(interchange::GltfGeometryReader(source).read()), qPrintable(QString::number(i)));
    }
}

void TestGltfGeometryDamage::survivesChunksCutAnywhere()
{
    GeometryFile file;
    file.positions({0, 0, 0, 1, 0, 0, 0, 1, 0});
    const QByteArray json = file.json(R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}])", {});
    const QByteArray whole = file.binary({});
    const QByteArray rest = whole.mid(whole.indexOf("BIN") - 4);
    QTemporaryDir folder;
    for (int length = 0; length < rest.size(); ++length) {
        const auto source = binarySource(json, rest.left(length), folder.filePath(QStringLiteral("a.glb")));
        const SceneGeometry scene = interchange::GltfGeometryReader(source).read();
        QVERIFY(scene.meshes.size() == 1 && scene.meshes[0].parts.empty());
        QCOMPARE(scene.troubles.size(), 1);
    }
}

NK_GUILESS_TEST_MAIN(TestGltfGeometryDamage)
#include "test_gltf_geometry_damage.moc"
