#include "SetFileFixture.h"

#include <TestMain.h>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>

/// Files that are no set files: each is refused whole, with one sentence that says what is wrong and where.
class TestSetFileBadInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<SetFileFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void is_refused_whole_with_place_and_reason_data();
    void is_refused_whole_with_place_and_reason();
    void a_file_cut_at_any_byte_is_refused();
    void a_byte_turned_into_any_other_never_half_loads();
    void an_error_in_the_last_set_leaves_none();
    void files_that_are_none_are_refused();
    void limits_hold_on_both_sides();
    void the_limits_are_as_stated();

private:
    void expectRefused(const QString &path, const QString &words);
    SetFileFixture &f() const { return *m_fixture; }
    std::unique_ptr<SetFileFixture> m_fixture;
};

void TestSetFileBadInput::expectRefused(const QString &path, const QString &words)
{
    QSignalSpy announced(&nkMetadataService::the(), &nkMetadataService::metadataChanged);
    const nkdNode node = SceneFixture::node(QStringLiteral("Node"));
    announced.clear();
    QVERIFY(f().service().loadSets(path, {node}).isEmpty());
    const QString report = f().takeReport();
    QVERIFY2(report.contains(words), qPrintable(report + " | " + words));
    QVERIFY2(report.contains(path) && report.endsWith(QLatin1Char('.'))
                 && !report.contains(QLatin1Char('\n')),
             qPrintable(report));
    QVERIFY(f().service().getAllSets().isEmpty());
    QCOMPARE(kernel::Document::the().undoStack()->count(), 0);
    QVERIFY(announced.isEmpty());
}

