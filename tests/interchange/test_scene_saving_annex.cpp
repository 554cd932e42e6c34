#include "SavingFixture.h"
#include "TestMain.h"

#include <interchange/gltf/GltfAnnex.h>

#include <QDateTime>

using namespace interchange;
using namespace Fixtures;
using T = nkMetadataTypes;

/// What plain extras cannot say is kept in the annex, and what others write there or change beside it is respected.
class TestSceneSavingAnnex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainValuesNeedNoAnnex();
    void otherProgramsStillReadPlainValues();
    void setsAssignmentsAndTheirOrdersSurvive();
    void whatTheExtrasHaveNoPlaceForStandsInTheAnnex();
    void theAnnexGoesWithTheLastThingInIt();
    void aForeignAnnexIsReportedAndNeverTouched_data();
    void aForeignAnnexIsReportedAndNeverTouched();
    void rootExtrasThatAreNoObjectAreLeftAlone();
    void whatOthersChangeInTheExtrasCounts();
    void objectsAreFoundByNameWhereOthersHaveMovedThem();
    void anAnnexLaidOutByOthersStaysAsItIs();
    void oneLineStaysOneLine();
};

namespace {

const QString Part = QStringLiteral("Part");

nkdMetadataSet makeSet(const char *name, const QList<nkdSceneObject> &objects)
{
    return nkMetadataService::the().createSet(QLatin1String(name), objects);
}

} // namespace

void TestSceneSavingAnnex::plainValuesNeedNoAnnex()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltfWithExtras(R"({"a":1})")));
    nkdMetadataSet own = SavingFixture::ownSet(Part);
    own.setValue(QStringLiteral("text"), QStringLiteral("t"));
    own.setValue(QStringLiteral("float"), 2.0);
    own.setValue(QStringLiteral("list"), QVariantList{1, 2.5, QStringLiteral("x"), true, QVariant()});
    own.setValue(QStringLiteral("long"), qlonglong(1) << 60);
    own.createEntry(T::Tag).setKey(QStringLiteral("tag"));
    QCOMPARE(scene.saved(),
             gltfWithExtras(R"({"a":1,"text":"t","float":2.0,"list":[1, 2.5, "x", true, null],)"
                            R"("long":1152921504606846976,"tag":null})"));
}

void TestSceneSavingAnnex::otherProgramsStillReadPlainValues()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltfWithExtras(R"({"a":1})")));
    SavingFixture::ownSet(Part).setValue(QStringLiteral("built"), QDate(2024, 2, 29));
    const QByteArray saved = scene.saved();
    QVERIFY2(saved.contains(R"({"a":1,"built":"2024-02-29"})"), saved.constData());
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SavingFixture::entry(Part, QStringLiteral("built")).getValue(), QVariant(QDate(2024, 2, 29)));
}

void TestSceneSavingAnnex::setsAssignmentsAndTheirOrdersSurvive()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(R"("nodes":[{"name":"A"},{"name":"B"}],"materials":[{"name":"M"}])")));
    const nkdSceneObject a = SavingFixture::object(QStringLiteral("A"));
    const nkdSceneObject b = SavingFixture::object(QStringLiteral("B"));
    const nkdSceneObject m = SavingFixture::object(QStringLiteral("M"));
    nkdMetadataSet first = makeSet("First", {b, m});
    nkdMetadataSet second = makeSet("Second", {b});
    nkMetadataService::the().assignSets({a}, {second});
    nkMetadataService::the().assignSets({a}, {first});
    first.setColor(QColor(1, 2, 3));
    first.createEntry(T::Time);
    second.setLocked(true);
    QVERIFY(SavingFixture::document().setAssetState(second.getObjectId(), kernel::AssetState::Edited,
                                                    QStringLiteral("asset <1>")));
    const QString expected = SavingFixture::dump();
    QVERIFY(!scene.saved().isEmpty());
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SavingFixture::dump(), expected);
    QCOMPARE(nkdMetadata::fromObject(SavingFixture::object(QStringLiteral("A"))).getSets().first().getName(),
             QStringLiteral("Second"));
    QVERIFY(scene.report.isClean());
}

