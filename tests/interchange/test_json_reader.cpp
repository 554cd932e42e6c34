#include "Fixtures.h"
#include "TestMain.h"

using namespace interchange;

Q_DECLARE_METATYPE(interchange::JsonErrorCode)

/// The grammar, the places of errors and the limits of JsonReader.
class TestJsonReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptsEveryFormOfTheGrammar_data();
    void acceptsEveryFormOfTheGrammar();
    void refusesWhatIsNoJson_data();
    void refusesWhatIsNoJson();
    void refusesBytesThatAreNoUtf8_data();
    void refusesBytesThatAreNoUtf8();
    void namesLineAndColumnInCharacters_data();
    void namesLineAndColumnInCharacters();
    void namesThePathOfTheInnermostValue_data();
    void namesThePathOfTheInnermostValue();
    void skipsAByteOrderMark();
    void leavesTheTreeEmptyOnError();
    void forgetsAnOldErrorWhenReadingAgain();
    void refusesNestingBeyondTheLimit();
    void survivesAnyDepth_data();
    void survivesAnyDepth();
    void refusesATextCutAtAnyByte();
    void refusesMoreValuesThanAllowed();
    void endsWhenToldTo();
};

namespace {

JsonError errorOf(const QByteArray &text, JsonLimits limits = JsonLimits())
{
    JsonTree tree;
    JsonReader reader(limits);
    reader.read(text, tree);
    return reader.error();
}

} // namespace

void TestJsonReader::acceptsEveryFormOfTheGrammar_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<quint32>("values");
    QTest::newRow("bare text") << QByteArray(R"("a")") << 1u;
    QTest::newRow("bare number") << QByteArray("-0") << 1u;
    QTest::newRow("exponents") << QByteArray("[1e5,1E+5,1.5e-05,-0.0e0]") << 5u;
    QTest::newRow("literals") << QByteArray("[true,false,null]") << 4u;
    QTest::newRow("empty containers") << QByteArray("[{},[]]") << 3u;
    QTest::newRow("white space") << QByteArray(" \r\n\t{ \"a\" : [ 1 , 2 ] } \n") << 4u;
    QTest::newRow("escapes") << QByteArray(R"(["\"\\\/\b\f\n\r\t\u00e9\uD83D\uDE00"])") << 2u;
    QTest::newRow("lone surrogate") << QByteArray(R"(["\ud800","\udc00x"])") << 3u;
    QTest::newRow("empty key") << QByteArray(R"({"":{"":1}})") << 3u;
    QTest::newRow("key twice") << QByteArray(R"({"a":1,"a":2})") << 3u;
    QTest::newRow("delete character") << QByteArray("\"\x7f\"") << 1u;
    QTest::newRow("all lengths of UTF-8") << QByteArray("\"a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\"") << 1u;
    QTest::newRow("last code point") << QByteArray("\"\xf4\x8f\xbf\xbf\"") << 1u;
    QTest::newRow("number longer than any type") << QByteArray(400, '7') << 1u;
}

void TestJsonReader::acceptsEveryFormOfTheGrammar()
{
    QFETCH(QByteArray, text);
    QFETCH(quint32, values);
    JsonTree tree;
    JsonReader reader;
    QVERIFY2(reader.read(text, tree), qPrintable(reader.error().reason));
    QVERIFY(!reader.error().isSet());
    QCOMPARE(tree.size(), values);
    QCOMPARE(tree.text(), text);
}