void TestSetFileBadInput::is_refused_whole_with_place_and_reason_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, const QByteArray &content, const char *words) {
        QTest::newRow(name) << content << QString::fromUtf8(words);
    };
    const auto entry = [&row](const char *name, const QByteArray &text, const char *words) {
        row(name, SetFileFixture::file(text), words);
    };
    const auto value = [&entry](const char *name, const QByteArray &type, const QByteArray &text) {
        const auto words =
            QStringLiteral("line 3, column %1, at $.sets[0].entries[0].value").arg(30 + type.size());
        entry(name, SetFileFixture::entry(type, text), qPrintable(words));
    };
    row("empty", "", "the file is empty");
    row("blanks", " \n ", "the JSON text is empty (line 2, column 2, at $)");
    row("binary", QByteArray::fromHex("7f454c460201010000000000"), "line 1, column 1, at $");
    row("picture", QByteArray::fromHex("89504e470d0a1a0a"), "line 1, column 1");
    row("no object", "[]", "no file of metadata sets");
    row("another format", R"({"asset":{"version":"2.0"}})", "no file of metadata sets");
    row("format of entries", R"({"format":"metadata-entries","version":1,"entries":[]})", "at $.format");
    row("no version", R"({"format":"metadata-sets","sets":[]})", "“version” is missing");
    row("newer", R"({"format":"metadata-sets","version":2,"sets":[],"new":1})", "at $.version");
    row("version as text", R"({"format":"metadata-sets","version":"1","sets":[]})", "at $.version");
    row("no sets", R"({"format":"metadata-sets","version":1})", "the member “sets” is missing");
    row("sets no array", R"({"format":"metadata-sets","version":1,"sets":{}})", "at $.sets");
    row("unknown member", R"({"format":"metadata-sets","version":1,"sets":[],"x":1})", "column 49, at $.x");
    row("member twice", R"({"format":"metadata-sets","version":1,"sets":[],"sets":[]})", "stands here twice");
    row("member twice, escaped", R"({"format":"metadata-sets","version":1,"sets":[],"\u0073ets":[]})",
        "twice");
    row("set no object", R"({"format":"metadata-sets","version":1,"sets":[7]})", "at $.sets[0]");
    row("name no text", SetFileFixture::file("").replace("\"Set\"", "5"),
        "line 2, column 9, at $.sets[0].name");
    row("colour name", SetFileFixture::file("").replace("#0102ff", "red"), "at $.sets[0].color");
    row("colour short", SetFileFixture::file("").replace("#0102ff", "#12f"), "at $.sets[0].color");
    row("colour odd", SetFileFixture::file("").replace("#0102ff", "#0102fg"), "at $.sets[0].color");
    row("locked odd", SetFileFixture::file("").replace("\"entries\"", "\"locked\":1,\"entries\""), ".locked");
    row("entries no array", SetFileFixture::file("").replace("[]}", "null}"), "at $.sets[0].entries");
    entry("entry no object", "null", "line 3, column 1, at $.sets[0].entries[0]");
    entry("no key", R"({"type":"tag"})", "the member “key” is missing");
    entry("no type", R"({"key":"a"})", "the member “type” is missing");
    entry("no value", R"({"key":"a","type":"string"})", "the member “value” is missing");
    entry("tag with value", R"({"key":"a","type":"tag","value":1})", "a tag has no value");
    entry("empty key", R"({"key":"","type":"tag"})", "not empty");
    entry("key no text", R"({"key":1,"type":"tag"})", "at $.sets[0].entries[0].key");
    entry("unknown type", R"({"key":"a","type":"text","value":1})", "at $.sets[0].entries[0].type");
    entry("type no text", R"({"key":"a","type":0,"value":1})", "at $.sets[0].entries[0].type");
    entry("unknown in entry", R"({"key":"a","type":"tag","note":1})", "entries[0].note");
    entry("key twice", "{\"key\":\"a\",\"type\":\"tag\"},\n{\"key\":\"a\",\"type\":\"tag\"}",
          "another entry of the set has this key (line 4, column 8, at $.sets[0].entries[1].key)");
    entry("key twice, escaped", "{\"key\":\"a\",\"type\":\"tag\"},\n{\"key\":\"\\u0061\",\"type\":\"tag\"}",
          "another entry of the set has this key");
    value("text for integer", "integer", "\"1\"");
    value("point in integer", "integer", "1.0");
    value("33 bits", "integer", "2147483648");
    value("text for float", "float", "\"1\"");
    value("too large for float", "float", "1e400");
    value("too small for float", "float", "1e-400");
    value("text for boolean", "boolean", "\"true\"");
    value("number for string", "string", "1");
    value("no number", "number", "\"12x\"");
    value("hour 25", "time", "\"25:00:00\"");
    value("time without seconds", "time", "\"12:00\"");
    value("no leap day", "date", "\"2023-02-29\"");
    value("year zero", "date", "\"0000-01-01\"");
    value("date with time", "date", "\"2023-02-28T00:00:00\"");
    value("no time", "dateTime", "\"2023-02-28\"");
    value("odd offset", "dateTime", "\"2023-02-28T12:00:00+1:00\"");
    value("unknown zone", "dateTime", "\"2023-02-28T12:00:00+01:00[Moon/Sea]\"");
    value("empty date", "date", "\"\"");
    value("list no array", "list", "{}");
    entry("odd element", SetFileFixture::entry("list", R"([1,{"type":"string","value":"x"}])"),
          ".value[1].type");
    entry("element unknown", SetFileFixture::entry("list", R"([1,{"a":1}])"), ".value[1].a");
    entry("65 bits in list", SetFileFixture::entry("list", "[18446744073709551616]"), "at most 64 bits");
    entry("list of depth 65", SetFileFixture::entry("list", QByteArray(65, '[') + QByteArray(65, ']')),
          "more than 64 levels");
    entry("deep", SetFileFixture::entry("list", QByteArray(100000, '[')), "levels inside each other");
    entry("bad UTF-8", "{\"key\":\"a\xff\",\"type\":\"tag\"}", "no UTF-8");
    entry("overlong UTF-8", "{\"key\":\"a\xc0\xaf\",\"type\":\"tag\"}", "no UTF-8");
    entry("control character", "{\"key\":\"a\nb\",\"type\":\"tag\"}", "must be escaped");
    row("UTF-16", QByteArray("\xff\xfe{\0}\0", 6), "line 1, column 1");
    row("behind the end", SetFileFixture::file("") + "{}", "behind the end");
    row("comma too many", R"({"format":"metadata-sets","version":1,"sets":[],})", "line 1, column 49");
}

void TestSetFileBadInput::is_refused_whole_with_place_and_reason()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, words);
    const QString path = f().path("bad %1 <b>.json");
    SetFileFixture::write(path, content);
    expectRefused(path, words);
}

void TestSetFileBadInput::a_file_cut_at_any_byte_is_refused()
{
    const QByteArray whole =
        SetFileFixture::read(QStringLiteral(NK_DOCS_DIR "/set-file.example.json")).trimmed();
    for (int size = 0; size < whole.size(); ++size) {
        QVERIFY2(f().load(whole.left(size)).isEmpty(), qPrintable(QString::number(size)));
        QCOMPARE(f().reports.size(), 1);
        f().reports.clear();
    }
    QVERIFY(f().service().getAllSets().isEmpty());
    QCOMPARE(kernel::Document::the().undoStack()->count(), 0);
    QVERIFY(!f().load(whole).isEmpty());
}

