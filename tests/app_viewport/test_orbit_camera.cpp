#include "viewport/OrbitCamera.h"

#include <TestMain.h>

/// The viewport's eye.
class TestOrbitCamera : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fitsAllOfABoxAndNotMuchMore_data();
    void fitsAllOfABoxAndNotMuchMore();
    void fitsWhatHasNoSize();
    void anEmptyBoxChangesNothing();
    void turnsAroundItsTarget();
    void neverTurnsOverTheTop();
    void panningFollowsTheMouse();
    void zoomingKeepsThePlaceUnderTheMouse();
    void zoomingEndsSomewhere();
    void raysGoThroughWhatIsSeen();
    void nothingOfTheSceneIsCutOff();

private:
    static OrbitCamera cameraOf(const SceneBox &box, const QSizeF &size = {800, 600})
    {
        OrbitCamera camera;
        camera.setSize(size);
        camera.setScene(box);
        camera.fit(box);
        return camera;
    }
    static SceneBox boxOf(const QVector3D &least, const QVector3D &most)
    {
        SceneBox box;
        box.add(least);
        box.add(most);
        return box;
    }
    static QPointF seenAt(const OrbitCamera &camera, const QVector3D &point)
    {
        const QVector3D at = camera.viewProjection().map(point);
        return {(double(at.x()) + 1) / 2 * camera.size().width(),
                (1 - double(at.y())) / 2 * camera.size().height()};
    }
};

void TestOrbitCamera::fitsAllOfABoxAndNotMuchMore_data()
{
    QTest::addColumn<QVector3D>("least");
    QTest::addColumn<QVector3D>("most");
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("cube") << QVector3D(-1, -1, -1) << QVector3D(1, 1, 1) << QSizeF(800, 600);
    QTest::newRow("long, far away") << QVector3D(1000, 0, 0) << QVector3D(1400, 2, 2) << QSizeF(800, 600);
    QTest::newRow("tiny") << QVector3D() << QVector3D(1e-3F, 1e-3F, 1e-3F) << QSizeF(800, 600);
    QTest::newRow("narrow viewport") << QVector3D(-1, -1, -1) << QVector3D(1, 1, 1) << QSizeF(100, 900);
}

void TestOrbitCamera::fitsAllOfABoxAndNotMuchMore()
{
    QFETCH(QVector3D, least);
    QFETCH(QVector3D, most);
    QFETCH(QSizeF, size);
    const SceneBox box = boxOf(least, most);
    const OrbitCamera camera = cameraOf(box, size);
    double widest = 0;
    for (const QVector3D &corner : box.corners()) {
        const QVector3D at = camera.viewProjection().map(corner);
        widest = qMax(widest, double(qMax(qAbs(at.x()), qAbs(at.y()))));
        QVERIFY(at.z() > -1 && at.z() < 1);
    }
    QVERIFY2(widest > 0.7 && widest < 1, qPrintable(QString::number(widest)));
}

void TestOrbitCamera::fitsWhatHasNoSize()
{
    OrbitCamera camera = cameraOf(boxOf({-10, -10, -10}, {10, 10, 10}));
    camera.fit(boxOf({3, 3, 3}, {3, 3, 3}));
    QCOMPARE(camera.target(), QVector3D(3, 3, 3));
    QVERIFY(camera.distance() > 1 && camera.distance() < 20);
}

void TestOrbitCamera::anEmptyBoxChangesNothing()
{
    OrbitCamera camera = cameraOf(boxOf({-1, -1, -1}, {1, 1, 1}));
    const QMatrix4x4 before = camera.viewProjection();
    camera.fit(SceneBox());
    QCOMPARE(camera.viewProjection(), before);
}

