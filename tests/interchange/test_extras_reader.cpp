#include "Fixtures.h"
#include "TestMain.h"

#include <interchange/gltf/ExtrasKey.h>

using namespace interchange;
using namespace Fixtures;

Q_DECLARE_METATYPE(interchange::ExtrasType)
Q_DECLARE_METATYPE(interchange::ImportReason)

/// How extras become entries: types, path keys, spans, and what the report says about the rest.
class TestExtrasReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesEachScalarItsType_data();
    void givesEachScalarItsType();
    void remembersThatTextWasANumber_data();
    void remembersThatTextWasANumber();
    void readsArraysOfScalarsAsLists();
    void flattensNestedObjectsByPath();
    void keepsPointsInKeysThatStandDirectlyInTheExtras();
    void escapesOnlyWhereKeysWouldMeet();
    void givesEmptyKeysANameOfTheirOwn();
    void leavesUntouchedWhatIsNoEntry_data();
    void leavesUntouchedWhatIsNoEntry();
    void readsAllOtherMembersBesideAnOddOne();
    void takesTheLastOfEqualKeys();
    void takesTheLastOfEqualKeysInsideNestedObjects();
    void saysWhereTextWasBroken();
    void spansPointAtMemberAndValue();
    void namesMaterialsAsOwners();
    void namesExtrasOfOthersAsUntouched();
    void readsDeeplyNestedExtras();
    void countsWhatItKept();
    void pathKeysGoThereAndBack_data();
    void pathKeysGoThereAndBack();
};

namespace {

GltfScene sceneOf(const QByteArray &json)
{
    GltfScene scene;
    GltfReader reader;
    if (!reader.read(json, scene))
        qWarning("unreadable: %s", qPrintable(reader.error().message(QStringLiteral("test"))));
    return scene;
}

QStringList keysOf(const GltfScene &scene)
{
    QStringList keys;
    for (const ExtrasEntry &found : scene.entries)
        keys.append(found.key);
    return keys;
}

} // namespace

void TestExtrasReader::givesEachScalarItsType_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<ExtrasType>("type");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QByteArray(R"("a\u00e9")") << ExtrasType::String
                          << QVariant(QString::fromUtf8("a\xc3\xa9"));
    QTest::newRow("empty text") << QByteArray(R"("")") << ExtrasType::String << QVariant(QString(""));
    QTest::newRow("text that looks like a number")
        << QByteArray(R"("42")") << ExtrasType::String << QVariant("42");
    QTest::newRow("date stays text") << QByteArray(R"("2024-03-18")") << ExtrasType::String
                                     << QVariant("2024-03-18");
    QTest::newRow("integer") << QByteArray("-7") << ExtrasType::Integer << QVariant(-7);
    QTest::newRow("largest integer") << QByteArray("2147483647") << ExtrasType::Integer
                                     << QVariant(2147483647);
    QTest::newRow("float with a point") << QByteArray("1.0") << ExtrasType::Float << QVariant(1.0);
    QTest::newRow("float with an exponent") << QByteArray("1e2") << ExtrasType::Float << QVariant(100.0);
    QTest::newRow("true") << QByteArray("true") << ExtrasType::Boolean << QVariant(true);
    QTest::newRow("false") << QByteArray("false") << ExtrasType::Boolean << QVariant(false);
    QTest::newRow("null") << QByteArray("null") << ExtrasType::Tag << QVariant();
    QTest::newRow("empty array") << QByteArray("[]") << ExtrasType::List << QVariant(QVariantList());
}

void TestExtrasReader::givesEachScalarItsType()
{
    QFETCH(QByteArray, json);
    QFETCH(ExtrasType, type);
    QFETCH(QVariant, value);
    const GltfScene scene = sceneOf(gltfWithExtras("{\"k\":" + json + '}'));
    QCOMPARE(scene.entries.size(), size_t(1));
    const ExtrasEntry &found = scene.entries.front();
    QCOMPARE(found.type, type);
    QCOMPARE(found.value.userType(), value.userType());
    QCOMPARE(found.value, value);
    QVERIFY(!found.isNumber && !found.isPath);
    QVERIFY(scene.report.isClean());
}

