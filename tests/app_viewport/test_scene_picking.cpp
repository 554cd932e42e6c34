#include "viewport/ScenePicker.h"

#include <TestMain.h>

#include <random>

using interchange::SceneGeometry;

/// Finding what is pointed at, compared with looking at everything.
class TestScenePicking : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aRayHitsTheNearestTriangle();
    void aVolumeFindsWhatIsInIt();
    void aThinVolumeFindsATriangleThatItPierces();
    void whatIsBehindTheEyeIsNeverFound();
    void flatAndEmptyThingsAreNoTrouble();
    void theNearerOfMeshAndGizmoIsHit();

private:
    struct Triangle
    {
        QVector3D corners[3];
        size_t item;
    };
    std::vector<Triangle> triangles() const;

    SceneGeometry m_scene;
    std::vector<SceneItem> m_items;
    SceneGizmos m_gizmos;
    OrbitCamera m_camera;
};

namespace {

constexpr SceneGizmos::Kinds allKinds = SceneGizmos::Cameras | SceneGizmos::Lights;

SceneGeometry::Part randomPart(std::mt19937 &random, int triangles)
{
    std::uniform_real_distribution<float> place(-1, 1);
    SceneGeometry::Part part;
    for (int i = 0; i < triangles * 3; ++i) {
        part.indices.push_back(uint32_t(i));
        for (int axis = 0; axis < 3; ++axis) {
            part.positions.push_back(place(random));
        }
    }
    return part;
}

/// Where a ray hits a triangle, by solving for it; infinity where it does not.
double hitOf(const QVector3D *corners, const ViewRay &ray)
{
    const QVector3D normal = QVector3D::crossProduct(corners[1] - corners[0], corners[2] - corners[0]);
    const double along = double(QVector3D::dotProduct(normal, ray.direction));
    const double at = double(QVector3D::dotProduct(normal, corners[0] - ray.origin)) / along;
    const QVector3D point = ray.origin + ray.direction * float(at);
    for (int i = 0; i < 3; ++i) {
        const QVector3D side = corners[(i + 1) % 3] - corners[i];
        if (QVector3D::dotProduct(QVector3D::crossProduct(side, point - corners[i]), normal) < 0) {
            return qInf();
        }
    }
    return at > 0 ? at : qInf();
}

} // namespace

void TestScenePicking::initTestCase()
{
    std::mt19937 random(5);
    std::uniform_real_distribution<float> place(-8, 8);
    for (int i = 0; i < 4; ++i) {
        SceneGeometry::Mesh mesh;
        mesh.parts.push_back(randomPart(random, 1 + i * 4));
        mesh.parts.push_back(randomPart(random, 2));
        m_scene.meshes.push_back(mesh);
    }
    for (int i = 0; i < 60; ++i) {
        SceneGeometry::Node node;
        node.mesh = i % 4;
        node.local.translate(place(random), place(random), place(random));
        node.local.rotate(place(random) * 30, 1, 2, 3);
        node.local.scale(1, 0.5F, i % 7 == 0 ? -1.5F : 1.5F);
        m_scene.nodes.push_back(node);
        m_items.push_back({quint64(1000 + i), i, node.local});
    }
    SceneBox bounds;
    bounds.add({-9, -9, -9});
    bounds.add({9, 9, 9});
    m_camera.setSize({300, 200});
    m_camera.setScene(bounds);
    m_camera.fit(bounds);
}

std::vector<TestScenePicking::Triangle> TestScenePicking::triangles() const
{
    std::vector<Triangle> all;
    for (size_t item = 0; item < m_items.size(); ++item) {
        for (const auto &part : m_scene.meshes[size_t(m_scene.nodes[item].mesh)].parts) {
            for (size_t i = 0; i + 2 < part.indices.size(); i += 3) {
                Triangle triangle{{}, item};
                for (size_t k = 0; k < 3; ++k) {
                    const float *at = &part.positions[size_t(part.indices[i + k]) * 3];
                    triangle.corners[k] = m_items[item].world.map(QVector3D(at[0], at[1], at[2]));
                }
                all.push_back(triangle);
            }
        }
    }
    return all;
}

void TestScenePicking::aRayHitsTheNearestTriangle()
{
    const ScenePicker picker(m_scene, m_items, m_gizmos);
    const std::vector<Triangle> all = triangles();
    int hits = 0;
    for (int x = 3; x < 300; x += 6) {
        for (int y = 3; y < 200; y += 6) {
            const ViewRay ray = m_camera.ray(QPointF(x, y));
            double nearest = qInf();
            quint64 expected = 0;
            for (const Triangle &triangle : all) {
                const double at = hitOf(triangle.corners, ray);
                if (at < nearest) {
                    nearest = at;
                    expected = m_items[triangle.item].id;
                }
            }
            hits += expected != 0 ? 1 : 0;
            QCOMPARE(picker.at(m_camera, QPointF(x, y), allKinds), expected);
        }
    }
    QVERIFY(hits > 50);
}

