#include <TestMain.h>
#include <interchange/libraries/StringLibraryFile.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace StringLibraryFile = interchange::StringLibraryFile;

/// Files of words: what is read of them, what is refused and why, how a word is added.
class TestStringLibraryFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void words_are_read_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("words");
        const auto row = [](const char *title, const char *name, const QByteArray &text,
                            const QStringList &words) { QTest::newRow(title) << name << text << words; };
        row("lines", "a.txt", "oak\npine\n", {"oak", "pine"});
        row("no line end at the end", "a.txt", "oak\npine", {"oak", "pine"});
        row("CRLF", "a.txt", "oak\r\npine\r\n", {"oak", "pine"});
        row("mark", "a.txt", "\xEF\xBB\xBFoak\npine", {"oak", "pine"});
        row("mark before a comment", "a.txt", "\xEF\xBB\xBF# trees\npine", {"pine"});
        row("mark alone", "a.txt", "\xEF\xBB\xBF", {});
        row("empty", "a.txt", "", {});
        row("blanks and empty lines", "a.txt", "\n  oak \t\n\t\n\n white oak\n", {"oak", "white oak"});
        row("comments", "a.txt", "# trees\noak\n  # more\npine # no comment\n", {"oak", "pine # no comment"});
        row("twice", "a.txt", "oak\npine\noak\n oak\n", {"oak", "pine"});
        row("commas and quotes in lines", "a.txt", "a, b\n\"c\"\n", {"\"c\"", "a, b"});
        row("letters of all kinds", "a.txt", "caf\xC3\xA9\n\xE6\xA8\xB9\n\xF0\x9F\x8C\xB3\n",
            {"café", "樹", "🌳"});
        row("other endings are lines", "a.list", "a, b\n", {"a, b"});
        row("commas", "a.csv", "oak, pine ,birch\nash", {"ash", "birch", "oak", "pine"});
        row("capital ending", "A.CSV", "oak,pine", {"oak", "pine"});
        row("empty fields", "a.csv", ",oak,, ,pine,\n,\n", {"oak", "pine"});
        row("quotes", "a.csv", "\"a, b\",\" c \",\"say \"\"hi\"\"\"", {"a, b", "c", "say \"hi\""});
        row("quoted comment sign", "a.csv", "\"#1\",#2\n#3,x\n", {"#1", "#2"});
        row("blanks around quotes", "a.csv", "  \"a\"  ,  \"b\"\r\nc", {"a", "b", "c"});
        row("quotes without an end", "a.csv", "\"a,b\nc,d", {"a,b", "c", "d"});
        row("text behind quotes", "a.csv", "\"a\"x,b", {"a", "b"});
        row("quotes inside", "a.csv", "5\" pipe,b", {"5\" pipe", "b"});
        row("empty quotes", "a.csv", "\"\",\"\"\"\",b", {"\"", "b"});
        row("a quote alone", "a.csv", "\"", {});
    }
    void words_are_read()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, text);
        QFETCH(QStringList, words);
        const StringLibraryFile::Content content = StringLibraryFile::read(write(name, text));
        QCOMPARE(content.report, QString());
        QVERIFY(content.library);
        QCOMPARE(content.library->completions(QString(), 100), words);
    }

    void words_without_end_are_left_out_and_counted()
    {
        const QByteArray longest(1000, 'x');
        const QString path = write("a.txt", longest + "\n" + longest + "y\noak\n" + longest + "z");
        const StringLibraryFile::Content content = StringLibraryFile::read(path);
        QCOMPARE(content.library->completions(QString(), 9), (QStringList{"oak", longest}));
        QVERIFY2(content.report.startsWith("2 word(s) of more than 1000 bytes"), qPrintable(content.report));
        QVERIFY(content.report.contains(path));
    }

    void what_is_no_text_is_refused_with_its_line_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("line");
        QTest::newRow("zero") << QByteArray("oak\npi\0ne", 9) << 2;
        QTest::newRow("control letter") << QByteArray("oak\n\n\x1B[0m") << 3;
        QTest::newRow("delete") << QByteArray("oak\x7F") << 1;
        QTest::newRow("Latin 1") << QByteArray("oak\ncaf\xE9\n") << 2;
        QTest::newRow("cut letter") << QByteArray("oak\ncaf\xC3") << 2;
        QTest::newRow("letter written too long") << QByteArray("\xC0\xAF") << 1;
        QTest::newRow("three bytes too long") << QByteArray("\xE0\x80\xAF") << 1;
        QTest::newRow("half of a pair") << QByteArray("\xED\xA0\x80") << 1;
        QTest::newRow("beyond the last letter") << QByteArray("\xF4\x90\x80\x80") << 1;
        QTest::newRow("UTF-16") << QByteArray("\xFF\xFEo\0a\0k\0", 8) << 1;
    }
    void what_is_no_text_is_refused_with_its_line()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, line);
        verifyRefused(write("a.txt", text), QStringLiteral("line %1 is no UTF-8 text").arg(line));
    }

    void what_is_no_readable_file_is_refused()
    {
        verifyRefused(m_folder->filePath("none.txt"), "there is no such file");
        verifyRefused(m_folder->path(), "it is no file");
        verifyRefused(QStringLiteral("/proc/self/mem"), "error");
        const QString pipe = m_folder->filePath("pipe.txt");
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        verifyRefused(pipe, "it is no file");
    }

    void files_of_more_than_64_mebibytes_are_refused_unread()
    {
        QFile file(write("a.txt", "oak\n"));
        QVERIFY(file.resize(64 * 1024 * 1024 + 1));
        verifyRefused(file.fileName(), "it is larger than 64 MiB");
        // One byte less is read, and found to be zeros.
        QVERIFY(file.resize(64 * 1024 * 1024));
        verifyRefused(file.fileName(), "line 2 is no UTF-8 text");
    }

    void a_name_is_plain_text_in_the_report()
    {
        verifyRefused(m_folder->filePath("%1 %2 <b>.txt"), "there is no such file");
    }

    void a_word_is_added_behind_what_is_there_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QByteArray>("added");
        QTest::newRow("to nothing") << "a.txt" << QByteArray() << "oak" << QByteArray("oak\n");
        QTest::newRow("lines") << "a.txt" << QByteArray("# x\n\npine\n") << "oak" << QByteArray("oak\n");
        QTest::newRow("open end") << "a.txt" << QByteArray("pine") << "oak" << QByteArray("\noak\n");
        QTest::newRow("CRLF") << "a.txt" << QByteArray("\xEF\xBB\xBFpine\r\nash") << "café"
                              << QByteArray("\r\ncaf\xC3\xA9\r\n");
        QTest::newRow("comma-separated")
            << "a.csv" << QByteArray("pine,ash\n") << "oak" << QByteArray("oak\n");
        QTest::newRow("comma") << "a.csv" << QByteArray() << "a, b" << QByteArray("\"a, b\"\n");
        QTest::newRow("quotes") << "a.csv" << QByteArray() << "5\" pipe" << QByteArray("\"5\"\" pipe\"\n");
        QTest::newRow("comment sign") << "a.csv" << QByteArray() << "#1" << QByteArray("\"#1\"\n");
    }
    void a_word_is_added_behind_what_is_there()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, text);
        QFETCH(QString, word);
        QFETCH(QByteArray, added);
        const QString path = write(name, text);
        QVERIFY(StringLibraryFile::canHold(path, word));
        QCOMPARE(StringLibraryFile::add(path, word), QString());
        QCOMPARE(bytes(path), QByteArray(text + added));
        QVERIFY(StringLibraryFile::read(path).library->contains(word));
    }

    void a_word_that_would_come_back_as_another_cannot_be_held()
    {
        const QStringList never{"",
                                " ",
                                " oak",
                                "oak ",
                                "oak\n",
                                "a\nb",
                                "a\rb",
                                QString::fromLatin1("a\0b", 3),
                                QString(1001, 'x')};
        for (const QString &word : never) {
            QVERIFY2(!StringLibraryFile::canHold("a.txt", word), qPrintable(word));
            QVERIFY2(!StringLibraryFile::canHold("a.csv", word), qPrintable(word));
        }
        QVERIFY(!StringLibraryFile::canHold("a.txt", "#1"));
    }

    void a_failure_to_add_leaves_the_file_and_says_why()
    {
        const QString path = write("a.txt", "caf\xE9\n");
        const QString error = StringLibraryFile::add(path, "oak");
        QVERIFY2(error.contains(path) && error.contains("line 1 is no UTF-8 text"), qPrintable(error));
        QCOMPARE(bytes(path), QByteArray("caf\xE9\n"));
        QVERIFY(StringLibraryFile::add(m_folder->filePath("none.txt"), "oak").contains("no such file"));
        QVERIFY(!QFile::exists(m_folder->filePath("none.txt")));
    }

private:
    QString write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? file.fileName()
                                                                                  : QString();
    }

    static QByteArray bytes(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    static void verifyRefused(const QString &path, const QString &reason)
    {
        const StringLibraryFile::Content content = StringLibraryFile::read(path);
        QVERIFY(!content.library);
        QVERIFY2(content.report.contains('"' + path + '"'), qPrintable(content.report));
        QVERIFY2(content.report.contains(reason), qPrintable(content.report));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

NK_GUILESS_TEST_MAIN(TestStringLibraryFile)
#include "test_string_library_file.moc"
