#include "Fixtures.h"
#include "TestMain.h"

#include <QFile>

#include <cmath>
#include <limits>

using namespace interchange;

/// What JsonValue tells of a value: spans, decoded texts, numbers, members, paths.
class TestJsonValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void spansCoverValuesAndMembersExactly();
    void everySpanReadsBackAsTheSameValue();
    void everyPathLeadsToItsValue();
    void decodesStrings_data();
    void decodesStrings();
    void replacesLoneSurrogatesAndSaysSo_data();
    void replacesLoneSurrogatesAndSaysSo();
    void readsIntegersOf32Bits_data();
    void readsIntegersOf32Bits();
    void readsDoublesOrRefuses_data();
    void readsDoublesOrRefuses();
    void keepsMembersInOrderWithDoubleKeys();
    void findsTheLastOfEqualKeys();
    void comparesKeysDecoded();
    void namesHiddenMembersInSmallAndLargeObjects_data();
    void namesHiddenMembersInSmallAndLargeObjects();
    void absentValuesAnswerNo();
};

namespace {

JsonTree treeOf(const QByteArray &text)
{
    JsonTree tree;
    JsonReader reader;
    if (!reader.read(text, tree))
        qWarning("unreadable: %s", qPrintable(reader.error().reason));
    return tree;
}

QStringList keysOf(const QVector<JsonValue> &members)
{
    QStringList keys;
    for (const JsonValue &member : members)
        keys.append(member.key() + QLatin1Char('=') + member.toText());
    return keys;
}

} // namespace

void TestJsonValue::spansCoverValuesAndMembersExactly()
{
    const QByteArray text("{ \"a\" :\t[ 1.50 , \"x\\\"y\" ] ,\n\"\xc3\xa9\": {} }");
    const JsonTree tree = treeOf(text);
    const JsonValue root = tree.root();
    QCOMPARE(Fixtures::bytesAt(text, root.span()), text);
    QVERIFY(root.keySpan().isEmpty());
    QCOMPARE(root.memberSpan(), root.span());
    const JsonValue array = root.find(QLatin1String("a"));
    QCOMPARE(Fixtures::bytesAt(text, array.span()), QByteArray("[ 1.50 , \"x\\\"y\" ]"));
    QCOMPARE(Fixtures::bytesAt(text, array.keySpan()), QByteArray("\"a\""));
    QCOMPARE(Fixtures::bytesAt(text, array.memberSpan()), QByteArray("\"a\" :\t[ 1.50 , \"x\\\"y\" ]"));
    QList<QByteArray> elements;
    for (const JsonValue element : array.children())
        elements.append(Fixtures::bytesAt(text, element.span()));
    QCOMPARE(elements, (QList<QByteArray>{"1.50", "\"x\\\"y\""}));
}

