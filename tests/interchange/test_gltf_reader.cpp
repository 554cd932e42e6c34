#include "Fixtures.h"
#include "TestMain.h"

using namespace interchange;
using namespace Fixtures;

/// The scene graph, materials, cameras and lights of sound files, and each way in which they can be unsound.
class TestGltfReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsNamesHierarchyAndKinds();
    void readsMaterialsCamerasAndLights();
    void keepsNamesAsTheyAre();
    void namesWhatHasNoName();
    void listsRootsBySceneThenTheRest();
    void readsRootsThatHaveParentsBelowThose();
    void acceptsAnEmptyScene();
    void takesTheLastOfEqualMembers();
    void acceptsWholeNumbersInAnyForm();
    void looksAtNothingItDoesNotKnow();
    void spansPointAtObjectsAndExtras();
    void refusesWrongTypes_data();
    void refusesWrongTypes();
    void refusesUnsoundScenes_data();
    void refusesUnsoundScenes();
    void leavesTheSceneAloneOnError();
    void limitsTheDepthOfTheSceneGraph();
    void survivesAGraphOfAnyDepth();
    void messageSaysFilePlaceAndWhatToDo();
    void messageShortensEndlessPaths();
};

namespace {

SceneError errorOf(const QByteArray &json, const GltfLimits &limits = GltfLimits())
{
    GltfScene scene;
    GltfReader reader(limits);
    reader.read(json, scene);
    return reader.error();
}

GltfScene sceneOf(const QByteArray &json)
{
    GltfScene scene;
    GltfReader reader;
    if (!reader.read(json, scene))
        qWarning("unreadable: %s", qPrintable(reader.error().message(QStringLiteral("test"))));
    return scene;
}

QStringList childNames(const GltfScene &scene, qint32 node)
{
    QStringList names;
    const IndexRange range = scene.nodes[size_t(node)].children;
    for (quint32 i = range.first; i < range.end(); ++i)
        names.append(scene.nodes[size_t(scene.children[i])].name);
    return names;
}

/// A file whose nodes stand each below the one before.
QByteArray chain(int depth)
{
    QByteArray nodes;
    for (int i = 0; i + 1 < depth; ++i)
        nodes += "{\"children\":[" + QByteArray::number(i + 1) + "]},";
    return gltf("\"nodes\":[" + nodes + "{}]");
}

const QByteArray Light(R"("extensions":{"KHR_lights_punctual":{"light":0}})");
const QByteArray Lights(R"("extensions":{"KHR_lights_punctual":{"lights":[{"name":"Lamp","type":"spot"}]}})");

/// A member that is read, the text around it, and the types it may have.
struct Place
{
    const char *before;
    const char *after;
    const char *path;
    const char *allowed; ///< first letters of the types: o(bject) a(rray) s(tring) n(umber)
};
const Place places[] = {
    {R"({"asset":)", "}", "$.asset", "o"},
    {R"({"asset":{"version":)", "}}", "$.asset.version", "s"},
    {R"({"asset":{"version":"2.0","minVersion":)", "}}", "$.asset.minVersion", "s"},
    {R"({"asset":{"version":"2.0","generator":)", "}}", "$.asset.generator", "s"},
    {R"({"asset":{"version":"2.0"},"scene":)", "}", "$.scene", "n"},
    {R"({"asset":{"version":"2.0"},"scenes":)", "}", "$.scenes", "a"},
    {R"({"asset":{"version":"2.0"},"scenes":[)", "]}", "$.scenes[0]", "o"},
    {R"({"asset":{"version":"2.0"},"scenes":[{"name":)", "}]}", "$.scenes[0].name", "s"},
    {R"({"asset":{"version":"2.0"},"scenes":[{"nodes":)", "}]}", "$.scenes[0].nodes", "a"},
    {R"({"asset":{"version":"2.0"},"nodes":[{}],"scenes":[{"nodes":[)", "]}]}", "$.scenes[0].nodes[0]", "n"},
    {R"({"asset":{"version":"2.0"},"nodes":)", "}", "$.nodes", "a"},
    {R"({"asset":{"version":"2.0"},"nodes":[)", "]}", "$.nodes[0]", "o"},
    {R"({"asset":{"version":"2.0"},"nodes":[{"name":)", "}]}", "$.nodes[0].name", "s"},
    {R"({"asset":{"version":"2.0"},"nodes":[{"children":)", "}]}", "$.nodes[0].children", "a"},
    {R"({"asset":{"version":"2.0"},"nodes":[{},{"children":[)", "]}]}", "$.nodes[1].children[0]", "n"},
    {R"({"asset":{"version":"2.0"},"cameras":[{}],"nodes":[{"camera":)", "}]}", "$.nodes[0].camera", "n"},
    {R"({"asset":{"version":"2.0"},"meshes":[{}],"nodes":[{"mesh":)", "}]}", "$.nodes[0].mesh", "n"},
    {R"({"asset":{"version":"2.0"},"nodes":[{"extensions":)", "}]}", "$.nodes[0].extensions", "o"},
    {R"({"asset":{"version":"2.0"},"nodes":[{"extensions":{"KHR_lights_punctual":)", "}}]}",
     "$.nodes[0].extensions.KHR_lights_punctual", "o"},
    {R"({"asset":{"version":"2.0"},"extensions":{"KHR_lights_punctual":{"lights":[{}]}},"nodes":[
        {"extensions":{"KHR_lights_punctual":{"light":)",
     "}}}]}", "$.nodes[0].extensions.KHR_lights_punctual.light", "n"},
    {R"({"asset":{"version":"2.0"},"meshes":)", "}", "$.meshes", "a"},
    {R"({"asset":{"version":"2.0"},"cameras":)", "}", "$.cameras", "a"},
    {R"({"asset":{"version":"2.0"},"cameras":[)", "]}", "$.cameras[0]", "o"},
    {R"({"asset":{"version":"2.0"},"cameras":[{"name":)", "}]}", "$.cameras[0].name", "s"},
    {R"({"asset":{"version":"2.0"},"cameras":[{"type":)", "}]}", "$.cameras[0].type", "s"},
    {R"({"asset":{"version":"2.0"},"materials":)", "}", "$.materials", "a"},
    {R"({"asset":{"version":"2.0"},"materials":[)", "]}", "$.materials[0]", "o"},
    {R"({"asset":{"version":"2.0"},"materials":[{"name":)", "}]}", "$.materials[0].name", "s"},
    {R"({"asset":{"version":"2.0"},"extensions":)", "}", "$.extensions", "o"},
    {R"({"asset":{"version":"2.0"},"extensions":{"KHR_lights_punctual":)", "}}",
     "$.extensions.KHR_lights_punctual", "o"},
    {R"({"asset":{"version":"2.0"},"extensions":{"KHR_lights_punctual":{"lights":)", "}}}",
     "$.extensions.KHR_lights_punctual.lights", "a"},
    {R"({"asset":{"version":"2.0"},"extensions":{"KHR_lights_punctual":{"lights":[)", "]}}}",
     "$.extensions.KHR_lights_punctual.lights[0]", "o"},
    {R"({"asset":{"version":"2.0"},"extensions":{"KHR_lights_punctual":{"lights":[{"name":)", "}]}}}",
     "$.extensions.KHR_lights_punctual.lights[0].name", "s"},
    {R"({"asset":{"version":"2.0"},"extensions":{"KHR_lights_punctual":{"lights":[{"type":)", "}]}}}",
     "$.extensions.KHR_lights_punctual.lights[0].type", "s"},
    {"", "", "$", "o"},
};
const struct Type
{
    char letter;
    const char *json;
} types[] = {
    {'o', "{}"},   {'a', "[]"},  {'s', "\"x\""}, {'n', "0"},    {'b', "true"},
    {'0', "null"}, {'n', "0.5"}, {'n', "-1"},    {'n', "1e30"}, {'n', "99999999999999999999"},
};

} // namespace

void TestGltfReader::readsNamesHierarchyAndKinds()
{
    const GltfScene scene = sceneOf(gltf(Lights
                                         + R"(,"cameras":[{"type":"perspective"}],"meshes":[{}],"nodes":[
        {"name":"root","children":[2,1]},{"name":"cam","camera":0},{"name":"box","mesh":0,"children":[3,4]},
        {"name":"lamp",)" + Light + R"(},{"name":"both","camera":0,)"
                                         + Light + "}]"));
    QCOMPARE(scene.nodes.size(), size_t(5));
    QCOMPARE(childNames(scene, 0), (QStringList{"box", "cam"}));
    QCOMPARE(childNames(scene, 2), (QStringList{"lamp", "both"}));
    QCOMPARE(scene.nodes[0].parent, -1);
    QCOMPARE(scene.nodes[1].parent, 0);
    QCOMPARE(scene.nodes[4].parent, 2);
    QCOMPARE(scene.nodes[0].kind, SceneNodeKind::Node);
    QCOMPARE(scene.nodes[1].kind, SceneNodeKind::Camera);
    QCOMPARE(scene.nodes[3].kind, SceneNodeKind::Light);
    QCOMPARE(scene.nodes[4].kind, SceneNodeKind::Camera);
    QCOMPARE(scene.nodes[4].light, 0);
    QCOMPARE(scene.nodes[2].mesh, 0);
    QCOMPARE(scene.nodes[0].mesh, -1);
    QCOMPARE(scene.roots, std::vector<qint32>{0});
}

void TestGltfReader::readsMaterialsCamerasAndLights()
{
    const GltfScene scene = sceneOf(
        gltf(R"("extensions":{"KHR_lights_punctual":{"lights":[{"type":"directional"},
        {"type":"point","name":"P"},{"type":"spot"},{"type":"laser"},{}]}},"cameras":[{"type":"orthographic"},
        {"type":"perspective","name":"C"},{}],"materials":[{"name":"Red"},{"name":"Red"}],"scene":0,
        "scenes":[{"name":"S"}])"));
    QCOMPARE(scene.lights.size(), size_t(5));
    QCOMPARE(scene.lights[0].type, SceneLight::Type::Directional);
    QCOMPARE(scene.lights[1].type, SceneLight::Type::Point);
    QCOMPARE(scene.lights[1].name, QStringLiteral("P"));
    QCOMPARE(scene.lights[2].type, SceneLight::Type::Spot);
    QCOMPARE(scene.lights[3].type, SceneLight::Type::Other);
    QCOMPARE(scene.cameras[0].type, SceneCamera::Type::Orthographic);
    QCOMPARE(scene.cameras[1].type, SceneCamera::Type::Perspective);
    QCOMPARE(scene.cameras[1].name, QStringLiteral("C"));
    QCOMPARE(scene.materials.size(), size_t(2));
    QCOMPARE(scene.materials[1].name, QStringLiteral("Red"));
    QCOMPARE(scene.scenes[0].name, QStringLiteral("S"));
    QCOMPARE(scene.defaultScene, 0);
}

