#include "GeometryFile.h"
#include "TestMain.h"

#include <kernel/document/Document.h>

#include <interchange/SceneFile.h>

using interchange::SceneGeometry;

/// Where the bytes of a glTF scene come from, and where they never do.
class TestGltfBuffers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void readsTheTextItself();
    void readsTheBinaryChunk();
    void readsTheBinaryChunkOfAFileThatIsGone();
    void readsFilesBesideTheScene();
    void readsFilesInFoldersBelow();
    void staysBelowTheScenesFolder_data();
    void staysBelowTheScenesFolder();
    void followsNoLinksOut();
    void tellsWhatIsMissing_data();
    void tellsWhatIsMissing();

private:
    SceneGeometry readFile(const QString &name) const
    {
        const SceneFile::Result result = SceneFile::open(path(name));
        return result.isOpen() ? interchange::GltfGeometryReader(*result.source).read() : SceneGeometry();
    }
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    GeometryFile m_file;
    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

const char *const bare = R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}])";

bool isTriangle(const SceneGeometry &scene)
{
    return scene.meshes.size() == 1 && scene.meshes[0].parts.size() == 1
           && scene.meshes[0].parts[0].positions == Floats({0, 0, 0, 1, 0, 0, 0, 1, 0});
}

} // namespace

void TestGltfBuffers::init()
{
    kernel::Document::the().clear();
    m_file = GeometryFile();
    m_file.positions({0, 0, 0, 1, 0, 0, 0, 1, 0});
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid() && QDir(m_folder->path()).mkpath(QStringLiteral("scene/parts")));
}

void TestGltfBuffers::readsTheTextItself()
{
    QVERIFY(isTriangle(m_file.readWith(bare)));
}

void TestGltfBuffers::readsTheBinaryChunk()
{
    write(QStringLiteral("scene.glb"), m_file.binary(bare));
    QVERIFY(isTriangle(readFile(QStringLiteral("scene.glb"))));
}

void TestGltfBuffers::readsTheBinaryChunkOfAFileThatIsGone()
{
    write(QStringLiteral("scene.glb"), m_file.binary(bare));
    const SceneFile::Result result = SceneFile::open(path(QStringLiteral("scene.glb")));
    QVERIFY(result.isOpen() && QFile::remove(path(QStringLiteral("scene.glb"))));
    const qint64 place = result.source->original->pos();
    QVERIFY(isTriangle(interchange::GltfGeometryReader(*result.source).read()));
    QCOMPARE(result.source->original->pos(), place); // saving reads it, too
}

void TestGltfBuffers::readsFilesBesideTheScene()
{
    write(QStringLiteral("my parts.bin"), m_file.bytes() + "behind the end");
    write(QStringLiteral("scene.gltf"), m_file.json(bare, "my%20parts.bin"));
    QVERIFY(isTriangle(readFile(QStringLiteral("scene.gltf"))));
}

void TestGltfBuffers::readsFilesInFoldersBelow()
{
    write(QStringLiteral("scene/parts/a.bin"), m_file.bytes());
    write(QStringLiteral("scene/scene.gltf"), m_file.json(bare, "parts/a.bin"));
    QVERIFY(isTriangle(readFile(QStringLiteral("scene/scene.gltf"))));
}

void TestGltfBuffers::staysBelowTheScenesFolder_data()
{
    QTest::addColumn<QByteArray>("uri");
    QTest::newRow("above") << QByteArray("../secret.bin");
    QTest::newRow("above and back") << QByteArray("parts/../../secret.bin");
    QTest::newRow("hidden above") << QByteArray("%2e%2e/secret.bin");
    QTest::newRow("absolute") << QByteArray("ABSOLUTE");
    QTest::newRow("address") << QByteArray("file://ABSOLUTE");
    QTest::newRow("backslashes") << QByteArray("..\\\\secret.bin");
}

void TestGltfBuffers::staysBelowTheScenesFolder()
{
    QFETCH(QByteArray, uri);
    write(QStringLiteral("secret.bin"), m_file.bytes());
    uri.replace("ABSOLUTE", path(QStringLiteral("secret.bin")).toUtf8());
    write(QStringLiteral("scene/scene.gltf"), m_file.json(bare, uri));
    const SceneGeometry scene = readFile(QStringLiteral("scene/scene.gltf"));
    QVERIFY(scene.meshes.size() == 1 && scene.meshes[0].parts.empty());
    QCOMPARE(scene.troubles.size(), 1);
    QVERIFY(scene.troubles.first().contains(QLatin1String("is not below the scene's folder")));
}

void TestGltfBuffers::followsNoLinksOut()
{
    write(QStringLiteral("secret.bin"), m_file.bytes());
    QVERIFY(QFile::link(path(QStringLiteral("secret.bin")), path(QStringLiteral("scene/link.bin"))));
    write(QStringLiteral("scene/scene.gltf"), m_file.json(bare, "link.bin"));
    QVERIFY(readFile(QStringLiteral("scene/scene.gltf")).meshes[0].parts.empty());
}

void TestGltfBuffers::tellsWhatIsMissing_data()
{
    QTest::addColumn<QByteArray>("uri");
    QTest::addColumn<QString>("words");
    QTest::newRow("no file") << QByteArray("gone.bin") << "there is no file “gone.bin” beside the scene";
    QTest::newRow("a folder") << QByteArray("parts") << "there is no file “parts” beside the scene";
    QTest::newRow("no base64") << QByteArray("data:text/plain,abc") << "are not in base64";
    QTest::newRow("bad base64") << QByteArray("data:;base64,A!B?") << "are damaged";
    QTest::newRow("too short") << QByteArray("data:;base64,AAAA") << "reach beyond the end of their buffer";
}

void TestGltfBuffers::tellsWhatIsMissing()
{
    QFETCH(QByteArray, uri);
    QFETCH(QString, words);
    write(QStringLiteral("scene/scene.gltf"), m_file.json(bare, uri));
    const SceneGeometry scene = readFile(QStringLiteral("scene/scene.gltf"));
    QCOMPARE(scene.troubles.size(), 1);
    QVERIFY2(scene.troubles.first().contains(words), qPrintable(scene.troubles.first()));
}

NK_GUILESS_TEST_MAIN(TestGltfBuffers)
#include "test_gltf_buffers.moc"
