#include "GeometryFile.h"
#include "TestMain.h"

using interchange::SceneGeometry;

/// The lists of numbers of a glTF file, as meshes are made of them.
class TestGltfAccessors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsIndicesOfEveryWidth();
    void readsWholeNumbersAsTheyAre();
    void readsNormalizedNumbersAsShares();
    void keepsToTheStride();
    void changesNumbersOfSparseLists();
    void makesSparseListsOutOfNothing();
    void refusesWhatReachesBeyondItsBuffer_data();
    void refusesWhatReachesBeyondItsBuffer();
    void refusesNumbersThatAreNone();
    void refusesCountsWithoutBytes();

private:
    static const SceneGeometry::Part &onlyPart(const SceneGeometry &scene)
    {
        static const SceneGeometry::Part none;
        const bool isThere = scene.meshes.size() == 1 && scene.meshes[0].parts.size() == 1;
        return isThere ? scene.meshes[0].parts[0] : none;
    }
};

namespace {

const char *const triangle = R"("meshes":[{"primitives":[{"attributes":{"POSITION":0},"indices":1}]}])";
const char *const bare = R"("meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}])";
const Floats corners{0, 0, 0, 1, 0, 0, 0, 1, 0};

} // namespace

void TestGltfAccessors::readsIndicesOfEveryWidth()
{
    for (const int type : {5121, 5123, 5125}) {
        GeometryFile file;
        file.positions({0, 0, 0, 1, 0, 0, 0, 1, 0});
        const int start = type == 5121   ? file.put<quint8>({2, 1, 0})
                          : type == 5123 ? file.put<quint16>({2, 1, 0})
                                         : file.put<quint32>({2, 1, 0});
        file.accessor(start, type == 5121 ? 3 : type == 5123 ? 6 : 12, type, "SCALAR", 3);
        const SceneGeometry scene = file.readWith(triangle);
        QVERIFY2(scene.troubles.isEmpty(), qPrintable(scene.troubles.join(QLatin1Char(' '))));
        QVERIFY(onlyPart(scene).positions == corners);
        QVERIFY(onlyPart(scene).indices == Indices({2, 1, 0}));
    }
}

void TestGltfAccessors::readsWholeNumbersAsTheyAre()
{
    GeometryFile file;
    const int start = file.put<qint16>({-5, 7, 300, 1, 2, 3, 4, 5, 6});
    file.accessor(start, 18, 5122, "VEC3", 3);
    QVERIFY(onlyPart(file.readWith(bare)).positions == Floats({-5, 7, 300, 1, 2, 3, 4, 5, 6}));
}

void TestGltfAccessors::readsNormalizedNumbersAsShares()
{
    GeometryFile bytes;
    // -128 is as far as -127.
    bytes.accessor(bytes.put<qint8>({-128, -127, 127, 0, 0, 0, 0, 0, 0}), 9, 5120, "VEC3", 3,
                   R"("normalized":true)");
    QVERIFY(onlyPart(bytes.readWith(bare)).positions == Floats({-1, -1, 1, 0, 0, 0, 0, 0, 0}));
    GeometryFile words;
    words.accessor(words.put<quint16>({65535, 0, 0, 0, 65535, 0, 0, 0, 65535}), 18, 5123, "VEC3", 3,
                   R"("normalized":true)");
    QVERIFY(onlyPart(words.readWith(bare)).positions == Floats({1, 0, 0, 0, 1, 0, 0, 0, 1}));
}

void TestGltfAccessors::keepsToTheStride()
{
    GeometryFile file;
    const int start = file.put<float>({0, 0, 0, 9, 1, 0, 0, 9, 0, 1, 0});
    file.accessor(start, 44, 5126, "VEC3", 3, {}, 16); // the last element needs no gap behind it
    const SceneGeometry scene = file.readWith(bare);
    QVERIFY2(scene.troubles.isEmpty(), qPrintable(scene.troubles.join(QLatin1Char(' '))));
    QVERIFY(onlyPart(scene).positions == corners);
}

