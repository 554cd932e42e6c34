#include "SceneTree.h"
#include "StructureVariety.h"
#include "TestMain.h"

#include <QDirIterator>
#include <QUndoStack>

using namespace Fixtures;

/// What each change of the tree does to the text of a file, byte by byte.
class TestSceneStructure : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newNodesComeToTheEndAndAreListed();
    void newNodesAreLaidOutLikeTheirNeighbours();
    void aSceneWithoutAnythingGetsItsLists();
    void newCamerasAndLightsGetDevices();
    void whatWasMadeAndDeletedLeavesNothing();
    void deletedNodesStayUnlistedAndHidden();
    void deletedMaterialsKeepTheirLook();
    void aFileWithoutScenesGetsOneToDeleteIn();
    void deletingInSceneListsKeepsTheOthers();
    void undoPastASaveBringsEverythingBack();
    void undoOfEverythingGivesTheSameBytes_data();
    void undoOfEverythingGivesTheSameBytes();
    void aChangedTreeOfAnyFileIsOpenedAgain_data() { undoOfEverythingGivesTheSameBytes_data(); }
    void aChangedTreeOfAnyFileIsOpenedAgain();
    void reorderedChildrenAreRewrittenInPlace();
    void groupingMovesNothingInTheWorld();
    void movedNodesKeepTheirPlace();
    void nodesThatAnimationsUseAreSaidToBeMoved();
    void groupsSurviveWithTheirMetadata();
    void sceneplatesNameImagesBelowTheFileRelatively();
    void theOrderOfRootsSurvivesWhereScenesCannotSayIt();
    void structureAfterASaveIsSavedAgain();
    void aForeignAnnexRefusesDeletionsInWords();
};

namespace {

kernel::Document &document()
{
    return kernel::Document::the();
}

quint64 find(const char *name)
{
    return SceneTree::find(name);
}

quint64 make(nkObjectType type, const char *name, quint64 parent = 0)
{
    return document().createObject(type, QLatin1String(name), parent);
}

/// One of everything: made, moved out of its parent, deleted.
void changeTree()
{
    const QList<quint64> roots = document().topLevelNodes();
    const quint64 group = make(nkObjectType::Node, "G");
    make(nkObjectType::Light, "L", group);
    make(nkObjectType::MaterialGroup, "M");
    document().createSceneplate(QStringLiteral("P"), QStringLiteral("/a.png"),
                                kernel::SceneplatePlacement::InFront, group);
    if (roots.isEmpty())
        return;
    document().moveObjects(document().childrenOf(roots.first()).mid(0, 3), group);
    document().moveObjects({roots.first()}, group);
    document().deleteObjects({roots.last(), document().childrenOf(roots.first()).value(0)});
}

const QByteArray Pair = R"("scenes":[{"nodes":[0]}],"nodes":[{"name":"A","children":[1]},{"name":"B"}])";

QByteArray annex(const QByteArray &members)
{
    return R"("extras":{"metadataEditor":{"version":1,"sets":{"format":"metadata-sets","version":1,"sets":[]},)"
           R"("assets":[],"objects":[],"assigned":[],)"
           + members + "}}";
}

} // namespace

void TestSceneStructure::newNodesComeToTheEndAndAreListed()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(Pair)));
    const quint64 group = make(nkObjectType::Node, "G", find("A"));
    make(nkObjectType::Node, "Root");
    SavingFixture::ownSet(nkdObject(group)).setValue(QStringLiteral("k"), 1);
    QCOMPARE(scene.saved(),
             gltf(R"("scenes":[{"nodes":[0,3]}],"nodes":[{"name":"A","children":[1,2]},{"name":"B"},)"
                  R"({"name":"G","extras":{"k":1}},{"name":"Root"}])"));
}