void TestExtrasReader::remembersThatTextWasANumber_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<ImportReason>("reason");
    QTest::newRow("just beyond 32 bits") << QByteArray("2147483648") << ImportReason::LongInteger;
    QTest::newRow("below 32 bits") << QByteArray("-2147483649") << ImportReason::LongInteger;
    QTest::newRow("beyond 53 bits") << QByteArray("9007199254740993") << ImportReason::LongInteger;
    QTest::newRow("beyond 64 bits") << QByteArray("123456789012345678901234567890")
                                    << ImportReason::LongInteger;
    QTest::newRow("beyond doubles") << QByteArray("1e400") << ImportReason::UnboundedNumber;
    QTest::newRow("below doubles") << QByteArray("-1.5E-400") << ImportReason::UnboundedNumber;
}

void TestExtrasReader::remembersThatTextWasANumber()
{
    QFETCH(QByteArray, number);
    QFETCH(ImportReason, reason);
    const GltfScene scene = sceneOf(gltfWithExtras("{\"k\":" + number + '}'));
    const ExtrasEntry &found = scene.entries.front();
    QCOMPARE(found.type, ExtrasType::String);
    QCOMPARE(found.value, QVariant(QString::fromLatin1(number)));
    QVERIFY(found.isNumber);
    QCOMPARE(scene.report.converted().size(), 1);
    QCOMPARE(scene.report.converted().first().path, QStringLiteral("$.nodes[0].extras.k"));
    QCOMPARE(scene.report.converted().first().reason, reason);
    QCOMPARE(scene.report.keptCount(), 0);
}

void TestExtrasReader::readsArraysOfScalarsAsLists()
{
    const GltfScene scene = sceneOf(
        gltfWithExtras(R"({"mixed":["a",1,1.0,true,null],"long":[1,3000000000]})"));
    const ExtrasEntry mixed = entry(scene, scene.nodes[0].entries, "mixed");
    QCOMPARE(mixed.type, ExtrasType::List);
    const QVariantList elements = mixed.value.toList();
    QCOMPARE(elements, (QVariantList{"a", 1, 1.0, true, QVariant()}));
    QCOMPARE(elements.at(1).userType(), int(QMetaType::Int));
    QCOMPARE(elements.at(2).userType(), int(QMetaType::Double));
    QCOMPARE(elements.at(3).userType(), int(QMetaType::Bool));
    QVERIFY(!elements.at(4).isValid());
    QVERIFY(!mixed.isNumber);
    const ExtrasEntry numbers = entry(scene, scene.nodes[0].entries, "long");
    QCOMPARE(numbers.value.toList(), (QVariantList{1, "3000000000"}));
    QVERIFY(numbers.isNumber);
    QCOMPARE(paths(scene.report.converted()), QStringList("$.nodes[0].extras.long"));
}

void TestExtrasReader::flattensNestedObjectsByPath()
{
    const GltfScene scene = sceneOf(
        gltfWithExtras(R"({"first":0,"obj":{"a":1,"b":{"c":"deep","d":{"e":true}},"f":null},
        "odd":{"x.y":1,"back\\slash":2,"":{"":3}},"last":[1]})"));
    QCOMPARE(keysOf(scene), (QStringList{"first", "obj.a", "obj.b.c", "obj.b.d.e", "obj.f", R"(odd.x\.y)",
                                         R"(odd.back\\slash)", "odd..", "last"}));
    const ExtrasEntry deep = entry(scene, scene.nodes[0].entries, "obj.b.c");
    QCOMPARE(deep.value, QVariant("deep"));
    QVERIFY(deep.isPath);
    QCOMPARE(deep.path(), (QStringList{"obj", "b", "c"}));
    QCOMPARE(entry(scene, scene.nodes[0].entries, R"(odd.x\.y)").path(), (QStringList{"odd", "x.y"}));
    QCOMPARE(entry(scene, scene.nodes[0].entries, "odd..").path(), (QStringList{"odd", "", ""}));
    QVERIFY(!entry(scene, scene.nodes[0].entries, "last").isPath);
    QVERIFY(scene.report.isClean());
}

