#include <TestMain.h>

#include <kernel/document/ValueConversion.h>

#include <QTimeZone>

#include <cmath>
#include <limits>

using namespace kernel;
using T = nkMetadataTypes;

Q_DECLARE_METATYPE(QVector<int>)

/// What an entry of each type makes of values of other types.
class TestValueConversion : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void converts_data();
    void converts();
    void refuses_data();
    void refuses();
    void fitsTheBestType_data();
    void fitsTheBestType();
    void writesValuesAsText_data();
    void writesValuesAsText();
    void defaultsAreEmptyOrToday();
    void comparesTypeBeforeValue();
    void comparesDateTimesWithTheirZones();
    void comparesListsElementByElement();
    void tagsDifferFromEmptyTexts();
    void numberLiteralsAreThoseOfJson();
    void numberTextIsAString();
};

namespace {

const QDate day(2023, 3, 2);
const QTime afternoon(15, 7, 9);

QVariant dateTime()
{
    return QDateTime(day, afternoon);
}

QVariantList nested(int depth)
{
    QVariantList list;
    for (int level = 1; level < depth; ++level) {
        list = QVariantList{QVariant(list)};
    }
    return list;
}

} // namespace

void TestValueConversion::converts_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char *name, const QVariant &value, T::ValueType type,
                        const QVariant &expected) { QTest::newRow(name) << value << int(type) << expected; };
    row("text to integer", "42", T::Integer, 42);
    row("text with blanks to integer", " 42\n", T::Integer, 42);
    row("text of a float to integer", "42.0", T::Integer, 42);
    row("float to integer", 42.0, T::Integer, 42);
    row("fraction to integer", 3.7, T::Integer, 4);
    row("true to integer", true, T::Integer, 1);
    row("text true to integer", "true", T::Integer, 1);
    row("64-bit to integer", qlonglong(-7), T::Integer, -7);
    row("smallest integer", double(std::numeric_limits<int>::min()), T::Integer,
        std::numeric_limits<int>::min());
    row("integer to text", 42, T::String, "42");
    row("float to text", 42.0, T::String, "42");
    row("shortest float to text", 0.1, T::String, "0.1");
    row("true to text", true, T::String, "true");
    row("time to text", afternoon, T::String, "15:07:09");
    row("date to text", day, T::String, "2023-03-02");
    row("date-time to text", dateTime(), T::String, "2023-03-02T15:07:09");
    row("list to text", QVariantList{"a", 2, true}, T::String, "a, 2, true");
    row("text to float", "1e3", T::Float, 1000.0);
    row("integer to float", 42, T::Float, 42.0);
    row("true to float", true, T::Float, 1.0);
    row("integer to boolean", 42, T::Boolean, true);
    row("zero to boolean", 0.0, T::Boolean, false);
    row("text 42 to boolean", "42", T::Boolean, true);
    row("text false to boolean", "False", T::Boolean, false);
    row("text to time", "15:07:09", T::Time, afternoon);
    row("text without seconds to time", "15:07", T::Time, QTime(15, 7));
    row("date-time to time", dateTime(), T::Time, afternoon);
    row("text of a date-time to time", "2023-03-02T15:07:09", T::Time, afternoon);
    row("text to date", "2023-03-02", T::Date, day);
    row("date-time to date", dateTime(), T::Date, day);
    row("text of a date-time to date", "2023-03-02T15:07:09", T::Date, day);
    row("text to date-time", "2023-03-02T15:07:09", T::DateTime, dateTime());
    row("date to date-time", day, T::DateTime, day.startOfDay());
    row("text of a date to date-time", "2023-03-02", T::DateTime, day.startOfDay());
    row("text to list", "a, b", T::List, QVariantList{"a", "b"});
    row("empty text to list", "", T::List, QVariantList());
    row("integer to list", 42, T::List, QVariantList{42});
    row("string list to list", QStringList{"a", "b"}, T::List, QVariantList{"a", "b"});
    row("list of one to integer", QVariantList{"42"}, T::Integer, 42);
    row("list with a gap stays", QVariantList{1, QVariant()}, T::List, QVariantList{1, QVariant()});
    row("deep list", nested(DeepestList), T::List, nested(DeepestList));
}