void TestSceneStructure::newNodesAreLaidOutLikeTheirNeighbours()
{
    SavingFixture scene;
    const QByteArray head = "{\n  \"asset\": {\"version\": \"2.0\"},\n  \"nodes\": [\n    {\n"
                            "      \"name\": \"A\",\n      \"scale\": [1, 1, 2]";
    const QByteArray middle = "\n    }";
    const QByteArray tail = "\n  ],\n  \"scenes\": [{\"nodes\": [0]}]\n}\n";
    QVERIFY(scene.openContent(head + middle + tail));
    make(nkObjectType::Node, "B", make(nkObjectType::Node, "G", find("A")));
    QCOMPARE(scene.saved(), head + ",\n      \"children\": [1]" + middle
                                + ",\n    {\n      \"name\": \"G\",\n      \"children\": [2]\n    }"
                                  ",\n    {\n      \"name\": \"B\"\n    }"
                                + tail);
}

void TestSceneStructure::aSceneWithoutAnythingGetsItsLists()
{
    SavingFixture scene;
    QVERIFY(scene.openContent("{\n  \"asset\": {\"version\": \"2.0\"}\n}\n"));
    make(nkObjectType::Node, "A");
    make(nkObjectType::Material, "Red");
    QCOMPARE(scene.saved(), QByteArray("{\n  \"asset\": {\"version\": \"2.0\"},\n"
                                       "  \"scene\": 0,\n"
                                       "  \"scenes\": [\n    {\"nodes\": [0]}\n  ],\n"
                                       "  \"nodes\": [\n    {\"name\": \"A\"}\n  ],\n"
                                       "  \"materials\": [\n    {\"name\": \"Red\"}\n  ]\n}\n"));
}

void TestSceneStructure::newCamerasAndLightsGetDevices()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(Pair)));
    make(nkObjectType::Camera, "Eye", find("B"));
    make(nkObjectType::Light, "Sun");
    const QByteArray saved = scene.saved();
    QVERIFY(saved.contains(R"({"name":"Eye","camera":0})"));
    QVERIFY(saved.contains(R"({"name":"Sun","extensions":{"KHR_lights_punctual":{"light":0}}})"));
    QVERIFY(saved.contains(R"("cameras":[{"type":"perspective","perspective":{"yfov":0.8,"znear":0.01}}])"));
    QVERIFY(saved.contains(R"("lights":[{"type":"directional","intensity":3}])"));
    QVERIFY(saved.contains(R"("extensionsUsed":["KHR_lights_punctual"])"));
    QCOMPARE(SceneTree::fault(saved), QString());
    QVERIFY(scene.open(scene.path));
    QCOMPARE(document().typeOf(find("Eye")), nkObjectType::Camera);
    QCOMPARE(document().typeOf(find("Sun")), nkObjectType::Light);
}

void TestSceneStructure::whatWasMadeAndDeletedLeavesNothing()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(Pair)));
    const quint64 group = make(nkObjectType::Node, "G", find("A"));
    const quint64 camera = make(nkObjectType::Camera, "Eye", group);
    const quint64 light = make(nkObjectType::Light, "Sun");
    const quint64 material = make(nkObjectType::Material, "Red");
    QVERIFY(scene.saved() != gltf(Pair));
    QVERIFY(document().deleteObjects({group, camera, light, material}));
    QCOMPARE(scene.saved(), gltf(Pair));
    QVERIFY(document().undo());
    QVERIFY(scene.saved() != gltf(Pair));
    document().undoStack()->setIndex(0);
    QCOMPARE(scene.saved(), gltf(Pair));
}

void TestSceneStructure::deletedNodesStayUnlistedAndHidden()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(Pair + R"(,"skins":[{"joints":[1]}])")));
    QVERIFY(document().deleteObjects({find("B")}));
    const SavingFixture::Saved saved = scene.save();
    QVERIFY2(saved.error.contains(QStringLiteral("skins")), qPrintable(saved.error));
    QCOMPARE(SavingFixture::read(scene.path),
             gltf(R"("scenes":[{"nodes":[0]}],"nodes":[{"name":"A"},{"name":"B"}],"skins":[{"joints":[1]}],)"
                  + annex(R"("removed":[{"node":1,"name":"B"}])")));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(document().objectCount(), 1);
    QVERIFY(scene.report.isClean());
    make(nkObjectType::Node, "C");
    QVERIFY(scene.saved().contains(R"({"name":"B"},{"name":"C"}])"));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(document().objectCount(), 2);
}

