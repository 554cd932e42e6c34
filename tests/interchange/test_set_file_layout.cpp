#include "SetFileFixture.h"

#include <TestMain.h>
#include <kernel/document/EntryValue.h>

#include <QDateTime>
#include <QTimeZone>

#include <cmath>
#include <limits>
#include <memory>

using T = nkMetadataTypes;

/// What metadata sets look like in files, and that nothing is lost on the way.
class TestSetFileLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<SetFileFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void values_are_written_as_documented_and_come_back_exactly_data();
    void values_are_written_as_documented_and_come_back_exactly();
    void the_published_example_is_written_byte_for_byte();
    void the_example_has_every_type();
    void tags_have_no_value();
    void a_text_that_was_a_number_remembers_it();
    void local_times_stay_local();
    void colours_names_and_locks_come_back();
    void a_set_without_entries_and_no_sets_at_all();
    void members_may_stand_in_any_order();
    void names_and_keys_of_every_odd_kind_come_back();
    void the_text_of_one_set_is_its_part_of_the_file();
    void the_text_of_a_set_replaces_another_in_one_step();
    void a_text_that_is_no_set_changes_nothing();

private:
    SetFileFixture &f() const { return *m_fixture; }
    std::unique_ptr<SetFileFixture> m_fixture;
};

static QVariantList nested(int depth)
{
    QVariantList list;
    for (int level = 1; level < depth; ++level)
        list = QVariantList{QVariant(list)};
    return list;
}

void TestSetFileLayout::values_are_written_as_documented_and_come_back_exactly_data()
{
    QTest::addColumn<T::ValueType>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char *name, T::ValueType type, const QVariant &value, const char *text) {
        QTest::newRow(name) << type << value << QByteArray(text);
    };
    row("empty text", T::String, "", "string\",\"value\":\"\"");
    row("escapes", T::String, "a\"b\\c/\n\r\t\x01\x7f", R"(string","value":"a\"b\\c/\n\r\t\u0001\u007f")");
    row("umlauts", T::String, QString::fromUtf8("äß€😀"), "string\",\"value\":\"äß€😀\"");
    row("half a pair", T::String, QString(QChar(0xd83d)) + "\\u", R"(string","value":"\ud83d\\u")");
    row("null character", T::String, QString(QChar(0)), R"(string","value":"\u0000")");
    row("looks like markup", T::String, "<b>&amp;%1</b>", "string\",\"value\":\"<b>&amp;%1</b>\"");
    row("zero", T::Integer, 0, "integer\",\"value\":0");
    row("smallest", T::Integer, std::numeric_limits<int>::min(), "integer\",\"value\":-2147483648");
    row("largest", T::Integer, std::numeric_limits<int>::max(), "integer\",\"value\":2147483647");
    row("whole float", T::Float, 1.0, "float\",\"value\":1.0");
    row("a tenth", T::Float, 0.1, "float\",\"value\":0.1");
    row("a third", T::Float, 1.0 / 3, "float\",\"value\":0.3333333333333333");
    row("minus zero", T::Float, -0.0, "float\",\"value\":-0.0");
    row("beyond 2^53", T::Float, 9007199254740993.0 * 3, "float\",\"value\":27021597764222976.0");
    row("huge", T::Float, std::numeric_limits<double>::max(), "float\",\"value\":1.7976931348623157e+308");
    row("tiny", T::Float, std::numeric_limits<double>::denorm_min(), "float\",\"value\":5e-324");
    row("no number", T::Float, std::nan(""), "float\",\"value\":\"NaN\"");
    row("infinite", T::Float, -std::numeric_limits<double>::infinity(), "float\",\"value\":\"-Infinity\"");
    row("true", T::Boolean, true, "boolean\",\"value\":true");
    row("false", T::Boolean, false, "boolean\",\"value\":false");
    row("time", T::Time, QTime(13, 5), "time\",\"value\":\"13:05:00\"");
    row("milliseconds", T::Time, QTime(23, 59, 59, 7), "time\",\"value\":\"23:59:59.007\"");
    row("leap day", T::Date, QDate(2024, 2, 29), "date\",\"value\":\"2024-02-29\"");
    row("year one", T::Date, QDate(1, 1, 1), "date\",\"value\":\"0001-01-01\"");
    row("far year", T::Date, QDate(12345, 6, 7), "date\",\"value\":\"+012345-06-07\"");
    row("before Christ", T::Date, QDate(-44, 3, 15), "date\",\"value\":\"-000043-03-15\"");
    const QDate day(2024, 7, 1);
    const QTime noon(12, 0, 0, 250);
    row("UTC", T::DateTime, QDateTime(day, noon, Qt::UTC),
        "dateTime\",\"value\":\"2024-07-01T12:00:00.250Z\"");
    row("offset", T::DateTime, QDateTime(day, QTime(1, 2), Qt::OffsetFromUTC, -5400),
        "dateTime\",\"value\":\"2024-07-01T01:02:00-01:30\"");
    row("zone", T::DateTime, QDateTime(day, noon, QTimeZone("Europe/Berlin")),
        "dateTime\",\"value\":\"2024-07-01T12:00:00.250+02:00[Europe/Berlin]\"");
    row("empty list", T::List, QVariantList(), "list\",\"value\":[]");
    row("mixed list", T::List,
        QVariantList{1, 1.0, true, "x", QVariant(), QVariantList{2, "y"}, QVariant(qlonglong(1) << 40)},
        "list\",\"value\":[1,1.0,true,\"x\",null,[2,\"y\"],1099511627776]");
    row("list of moments", T::List, QVariantList{day, noon, QDateTime(day, noon, Qt::UTC), QDate()},
        R"(list","value":[{"type":"date","value":"2024-07-01"},{"type":"time","value":"12:00:00.250"},)"
        R"({"type":"dateTime","value":"2024-07-01T12:00:00.250Z"},{"type":"date","value":""}])");
    row("list with no number", T::List, QVariantList{std::nan("")},
        R"(list","value":[{"type":"float","value":"NaN"}])");
    row("deepest list", T::List, nested(64),
        ("list\",\"value\":" + QByteArray(64, '[') + QByteArray(64, ']')).constData());
}