void TestSceneSavingAnnex::whatTheExtrasHaveNoPlaceForStandsInTheAnnex()
{
    SavingFixture scene;
    const QByteArray nodes = R"("nodes":[{"name":"Part","extras":{"matrix":[[1]],"in":{"a":1}}},)"
                             R"({"name":"Bare","extras":7}])";
    QVERIFY(scene.openContent(gltf(nodes)));
    SavingFixture::ownSet(Part).setValue(QStringLiteral("matrix"), 5);
    SavingFixture::ownSet(Part).setValue(QStringLiteral("in"), 6);
    SavingFixture::ownSet(QStringLiteral("Bare")).setValue(QStringLiteral("k"), QStringLiteral("v"));
    const QString expected = SavingFixture::dump();
    const QByteArray saved = scene.saved();
    QVERIFY(saved.contains(nodes));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(SavingFixture::dump(), expected);
}

void TestSceneSavingAnnex::theAnnexGoesWithTheLastThingInIt()
{
    const QByteArray content = gltf(R"("nodes":[{"name":"Part"}])");
    SavingFixture scene;
    QVERIFY(scene.openContent(content));
    const nkdMetadataSet set = makeSet("Set", {SavingFixture::object(Part)});
    QVERIFY(scene.saved() != content);
    nkMetadataService::the().deleteSets({set});
    QCOMPARE(scene.saved(), content);
}

void TestSceneSavingAnnex::aForeignAnnexIsReportedAndNeverTouched_data()
{
    QTest::addColumn<QByteArray>("annex");
    const QByteArray rest = R"(,"assets":[],"objects":[],"assigned":[])";
    const QByteArray sets = R"("sets":{"format":"metadata-sets","version":1,"sets":[]})";
    QTest::newRow("a text") << QByteArray("\"mine\"");
    QTest::newRow("another object") << QByteArray(R"({"a":1})");
    QTest::newRow("a later version") << "{\"version\":2," + sets + rest + '}';
    QTest::newRow("something more") << "{\"version\":1,\"more\":1," + sets + rest + '}';
    QTest::newRow("sets missing") << QByteArray("{\"version\":1" + rest + '}');
    QTest::newRow("sets damaged") << QByteArray(
        R"({"version":1,"sets":{"format":"metadata-sets","version":1,"sets":[1]})" + rest + '}');
    QTest::newRow("an assigned set that is none")
        << "{\"version\":1," + sets + R"(,"assets":[],"objects":[],"assigned":[{"set":0,"objects":[]}]})";
    QTest::newRow("an object that is none")
        << "{\"version\":1," + sets + R"(,"assets":[],"objects":[3],"assigned":[]})";
    QTest::newRow("a negative place")
        << "{\"version\":1," + sets + R"(,"assets":[],"objects":[{"node":-1}],"assigned":[]})";
    QTest::newRow("an asset without state")
        << "{\"version\":1," + sets + R"(,"assets":[{"set":0}],"objects":[],"assigned":[]})";
}

void TestSceneSavingAnnex::aForeignAnnexIsReportedAndNeverTouched()
{
    QFETCH(QByteArray, annex);
    const auto file = [&annex](const QByteArray &value) {
        return gltf("\"extras\":{\"metadataEditor\":" + annex + R"(},"nodes":[{"name":"Part","extras":{"a":)"
                    + value + "}}]");
    };
    SavingFixture scene;
    QVERIFY(scene.openContent(file("1")));
    QCOMPARE(paths(scene.report.refused()), QStringList(QStringLiteral("$.extras.metadataEditor")));
    QVERIFY(!scene.report.refused().first().detail.isEmpty());
    QCOMPARE(scene.saved(), file("1"));
    SavingFixture::entry(Part, QStringLiteral("a")).setValue(2);
    QCOMPARE(scene.saved(), file("2"));
    makeSet("Set", {});
    const SceneFile::Saved saved = scene.save();
    QCOMPARE(saved.outcome, SceneFile::Saved::Failed);
    QVERIFY2(saved.error.contains(QStringLiteral("extras.metadataEditor")), qPrintable(saved.error));
    QCOMPARE(SavingFixture::read(scene.path), file("2"));
}

