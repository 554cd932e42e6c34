#include "ViewportFixture.h"

#include <TestMain.h>

using kernel::Document;

/// What the viewport shows of the document.
class TestViewportScene : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsBesideTheEventLoop();
    void readsNothingWhileNobodyLooks();
    void anotherSceneTakesThePlaceOfOneThatIsBeingRead();
    void showsGeometryThatTheSourceBrought();
    void aSceneOfAnotherKindWithoutGeometryIsBlank();
    void deletedObjectsVanishAndComeBackByUndo();
    void deletedObjectsAreNotPickedBeforeTheyVanish();
    void aNewNameMovesNothing();
    void catchesUpWhenSomebodyLooks();
    void groupsStandForWhatIsBelowThem();
    void boundsAreThoseOfTheMeshes();
    void tellsWhatIsNotDrawn();

private:
    static bool waitFor(ViewportScene &scene)
    {
        return QTest::qWaitFor([&scene] { return scene.state() == ViewportScene::State::Ready; });
    }
};

void TestViewportScene::readsBesideTheEventLoop()
{
    const ViewportFixture f;
    ViewportScene scene;
    scene.setActive(true);
    QCOMPARE(scene.state(), ViewportScene::State::Empty);
    QSignalSpy shown(&scene, &ViewportScene::sceneShown);
    scene.setSource(f.source);
    QCOMPARE(scene.state(), ViewportScene::State::Reading);
    QVERIFY(waitFor(scene));
    QCOMPARE(shown.count(), 1);
    QCOMPARE(f.shown(scene), QStringList({"Left", "Right", "Eye", "Lamp"}));
    scene.setSource(nullptr);
    QVERIFY(scene.state() == ViewportScene::State::Empty && scene.isBlank());
}

void TestViewportScene::readsNothingWhileNobodyLooks()
{
    const ViewportFixture f;
    auto source = std::make_shared<interchange::SceneSource>(*f.source);
    source->geometry = std::make_shared<interchange::SceneGeometry>(); // needs no reading
    ViewportScene scene;
    scene.setSource(source);
    QCoreApplication::processEvents();
    QCOMPARE(scene.state(), ViewportScene::State::Reading);
    scene.setActive(true);
    QVERIFY(waitFor(scene));
}

void TestViewportScene::anotherSceneTakesThePlaceOfOneThatIsBeingRead()
{
    const ViewportFixture f;
    ViewportScene scene;
    scene.setActive(true);
    QSignalSpy shown(&scene, &ViewportScene::sceneShown);
    for (int i = 0; i < 20; ++i) {
        scene.setSource(f.source);
    }
    QVERIFY(waitFor(scene));
    QCOMPARE(shown.count(), 1);
    scene.setSource(f.source); // and goes while it is read
}

void TestViewportScene::showsGeometryThatTheSourceBrought()
{
    const ViewportFixture f;
    auto source = std::make_shared<interchange::SceneSource>(*f.source);
    auto geometry = std::make_shared<interchange::SceneGeometry>();
    geometry->nodes.resize(6);
    geometry->lights.resize(1);
    geometry->nodes[5].light = 0;
    geometry->troubles = QStringList{QStringLiteral("Most of it is gone.")};
    source->geometry = geometry;
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(source);
    QVERIFY(waitFor(scene));
    QCOMPARE(f.shown(scene), QStringList{"Empty"});
    QCOMPARE(scene.troubles(), geometry->troubles);
}

void TestViewportScene::aSceneOfAnotherKindWithoutGeometryIsBlank()
{
    const ViewportFixture f;
    auto source = std::make_shared<interchange::SceneSource>(*f.source);
    source->json.clear();
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(source);
    QVERIFY(waitFor(scene));
    QVERIFY(scene.isBlank());
    QCOMPARE(scene.troubles(), QStringList());
}