void TestSceneStructure::deletedMaterialsKeepTheirLook()
{
    SavingFixture scene;
    const QByteArray content = R"("meshes":[{"primitives":[{"attributes":{},"material":0}]}],)"
                               R"("materials":[{"name":"Red"},{"name":"Blue"}])";
    QVERIFY(scene.openContent(gltf(content)));
    QVERIFY(document().deleteObjects({find("Red")}));
    QCOMPARE(scene.saved(), gltf(content + ',' + annex(R"("removed":[{"material":0,"name":"Red"}])")));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(document().topLevelMaterials().size(), 1);
    QCOMPARE(find("Blue"), document().topLevelMaterials().first());
}

void TestSceneStructure::aFileWithoutScenesGetsOneToDeleteIn()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(R"("nodes":[{"name":"A"},{"name":"B"}])")));
    QVERIFY(document().deleteObjects({find("A")}));
    QCOMPARE(scene.saved(), gltf(R"("nodes":[{"name":"A"},{"name":"B"}],"scene":0,"scenes":[{"nodes":[1]}],)"
                                 + annex(R"("removed":[{"node":0,"name":"A"}])")));
}

void TestSceneStructure::deletingInSceneListsKeepsTheOthers()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(R"("scene":1,"scenes":[{"nodes":[ 0 , 1 ]},{"nodes":[2]}],)"
                                   R"("nodes":[{"name":"A"},{"name":"B"},{"name":"C"}])")));
    QVERIFY(document().deleteObjects({find("A"), find("C")}));
    make(nkObjectType::Node, "New");
    const QByteArray saved = scene.saved();
    QVERIFY2(saved.contains(R"("scenes":[{"nodes":[ 1 ]},{"nodes":[3]}])"), saved.constData());
}

void TestSceneStructure::undoPastASaveBringsEverythingBack()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(StructureVariety::placed()));
    const QString before = SceneTree::dump();
    QVERIFY(document().deleteObjects({find("Hall")}));
    QVERIFY(scene.saved() != StructureVariety::placed());
    QVERIFY(document().undo());
    SavingFixture::entry(QStringLiteral("Hook"), QStringLiteral("load")).setValue(3.5);
    const QByteArray saved = scene.saved();
    QCOMPARE(saved, StructureVariety::placed().replace("2.5", "3.5"));
    QVERIFY(document().undo());
    QCOMPARE(scene.saved(), StructureVariety::placed());
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SceneTree::dump(), before);
}

void TestSceneStructure::undoOfEverythingGivesTheSameBytes_data()
{
    QTest::addColumn<QByteArray>("content");
    for (int i = 0; i < StructureVariety::Count; ++i)
        QTest::addRow("made %d", i) << StructureVariety::file(i);
    // Files of others that a developer may have beside the project.
    QDirIterator more(qEnvironmentVariable("NK_MORE_SAMPLES", QStringLiteral(NK_MORE_SAMPLES)),
                      {"*.gltf", "*.glb"}, QDir::Files, QDirIterator::Subdirectories);
    while (more.hasNext()) {
        const QString path = more.next();
        QTest::newRow(qPrintable(QFileInfo(path).fileName())) << SavingFixture::read(path);
    }
}

void TestSceneStructure::undoOfEverythingGivesTheSameBytes()
{
    QFETCH(QByteArray, content);
    SavingFixture scene;
    QVERIFY(scene.openContent(content));
    changeTree();
    document().undoStack()->setIndex(0);
    QCOMPARE(scene.saved(), content);
}

void TestSceneStructure::aChangedTreeOfAnyFileIsOpenedAgain()
{
    QFETCH(QByteArray, content);
    SavingFixture scene;
    QVERIFY(scene.openContent(content));
    const QString before = SceneTree::dump();
    changeTree();
    const QString changed = SceneTree::dump();
    QCOMPARE(scene.save().outcome, SavingFixture::Saved::Done);
    const QByteArray kept = SavingFixture::read(scene.path);
    QCOMPARE(SceneTree::fault(kept), QString());
    document().undoStack()->setIndex(0);
    QCOMPARE(scene.save().outcome, SavingFixture::Saved::Done);
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SceneTree::dump(), before);
    QVERIFY(scene.openContent(kept));
    QCOMPARE(SceneTree::dump(), changed);
}