void TestSceneSavingAnnex::rootExtrasThatAreNoObjectAreLeftAlone()
{
    const QByteArray content = gltf(R"("extras":[1],"nodes":[{"name":"Part"}])");
    SavingFixture scene;
    QVERIFY(scene.openContent(content));
    makeSet("Set", {});
    QCOMPARE(scene.save().outcome, SceneFile::Saved::Failed);
    QCOMPARE(SavingFixture::read(scene.path), content);
}

void TestSceneSavingAnnex::whatOthersChangeInTheExtrasCounts()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltfWithExtras(R"({"a":1,"gone":1})")));
    nkdMetadataSet own = SavingFixture::ownSet(Part);
    own.setValue(QStringLiteral("day"), QDate(2024, 2, 29));
    own.setValue(QStringLiteral("other day"), QDate(2024, 2, 28));
    QByteArray saved = scene.saved();
    saved.replace(saved.indexOf("2024-02-29"), 10, "yesterday!").replace(R"("gone":1)", R"("more":2)");
    QVERIFY(scene.openContent(saved));
    QCOMPARE(SavingFixture::entry(Part, QStringLiteral("day")).getValue(),
             QVariant(QStringLiteral("yesterday!")));
    QCOMPARE(SavingFixture::entry(Part, QStringLiteral("other day")).getValue(),
             QVariant(QDate(2024, 2, 28)));
    QCOMPARE(SavingFixture::entry(Part, QStringLiteral("more")).getValue(), QVariant(2));
    QVERIFY(SavingFixture::entry(Part, QStringLiteral("gone")).isNull());
    QCOMPARE(paths(scene.report.converted()), QStringList(QStringLiteral("day")));
    QCOMPARE(paths(scene.report.refused()), QStringList(QStringLiteral("gone")));
    QCOMPARE(scene.saved(), saved);
}

void TestSceneSavingAnnex::objectsAreFoundByNameWhereOthersHaveMovedThem()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(R"("nodes":[{"name":"A"},{"name":"B"},{"name":"C"}])")));
    makeSet("On B", {SavingFixture::object(QStringLiteral("B"))});
    makeSet("On C", {SavingFixture::object(QStringLiteral("C"))});
    QByteArray saved = scene.saved();
    saved.replace(R"({"name":"A"},{"name":"B"},{"name":"C"})", R"({"name":"B"},{"name":"D"})");
    QVERIFY(scene.openContent(saved));
    const auto sets = nkMetadataService::the().getAllSets();
    QCOMPARE(sets.size(), 2);
    QCOMPARE(sets.first().getObjects(), QList<nkdSceneObject>{SavingFixture::object(QStringLiteral("B"))});
    QVERIFY(sets.last().getObjects().isEmpty());
    QCOMPARE(scene.report.refused().size(), 1);
    QCOMPARE(scene.report.refused().first().detail, QStringLiteral("C"));
    // Only what a person does brings a new annex.
    QCOMPARE(scene.saved(), saved);
}

void TestSceneSavingAnnex::anAnnexLaidOutByOthersStaysAsItIs()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltfWithExtras(R"({"a":1})")));
    makeSet("Set", {SavingFixture::object(Part)});
    QByteArray saved = scene.saved();
    saved.replace("\"assets\":[]", "\"assets\" :\n [ ]");
    QVERIFY(scene.openContent(saved));
    QCOMPARE(scene.saved(), saved);
    SavingFixture::entry(Part, QStringLiteral("a")).setValue(2);
    QCOMPARE(scene.saved(), saved.replace("\"a\":1", "\"a\":2"));
}

void TestSceneSavingAnnex::oneLineStaysOneLine()
{
    SavingFixture scene;
    QVERIFY(scene.openContent(gltf(QByteArray())));
    makeSet("A\nB", {}).createEntry(T::String);
    QVERIFY(!scene.saved().contains('\n'));
    QVERIFY(scene.open(scene.path));
    QCOMPARE(nkMetadataService::the().getAllSets().first().getName(), QStringLiteral("A\nB"));
}

NK_TEST_MAIN(TestSceneSavingAnnex)
#include "test_scene_saving_annex.moc"