void TestSetFileLayout::values_are_written_as_documented_and_come_back_exactly()
{
    QFETCH(T::ValueType, type);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, text);
    const nkdMetadataSet set = SetFileFixture::setWith(type, value);
    QCOMPARE(set.getEntries().size(), 1);
    const QByteArray expected = SetFileFixture::file("{\"key\":\"k\",\"type\":\"" + text + '}');
    QCOMPARE(f().save({set}), expected);
    f().service().deleteSets({set});
    const QList<nkdMetadataSet> loaded = f().load(expected);
    QCOMPARE(loaded.size(), 1);
    const nkdMetadataEntry entry = loaded.first().getEntries().at(0);
    QCOMPARE(entry.getValueType(), type);
    QVERIFY(kernel::isSameValue(entry.getValue(), value));
    if (type == T::Float)
        QCOMPARE(std::signbit(entry.getValue().toDouble()), std::signbit(value.toDouble()));
    QCOMPARE(f().save(loaded), expected);
    QVERIFY(f().reports.isEmpty());
}

void TestSetFileLayout::the_published_example_is_written_byte_for_byte()
{
    const QByteArray example = SetFileFixture::read(QStringLiteral(NK_DOCS_DIR "/set-file.example.json"));
    const QList<nkdMetadataSet> sets = f().load(example);
    QVERIFY2(f().reports.isEmpty(), qPrintable(f().takeReport()));
    QVERIFY(sets.size() > 1);
    QCOMPARE(f().save(sets), example);
    QCOMPARE(f().save(sets), example);
}