void TestSceneStructure::reorderedChildrenAreRewrittenInPlace()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(
        gltf(R"("nodes":[{"name":"P","children":[ 1,2 ,3]},{"name":"A"},{"name":"B"},{"name":"C"}])")));
    QVERIFY(document().moveObjects({find("C")}, find("P"), 0));
    QVERIFY(scene.saved().contains(R"("children":[ 3,1 ,2])"));
    QVERIFY(document().moveObjects({find("A")}, find("P"), -1));
    QVERIFY(scene.saved().contains(R"("children":[ 3,2 ,1])"));
    QVERIFY(document().deleteObjects({find("B")}));
    QVERIFY(scene.saved().contains(R"("children":[ 3 ,1])"));
}

void TestSceneStructure::groupingMovesNothingInTheWorld()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(StructureVariety::placed()));
    const quint64 group = make(nkObjectType::Node, "Group", find("Crane"));
    QVERIFY(document().moveObjects({find("Hook")}, group));
    const QByteArray saved = scene.saved();
    const QByteArray hook = StructureVariety::placed().mid(
        StructureVariety::placed().indexOf("      \"name\": \"Hook\""), 120);
    QVERIFY2(saved.contains(hook), saved.constData());
    QVERIFY(saved.contains(R"({"name": "Group", "children": [3]})"));
}

void TestSceneStructure::movedNodesKeepTheirPlace()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(StructureVariety::placed()));
    const auto before = SceneTree::worlds(StructureVariety::placed());
    // Out of a turned, scaled parent; below a bent one; out of a stretched one.
    QVERIFY(document().moveObjects({find("Hook")}, 0));
    QVERIFY(document().moveObjects({find("Elsewhere")}, document().childrenOf(find("Hall")).at(1)));
    QVERIFY(document().moveObjects({find("Turned")}, find("Hall")));
    QCOMPARE(scene.save().outcome, SavingFixture::Saved::Done);
    const QByteArray saved = SavingFixture::read(scene.path);
    const auto after = SceneTree::worlds(saved);
    QCOMPARE(after.size(), before.size());
    for (auto place = before.cbegin(); place != before.cend(); ++place) {
        for (int i = 0; i < 16; ++i)
            QVERIFY2(std::abs(place.value().constData()[i] - after.value(place.key()).constData()[i]) < 1e-4f,
                     saved.constData());
    }
    QVERIFY2(saved.contains(R"("translation": [1, -1, 3])"), saved.constData());
    QVERIFY2(saved.contains(R"({"name": "Turned", "mesh": 5, "matrix": [1, 0, 0, 0,)"), saved.constData());
}

void TestSceneStructure::nodesThatAnimationsUseAreSaidToBeMoved()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(StructureVariety::placed(StructureVariety::animation())));
    QVERIFY(document().moveObjects({find("Turned")}, 0));
    const SavingFixture::Saved saved = scene.save();
    QCOMPARE(saved.outcome, SavingFixture::Saved::Done);
    QVERIFY2(saved.error.contains(QStringLiteral("animations")), qPrintable(saved.error));
    QVERIFY(!SavingFixture::read(scene.path).contains(R"("mesh": 5, "matrix")"));
    QVERIFY(scene.save().error.isEmpty());
}

