#include "QueryFixture.h"

#include <TestMain.h>

using namespace QueryFixture;

/// The queries that nkdMetadata builds find what they were built from.
class TestQueryBuilders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void texts_come_back_data();
    void texts_come_back();
    void long_texts_come_back();
    void values_come_back_data();
    void values_come_back();
    void types_come_back();
    void a_tag_asks_for_its_key();

private:
    nkdMetadataSet m_set;
    nkdNode m_node;
};

void TestQueryBuilders::init()
{
    SceneFixture::reset();
    m_node = SceneFixture::node(QStringLiteral("Node"));
    m_set = set(QStringLiteral("Wanted"), {m_node});
    add(set(QStringLiteral("Other")), QStringLiteral("other"), T::String, QStringLiteral("other"));
}

namespace {

void addTexts()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"plain",
                             "two words",
                             "\"",
                             "\\",
                             "\\\"",
                             "\"\"\"",
                             "a\\",
                             "\\\\",
                             "and",
                             "not",
                             "or",
                             "(",
                             ")",
                             "()",
                             "=",
                             "!=",
                             "<=",
                             "key:a",
                             "value:",
                             "/a/",
                             "/[/",
                             "/",
                             "a=b",
                             "%1",
                             "%2 %1",
                             "&File",
                             "<b>x</b>",
                             "a\tb",
                             "line\nbreak",
                             " blank at both ends ",
                             "\xC3\x84"
                             "ffin \xC3\x9F",
                             "\xF0\x9F\x98\x80",
                             "\xE6\x97\xA5\xE6\x9C\xAC",
                             "$^.*+?{}[]|",
                             "C:\\temp\\new",
                             "true",
                             "1.50",
                             "2024-05-01"}) {
        QTest::newRow(text) << QString::fromUtf8(text);
    }
    QTest::newRow("null character") << QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    QTest::newRow("lone surrogate") << QStringLiteral("a") + QChar(0xdc00) + QStringLiteral("b");
}

} // namespace

void TestQueryBuilders::texts_come_back_data()
{
    addTexts();
}

void TestQueryBuilders::texts_come_back()
{
    QFETCH(QString, text);
    add(m_set, text, T::String, text);
    m_set.setName(text);
    const QVector<quint64> wanted{m_set.getObjectId()};
    QCOMPARE(idsOf(nkdMetadata::getKeyQuery(text)), wanted);
    QCOMPARE(idsOf(nkdMetadata::getValueQuery(text)), wanted);
    QCOMPARE(idsOf(nkdMetadata::getSetQuery(text)), wanted);
    QCOMPARE(idsOf(nkdMetadata::fromObject(m_node).getKeyValueQuery(text)), wanted);
}

void TestQueryBuilders::long_texts_come_back()
{
    const QString text = QStringLiteral("a\"\\ (").repeated(50000);
    add(m_set, QStringLiteral("k"), T::String, text);
    const QVector<quint64> wanted{m_set.getObjectId()};
    QCOMPARE(idsOf(nkdMetadata::getValueQuery(text)), wanted);
    QCOMPARE(idsOf(nkdMetadata::fromObject(m_node).getKeyValueQuery(QStringLiteral("k"))), wanted);
}

Q_DECLARE_METATYPE(nkMetadataTypes::ValueType)

void TestQueryBuilders::values_come_back_data()
{
    QTest::addColumn<T::ValueType>("type");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("integer") << T::Integer << QVariant(-42);
    QTest::newRow("lowest integer") << T::Integer << QVariant(std::numeric_limits<int>::min());
    QTest::newRow("float") << T::Float << QVariant(0.1);
    QTest::newRow("third") << T::Float << QVariant(1.0 / 3.0);
    QTest::newRow("huge float") << T::Float << QVariant(1.7976931348623157e308);
    QTest::newRow("tiny float") << T::Float << QVariant(5e-324);
    QTest::newRow("negative zero") << T::Float << QVariant(-0.0);
    QTest::newRow("infinity") << T::Float << QVariant(-qInf());
    QTest::newRow("nan") << T::Float << QVariant(qQNaN());
    QTest::newRow("boolean") << T::Boolean << QVariant(true);
    QTest::newRow("time") << T::Time << QVariant(QTime(23, 59, 59, 7));
    QTest::newRow("date") << T::Date << QVariant(QDate(2024, 2, 29));
    QTest::newRow("early date") << T::Date << QVariant(QDate(1, 1, 1));
    QTest::newRow("late date") << T::Date << QVariant(QDate(12024, 1, 1));
    QTest::newRow("date-time") << T::DateTime << QVariant(QDateTime(QDate(2024, 5, 1), QTime(12, 30, 1, 5)));
    QTest::newRow("utc") << T::DateTime << QVariant(QDateTime(QDate(2024, 5, 1), QTime(12, 30), Qt::UTC));
    QTest::newRow("offset") << T::DateTime
                            << QVariant(QDateTime(QDate(2024, 5, 1), QTime(12, 30), Qt::OffsetFromUTC, 5400));
    QTest::newRow("list") << T::List << QVariant(QVariantList{1, QStringLiteral("a\"\\b"), 0.5, true});
    QTest::newRow("empty list") << T::List << QVariant(QVariantList());
    QTest::newRow("empty text") << T::String << QVariant(QString());
}

void TestQueryBuilders::values_come_back()
{
    QFETCH(T::ValueType, type);
    QFETCH(QVariant, value);
    add(m_set, QStringLiteral("k"), type, value);
    const quint64 wanted = m_set.getObjectId();
    QCOMPARE(idsOf(nkdMetadata::fromObject(m_node).getKeyValueQuery(QStringLiteral("k"))),
             QVector<quint64>{wanted});
    QVERIFY(idsOf(nkdMetadata::getValueQuery(value)).contains(wanted));
}

void TestQueryBuilders::types_come_back()
{
    for (int type = T::String; type <= T::Tag; ++type) {
        SceneFixture::reset();
        QList<nkdMetadataSet> sets;
        for (int other = T::String; other <= T::Tag; ++other) {
            sets.append(set(QString::number(other)));
            sets.last().createEntry(T::ValueType(other));
        }
        QCOMPARE(idsOf(nkdMetadata::getValueTypeQuery(T::ValueType(type))),
                 QVector<quint64>{sets.at(type).getObjectId()});
    }
}

void TestQueryBuilders::a_tag_asks_for_its_key()
{
    add(m_set, QStringLiteral("approved"), T::Tag);
    QCOMPARE(find(nkdMetadata::fromObject(m_node).getKeyValueQuery(QStringLiteral("approved"))),
             QStringList{"Wanted"});
}

NK_GUILESS_TEST_MAIN(TestQueryBuilders)
#include "test_query_builders.moc"
