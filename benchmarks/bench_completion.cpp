#include "harness/BenchmarkRegistry.h"

#include "interchange/libraries/StringLibrary.h"
#include "interchange/libraries/StringLibraryFile.h"

#include <QCompleter>
#include <QFile>
#include <QStringListModel>
#include <QTemporaryDir>
#include <QTextStream>

#include <memory>
#include <random>

namespace {

/// What a person types letter by letter: it begins words, stands inside of some, then stands in none.
const QStringList typed{"r", "ra", "rat", "rati", "ratiq", "ratiqz"};

/// Words of five to fourteen letters, the same in every run, in no order.
QStringList randomWords(qint64 count)
{
    std::mt19937 random(7);
    QStringList words;
    words.reserve(int(count));
    for (qint64 i = 0; i < count; ++i) {
        QString word(5 + int(random() % 10), Qt::Uninitialized);
        for (QChar &letter : word) {
            letter = QLatin1Char(char('a' + random() % 26));
        }
        words.append(word);
    }
    return words;
}

std::function<void()> typingInLibrary(const QStringList &words)
{
    const auto library = std::make_shared<interchange::StringLibrary>(words);
    return [library] {
        for (const QString &text : typed) {
            library->completions(text, 12);
        }
    };
}

/// What a completer does at every letter until its list stands: filter, count for the list's height, read the
/// rows that are seen.
void typeInCompleter(QCompleter *completer)
{
    for (const QString &text : typed) {
        completer->setCompletionPrefix(text);
        const int rows = qMin(12, completer->completionCount());
        for (int row = 0; row < rows; ++row) {
            completer->completionModel()->index(row, 0).data().toString();
        }
    }
}

struct WordFile
{
    explicit WordFile(const QStringList &words) : path(folder.filePath(QStringLiteral("words.txt")))
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(words.join(QLatin1Char('\n')).toUtf8()) <= 0) {
            qFatal("The words cannot be written");
        }
    }

    QTemporaryDir folder;
    const QString path;
};

void readLines(const QString &path)
{
    QStringList lines;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("The words cannot be read");
    }
    while (!file.atEnd()) {
        lines.append(QString::fromUtf8(file.readLine()));
    }
}

} // namespace

/// The completions of a few letters typed one after the other, in all words of a library, against Qt's
/// completer over the same words in order, looking for the letters anywhere.
static Comparison compareKeystrokes(qint64 count)
{
    QStringList words = randomWords(count);
    Comparison comparison;
    comparison.ours.run = typingInLibrary(words);
    words.sort();
    const auto model = std::make_shared<QStringListModel>(words);
    const auto completer = std::make_shared<std::unique_ptr<QCompleter>>();
    // A new one each time: it remembers what it has found.
    comparison.baseline.prepare = [model, completer] {
        *completer = std::make_unique<QCompleter>(model.get());
        (*completer)->setFilterMode(Qt::MatchContains);
        (*completer)->setCaseSensitivity(Qt::CaseInsensitive);
    };
    comparison.baseline.run = [completer] { typeInCompleter(completer->get()); };
    comparison.baseline.finish = [completer] { completer->reset(); };
    comparison.timeAim = 0.1;
    return comparison;
}
NK_BENCHMARK("completion-keystroke", compareKeystrokes, 1000000)

/// Reading a library, ready to be searched, against reading its lines.
static Comparison compareReading(qint64 count)
{
    const auto file = std::make_shared<WordFile>(randomWords(count));
    Comparison comparison;
    comparison.ours.run = [file] { interchange::StringLibraryFile::read(file->path); };
    comparison.baseline.run = [file] { readLines(file->path); };
    comparison.timeAim = 2;
    return comparison;
}
NK_BENCHMARK("library-read", compareReading, 1000000)