void TestJsonReader::refusesWhatIsNoJson_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<JsonErrorCode>("code");
    QTest::addColumn<quint32>("offset");
    const auto row = [](const char *text, JsonErrorCode code, quint32 offset) {
        QTest::newRow(QByteArray(text).simplified().prepend("text: ").constData())
            << QByteArray(text) << code << offset;
    };
    row("", JsonErrorCode::Empty, 0);
    row(" \n ", JsonErrorCode::Empty, 3);
    row("{", JsonErrorCode::Truncated, 1);
    row("[1,", JsonErrorCode::Truncated, 3);
    row("[1", JsonErrorCode::Truncated, 2);
    row("{\"a\"", JsonErrorCode::Truncated, 4);
    row("{\"a\":", JsonErrorCode::Truncated, 5);
    row("\"abc", JsonErrorCode::Truncated, 4);
    row("\"ab\\", JsonErrorCode::Truncated, 4);
    row("\"ab\\u12", JsonErrorCode::Truncated, 7);
    row("tru", JsonErrorCode::Truncated, 3);
    row("-", JsonErrorCode::Truncated, 1);
    row("1.", JsonErrorCode::Truncated, 2);
    row("1e+", JsonErrorCode::Truncated, 3);
    row("[1,]", JsonErrorCode::UnexpectedText, 3);
    row("[,1]", JsonErrorCode::UnexpectedText, 1);
    row("[1 2]", JsonErrorCode::UnexpectedText, 3);
    row("{\"a\":1,}", JsonErrorCode::UnexpectedText, 7);
    row("{a:1}", JsonErrorCode::UnexpectedText, 1);
    row("{1:1}", JsonErrorCode::UnexpectedText, 1);
    row("{\"a\" 1}", JsonErrorCode::UnexpectedText, 5);
    row("{\"a\":1]", JsonErrorCode::UnexpectedText, 6);
    row("[1}", JsonErrorCode::UnexpectedText, 2);
    row("]", JsonErrorCode::UnexpectedText, 0);
    row("trUe", JsonErrorCode::UnexpectedText, 2);
    row("truex", JsonErrorCode::TrailingText, 4);
    row("NaN", JsonErrorCode::UnexpectedText, 0);
    row("'a'", JsonErrorCode::UnexpectedText, 0);
    row("// no\n1", JsonErrorCode::UnexpectedText, 0);
    row("+1", JsonErrorCode::UnexpectedText, 0);
    row(".5", JsonErrorCode::UnexpectedText, 0);
    row("01", JsonErrorCode::BadNumber, 0);
    row("-01", JsonErrorCode::BadNumber, 1);
    row("-a", JsonErrorCode::BadNumber, 1);
    row("1.e5", JsonErrorCode::BadNumber, 2);
    row("1ex", JsonErrorCode::BadNumber, 2);
    row("0x10", JsonErrorCode::TrailingText, 1);
    row("\"\\x\"", JsonErrorCode::BadString, 2);
    row("\"\\u12g4\"", JsonErrorCode::BadString, 5);
    row("\"a\nb\"", JsonErrorCode::BadString, 2);
    row("1 2", JsonErrorCode::TrailingText, 2);
    row("{}}", JsonErrorCode::TrailingText, 2);
    QTest::newRow("zero byte in a string") << QByteArray("\"a\0b\"", 5) << JsonErrorCode::BadString << 2u;
    QTest::newRow("zero byte behind an escape")
        << QByteArray("\"\\\0\"", 4) << JsonErrorCode::BadString << 2u;
    QTest::newRow("zero byte behind the end") << QByteArray("1\0", 2) << JsonErrorCode::TrailingText << 1u;
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe{\0}\0", 6) << JsonErrorCode::UnexpectedText << 0u;
}

void TestJsonReader::refusesWhatIsNoJson()
{
    QFETCH(QByteArray, text);
    QFETCH(JsonErrorCode, code);
    QFETCH(quint32, offset);
    const JsonError error = errorOf(text);
    QVERIFY(error.isSet());
    QVERIFY(!error.reason.isEmpty());
    QCOMPARE(error.code, code);
    QCOMPARE(error.offset, offset);
}