void TestGltfReader::keepsNamesAsTheyAre()
{
    const GltfScene scene = sceneOf(
        gltf(R"("nodes":[{"name":"<b>a</b>\t%1 &x\n"},{"name":" "},{"name":" "}])"));
    QCOMPARE(scene.nodes[0].name, QStringLiteral("<b>a</b>\t%1 &x\n"));
    QCOMPARE(scene.nodes[1].name, QStringLiteral(" "));
    QCOMPARE(scene.nodes[2].name, QStringLiteral(" "));
}

void TestGltfReader::namesWhatHasNoName()
{
    const GltfScene scene = sceneOf(
        gltf(R"("extensions":{"KHR_lights_punctual":{"lights":[{},{"name":"Sun"}]}},
        "cameras":[{},{"name":"Front"}],"materials":[{"name":"a"},{}],"nodes":[{},{"name":""},{"camera":0},{"camera":1},
        {"extensions":{"KHR_lights_punctual":{"light":0}}},{"extensions":{"KHR_lights_punctual":{"light":1}}}])"));
    QStringList names;
    for (const SceneNode &node : scene.nodes)
        names.append(node.name);
    QCOMPARE(names, (QStringList{"Node 0", "Node 1", "Camera 2", "Front", "Light 4", "Sun"}));
    QCOMPARE(scene.materials[1].name, QStringLiteral("Material 1"));
}

void TestGltfReader::listsRootsBySceneThenTheRest()
{
    const GltfScene scene = sceneOf(
        gltf(R"("scene":1,"scenes":[{"nodes":[5,0]},{"nodes":[3,1]},{"nodes":[1,5]}],
        "nodes":[{},{},{},{"children":[4]},{},{}])"));
    QCOMPARE(scene.roots, (std::vector<qint32>{3, 1, 5, 0, 2}));
    QVERIFY(scene.report.notes().isEmpty());
}

void TestGltfReader::readsRootsThatHaveParentsBelowThose()
{
    const GltfScene scene = sceneOf(gltf(R"("scenes":[{"nodes":[1,0,0]}],"nodes":[{"children":[1]},{}])"));
    QCOMPARE(scene.roots, std::vector<qint32>{0});
    QCOMPARE(paths(scene.report.notes()), QStringList("$.scenes[0].nodes[0]"));
}

void TestGltfReader::acceptsAnEmptyScene()
{
    const GltfScene scene = sceneOf(gltf(QByteArray()));
    QVERIFY(scene.nodes.empty() && scene.roots.empty() && scene.materials.empty());
    QCOMPARE(scene.defaultScene, -1);
    QVERIFY(sceneOf(gltf(R"("nodes":[],"scenes":[{"nodes":[]}],"materials":[])")).roots.empty());
}

void TestGltfReader::takesTheLastOfEqualMembers()
{
    const QByteArray json = gltf(
        R"("nodes":[{"children":[1],"name":"a","children":[2],"name":"b"},{"name":"c"},{"name":"d"}])");
    const GltfScene scene = sceneOf(json);
    QCOMPARE(scene.nodes[0].name, QStringLiteral("b"));
    QCOMPARE(childNames(scene, 0), QStringList("d"));
}

void TestGltfReader::acceptsWholeNumbersInAnyForm()
{
    const GltfScene scene = sceneOf(gltf(R"("nodes":[{"children":[1.0,2e0,30E-1]},{},{},{}])"));
    QCOMPARE(childNames(scene, 0).size(), 3);
}

void TestGltfReader::looksAtNothingItDoesNotKnow()
{
    const GltfScene scene = sceneOf(
        gltf(R"("extensionsRequired":["VENDOR_compressed"],"buffers":"odd","images":[
        {"uri":"file:///etc/passwd"}],"nodes":[{"matrix":"odd","skin":-4,"extensions":{"VENDOR":[1]}}],"skins":7)"));
    QCOMPARE(scene.nodes.size(), size_t(1));
}

void TestGltfReader::spansPointAtObjectsAndExtras()
{
    const QByteArray json = gltf(
        "\"nodes\":[ {} , {\"extras\" : {\"a\":1 } }],\"materials\":[{\"name\":\"m\"}],\"extras\":{ }");
    const GltfScene scene = sceneOf(json);
    QCOMPARE(bytesAt(json, scene.rootSpan), json);
    QCOMPARE(bytesAt(json, scene.rootExtrasSpan), QByteArray("{ }"));
    QCOMPARE(bytesAt(json, scene.nodes[0].span), QByteArray("{}"));
    QVERIFY(scene.nodes[0].extrasSpan.isEmpty());
    QCOMPARE(bytesAt(json, scene.nodes[1].span), QByteArray("{\"extras\" : {\"a\":1 } }"));
    QCOMPARE(bytesAt(json, scene.nodes[1].extrasSpan), QByteArray("{\"a\":1 }"));
    QCOMPARE(bytesAt(json, scene.materials[0].span), QByteArray("{\"name\":\"m\"}"));
}

void TestGltfReader::refusesWrongTypes_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("path");
    for (const Place &place : places) {
        for (const Type &type : types) {
            const bool plainZero = qstrcmp(type.json, "0") == 0;
            const bool allowed = QByteArray(place.allowed).contains(type.letter)
                                 && (type.letter != 'n' || plainZero);
            if (!allowed)
                QTest::addRow("%s = %s", place.path, type.json)
                    << place.before + QByteArray(type.json) + place.after << QString(place.path);
        }
    }
}

void TestGltfReader::refusesWrongTypes()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, path);
    const SceneError error = errorOf(json);
    QVERIFY(error.isSet());
    QCOMPARE(error.path(), path);
    QVERIFY(error.line() >= 1 && error.column() >= 1 && error.offset() >= 0);
}