void TestSetFileLayout::the_example_has_every_type()
{
    const QByteArray example = SetFileFixture::read(QStringLiteral(NK_DOCS_DIR "/set-file.example.json"));
    const QByteArray schema = SetFileFixture::read(QStringLiteral(NK_DOCS_DIR "/set-file.schema.json"));
    for (const char *type :
         {"string", "integer", "float", "boolean", "time", "date", "dateTime", "list", "tag", "number"}) {
        QVERIFY2(example.contains(QByteArray("\"type\":\"") + type + '"'), type);
        QVERIFY2(schema.contains(QByteArray("\"") + type + '"'), type);
    }
}

void TestSetFileLayout::tags_have_no_value()
{
    nkdMetadataSet set = SetFileFixture::setWith(T::String, "x");
    set.getEntries().clear();
    set.createEntry(T::Tag);
    const QByteArray text = f().save({set});
    QCOMPARE(text, SetFileFixture::file(R"({"key":"Tag","type":"tag"})"));
    QVERIFY(f().load(text).first().getEntries().at(0).isTag());
}

void TestSetFileLayout::a_text_that_was_a_number_remembers_it()
{
    const QByteArray text = SetFileFixture::file(SetFileFixture::entry("number", "\"12345678901234567890\""));
    const nkdMetadataSet set = f().load(text).first();
    const nkdMetadataEntry entry = set.getEntries().at(0);
    QCOMPARE(entry.getValueType(), T::String);
    QVERIFY(kernel::Document::the().isNumberText(entry.getObjectId()));
    QCOMPARE(f().save({set}), text);
}

void TestSetFileLayout::local_times_stay_local()
{
    const QByteArray text = SetFileFixture::file(
        SetFileFixture::entry("dateTime", "\"2024-03-31T02:30:00\""));
    const nkdMetadataSet set = f().load(text).first();
    QCOMPARE(set.getValue(QStringLiteral("k")).toDateTime().timeSpec(), Qt::LocalTime);
    QCOMPARE(f().save({set}), text);
}