void TestScenePicking::aVolumeFindsWhatIsInIt()
{
    const ScenePicker picker(m_scene, m_items, m_gizmos);
    const std::vector<Triangle> all = triangles();
    std::mt19937 random(6);
    for (int i = 0; i < 60; ++i) {
        const QRectF rect = QRectF(QPointF(random() % 300, random() % 200),
                                   QPointF(random() % 300, random() % 200))
                                .normalized();
        const QList<quint64> found = picker.in(m_camera, rect, allKinds);
        // Sure to be in it: what has a corner, a point of a side or of the face seen inside the rectangle.
        QSet<quint64> sure;
        for (const Triangle &triangle : all) {
            for (int step = 0; step < 66; ++step) {
                const float u = float(step % 11) / 10;
                const float v = float(step / 11) / 5 * (1 - u);
                const QVector3D point = triangle.corners[0] * (1 - u - v) + triangle.corners[1] * u
                                        + triangle.corners[2] * v;
                const QVector3D at = m_camera.viewProjection().map(point);
                const QPointF seen((double(at.x()) + 1) * 150, (1 - double(at.y())) * 100);
                if (rect.adjusted(0.01, 0.01, -0.01, -0.01).contains(seen)) {
                    sure.insert(m_items[triangle.item].id);
                }
            }
        }
        for (const quint64 id : qAsConst(sure)) {
            QVERIFY(found.contains(id));
        }
        // What is found, but seen nowhere inside by the steps above, passes through between them.
        QVERIFY(found.size() <= sure.size() + sure.size() / 3 + 3);
        QVERIFY(std::is_sorted(found.begin(), found.end()));
    }
}

void TestScenePicking::aThinVolumeFindsATriangleThatItPierces()
{
    const ScenePicker picker(m_scene, m_items, m_gizmos);
    int hits = 0;
    for (int x = 5; x < 300; x += 2) {
        const quint64 hit = picker.at(m_camera, QPointF(x, 100), allKinds);
        if (hit != 0) {
            ++hits;
            QVERIFY(picker.in(m_camera, QRectF(x - 0.05, 99.95, 0.1, 0.1), allKinds).contains(hit));
        }
    }
    QVERIFY(hits > 5);
}

void TestScenePicking::whatIsBehindTheEyeIsNeverFound()
{
    OrbitCamera camera = m_camera;
    camera.zoom(1e4F, {150, 100}); // inside of the scene
    const ScenePicker picker(m_scene, m_items, m_gizmos);
    const QVector3D forward = (camera.target() - camera.eye()).normalized();
    const QList<quint64> found = picker.in(camera, {0, 0, 300, 200}, allKinds);
    for (size_t item = 0; item < m_items.size(); ++item) {
        bool isAhead = false;
        for (const QVector3D &corner : picker.boundsOf(item).corners()) {
            isAhead = isAhead || QVector3D::dotProduct(corner - camera.eye(), forward) > 0;
        }
        QVERIFY(isAhead || !found.contains(m_items[item].id));
    }
}

void TestScenePicking::flatAndEmptyThingsAreNoTrouble()
{
    SceneGeometry scene;
    scene.meshes.resize(2);
    SceneGeometry::Part point;
    point.positions = {1, 1, 1};
    point.indices = {0, 0, 0};
    scene.meshes[1].parts.push_back(point);
    std::vector<SceneItem> items;
    for (int i = 0; i < 3; ++i) {
        SceneGeometry::Node node;
        node.mesh = i % 2;
        if (i == 1) {
            node.local.scale(0);
        }
        scene.nodes.push_back(node);
        items.push_back({quint64(i + 1), i, node.local});
    }
    const ScenePicker picker(scene, items, m_gizmos);
    QCOMPARE(picker.at(m_camera, {150, 100}, allKinds), quint64(0));
    QCOMPARE(picker.in(m_camera, {0, 0, 300, 200}, allKinds), QList<quint64>{2});
    const ScenePicker nothing(SceneGeometry(), {}, m_gizmos);
    QVERIFY(nothing.bounds().isEmpty());
    QCOMPARE(nothing.at(m_camera, {150, 100}, allKinds), quint64(0));
}

void TestScenePicking::theNearerOfMeshAndGizmoIsHit()
{
    SceneGeometry scene;
    scene.lights.resize(1);
    scene.meshes.resize(1);
    SceneGeometry::Part wall;
    wall.positions = {-50, -50, 0, 50, -50, 0, 0, 80, 0};
    wall.indices = {0, 1, 2};
    scene.meshes[0].parts.push_back(wall);
    scene.nodes.resize(3);
    scene.nodes[0].mesh = 0;
    scene.nodes[1].light = 0;
    scene.nodes[2].light = 0;
    std::vector<SceneItem> items{{1, 0, {}}, {2, 1, {}}, {3, 2, {}}};
    const QVector3D toEye = m_camera.eye().normalized();
    items[1].world.translate(toEye * 4);
    items[2].world.translate(toEye * -4);
    const SceneGizmos gizmos(scene, items, 1);
    const ScenePicker picker(scene, items, gizmos);
    QCOMPARE(picker.at(m_camera, {150, 100}, allKinds), quint64(2));
    QCOMPARE(picker.at(m_camera, {150, 100}, SceneGizmos::Cameras), quint64(1));
    QCOMPARE(picker.in(m_camera, {140, 90, 20, 20}, allKinds), QList<quint64>({1, 2, 3}));
}

NK_GUILESS_TEST_MAIN(TestScenePicking)
#include "test_scene_picking.moc"