void TestGltfReader::refusesUnsoundScenes_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("word");
    const auto row = [](const char *name, const QByteArray &json, const char *path, const char *word) {
        QTest::newRow(name) << json << QString(path) << QString(word);
    };
    row("no asset", "{}", "$", "asset");
    row("no version", R"({"asset":{}})", "$.asset", "version");
    row("glTF 1.0", R"({"asset":{"version":"1.0"},"nodes":{}})", "$.asset.version", "glTF 1.0");
    row("glTF 3.0", R"({"asset":{"version":"3.0"}})", "$.asset.version", "glTF 3.0");
    row("needs a newer reader", R"({"asset":{"version":"2.0","minVersion":"2.1"}})", "$.asset.minVersion",
        "2.1");
    row("child out of range", gltf(R"("nodes":[{"children":[1]}])"), "$.nodes[0].children[0]", "nodes[1]");
    row("child below zero", gltf(R"("nodes":[{"children":[-1]}])"), "$.nodes[0].children[0]", "whole number");
    row("root out of range", gltf(R"("scenes":[{"nodes":[0]}])"), "$.scenes[0].nodes[0]", "only 0");
    row("scene out of range", gltf(R"("scene":1,"scenes":[{}])"), "$.scene", "scenes[1]");
    row("camera out of range", gltf(R"("nodes":[{"camera":0}])"), "$.nodes[0].camera", "cameras[0]");
    row("mesh out of range", gltf(R"("meshes":[{}],"nodes":[{"mesh":1}])"), "$.nodes[0].mesh", "meshes[1]");
    row("light out of range", gltf("\"nodes\":[{" + Light + "}]"),
        "$.nodes[0].extensions.KHR_lights_punctual.light", "lights[0]");
    row("own child", gltf(R"("nodes":[{"children":[0]}])"), "$.nodes[0].children[0]", "child of itself");
    row("circle of two", gltf(R"("nodes":[{},{"children":[2]},{"children":[1]}])"), "$.nodes[2].children[0]",
        "child of itself");
    row("circle below a tail", gltf(R"("nodes":[{"children":[1,3]},{"children":[2]},{"children":[0]},{}])"),
        "$.nodes[2].children[0]", "child of itself");
    row("two parents", gltf(R"("nodes":[{"children":[2]},{"children":[2]},{}])"), "$.nodes[1].children[0]",
        "nodes[0]");
    row("same child twice", gltf(R"("nodes":[{"children":[1,1]},{}])"), "$.nodes[0].children[1]", "twice");
}

