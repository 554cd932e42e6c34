#include "SceneTree.h"
#include "TestMain.h"

using namespace Fixtures;

/// What others make of a file whose annex speaks of groups, sceneplates and deleted objects.
class TestSceneStructureDamage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatCannotBeReadIsNotTouched_data();
    void whatCannotBeReadIsNotTouched();
    void deletedNodesAreFoundWhereOthersHaveMovedThem();
    void whatIsListedAgainIsShownAgain();
    void aLivingNodeOfTheSameNameIsNeverHidden();
    void materialsOfOthersComeBehindTheGroups();
    void materialsThatAreGoneAreReported();
    void whatOthersListTwiceIsShownOnce();
    void aSceneplateThatBecameACameraIsACamera();
    void deepGroupsAreReadAndWritten();

private:
    static QByteArray file(const QByteArray &content, const QByteArray &members)
    {
        return gltf(content
                    + R"(,"extras":{"metadataEditor":{"version":1,"sets":{"format":"metadata-sets",)"
                      R"("version":1,"sets":[]},"assets":[],"objects":[],"assigned":[],)"
                    + members + "}}");
    }
    static QStringList names()
    {
        QStringList found;
        for (const auto &[id, depth] : SceneTree::walk())
            found.append(QString(depth, QLatin1Char('-')) + nkdSceneObject(nkdObject(id)).getName());
        return found;
    }
};

namespace {

const QByteArray Materials = R"("materials":[{"name":"Red"},{"name":"Blue"}])";
const QByteArray Nodes = R"("scenes":[{"nodes":[0]}],"nodes":[{"name":"A"},{"name":"B"}])";

} // namespace

void TestSceneStructureDamage::whatCannotBeReadIsNotTouched_data()
{
    QTest::addColumn<QByteArray>("members");
    QTest::newRow("group is no text") << QByteArray(R"("materials":[{"group":1}])");
    QTest::newRow("in a group that comes later")
        << QByteArray(R"("materials":[{"material":0,"in":0},{"group":"G"}])");
    QTest::newRow("in itself") << QByteArray(R"("materials":[{"group":"G","in":0}])");
    QTest::newRow("neither material nor group") << QByteArray(R"("materials":[{"name":"G"}])");
    QTest::newRow("materials no list") << QByteArray(R"("materials":{})");
    QTest::newRow("unknown member") << QByteArray(R"("materials":[{"group":"G","what":0}])");
    QTest::newRow("removed without place") << QByteArray(R"("removed":[{"name":"B"}])");
    QTest::newRow("removed of two kinds") << QByteArray(R"("removed":[{"node":1,"material":0}])");
    QTest::newRow("removed group") << QByteArray(R"("removed":[{"group":0}])");
    QTest::newRow("negative place") << QByteArray(R"("roots":[{"node":-1}])");
    QTest::newRow("name no text") << QByteArray(R"("roots":[{"node":0,"name":5}])");
}

void TestSceneStructureDamage::whatCannotBeReadIsNotTouched()
{
    QFETCH(QByteArray, members);
    SavingFixture scene;
    const QByteArray content = file(Nodes + ',' + Materials, members);
    QVERIFY(scene.openContent(content));
    QCOMPARE(names(), QStringList({"A", "B", "Red", "Blue"}));
    QCOMPARE(scene.report.refused().size(), 1);
    QCOMPARE(scene.report.refused().first().reason, interchange::ImportReason::ForeignAnnex);
    QCOMPARE(scene.saved(), content);
}

void TestSceneStructureDamage::deletedNodesAreFoundWhereOthersHaveMovedThem()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(file(R"("scenes":[{"nodes":[1]}],"nodes":[{"name":"B"},{"name":"A"}])",
                                   R"("removed":[{"node":1,"name":"B"}])")));
    QCOMPARE(names(), QStringList("A"));
}

void TestSceneStructureDamage::whatIsListedAgainIsShownAgain()
{
    SavingFixture scene;
    const QByteArray removed = R"("removed":[{"node":1,"name":"B"}])";
    QVERIFY(scene.openContent(file(Nodes, removed)));
    QCOMPARE(names(), QStringList("A"));
    QVERIFY(scene.openContent(file(QByteArray(Nodes).replace("[0]", "[0,1]"), removed)));
    QCOMPARE(names(), QStringList({"A", "B"}));
    QVERIFY(scene.openContent(
        file(QByteArray(Nodes).replace(R"({"name":"A"})", R"({"name":"A","children":[1]})"), removed)));
    QCOMPARE(names(), QStringList({"A", "-B"}));
    QVERIFY(scene.report.isClean());
}