void TestOrbitCamera::turnsAroundItsTarget()
{
    OrbitCamera camera = cameraOf(boxOf({-1, -1, -1}, {1, 1, 1}));
    const float distance = camera.distance();
    const QVector3D eye = camera.eye();
    camera.orbit({100, 40});
    QCOMPARE(camera.target(), QVector3D());
    QVERIFY(qAbs((camera.eye() - camera.target()).length() - distance) < 1e-3F);
    // Dragged to the right, the scene turns to the right: the eye goes to the left.
    const QVector3D right = QVector3D::crossProduct(-eye, {0, 1, 0});
    QVERIFY(QVector3D::dotProduct(camera.eye() - eye, right) < 0);
    QVERIFY(camera.eye().y() > eye.y());
}

void TestOrbitCamera::neverTurnsOverTheTop()
{
    OrbitCamera camera = cameraOf(boxOf({-1, -1, -1}, {1, 1, 1}));
    for (const qreal way : {5000.0, -10000.0}) {
        camera.orbit({0, way});
        QVERIFY(seenAt(camera, {0, 1, 0}).y() < seenAt(camera, {0, -1, 0}).y());
    }
}

void TestOrbitCamera::panningFollowsTheMouse()
{
    OrbitCamera camera = cameraOf(boxOf({-1, -1, -1}, {1, 1, 1}));
    const QPointF before = seenAt(camera, {});
    camera.pan({60, -25});
    const QPointF way = seenAt(camera, {}) - before;
    QVERIFY2((way - QPointF(60, -25)).manhattanLength() < 1, qPrintable(QString::number(way.x())));
}

void TestOrbitCamera::zoomingKeepsThePlaceUnderTheMouse()
{
    OrbitCamera camera = cameraOf(boxOf({-1, -1, -1}, {1, 1, 1}));
    const QPointF place(200, 450);
    // A point as far away as the target, seen there.
    const ViewRay ray = camera.ray(place);
    const QVector3D forward = (camera.target() - camera.eye()).normalized();
    const QVector3D point = ray.origin
                            + ray.direction
                                  * (camera.distance() / QVector3D::dotProduct(ray.direction, forward));
    const float before = camera.distance();
    camera.zoom(2, place);
    QVERIFY(qAbs(camera.distance() - before / 2) < 1e-3F);
    QVERIFY((seenAt(camera, point) - place).manhattanLength() < 1);
}

void TestOrbitCamera::zoomingEndsSomewhere()
{
    OrbitCamera camera = cameraOf(boxOf({-1, -1, -1}, {1, 1, 1}));
    for (const float factor : {10.0F, 0.1F}) {
        for (int i = 0; i < 50; ++i) {
            camera.zoom(factor, {400, 300});
        }
        QVERIFY(camera.distance() > 1e-5F && camera.distance() < 1e5F);
        QVERIFY(!qIsNaN(camera.viewProjection()(0, 0)));
    }
}

void TestOrbitCamera::raysGoThroughWhatIsSeen()
{
    OrbitCamera camera = cameraOf(boxOf({-1, -1, -1}, {1, 1, 1}));
    camera.orbit({-70, 33});
    for (const QVector3D &point : {QVector3D(1, 1, 1), QVector3D(-1, 0.5F, 0.2F), QVector3D()}) {
        const ViewRay ray = camera.ray(seenAt(camera, point));
        QVERIFY(point.distanceToLine(ray.origin, ray.direction) < 0.01F);
        QVERIFY(QVector3D::dotProduct(point - ray.origin, ray.direction) > 0);
    }
}

void TestOrbitCamera::nothingOfTheSceneIsCutOff()
{
    const SceneBox box = boxOf({-100, -1, -100}, {100, 1, 100});
    OrbitCamera camera = cameraOf(box);
    camera.fit(boxOf({99, 0, 99}, {100, 1, 100})); // a detail at the edge
    for (const QVector3D &corner : box.corners()) {
        const QVector4D at = camera.viewProjection() * QVector4D(corner, 1);
        QVERIFY(at.w() <= 0 || at.z() <= at.w()); // behind the eye, or not beyond what is seen
    }
    QCOMPARE(camera.part({0, 0, 800, 600}), QRectF(-1, -1, 2, 2));
}

NK_GUILESS_TEST_MAIN(TestOrbitCamera)
#include "test_orbit_camera.moc"