void TestExtrasReader::keepsPointsInKeysThatStandDirectlyInTheExtras()
{
    const GltfScene scene = sceneOf(gltfWithExtras(R"({"dot.key":1,"a\\b":2,"":3,"x":{"y":4}})"));
    QCOMPARE(keysOf(scene), (QStringList{"dot.key", R"(a\b)", R"("")", "x.y"}));
    QCOMPARE(scene.entries[0].path(), QStringList("dot.key"));
    QCOMPARE(scene.entries[1].path(), QStringList(R"(a\b)"));
    QCOMPARE(scene.entries[2].path(), QStringList(""));
}

void TestExtrasReader::escapesOnlyWhereKeysWouldMeet()
{
    const GltfScene scene = sceneOf(gltfWithExtras(R"({"x.y":1,"x":{"y":2},"x\\.y":3,"plain":4})"));
    QCOMPARE(keysOf(scene), (QStringList{R"(x\.y)", "x.y", R"(x\\\.y)", "plain"}));
    QCOMPARE(scene.entries[0].path(), QStringList("x.y"));
    QCOMPARE(scene.entries[1].path(), (QStringList{"x", "y"}));
    QCOMPARE(scene.entries[2].path(), QStringList(R"(x\.y)"));
    QCOMPARE(scene.entries[0].value, QVariant(1));
}

