#include "viewport/SceneBatches.h"

#include <TestMain.h>

#include <set>

using interchange::SceneGeometry;

/// The long lists of triangles that a scene is drawn from.
class TestSceneBatches : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thousandsOfNodesAreOneList();
    void cornersStandWhereTheirNodesDo();
    void normalsStayUprightUnderScales();
    void facesWithoutNormalsAreFlat();
    void coloursAreThoseOfAScreen();
    void whatIsSeenThroughComesAfterTheRest();
    void theTrianglesOfAnItemAreFound();
    void largeMeshesOfManyNodesAreKeptOnce();

private:
    static SceneGeometry::Part triangle()
    {
        SceneGeometry::Part part;
        part.positions = {0, 0, 0, 1, 0, 0, 0, 1, 0};
        part.normals = {0, 0, 1, 0, 0, 1, 0, 0, 1};
        part.indices = {0, 1, 2};
        return part;
    }
    /// Nodes that show mesh 0, one after the other along x.
    static std::vector<SceneItem> nodes(SceneGeometry &scene, int count)
    {
        std::vector<SceneItem> items;
        for (int i = 0; i < count; ++i) {
            SceneGeometry::Node node;
            node.mesh = 0;
            node.local.translate(float(i), 0);
            scene.nodes.push_back(node);
            items.push_back({quint64(i + 1), i, node.local});
        }
        return items;
    }
};

void TestSceneBatches::thousandsOfNodesAreOneList()
{
    SceneGeometry scene;
    scene.meshes.push_back({{triangle()}});
    const std::vector<SceneItem> items = nodes(scene, 12603);
    const SceneBatches batches(scene, items);
    QCOMPARE(batches.opaque().size(), size_t(12603 * 3));
    QVERIFY(batches.instances().empty() && batches.translucent().empty() && batches.isComplete());
    QVERIFY(*std::max_element(batches.opaque().begin(), batches.opaque().end()) < batches.vertices().size());
}

void TestSceneBatches::cornersStandWhereTheirNodesDo()
{
    SceneGeometry scene;
    scene.meshes.push_back({{triangle()}});
    const SceneBatches batches(scene, nodes(scene, 3));
    const DrawVertex &corner = batches.vertices()[batches.opaque()[2 * 3 + 1]];
    QCOMPARE(QVector3D(corner.x, corner.y, corner.z), QVector3D(3, 0, 0));
}

void TestSceneBatches::normalsStayUprightUnderScales()
{
    SceneGeometry scene;
    SceneGeometry::Part part = triangle();
    part.positions = {0, 0, 0, 1, 0, -1, 0, 1, 0}; // a slope
    part.normals = {0.70710678F, 0, 0.70710678F, 0.70710678F, 0, 0.70710678F, 0.70710678F, 0, 0.70710678F};
    scene.meshes.push_back({{part}});
    std::vector<SceneItem> items = nodes(scene, 1);
    items[0].world.scale(4, 1, 1);
    const DrawVertex vertex = SceneBatches(scene, items).vertices().front();
    // Upright on (4, 0, -1).
    QVERIFY(qAbs(vertex.nx * 4 - vertex.nz) <= 4);
    QVERIFY(vertex.nz > 100);
}

void TestSceneBatches::facesWithoutNormalsAreFlat()
{
    SceneGeometry scene;
    SceneGeometry::Part part;
    part.positions = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
    part.indices = {0, 1, 2, 0, 2, 3};
    scene.meshes.push_back({{part}});
    const SceneBatches batches(scene, nodes(scene, 1));
    QCOMPARE(batches.vertices().size(), size_t(6)); // a corner for every face
    QCOMPARE(int(batches.vertices()[0].nz), 127);
    QCOMPARE(int(batches.vertices()[3].nx), 127);
}

void TestSceneBatches::coloursAreThoseOfAScreen()
{
    SceneGeometry scene;
    SceneGeometry::Part part = triangle();
    part.material = 0;
    scene.materials.push_back({QColor::fromRgbF(0.5, 0, 1), false});
    scene.meshes.push_back({{part, triangle()}});
    const SceneBatches batches(scene, nodes(scene, 1));
    const DrawVertex &vertex = batches.vertices().front();
    QCOMPARE(int(vertex.red), 188); // half of the light
    QVERIFY(vertex.green == 0 && vertex.blue == 255 && vertex.alpha == 255);
    QVERIFY(batches.vertices().back().red > 128); // without a material
}

void TestSceneBatches::whatIsSeenThroughComesAfterTheRest()
{
    SceneGeometry scene;
    SceneGeometry::Part glass = triangle();
    glass.material = 0;
    scene.materials.push_back({QColor(0, 0, 255, 100), false});
    scene.meshes.push_back({{glass, triangle()}});
    const SceneBatches batches(scene, nodes(scene, 2));
    QVERIFY(batches.opaque().size() == 6 && batches.translucent().size() == 6);
    for (const quint32 index : batches.translucent()) {
        QCOMPARE(int(batches.vertices()[index].alpha), 100);
    }
}

void TestSceneBatches::theTrianglesOfAnItemAreFound()
{
    SceneGeometry scene;
    SceneGeometry::Part glass = triangle();
    glass.material = 0;
    scene.materials.push_back({QColor(0, 0, 255, 100), false});
    scene.meshes.push_back({{glass, triangle()}});
    const SceneBatches batches(scene, nodes(scene, 3));
    const std::vector<quint32> found = batches.trianglesOf({false, true, false});
    QCOMPARE(found.size(), size_t(6));
    for (const quint32 index : found) {
        QVERIFY(batches.vertices()[index].x >= 1 && batches.vertices()[index].x <= 2);
    }
    QVERIFY(batches.trianglesOf({}).empty());
}

void TestSceneBatches::largeMeshesOfManyNodesAreKeptOnce()
{
    SceneGeometry scene;
    SceneGeometry::Part part;
    const size_t corners = SceneBatches::MostSharedVertices / 8;
    part.positions.resize(corners * 3);
    part.normals.resize(corners * 3, 1);
    part.indices = {0, 1, 2};
    scene.meshes.push_back({{part}});
    const std::vector<SceneItem> items = nodes(scene, 20);
    const SceneBatches batches(scene, items);
    QCOMPARE(batches.vertices().size(), corners);
    QCOMPARE(batches.instances().size(), size_t(20));
    QVERIFY(batches.opaque().empty() && batches.isComplete());
    QCOMPARE(batches.shared().size(), size_t(3));
    for (size_t i = 0; i < 20; ++i) {
        const SceneBatches::Instance &instance = batches.instances()[i];
        QVERIFY(instance.item == i && instance.world == items[i].world);
        QVERIFY(instance.opaque.count == 3 && instance.translucent.count == 0);
    }
}

NK_GUILESS_TEST_MAIN(TestSceneBatches)
#include "test_scene_batches.moc"