void TestGltfReader::refusesUnsoundScenes()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, path);
    QFETCH(QString, word);
    const SceneError error = errorOf(json);
    QVERIFY(error.isSet());
    QCOMPARE(error.path(), path);
    QVERIFY2(error.reason().contains(word), qPrintable(error.reason()));
}

void TestGltfReader::leavesTheSceneAloneOnError()
{
    GltfScene scene = sceneOf(gltf(R"("nodes":[{"name":"old"}])"));
    GltfReader reader;
    QVERIFY(!reader.read(gltf(R"("nodes":[{"name":"new"},{"children":[7]}])"), scene));
    QCOMPARE(scene.nodes.size(), size_t(1));
    QCOMPARE(scene.nodes[0].name, QStringLiteral("old"));
    QVERIFY(reader.read(gltf(R"("nodes":[{"name":"new"}])"), scene));
    QVERIFY(!reader.error().isSet());
    QCOMPARE(scene.nodes[0].name, QStringLiteral("new"));
}

void TestGltfReader::limitsTheDepthOfTheSceneGraph()
{
    GltfLimits limits;
    limits.sceneDepth = 3;
    QVERIFY(!errorOf(chain(3), limits).isSet());
    const SceneError error = errorOf(chain(4), limits);
    QVERIFY(error.isSet());
    QCOMPARE(error.path(), QStringLiteral("$.nodes[2].children[0]"));
    QVERIFY(!errorOf(chain(1000)).isSet());
    QVERIFY(errorOf(chain(1001)).isSet());
}