void TestJsonValue::everySpanReadsBackAsTheSameValue()
{
    QFile file(QStringLiteral(NK_SAMPLES_DIR "/showroom.gltf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    const JsonTree tree = treeOf(text);
    QVERIFY(tree.size() > 1000);
    for (quint32 i = 0; i < tree.size(); ++i) {
        const JsonValue value(&tree, i);
        const JsonTree part = treeOf(Fixtures::bytesAt(text, value.span()));
        QCOMPARE(part.root().kind(), value.kind());
        QCOMPARE(part.size(), tree.cell(i).next - i);
        if (!value.isMember())
            continue;
        const JsonTree member = treeOf('{' + Fixtures::bytesAt(text, value.memberSpan()) + '}');
        QCOMPARE((*member.root().children().begin()).key(), value.key());
        QCOMPARE(treeOf(Fixtures::bytesAt(text, value.keySpan())).root().toText(), value.key());
    }
}

void TestJsonValue::everyPathLeadsToItsValue()
{
    const JsonTree tree = treeOf(R"({"a":[{"b":1},[2,3]],"c d":{"":{"e":[]}}})");
    QStringList paths;
    for (quint32 i = 0; i < tree.size(); ++i)
        paths.append(JsonValue(&tree, i).path());
    QCOMPARE(paths, (QStringList{"$", "$.a", "$.a[0]", "$.a[0].b", "$.a[1]", "$.a[1][0]", "$.a[1][1]",
                                 R"($["c d"])", R"($["c d"][""])", R"($["c d"][""].e)"}));
}

void TestJsonValue::decodesStrings_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("decoded");
    QTest::newRow("plain") << QByteArray(R"("abc")") << "abc";
    QTest::newRow("empty") << QByteArray(R"("")") << "";
    QTest::newRow("all short escapes") << QByteArray(R"("\"\\\/\b\f\n\r\t")") << "\"\\/\b\f\n\r\t";
    QTest::newRow("hexadecimal, both cases")
        << QByteArray(R"("\u00e9\u00E9")") << QString::fromUtf8("\xc3\xa9\xc3\xa9");
    QTest::newRow("surrogate pair") << QByteArray(R"("\ud83d\ude00")")
                                    << QString::fromUtf8("\xf0\x9f\x98\x80");
    QTest::newRow("raw") << QByteArray("\"\xf0\x9f\x98\x80\"") << QString::fromUtf8("\xf0\x9f\x98\x80");
    QTest::newRow("zero") << QByteArray(R"("a\u0000b")") << QString::fromUtf8("a\0b", 3);
    QTest::newRow("markup and formats stay") << QByteArray(R"("<b>&amp;%1</b>")") << "<b>&amp;%1</b>";
}

void TestJsonValue::decodesStrings()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, decoded);
    const JsonTree tree = treeOf('[' + text + ']');
    bool replaced = false;
    QCOMPARE((*tree.root().children().begin()).toText(&replaced), decoded);
    QVERIFY(!replaced);
}

void TestJsonValue::replacesLoneSurrogatesAndSaysSo_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("decoded");
    const QString sign = QString(QChar(QChar::ReplacementCharacter));
    QTest::newRow("high at the end") << QByteArray(R"("x\ud800")") << 'x' + sign;
    QTest::newRow("high before text") << QByteArray(R"("\ud800x")") << sign + 'x';
    QTest::newRow("low alone") << QByteArray(R"("\udc00")") << sign;
    QTest::newRow("in the wrong order") << QByteArray(R"("\udc00\ud800")") << sign + sign;
    QTest::newRow("high before a pair")
        << QByteArray(R"("\ud800\ud83d\ude00")") << sign + QString::fromUtf8("\xf0\x9f\x98\x80");
}

void TestJsonValue::replacesLoneSurrogatesAndSaysSo()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, decoded);
    const JsonTree tree = treeOf(text);
    bool replaced = false;
    QCOMPARE(tree.root().toText(&replaced), decoded);
    QVERIFY(replaced);
    QCOMPARE(tree.root().toText(), decoded);
}

void TestJsonValue::readsIntegersOf32Bits_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("fits");
    QTest::addColumn<int>("number");
    QTest::newRow("zero") << QByteArray("0") << true << 0;
    QTest::newRow("minus zero") << QByteArray("-0") << true << 0;
    QTest::newRow("largest") << QByteArray("2147483647") << true << std::numeric_limits<int>::max();
    QTest::newRow("one more") << QByteArray("2147483648") << false << 0;
    QTest::newRow("smallest") << QByteArray("-2147483648") << true << std::numeric_limits<int>::min();
    QTest::newRow("one less") << QByteArray("-2147483649") << false << 0;
    QTest::newRow("hundreds of digits") << QByteArray(300, '9') << false << 0;
    QTest::newRow("with a point") << QByteArray("1.0") << false << 0;
    QTest::newRow("with an exponent") << QByteArray("1e2") << false << 0;
    QTest::newRow("text") << QByteArray("\"1\"") << false << 0;
}

void TestJsonValue::readsIntegersOf32Bits()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, fits);
    QFETCH(int, number);
    const JsonTree tree = treeOf(text);
    bool ok = !fits;
    QCOMPARE(tree.root().toInt(&ok), number);
    QCOMPARE(ok, fits);
}