void TestValueConversion::converts()
{
    QFETCH(QVariant, value);
    QFETCH(int, type);
    QFETCH(QVariant, expected);
    const std::optional<EntryValue> result = convertedValue(value, T::ValueType(type));
    QVERIFY(result.has_value());
    QCOMPARE(int(result->type()), type);
    QVERIFY2(isSameValue(result->toVariant(), expected), qPrintable(valueText(result->toVariant())));
}

void TestValueConversion::refuses_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("type");
    QTest::newRow("nothing") << QVariant() << int(T::String);
    QTest::newRow("word to integer") << QVariant("abc") << int(T::Integer);
    QTest::newRow("empty text to float") << QVariant("") << int(T::Float);
    QTest::newRow("too long for integer") << QVariant(1e12) << int(T::Integer);
    QTest::newRow("NaN to integer") << QVariant(std::nan("")) << int(T::Integer);
    QTest::newRow("word to boolean") << QVariant("yes") << int(T::Boolean);
    QTest::newRow("number to time") << QVariant(12) << int(T::Time);
    QTest::newRow("no time") << QVariant(QTime()) << int(T::Time);
    QTest::newRow("no date") << QVariant(QDate()) << int(T::Date);
    QTest::newRow("date to time") << QVariant(day) << int(T::Time);
    QTest::newRow("time to integer") << QVariant(afternoon) << int(T::Integer);
    QTest::newRow("impossible date") << QVariant("2023-02-30") << int(T::Date);
    QTest::newRow("list of two to integer") << QVariant(QVariantList{1, 2}) << int(T::Integer);
    QTest::newRow("too deep list") << QVariant(nested(DeepestList + 1)) << int(T::List);
    QTest::newRow("what no entry holds") << QVariant::fromValue(QVector<int>{1}) << int(T::String);
    QTest::newRow("list of that") << QVariant(QVariantList{QVariant::fromValue(QVector<int>{1})})
                                  << int(T::List);
    QTest::newRow("type beyond") << QVariant(1) << 9;
    QTest::newRow("type below") << QVariant(1) << -1;
}

void TestValueConversion::refuses()
{
    QFETCH(QVariant, value);
    QFETCH(int, type);
    QVERIFY(!convertedValue(value, T::ValueType(type)).has_value());
}

void TestValueConversion::fitsTheBestType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("text") << QVariant("42") << QVariant("42");
    QTest::newRow("integer") << QVariant(42) << QVariant(42);
    QTest::newRow("64-bit within 32") << QVariant(qlonglong(42)) << QVariant(42);
    QTest::newRow("64-bit beyond 32")
        << QVariant(Q_INT64_C(9007199254740993)) << QVariant("9007199254740993");
    QTest::newRow("single") << QVariant(0.5f) << QVariant(0.5);
    QTest::newRow("boolean") << QVariant(true) << QVariant(true);
    QTest::newRow("date") << QVariant(day) << QVariant(day);
    QTest::newRow("list") << QVariant(QStringList{"a"}) << QVariant(QVariantList{"a"});
}

void TestValueConversion::fitsTheBestType()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, expected);
    const std::optional<EntryValue> result = bestFittingValue(value);
    QVERIFY(result.has_value());
    QVERIFY(isSameValue(result->toVariant(), expected));
}

void TestValueConversion::writesValuesAsText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("integer") << QVariant(-3) << "-3";
    QTest::newRow("float") << QVariant(1e21) << "1e+21";
    QTest::newRow("milliseconds") << QVariant(QTime(1, 2, 3, 4)) << "01:02:03.004";
    QTest::newRow("nested list") << QVariant(QVariantList{1, QVariantList{"a", day}}) << "1, a, 2023-03-02";
    QTest::newRow("nothing") << QVariant() << "";
}

void TestValueConversion::writesValuesAsText()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(valueText(value), text);
}

