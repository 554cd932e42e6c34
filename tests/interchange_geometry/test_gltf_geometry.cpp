#include "GeometryFile.h"
#include "TestMain.h"

using interchange::SceneGeometry;

/// What of a glTF scene can be drawn.
class TestGltfGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesTrianglesOfStripsAndFans();
    void leavesOutPointsAndLines();
    void keepsGoodNormalsOnly();
    void leavesOutIndicesBeyondTheVertices();
    void tellsWhatIsCompressed();
    void placesNodesByMatrixOrBySteps();
    void nodesShareMeshes();
    void readsBaseColours();
    void readsCameras();
    void readsLights();
    void cutsRingsOfNodes();
    void countsTroublesBeyondTheFirst();
    void endsWhenItIsTold();
    void readsTheSampleScene();
};

namespace {

QByteArray meshOf(const QByteArray &primitive)
{
    return R"("meshes":[{"primitives":[{"attributes":{"POSITION":0})" + primitive + "}]}]";
}

GeometryFile square()
{
    GeometryFile file;
    file.positions({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0});
    return file;
}

} // namespace

void TestGltfGeometry::makesTrianglesOfStripsAndFans()
{
    const GeometryFile file = square();
    const SceneGeometry strip = file.readWith(meshOf(R"(,"mode":5)"));
    QVERIFY(strip.meshes[0].parts[0].indices == Indices({0, 1, 2, 1, 3, 2}));
    const SceneGeometry fan = file.readWith(meshOf(R"(,"mode":6)"));
    QVERIFY(fan.meshes[0].parts[0].indices == Indices({0, 1, 2, 0, 2, 3}));
    // Four corners are one triangle and a rest.
    QVERIFY(file.readWith(meshOf({})).meshes[0].parts[0].indices == Indices({0, 1, 2}));
}

void TestGltfGeometry::leavesOutPointsAndLines()
{
    for (const QByteArray mode : {"0", "1", "2", "3"}) {
        const SceneGeometry scene = square().readWith(meshOf(R"(,"mode":)" + mode));
        QVERIFY(scene.meshes[0].parts.empty());
        QCOMPARE(scene.troubles, QStringList{"Points and lines are not drawn."});
    }
}

void TestGltfGeometry::keepsGoodNormalsOnly()
{
    const QByteArray members = R"("meshes":[{"primitives":[{"attributes":{"POSITION":0,"NORMAL":1}}]}])";
    GeometryFile good;
    good.positions({0, 0, 0, 1, 0, 0, 0, 1, 0});
    good.positions({0, 0, 2, 0, 0, 1, 0, 0, 1});
    QVERIFY(good.readWith(members).meshes[0].parts[0].normals == Floats({0, 0, 1, 0, 0, 1, 0, 0, 1}));
    GeometryFile without;
    without.positions({0, 0, 0, 1, 0, 0, 0, 1, 0});
    without.positions({0, 0, 0, 0, 0, 1, 0, 0, 1});
    QVERIFY(without.readWith(members).meshes[0].parts[0].normals.empty());
    GeometryFile tooFew;
    tooFew.positions({0, 0, 0, 1, 0, 0, 0, 1, 0});
    tooFew.positions({0, 0, 1});
    QVERIFY(tooFew.readWith(members).meshes[0].parts[0].normals.empty());
}

void TestGltfGeometry::leavesOutIndicesBeyondTheVertices()
{
    GeometryFile file = square();
    file.indices({0, 1, 4});
    const SceneGeometry scene = file.readWith(meshOf(R"(,"indices":1)"));
    QVERIFY(scene.meshes[0].parts.empty());
    QCOMPARE(scene.troubles,
             QStringList{"A part of mesh 0 is not drawn: its indices refer to vertices that are not "
                         "there."});
}

void TestGltfGeometry::tellsWhatIsCompressed()
{
    const SceneGeometry scene = square().readWith(
        meshOf(R"(,"extensions":{"KHR_draco_mesh_compression":{}})"));
    QVERIFY(scene.meshes[0].parts.empty());
    QVERIFY(scene.troubles.value(0).contains(QLatin1String("KHR_draco_mesh_compression")));
}

void TestGltfGeometry::placesNodesByMatrixOrBySteps()
{
    const SceneGeometry scene = square().readWith(
        R"("nodes":[{"matrix":[1,0,0,0, 0,1,0,0, 0,0,1,0, 5,6,7,1],"children":[1]},)"
        R"({"translation":[1,2,3],"rotation":[0,0,0.70710678,0.70710678],"scale":[2,2,2]},)"
        R"({"matrix":[1,2],"translation":[1,1,1],"rotation":[0,0,0,0]}])");
    QCOMPARE(scene.nodes.size(), size_t(3));
    QCOMPARE(scene.nodes[0].local.map(QVector3D(1, 0, 0)), QVector3D(6, 6, 7));
    QVERIFY(qFuzzyCompare(scene.nodes[1].local.map(QVector3D(1, 0, 0)), QVector3D(1, 4, 3)));
    QCOMPARE(scene.nodes[1].parent, 0);
    QCOMPARE(scene.nodes[0].parent, -1);
    QCOMPARE(scene.nodes[2].local.map(QVector3D(1, 0, 0)), QVector3D(2, 1, 1));
}

void TestGltfGeometry::nodesShareMeshes()
{
    const SceneGeometry scene = square().readWith(
        meshOf({}) + R"(,"nodes":[{"mesh":0},{"mesh":0},{"mesh":3},{"mesh":-1},{}])");
    QCOMPARE(scene.meshes.size(), size_t(1));
    QVERIFY(scene.nodes[0].mesh == 0 && scene.nodes[1].mesh == 0);
    QVERIFY(scene.nodes[2].mesh == -1 && scene.nodes[3].mesh == -1 && scene.nodes[4].mesh == -1);
}

