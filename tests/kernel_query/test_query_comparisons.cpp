#include "QueryFixture.h"

#include <TestMain.h>

using namespace QueryFixture;

/// KEY OPERATOR VALUE by the type of the entry.
class TestQueryComparisons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { SceneFixture::reset(); }
    void values_compare_by_their_type_data();
    void values_compare_by_their_type();
    void moments_compare_whatever_zone_tells_them();
};

Q_DECLARE_METATYPE(nkMetadataTypes::ValueType)

void TestQueryComparisons::values_compare_by_their_type_data()
{
    QTest::addColumn<T::ValueType>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("holding");
    int number = 0;
    const auto row = [&number](T::ValueType type, const QVariant &value, const char *text,
                               const char *holding) {
        QTest::addRow("%d: %s %s", number++, qPrintable(value.toString()), text)
            << type << value << QString::fromUtf8(text) << QString::fromUtf8(holding);
    };
    row(T::Integer, 10, "9", "!= > >=");
    row(T::Integer, 10, "10.0", "= <= >=");
    row(T::Integer, 10, "10.5", "!= < <=");
    row(T::Integer, 10, "1e1", "= <= >=");
    row(T::Integer, 10, "ten", "!=");
    row(T::Integer, 2147483647, "2147483648", "!= < <=");
    row(T::Float, 0.5, "0.50", "= <= >=");
    row(T::Float, 0.5, "-3", "!= > >=");
    row(T::Float, double(0.1f), "0.1", "= <= >=");
    row(T::Float, 16777216.0, "16777217", "!= < <=");
    row(T::Float, qInf(), "inf", "= <= >=");
    row(T::Float, qQNaN(), "nan", "= <= >=");
    row(T::Float, qQNaN(), "1", "!=");
    row(T::Float, 1.0, "1e400", "!= < <=");
    row(T::Boolean, true, "TRUE", "= <= >=");
    row(T::Boolean, true, "false", "!= > >=");
    row(T::Boolean, false, "1", "!= < <=");
    row(T::Boolean, false, "no", "!=");
    row(T::String, QStringLiteral("Part 9"), "part 10", "!= < <=");
    row(T::String, QStringLiteral("Part 9"), "PART 9", "= <= >=");
    row(T::String, QStringLiteral("007"), "7", "!= < <=");
    row(T::String, QStringLiteral("b"), "a", "!= > >=");
    row(T::String, QString(), "", "= <= >=");
    row(T::String, QString(), "a", "!= < <=");
    row(T::Time, QTime(9, 30), "09:30", "= <= >=");
    row(T::Time, QTime(9, 30), "10:00:00", "!= < <=");
    row(T::Time, QTime(9, 30), "soon", "!=");
    row(T::Date, QDate(2024, 5, 1), "2024-05-01", "= <= >=");
    row(T::Date, QDate(2024, 5, 1), "2023-12-31", "!= > >=");
    row(T::DateTime, QDateTime(QDate(2024, 5, 1), QTime(12, 0)), "2024-05-01T12:00:00", "= <= >=");
    row(T::DateTime, QDateTime(QDate(2024, 5, 1), QTime(12, 0)), "2024-05-01T13:00", "!= < <=");
    row(T::DateTime, QDateTime(QDate(2024, 5, 1), QTime(12, 0)), "2024-05-01", "= <= >=");
    row(T::DateTime, QDateTime(QDate(2024, 5, 1), QTime(12, 0)), "2024-05-02", "!= < <=");
    row(T::List, QVariantList{QStringLiteral("a"), 7}, "a", "= <= >=");
    row(T::List, QVariantList{QStringLiteral("a"), 7}, "A, 7", "= < <= >=");
    row(T::List, QVariantList{5, 7}, "6", "!= < <= > >=");
    row(T::List, QVariantList(), "6", "!=");
    row(T::List, QVariantList{QVariantList{3}}, "3", "= <= >=");
}

void TestQueryComparisons::values_compare_by_their_type()
{
    QFETCH(T::ValueType, type);
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QFETCH(QString, holding);
    add(set(QStringLiteral("S")), QStringLiteral("k"), type, value);
    const QStringList expected = holding.split(QLatin1Char(' '));
    for (const char *sign : {"=", "!=", "<", "<=", ">", ">="}) {
        const QString query = QStringLiteral("k %1 \"%2\"").arg(QLatin1String(sign), text);
        const bool holds = !find(query).isEmpty();
        QVERIFY2(holds == expected.contains(QLatin1String(sign)), qPrintable(query));
    }
}

void TestQueryComparisons::moments_compare_whatever_zone_tells_them()
{
    const QDateTime noon(QDate(2024, 5, 1), QTime(12, 0), Qt::UTC);
    add(set(QStringLiteral("S")), QStringLiteral("k"), T::DateTime, noon);
    QCOMPARE(find(QStringLiteral("k = 2024-05-01T12:00:00Z")).size(), 1);
    QCOMPARE(find(QStringLiteral("k = 2024-05-01T14:00:00+02:00")).size(), 1);
    QCOMPARE(find(QStringLiteral("k < 2024-05-01T14:00:00+03:00")).size(), 0);
}

NK_GUILESS_TEST_MAIN(TestQueryComparisons)
#include "test_query_comparisons.moc"