void TestGltfAccessors::changesNumbersOfSparseLists()
{
    GeometryFile file;
    const int start = file.put<float>({0, 0, 0, 1, 0, 0, 0, 1, 0});
    const int places = file.view(file.put<quint8>({1}), 1);
    const int values = file.view(file.put<float>({5, 6, 7}), 12);
    const QByteArray sparse = R"("sparse":{"count":1,"indices":{"bufferView":)" + QByteArray::number(places)
                              + R"(,"componentType":5121},"values":{"bufferView":)"
                              + QByteArray::number(values) + "}}";
    file.accessor(start, 36, 5126, "VEC3", 3, sparse);
    QVERIFY(onlyPart(file.readWith(bare)).positions == Floats({0, 0, 0, 5, 6, 7, 0, 1, 0}));
}

void TestGltfAccessors::makesSparseListsOutOfNothing()
{
    GeometryFile file;
    file.view(file.put<quint16>({2}), 2);
    file.view(file.put<float>({5, 6, 7}), 12);
    file.rawAccessor(R"({"componentType":5126,"type":"VEC3","count":3,"sparse":{"count":1,)"
                     R"("indices":{"bufferView":0,"componentType":5123},"values":{"bufferView":1}}})");
    QVERIFY(onlyPart(file.readWith(bare)).positions == Floats({0, 0, 0, 0, 0, 0, 5, 6, 7}));
}

void TestGltfAccessors::refusesWhatReachesBeyondItsBuffer_data()
{
    QTest::addColumn<QByteArray>("accessor");
    const auto row = [](const char *name, const char *text) { QTest::newRow(name) << QByteArray(text); };
    row("one too many", R"({"bufferView":0,"componentType":5126,"type":"VEC3","count":4})");
    row("too far in", R"({"bufferView":0,"byteOffset":4,"componentType":5126,"type":"VEC3","count":3})");
    row("offset beyond all",
        R"({"bufferView":0,"byteOffset":9e15,"componentType":5126,"type":"VEC3","count":3})");
    row("negative offset",
        R"({"bufferView":0,"byteOffset":-4,"componentType":5126,"type":"VEC3","count":3})");
    row("huge count", R"({"bufferView":0,"componentType":5126,"type":"VEC3","count":9007199254740992})");
    row("negative count", R"({"bufferView":0,"componentType":5126,"type":"VEC3","count":-1})");
    row("no such view", R"({"bufferView":7,"componentType":5126,"type":"VEC3","count":3})");
    row("view longer than its buffer", R"({"bufferView":1,"componentType":5126,"type":"VEC3","count":100})");
    row("no such type", R"({"bufferView":0,"componentType":5124,"type":"VEC3","count":3})");
    row("another shape", R"({"bufferView":0,"componentType":5126,"type":"VEC4","count":2})");
    row("sparse place beyond",
        R"({"bufferView":0,"componentType":5126,"type":"VEC3","count":3,"sparse":)"
        R"({"count":1,"indices":{"bufferView":0,"byteOffset":14,"componentType":5123},)"
        R"("values":{"bufferView":0}}})");
}

void TestGltfAccessors::refusesWhatReachesBeyondItsBuffer()
{
    QFETCH(QByteArray, accessor);
    GeometryFile file;
    file.view(file.put<float>({0, 0, 0, 1, 0, 0, 0, 1, 0}), 36);
    file.view(0, 4096);
    file.rawAccessor(accessor);
    const SceneGeometry scene = file.readWith(bare);
    QVERIFY(onlyPart(scene).positions.empty());
    QCOMPARE(scene.troubles.size(), 1);
    QVERIFY(scene.troubles.first().startsWith(QLatin1String("A part of mesh 0 is not drawn: ")));
}

void TestGltfAccessors::refusesNumbersThatAreNone()
{
    GeometryFile file;
    file.positions({0, 0, 0, std::numeric_limits<float>::quiet_NaN(), 0, 0, 0, 1, 0});
    const SceneGeometry scene = file.readWith(bare);
    QVERIFY(scene.meshes[0].parts.empty());
    QCOMPARE(scene.troubles.size(), 1);
}

void TestGltfAccessors::refusesCountsWithoutBytes()
{
    GeometryFile file;
    file.rawAccessor(R"({"componentType":5126,"type":"VEC3","count":50000000})");
    const SceneGeometry scene = file.readWith(bare);
    QVERIFY(scene.meshes[0].parts.empty());
    QCOMPARE(scene.troubles.size(), 1);
}

NK_GUILESS_TEST_MAIN(TestGltfAccessors)
#include "test_gltf_accessors.moc"
