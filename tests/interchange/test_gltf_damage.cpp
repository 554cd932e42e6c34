#include "Fixtures.h"
#include "TestMain.h"

#include <interchange/gltf/GlbContainer.h>

#include <QBuffer>
#include <QFile>

#include <algorithm>
#include <cctype>
#include <random>

using namespace interchange;
using namespace Fixtures;

/// The sample scene, damaged in thousands of ways: every one gives a message or a sound scene, none a crash.
class TestGltfDamage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void refusesTextCutAtAnyByte();
    void refusesBinaryCutAtAnyByte();
    void refusesBinaryWhoseJsonIsCut();
    void survivesFlippedBytes_data();
    void survivesFlippedBytes();
    void survivesFlippedBytesInTheBinaryFrame();
    void survivesRemovedAndDoubledStretches();
    void survivesSwappedNumbers();

private:
    QByteArray m_json;
};

namespace {

/// Reads a binary scene as opening a file does.
bool readBinary(QByteArray bytes, GltfScene &scene, SceneError &error)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    GlbContainer container;
    if (!container.read(buffer)) {
        error = container.error();
        return false;
    }
    GltfReader reader;
    const bool read = reader.read(container.json(), scene);
    error = reader.error();
    return read;
}

/// Whether everything in the scene that points at something points at something that is there, and back.
bool isSound(const GltfScene &scene, int textSize)
{
    std::vector<int> timesChild(scene.nodes.size(), 0);
    for (size_t i = 0; i < scene.nodes.size(); ++i) {
        const SceneNode &node = scene.nodes[i];
        if (node.entries.end() > scene.entries.size() || node.children.end() > scene.children.size()
            || node.span.end() > quint32(textSize) || node.name.isEmpty())
            return false;
        for (quint32 c = node.children.first; c < node.children.end(); ++c) {
            const auto child = size_t(scene.children[c]);
            if (scene.nodes.at(child).parent != qint32(i) || ++timesChild[child] > 1)
                return false;
        }
    }
    for (const qint32 root : scene.roots) {
        if (scene.nodes.at(size_t(root)).parent >= 0 || ++timesChild[size_t(root)] > 1)
            return false;
    }
    const auto once = [](int times) { return times == 1; };
    return std::all_of(timesChild.begin(), timesChild.end(), once);
}

/// Reads the text; whatever comes, it must be a scene that holds together or an error that says where.
bool readsOrSaysWhere(const QByteArray &json)
{
    GltfScene scene;
    GltfReader reader;
    if (reader.read(json, scene))
        return isSound(scene, json.size());
    const SceneError &error = reader.error();
    return error.isSet() && error.line() > 0 && error.column() > 0 && error.offset() >= 0
           && error.offset() <= json.size() && error.path().startsWith(QLatin1Char('$'))
           && !error.message(QStringLiteral("f")).isEmpty();
}

} // namespace

