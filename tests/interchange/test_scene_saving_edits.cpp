#include "SavingFixture.h"
#include "TestMain.h"

using namespace Fixtures;
using T = nkMetadataTypes;

/// What each kind of edit does to the text, byte by byte.
class TestSceneSavingEdits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void removesEntriesWithTheirCommas_data();
    void removesEntriesWithTheirCommas();
    void renamesEntries_data();
    void renamesEntries();
    void setsValues_data();
    void setsValues();
    void addsEntriesLaidOutLikeTheirNeighbours_data();
    void addsEntriesLaidOutLikeTheirNeighbours();
    void renamesObjects();
    void doesAllOfItAtOnce();

private:
    static nkdMetadataSet own() { return SavingFixture::ownSet(QStringLiteral("Part")); }
    static nkdMetadataEntry entry(const QString &key) { return own().getEntries().find(key); }
    static QByteArray scene(const QByteArray &extras)
    {
        return extras.isEmpty() ? gltf(R"("nodes":[{"name":"Part"}])") : gltfWithExtras(extras);
    }
};

void TestSceneSavingEdits::removesEntriesWithTheirCommas_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QByteArray>("after");
    const QByteArray three = R"({ "a" : 1 ,  "b":2, "c":3 })";
    QTest::newRow("first") << three << QStringList{"a"} << QByteArray(R"({ "b":2, "c":3 })");
    QTest::newRow("middle") << three << QStringList{"b"} << QByteArray(R"({ "a" : 1, "c":3 })");
    QTest::newRow("last") << three << QStringList{"c"} << QByteArray(R"({ "a" : 1 ,  "b":2 })");
    QTest::newRow("first two") << three << QStringList{"a", "b"} << QByteArray(R"({ "c":3 })");
    QTest::newRow("last two") << three << QStringList{"b", "c"} << QByteArray(R"({ "a" : 1 })");
    QTest::newRow("outer two") << three << QStringList{"a", "c"} << QByteArray(R"({ "b":2 })");
    QTest::newRow("all") << three << QStringList{"a", "b", "c"} << QByteArray();
    QTest::newRow("the last of a nested object") << QByteArray(R"({"a":1,"in":{"side":{"w":2}}})")
                                                 << QStringList{"in.side.w"} << QByteArray(R"({"a":1})");
    QTest::newRow("one of a nested object")
        << QByteArray(R"({"in":{"w":2,"h":3}})") << QStringList{"in.w"} << QByteArray(R"({"in":{"h":3}})");
    QTest::newRow("beside what is no entry") << QByteArray(R"({"in":{"w":2,"m":[[1]]}})")
                                             << QStringList{"in.w"} << QByteArray(R"({"in":{"m":[[1]]}})");
    QTest::newRow("with those it hides")
        << QByteArray(R"({"a":1,"b":2,"a":[[3]],"a":4})") << QStringList{"a"} << QByteArray(R"({"b":2})");
    QTest::newRow("the empty key") << QByteArray(R"({"":1,"b":2})") << QStringList{"\"\""}
                                   << QByteArray(R"({"b":2})");
}

void TestSceneSavingEdits::removesEntriesWithTheirCommas()
{
    QFETCH(QByteArray, before);
    QFETCH(QStringList, keys);
    QFETCH(QByteArray, after);
    SavingFixture fixture;
    QVERIFY(fixture.openContent(scene(before)));
    for (const QString &key : keys)
        QVERIFY(own().getEntries().remove(entry(key)));
    QCOMPARE(fixture.saved(), scene(after));
}

void TestSceneSavingEdits::renamesEntries_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("in its place") << QByteArray(R"({"a" : 1.50,"b":2})") << "a"
                                  << "c\"\n"
                                  << QByteArray(R"({"c\"\n" : 1.50,"b":2})");
    QTest::newRow("points in a key are no path") << QByteArray(R"({"a":1,"b":2})") << "a"
                                                 << "x.y" << QByteArray(R"({"x.y":1,"b":2})");
    QTest::newRow("nested, beside the old key") << QByteArray(R"({"in":{"w":1},"b":2})") << "in.w"
                                                << "in.h\\.1" << QByteArray(R"({"in":{"h.1":1},"b":2})");
    QTest::newRow("nested, away") << QByteArray(R"({"in":{"w":1,"h":3},"b":2})") << "in.w"
                                  << "width" << QByteArray(R"({"in":{"h":3},"b":2,"width":1})");
    QTest::newRow("with those it hides") << QByteArray(R"({"a":1,"a":2})") << "a"
                                         << "b" << QByteArray(R"({"b":2})");
}

void TestSceneSavingEdits::renamesEntries()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QByteArray, after);
    SavingFixture fixture;
    QVERIFY(fixture.openContent(scene(before)));
    entry(from).setKey(to);
    QCOMPARE(entry(to).getKey(), to);
    // Moved entries may need the annex for their order: it is not looked at here.
    const QByteArray saved = fixture.saved();
    const QByteArray wanted = scene(after).chopped(1);
    QVERIFY2(saved.startsWith(wanted), saved.constData());
}