void TestSceneStructureDamage::aLivingNodeOfTheSameNameIsNeverHidden()
{
    SavingFixture scene;
    // The deleted one has been dropped; this one stands in the scene.
    QVERIFY(scene.openContent(
        file(R"("scenes":[{"nodes":[0]}],"nodes":[{"name":"B"}])", R"("removed":[{"node":1,"name":"B"}])")));
    QCOMPARE(names(), QStringList("B"));
    QVERIFY(scene.report.isClean());
    QVERIFY(scene.openContent(file(R"("nodes":[{"name":"B"}])", R"("removed":[{"node":1,"name":"B"}])")));
    QCOMPARE(names(), QStringList("B"));
    QVERIFY(scene.openContent(file(Materials, R"("removed":[{"material":0,"name":"Blue"}])")));
    QCOMPARE(names(), QStringList({"Red", "Blue"}));
}

void TestSceneStructureDamage::materialsOfOthersComeBehindTheGroups()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(file(
        R"("materials":[{"name":"New"},{"name":"Blue"},{"name":"Red"}])",
        R"("materials":[{"group":"G"},{"material":0,"name":"Red","in":0},{"material":1,"name":"Blue"}])")));
    QCOMPARE(names(), QStringList({"G", "-Red", "Blue", "New"}));
    QVERIFY(scene.report.isClean());
}

void TestSceneStructureDamage::materialsThatAreGoneAreReported()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(
        file(Materials, R"("materials":[{"group":"G"},{"material":7,"name":"Gone","in":0}])")));
    QCOMPARE(names(), QStringList({"G", "Red", "Blue"}));
    QCOMPARE(scene.report.refused().size(), 1);
    QCOMPARE(scene.report.refused().first().detail, QStringLiteral("Gone"));
    QCOMPARE(scene.report.refused().first().path, QStringLiteral("$.extras.metadataEditor.materials[1]"));
}

void TestSceneStructureDamage::whatOthersListTwiceIsShownOnce()
{
    SavingFixture scene;
    const QByteArray twice = R"({"material":0,"name":"Red"})";
    QVERIFY(scene.openContent(
        file(Nodes + ',' + Materials, R"("materials":[)" + twice + ',' + twice
                                          + R"(],"roots":[{"node":1,"name":"B"},{"node":1,"name":"B"}])")));
    QCOMPARE(names(), QStringList({"B", "A", "Red", "Blue"}));
}

void TestSceneStructureDamage::aSceneplateThatBecameACameraIsACamera()
{
    SavingFixture scene;
    const QByteArray objects =
        R"("objects":[{"node":0,"name":"A","sceneplate":{"image":"a.png","placement":)";
    const auto with = [&](const QByteArray &node, const QByteArray &placement) {
        const QByteArray content = R"("cameras":[{"type":"perspective"}],"nodes":[)" + node + ']';
        return file(content, R"("removed":[])").replace(R"("objects":[)", objects + placement + "}}");
    };
    QVERIFY(scene.openContent(with(R"({"name":"A"})", R"("behind")")));
    QCOMPARE(SceneTree::document().typeOf(SceneTree::find("A")), nkObjectType::Sceneplate);
    QVERIFY(scene.openContent(with(R"({"name":"A","camera":0})", R"("behind")")));
    QCOMPARE(SceneTree::document().typeOf(SceneTree::find("A")), nkObjectType::Camera);
    QVERIFY(scene.openContent(with(R"({"name":"A"})", R"("beside")")));
    QCOMPARE(SceneTree::document().typeOf(SceneTree::find("A")), nkObjectType::Node);
    QCOMPARE(scene.report.refused().first().reason, interchange::ImportReason::ForeignAnnex);
}

void TestSceneStructureDamage::deepGroupsAreReadAndWritten()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(Materials)));
    quint64 group = 0;
    for (int i = 0; i < 500; ++i)
        group = SceneTree::document().createObject(nkObjectType::MaterialGroup, QString::number(i), group);
    QVERIFY(SceneTree::document().moveObjects({SceneTree::find("Red")}, group));
    const QString expected = SceneTree::dump();
    QCOMPARE(scene.save().outcome, SavingFixture::Saved::Done);
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SceneTree::dump(), expected);
}

NK_TEST_MAIN(TestSceneStructureDamage)
#include "test_scene_structure_damage.moc"