void TestGltfDamage::initTestCase()
{
    QFile file(QStringLiteral(NK_SAMPLES_DIR "/showroom.gltf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_json = file.readAll();
    // The embedded geometry is one long string: damage there only makes the rounds longer.
    const int geometry = m_json.indexOf("base64,") + 7;
    m_json.remove(geometry, m_json.indexOf('"', geometry) - geometry);
    QVERIFY(readsOrSaysWhere(m_json));
    GltfScene scene;
    QVERIFY(GltfReader().read(m_json, scene));
    QVERIFY(isSound(scene, m_json.size()));
}

void TestGltfDamage::refusesTextCutAtAnyByte()
{
    const int whole = m_json.trimmed().size();
    GltfReader reader;
    for (int length = 0; length < whole; ++length) {
        GltfScene scene;
        QVERIFY2(!reader.read(m_json.left(length), scene), qPrintable(QString::number(length)));
        QVERIFY(reader.error().offset() <= length && reader.error().line() > 0);
        QVERIFY(scene.nodes.empty());
    }
}

void TestGltfDamage::refusesBinaryCutAtAnyByte()
{
    const QByteArray file = glbOf(m_json);
    GltfScene whole;
    SceneError error;
    QVERIFY(readBinary(file, whole, error));
    for (int length = 0; length < file.size(); ++length) {
        GltfScene scene;
        QVERIFY2(!readBinary(file.left(length), scene, error), qPrintable(QString::number(length)));
        QVERIFY(error.isSet() && error.offset() >= 0);
    }
}

void TestGltfDamage::refusesBinaryWhoseJsonIsCut()
{
    const int whole = m_json.trimmed().size();
    for (int length = 0; length < whole; length += 7) {
        GltfScene scene;
        SceneError error;
        QVERIFY(!readBinary(glbOf(m_json.left(length)), scene, error));
        QVERIFY(error.isSet());
    }
}

void TestGltfDamage::survivesFlippedBytes_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("flips");
    for (quint32 seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u, one byte", seed) << seed << 1;
    for (quint32 seed = 5; seed <= 8; ++seed)
        QTest::addRow("seed %u, five bytes", seed) << seed << 5;
}

void TestGltfDamage::survivesFlippedBytes()
{
    QFETCH(quint32, seed);
    QFETCH(int, flips);
    std::mt19937 random(seed);
    for (int round = 0; round < 1250; ++round) {
        QByteArray damaged = m_json;
        for (int i = 0; i < flips; ++i)
            damaged[static_cast<int>(random() % quint32(damaged.size()))] = static_cast<char>(random());
        QVERIFY2(readsOrSaysWhere(damaged), qPrintable(QStringLiteral("round %1").arg(round)));
    }
}

void TestGltfDamage::survivesFlippedBytesInTheBinaryFrame()
{
    const QByteArray file = glbOf(gltf(R"("nodes":[{"children":[1]},{"extras":{"a":1}}])"));
    for (int at = 0; at < file.size(); ++at) {
        for (int value = 0; value < 256; ++value) {
            QByteArray damaged = file;
            damaged[at] = static_cast<char>(value);
            GltfScene scene;
            SceneError error;
            const bool read = readBinary(damaged, scene, error);
            QVERIFY2(read != error.isSet(), qPrintable(QStringLiteral("%1 = %2").arg(at).arg(value)));
        }
    }
}

void TestGltfDamage::survivesRemovedAndDoubledStretches()
{
    std::mt19937 random(99);
    for (int round = 0; round < 1000; ++round) {
        const int from = static_cast<int>(random() % quint32(m_json.size()));
        const int length = static_cast<int>(random() % 200);
        const QByteArray stretch = m_json.mid(from, length);
        QByteArray damaged = m_json;
        if (round % 2 == 0)
            damaged.remove(from, length);
        else
            damaged.insert(from, stretch);
        QVERIFY2(readsOrSaysWhere(damaged), qPrintable(QStringLiteral("round %1").arg(round)));
    }
}

/// Other numbers for indices keep the text sound JSON and so reach the checks of the scene itself.
void TestGltfDamage::survivesSwappedNumbers()
{
    std::mt19937 random(7);
    int refused = 0;
    for (int round = 0; round < 1000; ++round) {
        QByteArray damaged = m_json;
        for (int tries = 0; tries < 3; ++tries) {
            int at = static_cast<int>(random() % quint32(damaged.size() / 2));
            while (!std::isdigit(static_cast<uchar>(damaged.at(at))))
                ++at;
            damaged[at] = static_cast<char>('0' + random() % 10);
        }
        QVERIFY2(readsOrSaysWhere(damaged), qPrintable(QStringLiteral("round %1").arg(round)));
        GltfScene scene;
        GltfReader reader;
        refused += reader.read(damaged, scene) ? 0 : 1;
    }
    QVERIFY(refused > 10);
}

NK_GUILESS_TEST_MAIN(TestGltfDamage)
#include "test_gltf_damage.moc"