void TestJsonReader::refusesBytesThatAreNoUtf8_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("continuation alone") << QByteArray("\x80");
    QTest::newRow("overlong, two bytes") << QByteArray("\xc0\xaf");
    QTest::newRow("overlong, three bytes") << QByteArray("\xe0\x80\xaf");
    QTest::newRow("overlong, four bytes") << QByteArray("\xf0\x80\x80\xaf");
    QTest::newRow("surrogate") << QByteArray("\xed\xa0\x80");
    QTest::newRow("beyond the last code point") << QByteArray("\xf4\x90\x80\x80");
    QTest::newRow("no such lead") << QByteArray("\xf5\x80\x80\x80");
    QTest::newRow("cut, two bytes") << QByteArray("\xc3");
    QTest::newRow("cut, three bytes") << QByteArray("\xe2\x82");
    QTest::newRow("cut, four bytes") << QByteArray("\xf0\x9f\x98");
    QTest::newRow("Latin-1") << QByteArray("\xe9t\xe9");
}

void TestJsonReader::refusesBytesThatAreNoUtf8()
{
    QFETCH(QByteArray, bytes);
    const JsonError value = errorOf("[\"" + bytes + "\"]");
    QCOMPARE(value.code, JsonErrorCode::BadUtf8);
    QCOMPARE(value.offset, 2u);
    const JsonError key = errorOf("{\"" + bytes + "\":1}");
    QCOMPARE(key.code, JsonErrorCode::BadUtf8);
    QVERIFY(errorOf("[\"" + bytes).isSet());
}

void TestJsonReader::namesLineAndColumnInCharacters_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::newRow("first character") << QByteArray("x") << 1 << 1;
    QTest::newRow("line feeds") << QByteArray("[\n1,\n  x]") << 3 << 3;
    QTest::newRow("carriage returns with line feeds") << QByteArray("[\r\n1,\r\n  x]") << 3 << 3;
    QTest::newRow("carriage returns") << QByteArray("[\r1,\r  x]") << 3 << 3;
    QTest::newRow("several bytes a character")
        << QByteArray("[\"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\",x]") << 1 << 8;
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbfx") << 1 << 1;
    QTest::newRow("behind the end") << QByteArray("[\n") << 2 << 1;
}

void TestJsonReader::namesLineAndColumnInCharacters()
{
    QFETCH(QByteArray, text);
    QFETCH(int, line);
    QFETCH(int, column);
    const JsonError error = errorOf(text);
    QVERIFY(error.isSet());
    QCOMPARE(error.place.line, line);
    QCOMPARE(error.place.column, column);
}

void TestJsonReader::namesThePathOfTheInnermostValue_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("path");
    QTest::newRow("outermost") << QByteArray("x") << "$";
    QTest::newRow("member") << QByteArray(R"({"a":1,"b":x})") << "$.b";
    QTest::newRow("element") << QByteArray("[0,[1,x]]") << "$[1][1]";
    QTest::newRow("mixed") << QByteArray(R"({"nodes":[{},{"extras":{"a b":x}}]})")
                           << R"($.nodes[1].extras["a b"])";
    QTest::newRow("bad key") << QByteArray(R"({"a":{"b":1,x}})") << "$.a";
    QTest::newRow("empty key") << QByteArray(R"({"":x})") << R"($[""])";
    QTest::newRow("digit first") << QByteArray(R"({"1a":x})") << R"($["1a"])";
    QTest::newRow("control and quote") << QByteArray(R"({"a\n\"\u0041":x})") << R"($["a\u000a\"A"])";
}

void TestJsonReader::namesThePathOfTheInnermostValue()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, path);
    QCOMPARE(errorOf(text).path, path);
}

void TestJsonReader::skipsAByteOrderMark()
{
    const QByteArray text("\xef\xbb\xbf{\"a\":1}");
    JsonTree tree;
    QVERIFY(JsonReader().read(text, tree));
    QCOMPARE(tree.root().span().offset, 3u);
    QCOMPARE(errorOf("\xef\xbb").code, JsonErrorCode::UnexpectedText);
    QCOMPARE(errorOf("\xef\xbb\xbf").code, JsonErrorCode::Empty);
}

