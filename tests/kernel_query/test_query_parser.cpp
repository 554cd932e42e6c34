#include "QueryFixture.h"

#include <TestMain.h>

using kernel::QueryNode;
using kernel::QueryParser;
using kernel::QueryTerm;

namespace {

QString described(const QueryTerm &term)
{
    static const char *const fields[] = {"any", "key", "value", "set", "type", "object", "cmp"};
    static const char *const operators[] = {"=", "!=", "<", "<=", ">", ">="};
    const QString text = (term.text.isRegex ? "~" : "") + term.text.text;
    if (term.field == QueryTerm::Field::Comparison) {
        return QStringLiteral("[%1%2%3]").arg(term.key, QLatin1String(operators[int(term.comparison)]), text);
    }
    if (term.field == QueryTerm::Field::Type) {
        return QStringLiteral("type%1").arg(int(term.type));
    }
    return QLatin1String(fields[int(term.field)]) + QLatin1Char('\'') + text + QLatin1Char('\'');
}

QString described(const QueryNode &node)
{
    if (node.kind == QueryNode::Kind::Term) {
        return described(node.term);
    }
    static const char *const kinds[] = {"", "and", "or", "not"};
    QStringList parts;
    for (const QueryNode &child : node.children) {
        parts.append(described(child));
    }
    return QLatin1String(kinds[int(node.kind)]) + QLatin1Char('(') + parts.join(QLatin1Char(' '))
           + QLatin1Char(')');
}

QString read(const QString &query)
{
    QueryParser parser(query);
    const auto node = parser.parse();
    return node ? described(*node) : parser.error().sentence;
}

} // namespace

class TestQueryParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void queries_are_read_data();
    void queries_are_read();
    void what_is_wrong_is_told_with_its_place_data();
    void what_is_wrong_is_told_with_its_place();
    void nesting_is_taken_to_its_limit();
    void ten_thousand_brackets_are_an_error();
    void ten_thousand_nots_are_an_error();
    void a_mebibyte_is_answered_data();
    void a_mebibyte_is_answered();
    void a_text_of_a_mebibyte_is_one_word();
    void conditions_are_taken_to_their_limit();
    void a_long_regular_expression_is_an_error();
    void sentences_quote_no_place_holders();
    void random_noise_is_always_answered();
};

void TestQueryParser::queries_are_read_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("tree");
    const auto row = [](const char *query, const char *tree) {
        QTest::newRow(query) << QString::fromUtf8(query) << QString::fromUtf8(tree);
    };
    row("red", "any'red'");
    row("  red\t", "any'red'");
    row("red blue", "and(any'red' any'blue')");
    row("red AND blue", "and(any'red' any'blue')");
    row("a b or c d", "or(and(any'a' any'b') and(any'c' any'd'))");
    row("a and (b or c)", "and(any'a' or(any'b' any'c'))");
    row("(a)(b)", "and(any'a' any'b')");
    row("((a))", "any'a'");
    row("not a b", "and(not(any'a') any'b')");
    row("not not a", "not(not(any'a'))");
    row("a not b", "and(any'a' not(any'b'))");
    row("not (a or b)", "not(or(any'a' any'b'))");
    row("\"and\" or \"or\"", "or(any'and' any'or')");
    row("android nothing", "and(any'android' any'nothing')");
    row("key:a VALUE:b Set:c object:d", "and(key'a' value'b' set'c' object'd')");
    row("key: a", "key'a'");
    row("key:and value:or set:not", "and(key'and' value'or' set'not')");
    row("key:\"a b\"", "key'a b'");
    row("key:\"key:a\"", "key'key:a'");
    row("\"key\":a", "and(any'key' any':a')");
    row("http://x/y", "any'http://x/y'");
    row("foo:bar", "any'foo:bar'");
    row("a!b !", "and(any'a!b' any'!')");
    row("C:\\temp", "any'C:\\temp'");
    row("type:date", "type5");
    row("type:DateTime", "type6");
    row("type:\"date AND time\"", "type6");
    row("type:Tag", "type8");
    row("a = b", "[a=b]");
    row("a=b", "[a=b]");
    row("a!=b c<1 d<=2 e>3 f>=4", "and([a!=b] [c<1] [d<=2] [e>3] [f>=4])");
    row("\"a b\" = \"c d\"", "[a b=c d]");
    row("a = \"\"", "[a=]");
    row("a = /b/", "[a=~b]");
    row("a != /b/ c", "and([a!=~b] any'c')");
    row("not a = b", "not([a=b])");
    row("/a b/", "any'~a b'");
    row("key:/^a\\/b\\d$/", "key'~^a/b\\d$'");
    row("//", "any'~'");
    row("\"\"", "any''");
    row("\"a\\\"b\\\\c\\d\"", "any'a\"b\\cd'");
    row("\xC3\x84 \xF0\x9F\x98\x80", "and(any'\xC3\x84' any'\xF0\x9F\x98\x80')");
}