void TestGltfReader::survivesAGraphOfAnyDepth()
{
    const SceneError error = errorOf(chain(10000));
    QVERIFY(error.isSet());
    QCOMPARE(error.path(), QStringLiteral("$.nodes[999].children[0]"));
    GltfLimits none;
    none.sceneDepth = 200000;
    QVERIFY(!errorOf(chain(200000), none).isSet());
}

void TestGltfReader::messageSaysFilePlaceAndWhatToDo()
{
    const QString message =
        errorOf("{\n  \"asset\": {\"version\": 2}\n}").message(QStringLiteral("my %1 <b>.gltf"));
    QCOMPARE(message,
             QStringLiteral(
                 "“my %1 <b>.gltf” cannot be opened: a text is expected, but there is a number (line 2, "
                 "column 24, byte 25, at $.asset.version); export the file again or correct this place in a "
                 "text editor."));
}

void TestGltfReader::messageShortensEndlessPaths()
{
    const QByteArray key(100000, 'k');
    const SceneError error = errorOf("{\"" + key + "\":x}");
    QVERIFY(error.path().size() > key.size());
    QVERIFY(error.message(QStringLiteral("a.gltf")).size() < 500);
}

NK_GUILESS_TEST_MAIN(TestGltfReader)
#include "test_gltf_reader.moc"