void TestExtrasReader::givesEmptyKeysANameOfTheirOwn()
{
    const GltfScene alone = sceneOf(gltfWithExtras(R"({"":1,"\"\\\"":2})"));
    QCOMPARE(keysOf(alone), (QStringList{R"("")", R"("\")"}));
    QCOMPARE(alone.entries[0].path(), QStringList(""));
    const GltfScene both = sceneOf(gltfWithExtras(R"({"":1,"\"\"":2})"));
    QCOMPARE(keysOf(both), (QStringList{R"("")", R"(\"")"}));
    QCOMPARE(both.entries[0].path(), QStringList(""));
    QCOMPARE(both.entries[1].path(), QStringList(R"("")"));
}

void TestExtrasReader::leavesUntouchedWhatIsNoEntry_data()
{
    QTest::addColumn<QByteArray>("extras");
    QTest::addColumn<QString>("path");
    QTest::addColumn<ImportReason>("reason");
    const auto row = [](const char *name, const char *extras, const char *path, ImportReason reason) {
        QTest::newRow(name) << QByteArray(extras) << QString("$.nodes[0].extras") + path << reason;
    };
    row("extras are text", R"("just a string")", "", ImportReason::ExtrasNoObject);
    row("extras are an array", "[1,2,3]", "", ImportReason::ExtrasNoObject);
    row("extras are null", "null", "", ImportReason::ExtrasNoObject);
    row("extras are a number", "1e999", "", ImportReason::ExtrasNoObject);
    row("empty object", R"({"a":{}})", ".a", ImportReason::EmptyObject);
    row("empty object inside", R"({"a":{"b c":{}}})", R"(.a["b c"])", ImportReason::EmptyObject);
    row("array of objects", R"({"a":[1,{"b":2}]})", ".a", ImportReason::ObjectInArray);
    row("array of empty objects", R"({"a":[{}]})", ".a", ImportReason::ObjectInArray);
    row("array of arrays", R"({"a":{"b":[[1],[2]]}})", ".a.b", ImportReason::NestedArray);
}

void TestExtrasReader::leavesUntouchedWhatIsNoEntry()
{
    QFETCH(QByteArray, extras);
    QFETCH(QString, path);
    QFETCH(ImportReason, reason);
    const GltfScene scene = sceneOf(gltfWithExtras(extras));
    QCOMPARE(scene.nodes.size(), size_t(1));
    QVERIFY(scene.entries.empty());
    QCOMPARE(paths(scene.report.untouched()), QStringList(path));
    QCOMPARE(scene.report.untouched().first().reason, reason);
    QVERIFY(scene.report.details(10).contains(path));
}

void TestExtrasReader::readsAllOtherMembersBesideAnOddOne()
{
    const GltfScene scene = sceneOf(gltfWithExtras(R"({"a":1,"o":{"p":[[]],"q":2,"r":{}},"z":3})"));
    QCOMPARE(keysOf(scene), (QStringList{"a", "o.q", "z"}));
    QCOMPARE(paths(scene.report.untouched()),
             (QStringList{"$.nodes[0].extras.o.p", "$.nodes[0].extras.o.r"}));
}

void TestExtrasReader::takesTheLastOfEqualKeys()
{
    const GltfScene scene = sceneOf(gltfWithExtras(R"({"dup":1,"x":0,"\u0064up":{"y":2},"dup":"three"})"));
    QCOMPARE(keysOf(scene), (QStringList{"x", "dup"}));
    QCOMPARE(scene.entries[1].value, QVariant("three"));
    QCOMPARE(paths(scene.report.untouched()),
             (QStringList{"$.nodes[0].extras.dup", "$.nodes[0].extras.dup"}));
    QCOMPARE(scene.report.untouched().first().reason, ImportReason::HiddenByLaterKey);
}

void TestExtrasReader::takesTheLastOfEqualKeysInsideNestedObjects()
{
    const GltfScene scene = sceneOf(gltfWithExtras(R"({"o":{"k":1},"o":{"k":2,"k":3,"l":4}})"));
    QCOMPARE(keysOf(scene), (QStringList{"o.k", "o.l"}));
    QCOMPARE(scene.entries[0].value, QVariant(3));
    QCOMPARE(paths(scene.report.untouched()), (QStringList{"$.nodes[0].extras.o", "$.nodes[0].extras.o.k"}));
}

void TestExtrasReader::saysWhereTextWasBroken()
{
    const GltfScene scene = sceneOf(gltfWithExtras(R"({"lone":"\ud800x","list":["a","\udc00"]})"));
    QCOMPARE(scene.entries[0].value, QVariant(QString(QChar(QChar::ReplacementCharacter)) + "x"));
    QCOMPARE(scene.entries[0].type, ExtrasType::String);
    QCOMPARE(paths(scene.report.converted()),
             (QStringList{"$.nodes[0].extras.lone", "$.nodes[0].extras.list"}));
    QCOMPARE(scene.report.converted().first().reason, ImportReason::BrokenText);
}

void TestExtrasReader::spansPointAtMemberAndValue()
{
    const QByteArray json = gltfWithExtras(
        "{ \"a\" : 3000000000,\"o\":{\"\\u0062\" :[ 1, 2 ]},\n\"t\":null }");
    const GltfScene scene = sceneOf(json);
    QCOMPARE(bytesAt(json, scene.nodes[0].extrasSpan).left(8), QByteArray("{ \"a\" : "));
    QCOMPARE(bytesAt(json, scene.entries[0].memberSpan()), QByteArray("\"a\" : 3000000000"));
    QCOMPARE(bytesAt(json, scene.entries[0].valueSpan), QByteArray("3000000000"));
    QCOMPARE(bytesAt(json, scene.entries[1].memberSpan()), QByteArray("\"\\u0062\" :[ 1, 2 ]"));
    QCOMPARE(bytesAt(json, scene.entries[1].valueSpan), QByteArray("[ 1, 2 ]"));
    QCOMPARE(bytesAt(json, scene.entries[2].valueSpan), QByteArray("null"));
}

void TestExtrasReader::namesMaterialsAsOwners()
{
    const GltfScene scene = sceneOf(gltf(R"("materials":[{},{"extras":{"a":[{}],"b":1}}])"));
    QCOMPARE(scene.materials[0].entries.count, 0u);
    QVERIFY(scene.materials[0].extrasSpan.isEmpty());
    QCOMPARE(scene.materials[1].entries.count, 1u);
    QCOMPARE(paths(scene.report.untouched()), QStringList("$.materials[1].extras.a"));
}

void TestExtrasReader::namesExtrasOfOthersAsUntouched()
{
    const GltfScene scene = sceneOf(R"({"asset":{"version":"2.0","extras":{"a":1}},"extras":{"root":1},
        "nodes":[{"extras":{"b":1}}],"scenes":[{},{"extras":{"c":1}}],"meshes":[{"extras":7}],"odd":[1,"x",[]]})");
    QCOMPARE(scene.entries.size(), size_t(1));
    QCOMPARE(paths(scene.report.untouched()),
             (QStringList{"$.asset.extras", "$.scenes[1].extras", "$.meshes[0].extras"}));
    QVERIFY(!scene.rootExtrasSpan.isEmpty());
}

void TestExtrasReader::readsDeeplyNestedExtras()
{
    const int depth = 500;
    const QByteArray extras = QByteArray("{\"a\":").repeated(depth) + "1" + QByteArray(depth, '}');
    const GltfScene scene = sceneOf(gltfWithExtras(extras));
    QCOMPARE(scene.entries.size(), size_t(1));
    QCOMPARE(scene.entries[0].path().size(), depth);
}

void TestExtrasReader::countsWhatItKept()
{
    const GltfScene scene = sceneOf(gltfWithExtras(R"({"a":1,"b":{"c":2,"d":{}},"e":5000000000})"));
    QCOMPARE(scene.report.keptCount(), 2);
    QVERIFY(!scene.report.isClean());
    const QString summary = scene.report.summary();
    QVERIFY2(summary.startsWith("2 ") && summary.contains("1 converted") && summary.contains("1 left"),
             qPrintable(summary));
    QCOMPARE(scene.report.details(1).count('\n'), 1);
    QVERIFY(scene.report.details(1).endsWith("1 more"));
    QVERIFY(!scene.report.details(2).contains("more"));
    QCOMPARE(sceneOf(gltfWithExtras("{}")).report.summary(), QStringLiteral("no metadata in the file"));
}

void TestExtrasReader::pathKeysGoThereAndBack_data()
{
    QTest::addColumn<QStringList>("path");
    QTest::addColumn<QString>("key");
    QTest::newRow("one") << QStringList{"a"} << "a";
    QTest::newRow("three") << QStringList{"a", "b", "c"} << "a.b.c";
    QTest::newRow("point inside") << QStringList{"a.b", "c"} << R"(a\.b.c)";
    QTest::newRow("backslash inside") << QStringList{"a\\", "b"} << R"(a\\.b)";
    QTest::newRow("backslash and point") << QStringList{"a\\.", "b"} << R"(a\\\..b)";
    QTest::newRow("empty segments") << QStringList{"", "", ""} << "..";
    QTest::newRow("empty") << QStringList{""} << R"("")";
    QTest::newRow("two quotes") << QStringList{R"("")"} << R"(\"")";
    QTest::newRow("two quotes inside") << QStringList{R"("")", R"("")"} << R"(\"".\"")";
}

void TestExtrasReader::pathKeysGoThereAndBack()
{
    QFETCH(QStringList, path);
    QFETCH(QString, key);
    QCOMPARE(ExtrasKey::joined(path), key);
    QCOMPARE(ExtrasKey::split(key), path);
}

NK_GUILESS_TEST_MAIN(TestExtrasReader)
#include "test_extras_reader.moc"
