#include "SetFileFixture.h"

#include <TestMain.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <memory>

/// The clipboards of sets and entries and the desktop's: what other programs get, and what they give.
class TestSetFileClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_fixture.reset(); }

    void copied_sets_are_offered_as_a_set_file();
    void copied_entries_are_offered_exactly_and_as_a_table();
    void what_another_workbench_copied_can_be_pasted();
    void entries_of_another_workbench_come_back_exactly();
    void a_text_that_is_sets_can_be_pasted();
    void lines_of_keys_and_values_can_be_pasted_data();
    void lines_of_keys_and_values_can_be_pasted();
    void any_other_text_leaves_nothing_to_paste_data();
    void any_other_text_leaves_nothing_to_paste();
    void our_own_copies_stay_beside_each_other();
    void commands_hear_of_it_only_when_pasting_changes();
    void without_a_codec_the_desktop_is_left_alone();

private:
    /// Another program copies this.
    static void foreign(const QByteArray &format, const QByteArray &bytes);
    static void foreignText(const QString &text) { QGuiApplication::clipboard()->setText(text); }
    /// What lies on the desktop comes once more, from another process.
    static void comeFromElsewhere();
    QList<nkdMetadataSet> pasted();
    nkdMetadataSet entriesPasted();
    SetFileFixture &f() const { return *m_fixture; }

    std::unique_ptr<SetFileFixture> m_fixture;
    nkdMetadataSet m_set;
};

void TestSetFileClipboard::init()
{
    QGuiApplication::clipboard()->clear();
    m_fixture = std::make_unique<SetFileFixture>();
    m_set = SetFileFixture::setWith(nkMetadataTypes::Float, 0.1);
    m_set.createEntry(nkMetadataTypes::Tag);
    m_set.setValue(QStringLiteral("two\nlines"), QStringLiteral("a\t\"b\""));
    QVERIFY(f().service().hasNoCopiedSets());
    QVERIFY(f().service().hasNoCopiedEntries());
}

void TestSetFileClipboard::foreign(const QByteArray &format, const QByteArray &bytes)
{
    auto *data = new QMimeData;
    data->setData(QString::fromLatin1(format), bytes);
    QGuiApplication::clipboard()->setMimeData(data);
}

void TestSetFileClipboard::comeFromElsewhere()
{
    const QMimeData *present = QGuiApplication::clipboard()->mimeData();
    auto *data = new QMimeData;
    for (const QString &format : present->formats()) {
        if (!format.contains(QLatin1String("origin")))
            data->setData(format, present->data(format));
    }
    QGuiApplication::clipboard()->setMimeData(data);
}

QList<nkdMetadataSet> TestSetFileClipboard::pasted()
{
    const QList<nkdMetadataSet> before = f().service().getAllSets();
    f().service().pasteSets({});
    return f().service().getAllSets().mid(before.size());
}

nkdMetadataSet TestSetFileClipboard::entriesPasted()
{
    const nkdMetadataSet target = f().service().createSet(QStringLiteral("Target"), {});
    f().service().pasteEntries({target});
    return target;
}

void TestSetFileClipboard::copied_sets_are_offered_as_a_set_file()
{
    f().service().copySets({m_set});
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    const QByteArray file = f().save({m_set});
    QCOMPARE(data->data(QStringLiteral("application/json")), file);
    QCOMPARE(data->text(), QString::fromUtf8(file));
}

void TestSetFileClipboard::copied_entries_are_offered_exactly_and_as_a_table()
{
    f().service().copyEntries(m_set.getEntries());
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    const QString table = QStringLiteral("k\t0.1\nTag\t\n\"two\nlines\"\t\"a\t\"\"b\"\"\"\n");
    QCOMPARE(data->text(), table);
    QCOMPARE(data->data(QStringLiteral("text/tab-separated-values")), table.toUtf8());
    const QByteArray json = data->data(QStringLiteral("application/json"));
    QVERIFY(json.startsWith("{\"format\":\"metadata-entries\",\"version\":1,\"entries\":[\n"));
    QVERIFY(json.contains(R"({"key":"k","type":"float","value":0.1})"));
}

void TestSetFileClipboard::what_another_workbench_copied_can_be_pasted()
{
    f().service().copySets({m_set});
    const QByteArray text = m_set.getJson();
    f().service().deleteSets({m_set});
    comeFromElsewhere();
    QVERIFY(f().service().hasNoCopiedEntries());
    const QList<nkdMetadataSet> sets = pasted();
    QCOMPARE(sets.size(), 1);
    QCOMPARE(sets.first().getJson(), text);
}

void TestSetFileClipboard::entries_of_another_workbench_come_back_exactly()
{
    // The same key twice: from two sets.
    f().service().copyEntries(QList<nkdMetadataEntry>{m_set.getEntries().at(0)} + m_set.getEntries().data());
    comeFromElsewhere();
    QVERIFY(f().service().hasNoCopiedSets());
    const nkdMetadataSet target = entriesPasted();
    QCOMPARE(target.getEntries().size(), 4);
    QCOMPARE(target.getValue(QStringLiteral("k")), QVariant(0.1));
    QCOMPARE(target.getValue(QStringLiteral("k2")), QVariant(0.1));
    QVERIFY(target.getEntries().at(2).isTag());
    QCOMPARE(target.getValue(QStringLiteral("two\nlines")), QVariant(QStringLiteral("a\t\"b\"")));
}