void TestQueryParser::queries_are_read()
{
    QFETCH(QString, query);
    QTEST(read(query), "tree");
}

void TestQueryParser::what_is_wrong_is_told_with_its_place_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("start");
    const auto row = [](const char *query, int position, const char *start) {
        QTest::newRow(query) << QString::fromUtf8(query) << position << QString::fromUtf8(start);
    };
    row("", 0, "The query is empty");
    row(" \t\n ", 0, "The query is empty");
    row("(", 0, "The bracket at character 1 (() is not closed");
    row("a (b", 2, "The bracket at character 3 ((b) is not closed");
    row("(a or b", 0, "The bracket at character 1 ((a or b) is not closed");
    row(")", 0, "The bracket at character 1 ()) closes nothing");
    row("a) b", 1, "The bracket at character 2 () b) closes nothing");
    row("a ()", 2, "The brackets at character 3 (()) are empty");
    row("a or", 2, "A condition is missing after \"or\" at character 3 (or)");
    row("(a and)", 3, "A condition is missing after \"and\" at character 4");
    row("a or ) b", 2, "A condition is missing after \"or\" at character 3");
    row("not", 0, "A condition is missing after \"not\" at character 1");
    row("and a", 0, "A condition is missing before \"and\" at character 1");
    row("a and or b", 6, "A condition is missing before \"or\" at character 7");
    row("a (or b)", 3, "A condition is missing before \"or\" at character 4");
    row("key:", 0, "A text is missing after \"key:\" at character 1");
    row("a key:)", 2, "A text is missing after \"key:\" at character 3");
    row("key: value:", 0, "A text is missing after \"key:\" at character 1");
    row("= 3", 0, "The comparison at character 1 (= 3) has no key");
    row("key:a = 3", 6, "The comparison at character 7 (= 3) has no key");
    row("a = b = c", 6, "The comparison at character 7 (= c) has no key");
    row("/a/ = c", 4, "The comparison at character 5 (= c) has no key");
    row("a =", 2, "A value is missing after \"=\" at character 3 (=)");
    row("a >= and b", 2, "A value is missing after \">=\" at character 3");
    row("a = key:b", 2, "A value is missing after \"=\" at character 3");
    row("a = (b)", 2, "A value is missing after \"=\" at character 3");
    row("a < /b/", 4, "A regular expression at character 5 (/b/) cannot stand behind \"<\"");
    row("a \"b c", 2, "The quoted text at character 3 (\"b c) has no end");
    row("\"a\\", 0, "The quoted text at character 1");
    row("a = \"b", 4, "The quoted text at character 5");
    row("key:\"b", 4, "The quoted text at character 5");
    row("/usr", 0, "The regular expression at character 1 (/usr) has no end");
    row("/usr/lib", 0, "A blank is missing behind the regular expression at character 1 (/usr/lib)");
    row("a /(b/", 2, "The regular expression at character 3 (/(b/) cannot be read");
    row("a = /[/", 4, "The regular expression at character 5 (/[/) cannot be read");
    row("type:strin", 5, "No type is called like the text at character 6 (strin)");
    row("type:/a/", 5, "No type is called like the text at character 6 (/a/)");
}

void TestQueryParser::what_is_wrong_is_told_with_its_place()
{
    QFETCH(QString, query);
    QFETCH(int, position);
    QFETCH(QString, start);
    const kernel::QueryError error = QueryFixture::errorOf(query);
    QVERIFY2(error.sentence.startsWith(start), qPrintable(error.sentence));
    QCOMPARE(error.position, position);
    QVERIFY(error.sentence.endsWith(QLatin1Char('.')));
}