void TestJsonValue::readsDoublesOrRefuses_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("fits");
    QTest::addColumn<double>("number");
    QTest::newRow("tenth") << QByteArray("0.1") << true << 0.1;
    QTest::newRow("many digits") << QByteArray("0.1000000000000000055511151231257827") << true << 0.1;
    QTest::newRow("exponent") << QByteArray("1E+2") << true << 100.0;
    QTest::newRow("integer") << QByteArray("9007199254740993") << true << 9007199254740992.0;
    QTest::newRow("largest") << QByteArray("1.7976931348623157e308") << true
                             << std::numeric_limits<double>::max();
    QTest::newRow("beyond") << QByteArray("1e400") << false << 0.0;
    QTest::newRow("beyond, negative") << QByteArray("-1e400") << false << 0.0;
    QTest::newRow("denormal") << QByteArray("1e-320") << true << 1e-320;
    QTest::newRow("would become zero") << QByteArray("1e-400") << false << 0.0;
    QTest::newRow("minus zero") << QByteArray("-0.0") << true << -0.0;
    QTest::newRow("zero, huge exponent") << QByteArray("0.00e999") << true << 0.0;
    QTest::newRow("zero, tiny exponent") << QByteArray("0e-999") << true << 0.0;
    QTest::newRow("no number") << QByteArray("true") << false << 0.0;
}

void TestJsonValue::readsDoublesOrRefuses()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, fits);
    QFETCH(double, number);
    const JsonTree tree = treeOf(text);
    bool ok = !fits;
    const double read = tree.root().toDouble(&ok);
    QCOMPARE(ok, fits);
    QVERIFY(read == number && std::signbit(read) == std::signbit(number));
}

void TestJsonValue::keepsMembersInOrderWithDoubleKeys()
{
    const JsonTree tree = treeOf(R"({"z":1,"a":2,"z":3})");
    QStringList members;
    for (const JsonValue member : tree.root().children())
        members.append(member.key() + QLatin1Char('=') + member.toText());
    QCOMPARE(members, (QStringList{"z=1", "a=2", "z=3"}));
    QCOMPARE(tree.root().count(), 3u);
}

void TestJsonValue::findsTheLastOfEqualKeys()
{
    const JsonTree tree = treeOf(R"({"name":1,"names":2,"name":3,"nam":4})");
    QCOMPARE(tree.root().find(QLatin1String("name")).toText(), QStringLiteral("3"));
    QVERIFY(!tree.root().find(QLatin1String("na")).isPresent());
}

void TestJsonValue::comparesKeysDecoded()
{
    const JsonTree tree = treeOf(R"({"n\u0061me":1})");
    QVERIFY(tree.root().find(QLatin1String("name")).isPresent());
    QCOMPARE((*tree.root().children().begin()).key(), QStringLiteral("name"));
}

void TestJsonValue::namesHiddenMembersInSmallAndLargeObjects_data()
{
    QTest::addColumn<QByteArray>("filling");
    QByteArray many;
    for (int i = 0; i < 40; ++i)
        many += "\"k" + QByteArray::number(i) + "\":0,";
    QTest::newRow("small") << QByteArray();
    QTest::newRow("large") << many;
}

void TestJsonValue::namesHiddenMembersInSmallAndLargeObjects()
{
    QFETCH(QByteArray, filling);
    const JsonTree tree = treeOf(R"({"b":1,"a":1,)" + filling + R"("b":2,"c":1,"\u0061":2,"b":3,"B":1})");
    QCOMPARE(keysOf(tree.root().hiddenMembers()), (QStringList{"b=1", "a=1", "b=2"}));
    const JsonTree distinct = treeOf(R"({)" + filling + R"("a":1,"A":1,"a ":1})");
    QVERIFY(distinct.root().hiddenMembers().isEmpty());
}

void TestJsonValue::absentValuesAnswerNo()
{
    const JsonValue absent;
    QVERIFY(!absent.isPresent() && !absent.isNull() && !absent.isObject() && !absent.isNumber());
    QVERIFY(!absent.isMember() && !absent.hasChildren());
    QVERIFY(!absent.find(QLatin1String("a")).isPresent());
    QCOMPARE(absent.count(), 0u);
    QVERIFY(absent.hiddenMembers().isEmpty());
}

NK_GUILESS_TEST_MAIN(TestJsonValue)
#include "test_json_value.moc"
