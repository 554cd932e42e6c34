#include <TestMain.h>
#include <interchange/libraries/StringLibraryFile.h>
#include <interchange/libraries/StringLibraryText.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTextCodec>

#include <random>

using interchange::StringLibrary;
using interchange::StringLibraryBuilder;
using interchange::StringLibraryFormat;
using interchange::StringLibraryText;

namespace {

const QByteArray seed(
    "\xEF\xBB\xBF# trees\r\noak,\"white, oak\",caf\xC3\xA9\n\n \"say \"\"hi\"\"\", \xE6\xA8\xB9 ,"
    "\xF0\x9F\x8C\xB3\r\n#,x\nStra\xC3\x9F"
    "e,\xCC\x81,a\n");

/// Letters that mean something to the reader, and some that must not.
constexpr char letterBytes[] = "\"\",,\n\r#\t \0\xEF\xBB\xBF\xC3\xA9\xED\xA0\x80\xFF"
                               "aA";
const QByteArray letters(letterBytes, sizeof(letterBytes) - 1);

const QByteArray blanks(" \t\r");

int mutantCount(int usual)
{
    // More of them by hand: NK_MUTANTS=1000000
    const int wanted = qEnvironmentVariableIntValue("NK_MUTANTS");
    return wanted > 0 ? wanted : usual;
}

QByteArray mutant(std::mt19937 &random)
{
    QByteArray text = seed;
    for (uint changes = 1 + random() % 8; changes > 0; --changes) {
        const int place = int(random() % uint(text.size() + 1));
        const char letter = random() % 4 == 0 ? char(random())
                                              : letters.at(int(random() % uint(letters.size())));
        switch (random() % 4) {
        case 0:
            text.insert(place, letter);
            break;
        case 1:
            text.remove(place, 1 + int(random() % 5));
            break;
        case 2:
            text.insert(place, text.mid(int(random() % uint(text.size() + 1)), int(random() % 20)));
            break;
        default:
            text.replace(place, 1, QByteArray(1, letter));
            break;
        }
    }
    return text;
}

} // namespace

/// Library files as no program would write them.
class TestStringLibraryDamage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatever_a_text_holds_its_words_are_words()
    {
        std::mt19937 random(3);
        for (int i = mutantCount(15000); i > 0; --i) {
            const QByteArray text = mutant(random);
            const auto format = i % 2 == 0 ? StringLibraryFormat::Lines : StringLibraryFormat::CommaSeparated;
            const StringLibraryText words(text, format);
            for (const interchange::WordSpan &word : words.words()) {
                const QByteArray bytes(word.begin, int(word.size));
                QVERIFY(!bytes.isEmpty() && !bytes.contains('\n'));
                QVERIFY(!blanks.contains(bytes.front()) && !blanks.contains(bytes.back()));
            }
            useLibrary(StringLibraryBuilder::build(words.words()));
        }
    }

    void text_is_what_qt_can_decode()
    {
        std::mt19937 random(4);
        const QTextCodec *codec = QTextCodec::codecForName("UTF-8");
        for (int i = mutantCount(15000); i > 0; --i) {
            const QByteArray text = withoutControls(mutant(random));
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            codec->toUnicode(text.constData(), text.size(), &state);
            const bool decodes = state.invalidChars + state.remainingChars == 0;
            QVERIFY2((StringLibraryText::firstBadLine(text) == 0) == decodes, text.toHex().constData());
        }
    }

    void damaged_files_are_read_or_told()
    {
        std::mt19937 random(5);
        const QTemporaryDir folder;
        for (int i = mutantCount(1000); i > 0; --i) {
            const QString path = folder.filePath(i % 2 == 0 ? "a.txt" : "a.csv");
            const QByteArray text = mutant(random);
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
            file.close();
            const auto content = interchange::StringLibraryFile::read(path);
            const bool isText = StringLibraryText::firstBadLine(text) == 0;
            QCOMPARE(content.library != nullptr, isText);
            QCOMPARE(content.report.isEmpty(), isText);
        }
    }

private:
    static QByteArray withoutControls(QByteArray text)
    {
        for (char &letter : text) {
            const bool isControl = (uchar(letter) < 0x20 && letter != '\n') || letter == 0x7F;
            letter = isControl ? 'x' : letter;
        }
        return text;
    }

    static void useLibrary(const StringLibrary &library)
    {
        const QStringList first = library.completions(QString(), 12);
        QCOMPARE(first.size(), qMin(12, library.size()));
        for (const QString &text : {QStringLiteral("a"), QStringLiteral("\""), QStringLiteral("ß")}) {
            QVERIFY(library.completions(text, 12).size() <= library.size());
        }
    }
};

NK_GUILESS_TEST_MAIN(TestStringLibraryDamage)
#include "test_string_library_damage.moc"