void TestSetFileLayout::colours_names_and_locks_come_back()
{
    nkdMetadataSet set = f().service().createSet(QStringLiteral("Locked"), {});
    set.setColor(QColor(255, 128, 0));
    set.setLocked(true);
    const QByteArray text = f().save({set});
    QVERIFY(text.contains(R"({"name":"Locked","color":"#ff8000","locked":true,"entries":[]})"));
    f().service().deleteSets({set});
    const nkdMetadataSet loaded = f().load(text).first();
    QCOMPARE(loaded.getName(), QStringLiteral("Locked"));
    QCOMPARE(loaded.getColor(), QColor(255, 128, 0));
    QVERIFY(loaded.isLocked());
}

void TestSetFileLayout::a_set_without_entries_and_no_sets_at_all()
{
    QCOMPARE(f().load(SetFileFixture::file("")).first().getEntries().size(), 0);
    QVERIFY(f().load(R"({"format":"metadata-sets","version":1,"sets":[]})").isEmpty());
    QVERIFY(f().reports.isEmpty());
}

void TestSetFileLayout::members_may_stand_in_any_order()
{
    const QByteArray text =
        "\xef\xbb\xbf { \"sets\" : [ { \"entries\" : [ { \"value\" : 7 , \"type\" :\r\n"
        "\"integer\" , \"k\\u0065y\" : \"\\u006b\" } ] , \"color\" : \"#ABCDEF\" , \"name\" : "
        "\"n\" } ] , \"version\" : 1 , \"format\" : \"metadata-sets\" }";
    const nkdMetadataSet set = f().load(text).value(0);
    QCOMPARE(set.getValue(QStringLiteral("k")), QVariant(7));
    QCOMPARE(set.getColor(), QColor(0xab, 0xcd, 0xef));
}

void TestSetFileLayout::names_and_keys_of_every_odd_kind_come_back()
{
    const QStringList odd{QStringLiteral(" "),
                          QStringLiteral("a\nb"),
                          QStringLiteral("<img src=x>"),
                          QStringLiteral("&&%1"),
                          QString(QChar(0)),
                          QString(QChar(0xdc00)),
                          QString(QChar(0xfffd)),
                          QString::fromUtf8("e\u0301"),
                          QString(70000, QLatin1Char('x')),
                          QStringLiteral("../x"),
                          QString::fromUtf8("\u202e")};
    QList<nkdMetadataSet> sets;
    for (const QString &name : odd) {
        sets.append(f().service().createSet(name, {}));
        for (const QString &key : odd)
            sets.last().setValue(key, key);
    }
    const QByteArray text = f().save(sets);
    f().service().deleteSets(sets);
    const QList<nkdMetadataSet> loaded = f().load(text);
    QCOMPARE(loaded.size(), odd.size());
    for (int i = 0; i < odd.size(); ++i) {
        QCOMPARE(loaded.at(i).getName(), odd.at(i));
        for (const QString &key : odd)
            QCOMPARE(loaded.at(i).getValue(key), QVariant(key));
    }
    QCOMPARE(f().save(loaded), text);
}

void TestSetFileLayout::the_text_of_one_set_is_its_part_of_the_file()
{
    nkdMetadataSet set = SetFileFixture::setWith(T::Integer, 7);
    set.setValue(QStringLiteral("other"), "x");
    const QByteArray text = set.getJson();
    QVERIFY(text.startsWith('{') && text.endsWith('}'));
    QVERIFY(f().save({set}).contains(text));
    QVERIFY(nkdMetadataSet().getJson().isEmpty());
    f().service().deleteSets({set});
    QVERIFY(set.getJson().isEmpty());
}

void TestSetFileLayout::the_text_of_a_set_replaces_another_in_one_step()
{
    const nkdMetadataSet source = SetFileFixture::setWith(T::Integer, 7);
    nkdMetadataSet set = f().service().createSet(QStringLiteral("Other"), {});
    set.setValue(QStringLiteral("old"), 1);
    const QByteArray before = set.getJson();
    const int steps = kernel::Document::the().undoStack()->count();
    QVERIFY(set.setJson(source.getJson()));
    QCOMPARE(set.getName(), QStringLiteral("Set2"));
    QCOMPARE(set.getColor(), source.getColor());
    QCOMPARE(set.getEntries().size(), 1);
    QCOMPARE(set.getValue(QStringLiteral("k")), QVariant(7));
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps + 1);
    // What is there already is no change, and a file with one set will do.
    const QByteArray after = set.getJson();
    QVERIFY(set.setJson(f().save({set})));
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps + 1);
    QVERIFY(kernel::Document::the().undo());
    QCOMPARE(set.getJson(), before);
    QVERIFY(kernel::Document::the().redo());
    QCOMPARE(set.getJson(), after);
}

void TestSetFileLayout::a_text_that_is_no_set_changes_nothing()
{
    nkdMetadataSet set = SetFileFixture::setWith(T::Integer, 7);
    const QByteArray before = set.getJson();
    QVERIFY(!set.setJson("{\"name\":1}"));
    QVERIFY(f().takeReport().contains(QStringLiteral("line 1, column 1, at $")));
    QVERIFY(!set.setJson(R"({"format":"metadata-sets","version":1,"sets":[]})"));
    QVERIFY(f().takeReport().contains(QStringLiteral("exactly one set")));
    QVERIFY(!nkdMetadataSet().setJson(before));
    set.setLocked(true);
    QVERIFY(!set.setJson(QByteArray(before).replace('7', '8')));
    set.setLocked(false);
    QCOMPARE(set.getJson(), before);
}

NK_TEST_MAIN(TestSetFileLayout)
#include "test_set_file_layout.moc"