void TestQueryParser::nesting_is_taken_to_its_limit()
{
    const auto nested = [](int depth) {
        return QString(depth, QLatin1Char('(')) + QLatin1Char('a') + QString(depth, QLatin1Char(')'));
    };
    QCOMPARE(read(nested(QueryParser::DeepestNesting)), QStringLiteral("any'a'"));
    QCOMPARE(QueryFixture::errorOf(nested(QueryParser::DeepestNesting + 1)).position,
             int(QueryParser::DeepestNesting));
}

void TestQueryParser::ten_thousand_brackets_are_an_error()
{
    const QString query = QString(10000, QLatin1Char('(')) + QLatin1Char('a')
                          + QString(10000, QLatin1Char(')'));
    QVERIFY(read(query).startsWith(QStringLiteral("Brackets and \"not\" nest deeper than 100 levels")));
}

void TestQueryParser::ten_thousand_nots_are_an_error()
{
    QVERIFY(read(QStringLiteral("not ").repeated(10000) + QLatin1Char('a'))
                .startsWith(QStringLiteral("Brackets and \"not\" nest deeper than 100 levels")));
}

void TestQueryParser::a_mebibyte_is_answered_data()
{
    QTest::addColumn<QString>("piece");
    for (const char *piece :
         {" ", "(", ")", "a ", "a or ", "\"", "\\", "/", "key:", "=", "a=b ", "not ", "(a)", "!"}) {
        QTest::newRow(piece) << QString::fromLatin1(piece);
    }
}

void TestQueryParser::a_mebibyte_is_answered()
{
    QFETCH(QString, piece);
    const QString query = piece.repeated((1 << 20) / piece.size());
    QElapsedTimer clock;
    clock.start();
    const QString answer = read(query);
    QVERIFY(!answer.isEmpty());
    QVERIFY(clock.elapsed() < 5000);
}

void TestQueryParser::a_text_of_a_mebibyte_is_one_word()
{
    const QString word(1 << 20, QLatin1Char('x'));
    QCOMPARE(read(word).size(), word.size() + 5);
    QCOMPARE(read(QLatin1Char('"') + word + QLatin1Char('"')).size(), word.size() + 5);
}

void TestQueryParser::conditions_are_taken_to_their_limit()
{
    QVERIFY(
        read(QStringLiteral("a ").repeated(QueryParser::MostConditions)).startsWith(QStringLiteral("and(")));
    QVERIFY(read(QStringLiteral("a ").repeated(QueryParser::MostConditions + 1))
                .startsWith(QStringLiteral("The query has more than 1000 conditions")));
}

void TestQueryParser::a_long_regular_expression_is_an_error()
{
    const QString pattern(QueryParser::LongestRegex + 1, QLatin1Char('a'));
    QVERIFY(
        read(QLatin1Char('/') + pattern + QLatin1Char('/')).contains(QStringLiteral("longer than 10000")));
    QCOMPARE(read(QLatin1Char('/') + pattern.mid(1) + QLatin1Char('/')).size(), pattern.size() + 5);
}

void TestQueryParser::sentences_quote_no_place_holders()
{
    QVERIFY(read(QStringLiteral("(%1 %2 %3")).contains(QStringLiteral("((%1 %2 %3)")));
    QVERIFY(read(QStringLiteral("type:%2")).contains(QStringLiteral("(%2)")));
    QVERIFY(!read(QStringLiteral("a (b\nc")).contains(QLatin1Char('\n')));
}

void TestQueryParser::random_noise_is_always_answered()
{
    const QString characters = QStringLiteral("ab \"\\/()=<>!:&%kntor") + QChar(0) + QChar(0xd800);
    const QStringList words = {QStringLiteral("and"), QStringLiteral("not"), QStringLiteral("key:"),
                               QStringLiteral("type:"), QStringLiteral("set:\"")};
    QRandomGenerator random(20240501);
    for (int round = 0; round < 20000; ++round) {
        QString query;
        for (quint32 length = random.bounded(25u); length > 0; --length) {
            query += random.bounded(5) == 0 ? words.at(random.bounded(words.size()))
                                            : QString(characters.at(random.bounded(characters.size())));
        }
        QueryParser parser(query);
        const auto tree = parser.parse();
        QCOMPARE(tree.has_value(), parser.error().sentence.isEmpty());
        QVERIFY(parser.error().position >= 0 && parser.error().position <= query.size());
    }
}

NK_GUILESS_TEST_MAIN(TestQueryParser)
#include "test_query_parser.moc"