void TestSceneStructure::groupsSurviveWithTheirMetadata()
{
    SavingFixture scene;
    const QByteArray content = gltf(R"("materials":[{"name":"Red"},{"name":"Blue"}])");
    QVERIFY(scene.openContent(content));
    const quint64 outer = make(nkObjectType::MaterialGroup, "Paint <b>");
    const quint64 inner = make(nkObjectType::MaterialGroup, "Warm", outer);
    QVERIFY(document().moveObjects({find("Red")}, inner));
    SavingFixture::ownSet(nkdObject(inner)).setValue(QStringLiteral("made"), QDate(2024, 2, 29));
    nkdSceneObject(nkdObject(outer)).setLocked(true);
    nkMetadataService::the().createSet(QStringLiteral("Shared"), {nkdSceneObject(nkdObject(inner))});
    const QString expected = SceneTree::dump();
    QVERIFY(scene.saved().startsWith(content.chopped(1)));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SceneTree::dump(), expected);
    QVERIFY(scene.report.isClean());
}

void TestSceneStructure::sceneplatesNameImagesBelowTheFileRelatively()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(Pair)));
    const QString near = scene.folder.filePath(QStringLiteral("images/sky.png"));
    document().createSceneplate(QStringLiteral("Sky"), near, kernel::SceneplatePlacement::InFront, find("A"));
    document().createSceneplate(QStringLiteral("Far"), QStringLiteral("/far/away.png"),
                                kernel::SceneplatePlacement::Behind);
    const QString expected = SceneTree::dump();
    const QByteArray saved = scene.saved();
    QVERIFY(saved.contains(R"("sceneplate":{"image":"images/sky.png","placement":"inFront"})"));
    QVERIFY(saved.contains(R"("sceneplate":{"image":"/far/away.png","placement":"behind"})"));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SceneTree::dump(), expected);
    // In another folder, the image stays where it is.
    QVERIFY(QDir(scene.folder.path()).mkdir(QStringLiteral("other")));
    const QString copy = scene.folder.filePath(QStringLiteral("other/copy.gltf"));
    QCOMPARE(SceneFile::save(copy, scene.source).outcome, SavingFixture::Saved::Done);
    QVERIFY(scene.open(copy));
    QCOMPARE(document().sceneplateImage(find("Sky")), near);
}

void TestSceneStructure::theOrderOfRootsSurvivesWhereScenesCannotSayIt()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(R"("scenes":[{"nodes":[0]},{"nodes":[1]}],)"
                                   R"("nodes":[{"name":"A"},{"name":"B"},{"name":"C"}])")));
    QVERIFY(document().moveObjects({find("C"), find("B")}, 0, 0));
    const QString expected = SceneTree::dump();
    QVERIFY(scene.saved().contains(R"("scenes":[{"nodes":[0]},{"nodes":[1]}])"));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SceneTree::dump(), expected);
    QCOMPARE(document().topLevelNodes().last(), find("A"));
}

void TestSceneStructure::structureAfterASaveIsSavedAgain()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(Pair)));
    const quint64 group = make(nkObjectType::Node, "G");
    QVERIFY(scene.save().outcome == SavingFixture::Saved::Done);
    QVERIFY(document().moveObjects({find("B")}, group));
    SavingFixture::ownSet(nkdObject(group)).setValue(QStringLiteral("k"), QStringLiteral("v"));
    nkdSceneObject(nkdObject(group)).setName(QStringLiteral("H"));
    QCOMPARE(scene.saved(), gltf(R"("scenes":[{"nodes":[0,2]}],"nodes":[{"name":"A"},{"name":"B"},)"
                                 R"({"name":"H","children":[1],"extras":{"k":"v"}}])"));
}

void TestSceneStructure::aForeignAnnexRefusesDeletionsInWords()
{
    SavingFixture scene;
    const QByteArray content = gltf(Pair + R"(,"extras":{"metadataEditor":"mine"})");
    QVERIFY(scene.openContent(content));
    QVERIFY(document().deleteObjects({find("B")}));
    const QString error = scene.save().error;
    QVERIFY2(error.contains(QStringLiteral("deletions")), qPrintable(error));
    QCOMPARE(SavingFixture::read(scene.path), content);
    QVERIFY(document().undo());
    make(nkObjectType::Node, "C", find("A"));
    QVERIFY(scene.saved().contains(R"("children":[1,2])"));
}

NK_TEST_MAIN(TestSceneStructure)
#include "test_scene_structure.moc"