void TestValueConversion::defaultsAreEmptyOrToday()
{
    QCOMPARE(defaultValue(T::String).toVariant(), QVariant(QString()));
    QCOMPARE(defaultValue(T::Integer).toVariant(), QVariant(0));
    QCOMPARE(defaultValue(T::Float).toVariant(), QVariant(0.0));
    QCOMPARE(defaultValue(T::Boolean).toVariant(), QVariant(false));
    QCOMPARE(defaultValue(T::Time).toVariant(), QVariant(QTime(0, 0)));
    QCOMPARE(defaultValue(T::Date).toVariant().toDate(), QDate::currentDate());
    QCOMPARE(defaultValue(T::DateTime).toVariant().toDateTime().time(), QTime(0, 0));
    QCOMPARE(defaultValue(T::List).toVariant(), QVariant(QVariantList()));
    QVERIFY(defaultValue(T::Tag).isTag());
}

void TestValueConversion::comparesTypeBeforeValue()
{
    QVERIFY(EntryValue(1) != EntryValue(QStringLiteral("1")));
    QVERIFY(EntryValue(1) != EntryValue(1.0));
    QVERIFY(EntryValue(1) != EntryValue(true));
    QVERIFY(EntryValue(std::nan("")) == EntryValue(std::nan("")));
    QVERIFY(!isSameValue(QVariant(1), QVariant("1")));
    QVERIFY(!isSameValue(QVariant(), QVariant("")));
}

void TestValueConversion::comparesDateTimesWithTheirZones()
{
    const QDateTime noon(day, QTime(12, 0), Qt::UTC);
    QVERIFY(EntryValue(noon) == EntryValue(QDateTime(day, QTime(12, 0), Qt::UTC)));
    QVERIFY(EntryValue(noon) != EntryValue(QDateTime(day, QTime(14, 0), Qt::OffsetFromUTC, 7200)));
    QVERIFY(EntryValue(QDateTime(day, QTime(13, 0), Qt::OffsetFromUTC, 3600))
            != EntryValue(QDateTime(day, QTime(14, 0), Qt::OffsetFromUTC, 7200)));
}

void TestValueConversion::comparesListsElementByElement()
{
    const QVariantList list{1, QVariantList{std::nan("")}, "a"};
    QVERIFY(EntryValue(list) == EntryValue(QVariantList{1, QVariantList{std::nan("")}, "a"}));
    QVERIFY(EntryValue(list) != EntryValue(QVariantList{1.0, QVariantList{std::nan("")}, "a"}));
    QVERIFY(EntryValue(list) != EntryValue(list.mid(0, 2)));
}

void TestValueConversion::tagsDifferFromEmptyTexts()
{
    QVERIFY(EntryValue() == EntryValue());
    QVERIFY(EntryValue() != EntryValue(QString()));
    QVERIFY(EntryValue(QString()) != EntryValue());
    QCOMPARE(int(EntryValue().type()), int(T::String));
    QVERIFY(!EntryValue().toVariant().isValid());
}

void TestValueConversion::numberLiteralsAreThoseOfJson()
{
    for (const char *text : {"0", "-1", "12345678901234567890", "1.5e-7", "0.10", "1E400"}) {
        QVERIFY2(isNumberLiteral(QLatin1String(text)), text);
    }
    for (const char *text : {"", "01", "+1", ".5", "5.", "1e", " 1", "1\n", "0x10", "NaN", "1,5"}) {
        QVERIFY2(!isNumberLiteral(QLatin1String(text)), text);
    }
}

void TestValueConversion::numberTextIsAString()
{
    const EntryValue number(EntryValue::NumberText{QStringLiteral("12345678901")});
    QVERIFY(number.isNumberText());
    QCOMPARE(int(number.type()), int(T::String));
    QCOMPARE(number.toVariant(), QVariant("12345678901"));
    QVERIFY(number == EntryValue(QStringLiteral("12345678901")));
    QVERIFY(number != EntryValue(QStringLiteral("1")));
}

NK_GUILESS_TEST_MAIN(TestValueConversion)
#include "test_value_conversion.moc"