/// Either the file is still one, or it is refused: nothing between, whatever byte is damaged.
void TestSetFileBadInput::a_byte_turned_into_any_other_never_half_loads()
{
    const QByteArray whole = SetFileFixture::file(
        "{\"key\":\"a\",\"type\":\"list\",\"value\":[1,\"\\u00e4\"]},\n{\"key\":\"b\",\"type\":\"tag\"}");
    for (int at = 0; at < whole.size(); ++at) {
        for (const char damage : {'\0', '"', '}', '\\', '\xff', '5'}) {
            QByteArray text = whole;
            text[at] = damage;
            const QList<nkdMetadataSet> sets = f().load(text);
            QCOMPARE(f().reports.size(), sets.isEmpty() ? 1 : 0);
            QVERIFY(sets.isEmpty() || sets.first().getEntries().size() == 2);
            f().reports.clear();
            f().service().deleteSets(sets);
            QVERIFY(f().service().getAllSets().isEmpty());
        }
    }
}

void TestSetFileBadInput::an_error_in_the_last_set_leaves_none()
{
    QByteArray text = "{\"format\":\"metadata-sets\",\"version\":1,\"sets\":[\n";
    for (int i = 0; i < 50; ++i)
        text += "{\"name\":\"n\",\"color\":\"#000000\",\"entries\":[]},\n";
    SetFileFixture::write(f().path(), text + "{\"name\":\"n\",\"color\":\"#00000\",\"entries\":[]}]}");
    expectRefused(f().path(), QStringLiteral("line 52, column 21, at $.sets[50].color"));
}

void TestSetFileBadInput::files_that_are_none_are_refused()
{
    expectRefused(f().path("missing.json"), QStringLiteral("No such file"));
    expectRefused(f().folder.path(), QStringLiteral("no regular file"));
    expectRefused(f().folder.filePath(QStringLiteral("no/such/folder.json")), QStringLiteral("No such file"));
    const QString pipe = f().path("pipe");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    expectRefused(pipe, QStringLiteral("no regular file"));
    // As large as a file may not be, without taking room on the disk.
    QFile large(f().path("large.json"));
    QVERIFY(large.open(QIODevice::WriteOnly));
    QVERIFY(large.resize((qint64(1) << 30) + 1));
    expectRefused(f().path("large.json"), QStringLiteral("more than 1024 MiB"));
    QVERIFY(f().service().loadSets(QString(), {}).isEmpty());
    QVERIFY(f().reports.isEmpty());
}

void TestSetFileBadInput::limits_hold_on_both_sides()
{
    const QByteArray two = SetFileFixture::file(
        "{\"key\":\"a\",\"type\":\"tag\"},\n{\"key\":\"b\",\"type\":\"tag\"}");
    const QList<nkdMetadataSet> sets = f().load(two);
    QCOMPARE(sets.size(), 1);
    const auto expect = [&](const interchange::SetFileLimits &limits, const QString &words) {
        interchange::SetFileCodec codec(limits);
        kernel::SetCodec::install(&codec);
        QVERIFY(QFile::remove(f().path("save.json")) || true);
        const QByteArray saved = f().save(sets);
        const QString saving = words.isEmpty() ? QString() : f().takeReport();
        const int loaded = f().load(two).size();
        const QString loading = words.isEmpty() ? QString() : f().takeReport();
        kernel::SetCodec::install(&f().codec);
        QCOMPARE(saved == two, words.isEmpty());
        QCOMPARE(loaded, words.isEmpty() ? 1 : 0);
        QVERIFY2(saving.contains(words) && loading.contains(words), qPrintable(saving + loading));
        QVERIFY(f().reports.isEmpty());
    };
    interchange::SetFileLimits limits;
    limits.bytes = two.size();
    limits.entries = 2;
    limits.values = 14;
    expect(limits, QString());
    limits.bytes -= 1;
    expect(limits, QStringLiteral("the most that such a file may have"));
    limits.bytes = two.size();
    limits.entries = 1;
    expect(limits, QStringLiteral("more than 1 entries").left(11));
    limits.entries = 2;
    limits.values = 9;
    expect(limits, QStringLiteral("more than 9 values"));
}

void TestSetFileBadInput::the_limits_are_as_stated()
{
    const interchange::SetFileLimits limits;
    QCOMPARE(limits.bytes, qint64(1) << 30);
    QCOMPARE(limits.entries, qint64(4000000));
    QCOMPARE(limits.listDepth, 64);
    QCOMPARE(limits.values, 64000000u);
}

NK_TEST_MAIN(TestSetFileBadInput)
#include "test_set_file_bad_input.moc"