void TestSceneSavingEdits::setsValues_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char *name, const char *before, int type, const QVariant &value,
                        const char *after) {
        QTest::newRow(name) << QByteArray(before) << type << value << QByteArray(after);
    };
    row("a text", "\"a\"", T::String, QStringLiteral("é\x01"), "\"é\\u0001\"");
    row("the same text, spelled otherwise", R"("\u0061\/")", T::String, QStringLiteral("a/"),
        R"("\u0061\/")");
    row("the same number, spelled otherwise", "1.50E0", T::Float, 1.5, "1.50E0");
    row("a float without fraction", "1.5", T::Float, 2.0, "2.0");
    row("an integer made a float", "5", T::Float, 5.0, "5.0");
    row("a float made an integer", "5.0", T::Integer, 5, "5");
    row("a number made a text", "5", T::String, QStringLiteral("5"), "\"5\"");
    row("a long number", "9007199254740993", T::String, QStringLiteral("9007199254740994"),
        "9007199254740994");
    row("a long number made a text", "9007199254740993", T::String, QStringLiteral("no"), "\"no\"");
    row("a truth", "true", T::Boolean, false, "false");
    row("a value made a tag", "1", T::Tag, QVariant(), "null");
    row("a tag made a value", "null", T::String, QStringLiteral("x"), "\"x\"");
    row("a list keeps the spelling of what stays", "[5000000000 , 2.50, \"a\"]", T::List,
        QVariantList{QStringLiteral("5000000000"), 2.5, QStringLiteral("b"), 1},
        "[5000000000 , 2.50 , \"b\" , 1]");
    row("a long number moved in its list", "[1,5000000000]", T::List,
        QVariantList{QStringLiteral("5000000000"), 1}, "[5000000000,1]");
}

void TestSceneSavingEdits::setsValues()
{
    QFETCH(QByteArray, before);
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, after);
    SavingFixture fixture;
    QVERIFY(fixture.openContent(scene("{\"k\" :" + before + ",\"l\":1}")));
    entry(QStringLiteral("k")).setValueType(T::ValueType(type));
    entry(QStringLiteral("k")).setValue(value);
    QCOMPARE(fixture.saved(), scene("{\"k\" :" + after + ",\"l\":1}"));
}

void TestSceneSavingEdits::addsEntriesLaidOutLikeTheirNeighbours_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char *name, const QByteArray &before, const QByteArray &after) {
        QTest::newRow(name) << gltf("\"nodes\":[" + before + ']') << gltf("\"nodes\":[" + after + ']');
    };
    row("dense", R"({"name":"Part","extras":{"a":1}})", R"({"name":"Part","extras":{"a":1,"n":1,"m":2}})");
    row("airy", R"({ "name": "Part", "extras": { "a": 1, "b": 2 } })",
        R"({ "name": "Part", "extras": { "a": 1, "b": 2, "n": 1, "m": 2 } })");
    row("one, with blanks", R"({"name":"Part","extras":{"a": 1}})",
        R"({"name":"Part","extras":{"a": 1, "n": 1, "m": 2}})");
    row("in lines", "{\n\t\"name\": \"Part\",\n\t\"extras\": {\n\t\t\"a\": 1\n\t}\n}",
        "{\n\t\"name\": \"Part\",\n\t\"extras\": {\n\t\t\"a\": 1,\n\t\t\"n\": 1,\n\t\t\"m\": 2\n\t}\n}");
    row("into empty extras", R"({"name":"Part","extras":{ }})", R"({"name":"Part","extras":{"n":1,"m":2}})");
    row("into new extras", R"({"name": "Part"})", R"({"name": "Part", "extras": {"n": 1, "m": 2}})");
    row("into new extras in lines", "{\n  \"name\": \"Part\"\n}",
        "{\n  \"name\": \"Part\",\n  \"extras\": {\n    \"n\": 1,\n    \"m\": 2\n  }\n}");
}

void TestSceneSavingEdits::addsEntriesLaidOutLikeTheirNeighbours()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    SavingFixture fixture;
    QVERIFY(fixture.openContent(before));
    own().setValue(QStringLiteral("n"), 1);
    own().setValue(QStringLiteral("m"), 2);
    QCOMPARE(fixture.saved(), after);
    own().getEntries().remove(entry(QStringLiteral("n")));
    own().getEntries().remove(entry(QStringLiteral("m")));
    QVERIFY(fixture.saved() != after);
}

void TestSceneSavingEdits::renamesObjects()
{
    const QByteArray before = R"("nodes":[{"name":"Part"},{}],"materials":[{"name" : "Red"}])";
    const QByteArray after = R"("nodes":[{"name":"A\"B"},{"name":"C"}],"materials":[{"name" : "Blue"}])";
    SavingFixture fixture;
    QVERIFY(fixture.openContent(gltf(before)));
    SavingFixture::object(QStringLiteral("Part")).setName(QStringLiteral("A\"B"));
    SavingFixture::object(QStringLiteral("Node 1")).setName(QStringLiteral("C"));
    SavingFixture::object(QStringLiteral("Red")).setName(QStringLiteral("Blue"));
    QCOMPARE(fixture.saved(), gltf(after));
}

void TestSceneSavingEdits::doesAllOfItAtOnce()
{
    const QByteArray before = R"({"a":1, "b":2, "c":{"d":3}, "e":[[]], "f":4})";
    const QByteArray after = R"({"a":2, "c":{"d":5}, "e":[[]], "new":true})";
    SavingFixture fixture;
    QVERIFY(fixture.openContent(scene(before)));
    own().getEntries().remove(entry(QStringLiteral("a")));
    own().getEntries().remove(entry(QStringLiteral("f")));
    own().setValue(QStringLiteral("c.d"), 5);
    entry(QStringLiteral("b")).setKey(QStringLiteral("a"));
    own().setValue(QStringLiteral("new"), true);
    QCOMPARE(fixture.saved(), scene(after));
}

NK_TEST_MAIN(TestSceneSavingEdits)
#include "test_scene_saving_edits.moc"