void TestGltfGeometry::readsBaseColours()
{
    const SceneGeometry scene = square().readWith(
        meshOf(R"(,"material":1)")
        + R"(,"materials":[{},{"doubleSided":true,"pbrMetallicRoughness":{"baseColorFactor":[1,0,0,0.5]}},)"
          R"({"alphaMode":"BLEND","pbrMetallicRoughness":{"baseColorFactor":[0,1,0,0.5]}},)"
          R"({"extensions":{"KHR_materials_pbrSpecularGlossiness":{"diffuseFactor":[0,0,1,1]}}},)"
          R"({"pbrMetallicRoughness":{"baseColorFactor":[7,"x"]}}])");
    QCOMPARE(scene.materials.size(), size_t(5));
    QCOMPARE(scene.meshes[0].parts[0].material, 1);
    QCOMPARE(scene.materials[0].color, QColor(Qt::white));
    QVERIFY(scene.materials[1].color == QColor(Qt::red) && scene.materials[1].isDoubleSided);
    QCOMPARE(scene.materials[2].color.alpha(), 128);
    QCOMPARE(scene.materials[3].color, QColor(Qt::blue));
    QCOMPARE(scene.materials[4].color, QColor(Qt::white));
}

void TestGltfGeometry::readsCameras()
{
    const SceneGeometry scene = square().readWith(
        R"("cameras":[{"type":"perspective","perspective":{"yfov":1.5,"znear":0.5,"aspectRatio":2}},)"
        R"({"type":"orthographic","orthographic":{"xmag":4,"ymag":2,"znear":1,"zfar":9}},)"
        R"({"type":"perspective","perspective":{"yfov":-4}}],"nodes":[{"camera":1},{"camera":9}])");
    QVERIFY(scene.cameras[0].isPerspective);
    QCOMPARE(scene.cameras[0].verticalAngle, 1.5F);
    QCOMPARE(scene.cameras[0].aspect, 2.0F);
    QVERIFY(!scene.cameras[1].isPerspective);
    QCOMPARE(scene.cameras[1].height, 4.0F);
    QCOMPARE(scene.cameras[1].zFar, 9.0F);
    QCOMPARE(scene.cameras[2].verticalAngle, SceneGeometry::Camera().verticalAngle);
    QVERIFY(scene.nodes[0].camera == 1 && scene.nodes[1].camera == -1);
}

void TestGltfGeometry::readsLights()
{
    const SceneGeometry scene = square().readWith(
        R"("extensions":{"KHR_lights_punctual":{"lights":[{"type":"spot","color":[1,0,0],"spot":{"outerConeAngle":0.5}},)"
        R"({"type":"directional","intensity":3},{"type":"point"}]}},)"
        R"("nodes":[{"extensions":{"KHR_lights_punctual":{"light":1}}}])");
    using Type = SceneGeometry::Light::Type;
    QVERIFY(scene.lights[0].type == Type::Spot && scene.lights[0].color == QColor(Qt::red));
    QCOMPARE(scene.lights[0].outerAngle, 0.5F);
    QVERIFY(scene.lights[1].type == Type::Directional && scene.lights[2].type == Type::Point);
    QCOMPARE(scene.lights[1].intensity, 3.0F);
    QCOMPARE(scene.nodes[0].light, 1);
}

void TestGltfGeometry::cutsRingsOfNodes()
{
    const SceneGeometry scene = square().readWith(
        R"("nodes":[{"children":[1]},{"children":[2]},{"children":[0]},{"children":[3]}])");
    for (size_t i = 0; i < scene.nodes.size(); ++i) {
        int steps = 0;
        for (qint32 at = qint32(i); at >= 0 && steps <= 4; at = scene.nodes[size_t(at)].parent) {
            ++steps;
        }
        QVERIFY(steps <= 4);
    }
    QCOMPARE(scene.troubles.size(), 2);
}

void TestGltfGeometry::countsTroublesBeyondTheFirst()
{
    QByteArrayList meshes;
    for (int i = 0; i < 60; ++i) {
        meshes << R"({"primitives":[{"attributes":{}}]})";
    }
    const SceneGeometry scene = square().readWith("\"meshes\":[" + meshes.join(',') + ']');
    QCOMPARE(scene.troubles.size(), 51);
    QCOMPARE(scene.troubles.last(), QStringLiteral("And 10 more of this kind."));
}

void TestGltfGeometry::endsWhenItIsTold()
{
    interchange::SceneSource source;
    source.json = square().text(R"("meshes":[{},{},{},{}])");
    interchange::GltfGeometryReader reader(source);
    int meshesLeft = 2;
    bool isText = true;
    reader.setGoOn([&meshesLeft, &isText] {
        isText = false;
        return meshesLeft-- > 0;
    });
    QVERIFY(reader.read().meshes.size() < 4);
    QVERIFY(!isText);
}

void TestGltfGeometry::readsTheSampleScene()
{
    QFile file(QStringLiteral(NK_SAMPLES_DIR "/showroom.gltf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const SceneGeometry scene = GeometryFile::read(file.readAll());
    QCOMPARE(scene.troubles, QStringList());
    QVERIFY(scene.cameras.size() >= 3 && scene.lights.size() >= 3 && scene.nodes.size() > 20);
    for (const SceneGeometry::Mesh &mesh : scene.meshes) {
        QVERIFY(mesh.parts.size() == 1 && mesh.parts[0].normals.size() == mesh.parts[0].positions.size());
    }
}

NK_GUILESS_TEST_MAIN(TestGltfGeometry)
#include "test_gltf_geometry.moc"