void TestJsonReader::leavesTheTreeEmptyOnError()
{
    JsonTree tree;
    QVERIFY(JsonReader().read("[1,2]", tree));
    QVERIFY(!JsonReader().read("[1,2", tree));
    QVERIFY(tree.isEmpty());
    QVERIFY(!tree.root().isPresent());
}

void TestJsonReader::forgetsAnOldErrorWhenReadingAgain()
{
    JsonTree tree;
    JsonReader reader;
    QVERIFY(!reader.read("[", tree));
    QVERIFY(reader.error().isSet());
    QVERIFY(reader.read("[]", tree));
    QVERIFY(!reader.error().isSet());
    QVERIFY(reader.error().path.isEmpty());
}

void TestJsonReader::refusesNestingBeyondTheLimit()
{
    JsonLimits limits;
    limits.depth = 3;
    QVERIFY(!errorOf("[[{}]]", limits).isSet());
    const JsonError error = errorOf("[[{\"a\":[]}]]", limits);
    QCOMPARE(error.code, JsonErrorCode::TooDeep);
    QCOMPARE(error.offset, 7u);
    QCOMPARE(error.path, QStringLiteral("$[0][0].a"));
    QVERIFY(!errorOf(QByteArray(512, '[') + QByteArray(512, ']')).isSet());
    QCOMPARE(errorOf(QByteArray(513, '[') + QByteArray(513, ']')).code, JsonErrorCode::TooDeep);
}

void TestJsonReader::survivesAnyDepth_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("10,000") << 10000;
    QTest::newRow("1,000,000") << 1000000;
}

void TestJsonReader::survivesAnyDepth()
{
    QFETCH(int, depth);
    const QByteArray text = QByteArray(depth, '[') + QByteArray(depth, ']');
    const JsonError error = errorOf(text);
    QCOMPARE(error.code, JsonErrorCode::TooDeep);
    QCOMPARE(error.offset, 512u);
    JsonLimits none;
    none.depth = depth;
    JsonTree tree;
    QVERIFY(JsonReader(none).read(text, tree));
    QCOMPARE(tree.size(), quint32(depth));
    const QByteArray objects = QByteArray("{\"a\":").repeated(depth);
    QCOMPARE(errorOf(objects, none).code, JsonErrorCode::Truncated);
}

void TestJsonReader::refusesATextCutAtAnyByte()
{
    const QByteArray text("{\"a\":[1.5e3,\"\\u00e9\xc3\xa9\\n\",true,false,null,{}],\"b\":{\"c\":-12}}");
    QVERIFY(!errorOf(text).isSet());
    for (int length = 0; length < text.size(); ++length) {
        const JsonError error = errorOf(text.left(length));
        QVERIFY2(error.isSet(), qPrintable(QString::number(length)));
        QVERIFY(error.offset <= quint32(length));
    }
}

void TestJsonReader::refusesMoreValuesThanAllowed()
{
    JsonLimits limits;
    limits.values = 4;
    QVERIFY(!errorOf("[1,[2]]", limits).isSet());
    const JsonError error = errorOf("[1,[2],3]", limits);
    QCOMPARE(error.code, JsonErrorCode::TooMany);
    QCOMPARE(error.path, QStringLiteral("$[2]"));
}

void TestJsonReader::endsWhenToldTo()
{
    const QByteArray text = '[' + QByteArray("1,").repeated(500000) + "1]";
    QVector<double> shares;
    JsonReader reader;
    JsonTree tree;
    reader.setGoOn([&shares](double share) {
        shares.append(share);
        return true;
    });
    QVERIFY(reader.read(text, tree));
    QVERIFY(shares.size() > 5 && shares.last() > 0.8 && shares.last() <= 1);
    QVERIFY(std::is_sorted(shares.begin(), shares.end()));
    reader.setGoOn([](double share) { return share < 0.5; });
    QVERIFY(!reader.read(text, tree));
    QCOMPARE(reader.error().code, JsonErrorCode::Cancelled);
    QVERIFY(tree.isEmpty());
}

NK_GUILESS_TEST_MAIN(TestJsonReader)
#include "test_json_reader.moc"