void TestSetFileClipboard::a_text_that_is_sets_can_be_pasted()
{
    foreignText(
        QString::fromUtf8(SetFileFixture::read(QStringLiteral(NK_DOCS_DIR "/set-file.example.json"))));
    QVERIFY(!f().service().hasNoCopiedSets());
    QCOMPARE(pasted().size(), 3);
    foreignText(QStringLiteral(" ") + QString::fromUtf8(m_set.getJson()));
    QCOMPARE(pasted().size(), 1);
}

void TestSetFileClipboard::lines_of_keys_and_values_can_be_pasted_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("table") << "a\t1\r\nb\tx y\r\n" << QStringList{"a", "1", "b", "x y"};
    QTest::newRow("table without values") << "a\t\nb\t" << QStringList{"a", "", "b", ""};
    QTest::newRow("quoted cells") << "\"a\"\"\nb\"\t\"1\t2\"" << QStringList{"a\"\nb", "1\t2"};
    QTest::newRow("a quote amid a cell") << "a\t\"b\" c" << QStringList{"a", "\"b\" c"};
    QTest::newRow("equal signs") << "a = 1\n\nb=x=y\n" << QStringList{"a", "1", "b", "x=y"};
    QTest::newRow("colons") << "a: 1\nb b: http://x\n" << QStringList{"a", "1", "b b", "http://x"};
    QTest::newRow("markup") << "a\t<b>%1&amp;" << QStringList{"a", "<b>%1&amp;"};
}

void TestSetFileClipboard::lines_of_keys_and_values_can_be_pasted()
{
    QFETCH(QString, text);
    QFETCH(QStringList, expected);
    foreignText(text);
    QVERIFY(f().service().hasNoCopiedSets());
    QVERIFY(!f().service().hasNoCopiedEntries());
    QStringList found;
    for (const nkdMetadataEntry &entry : entriesPasted().getEntries()) {
        QCOMPARE(entry.getValueType(), nkMetadataTypes::String);
        found << entry.getKey() << entry.getValue().toString();
    }
    QCOMPARE(found, expected);
}

void TestSetFileClipboard::any_other_text_leaves_nothing_to_paste_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("word") << "hello";
    QTest::newRow("sentences") << "This is a letter.\nIt says nothing: really nothing.";
    QTest::newRow("address") << "https://example.org/?a=b";
    QTest::newRow("program") << "int main() { return x = 1; }";
    QTest::newRow("assignment") << "list[0] = 1";
    QTest::newRow("three columns") << "a\tb\tc";
    QTest::newRow("one line without value") << "a\t1\nb";
    QTest::newRow("no key") << "\t1";
    QTest::newRow("other JSON") << R"({"a":1})";
    QTest::newRow("newer file") << R"({"format":"metadata-sets","version":2,"sets":[]})";
    QTest::newRow("cut file") << QString::fromUtf8(SetFileFixture::file("").left(60));
    QTest::newRow("half a file") << QString::fromUtf8(SetFileFixture::file("").replace("#0102ff", "?"));
    QTest::newRow("array") << "[1,2]";
    QTest::newRow("blanks") << " \n\t\n";
    QTest::newRow("nothing") << "";
}

void TestSetFileClipboard::any_other_text_leaves_nothing_to_paste()
{
    QFETCH(QString, text);
    f().service().copySets({m_set});
    f().service().copyEntries(m_set.getEntries());
    QVERIFY(!f().service().hasNoCopiedSets() && !f().service().hasNoCopiedEntries());
    foreignText(text);
    QVERIFY(f().service().hasNoCopiedSets());
    QVERIFY(f().service().hasNoCopiedEntries());
    QVERIFY(f().service().getClipboardEntries().isEmpty());
    QVERIFY(pasted().isEmpty());
    QVERIFY(f().reports.isEmpty());
    foreign("image/png", "x");
    QVERIFY(f().service().hasNoCopiedSets());
}

void TestSetFileClipboard::our_own_copies_stay_beside_each_other()
{
    f().service().copySets({m_set});
    f().service().copyEntries(m_set.getEntries());
    QCOMPARE(pasted().size(), 1);
    QCOMPARE(entriesPasted().getEntries().size(), 3);
    // An emptied scene has nothing to paste, though other programs do.
    SceneFixture::reset();
    QVERIFY(f().service().hasNoCopiedSets());
    QVERIFY(QGuiApplication::clipboard()->mimeData()->hasText());
}

void TestSetFileClipboard::commands_hear_of_it_only_when_pasting_changes()
{
    QSignalSpy announced(&f().service(), &nkMetadataService::metadataChanged);
    f().service().copySets({m_set});
    foreignText(QString::fromUtf8(m_set.getJson()));
    QVERIFY(announced.isEmpty());
    foreignText(QStringLiteral("hello"));
    QCOMPARE(announced.size(), 1);
    QCOMPARE(announced.first().first().value<nkMetadataTypes::ChangeFlag>(), nkMetadataTypes::NoChange);
    foreignText(QStringLiteral("hello again"));
    QCOMPARE(announced.size(), 1);
    foreignText(QStringLiteral("a=1"));
    QCOMPARE(announced.size(), 2);
    QCOMPARE(kernel::Document::the().undoStack()->count(), 2);
}

void TestSetFileClipboard::without_a_codec_the_desktop_is_left_alone()
{
    kernel::SetCodec::install(nullptr);
    foreignText(QStringLiteral("hello"));
    f().service().copySets({m_set});
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("hello"));
    QVERIFY(!f().service().hasNoCopiedSets());
}

NK_TEST_MAIN(TestSetFileClipboard)
#include "test_set_file_clipboard.moc"