void TestViewportScene::deletedObjectsVanishAndComeBackByUndo()
{
    const ViewportFixture f;
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(f.source);
    QVERIFY(waitFor(scene));
    const size_t triangles = scene.batches().opaque().size();
    Document::the().deleteObjects(f.idsOf({"Left", "Lamp"}));
    QTRY_COMPARE(f.shown(scene), QStringList({"Right", "Eye"}));
    QCOMPARE(scene.batches().opaque().size(), triangles / 2);
    Document::the().undo();
    QTRY_COMPARE(f.shown(scene), QStringList({"Left", "Right", "Eye", "Lamp"}));
    QCOMPARE(scene.batches().opaque().size(), triangles);
}

void TestViewportScene::deletedObjectsAreNotPickedBeforeTheyVanish()
{
    const ViewportFixture f;
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(f.source);
    QVERIFY(waitFor(scene));
    OrbitCamera camera;
    camera.setSize({400, 300});
    camera.setScene(scene.wholeBounds());
    camera.fit(scene.bounds());
    const QPoint left = ViewportFixture::seenAt(camera, {-2, 0, 0});
    QCOMPARE(scene.pick(camera, left, {}), f.id("Left"));
    Document::the().deleteObjects({f.id("Left")});
    QCOMPARE(scene.pick(camera, left, {}), quint64(0));
    QCOMPARE(scene.pickAll(camera, {0, 0, 400, 300}, {}), f.idsOf({"Right"}));
}

void TestViewportScene::aNewNameMovesNothing()
{
    const ViewportFixture f;
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(f.source);
    QVERIFY(waitFor(scene));
    QSignalSpy changed(&scene, &ViewportScene::changed);
    nkdNode(nkdObject(f.id("Left"))).setName(QStringLiteral("Other"));
    QCoreApplication::processEvents(); // changes are followed by a timer without delay
    QCOMPARE(changed.count(), 0);
}

void TestViewportScene::catchesUpWhenSomebodyLooks()
{
    const ViewportFixture f;
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(f.source);
    QVERIFY(waitFor(scene));
    scene.setActive(false);
    QSignalSpy changed(&scene, &ViewportScene::changed);
    Document::the().deleteObjects({f.id("Left")});
    QCoreApplication::processEvents(); // changes are followed by a timer without delay
    QCOMPARE(changed.count(), 0);
    scene.setActive(true);
    QCOMPARE(f.shown(scene), QStringList({"Right", "Eye", "Lamp"}));
}

void TestViewportScene::groupsStandForWhatIsBelowThem()
{
    const ViewportFixture f;
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(f.source);
    QVERIFY(waitFor(scene));
    QCOMPARE(scene.mark(f.idsOf({"Pair"})), std::vector<bool>({true, true, false, false}));
    QCOMPARE(scene.mark(f.idsOf({"Right", "Eye"})), std::vector<bool>({false, true, true, false}));
    QCOMPARE(scene.mark(f.idsOf({"Empty"})), std::vector<bool>(4));
}

void TestViewportScene::boundsAreThoseOfTheMeshes()
{
    const ViewportFixture f;
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(f.source);
    QVERIFY(waitFor(scene));
    QCOMPARE(scene.bounds().least, QVector3D(-2.5F, -0.5F, -0.5F));
    QCOMPARE(scene.bounds().most, QVector3D(2.5F, 0.5F, 0.5F));
    QVERIFY(scene.wholeBounds().most.y() >= 4); // the lamp
    QCOMPARE(scene.boundsOf(scene.mark(f.idsOf({"Right"}))).least, QVector3D(1.5F, -0.5F, -0.5F));
    QVERIFY(scene.boundsOf(scene.mark({})).isEmpty());
}

void TestViewportScene::tellsWhatIsNotDrawn()
{
    const ViewportFixture f;
    QByteArray text = ViewportFixture::text();
    text.replace(R"("indices":1,"material":1)", R"("indices":1,"mode":1)");
    ViewportFixture::write(f.folder.filePath(QStringLiteral("lines.gltf")), text);
    ViewportScene scene;
    scene.setActive(true);
    scene.setSource(SceneFile::open(f.folder.filePath(QStringLiteral("lines.gltf"))).source);
    QVERIFY(waitFor(scene));
    QCOMPARE(scene.troubles(), QStringList{"Points and lines are not drawn."});
}

NK_TEST_MAIN(TestViewportScene)
#include "test_viewport_scene.moc"
