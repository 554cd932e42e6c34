#include "StringLibraryFile.h"

#include "StringLibraryText.h"
#include "kernel/services/DurableFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace interchange {

namespace {

QString translate(const char *text)
{
    return QCoreApplication::translate("StringLibraryFile", text);
}

/// @param reason why the file cannot be read; empty where it can
QByteArray readBytes(const QString &path, QString *reason)
{
    const QFileInfo info(path);
    QFile file(path);
    if (!info.exists()) {
        *reason = translate("there is no such file");
    } else if (!info.isFile()) {
        // A pipe or a device could keep us waiting for ever.
        *reason = translate("it is no file");
    } else if (info.size() > StringLibraryFile::LargestFile) {
        *reason = translate("it is larger than 64 MiB");
    } else if (!file.open(QIODevice::ReadOnly)) {
        *reason = file.errorString();
    } else {
        // It may be growing.
        const QByteArray bytes = file.read(StringLibraryFile::LargestFile);
        *reason = file.error() == QFileDevice::NoError ? QString() : file.errorString();
        return bytes;
    }
    return QByteArray();
}

QByteArray readText(const QString &path, QString *reason)
{
    const QByteArray bytes = readBytes(path, reason);
    const int badLine = StringLibraryText::firstBadLine(bytes);
    if (badLine > 0) {
        *reason = translate("line %1 is no UTF-8 text").arg(badLine);
    }
    return bytes;
}

QString sentence(const char *text, const QString &path, const QString &reason)
{
    return translate(text).arg(path, reason);
}

QByteArray lineFor(const QString &path, const QString &word)
{
    if (stringLibraryFormat(path) == StringLibraryFormat::Lines) {
        return word.toUtf8();
    }
    const bool isPlain = !word.contains(QLatin1Char('"')) && !word.contains(QLatin1Char(','))
                         && !word.startsWith(QLatin1Char('#'));
    const QString quoted = QLatin1Char('"') + QString(word).replace(QLatin1Char('"'), QLatin1String("\"\""))
                           + QLatin1Char('"');
    return (isPlain ? word : quoted).toUtf8();
}

QByteArray withLine(const QByteArray &text, const QByteArray &line)
{
    const QByteArray ending = text.contains("\r\n") ? QByteArray("\r\n") : QByteArray("\n");
    const bool endsInLine = text.isEmpty() || text.endsWith('\n');
    return text + (endsInLine ? QByteArray() : ending) + line + ending;
}

} // namespace

StringLibraryFile::Content StringLibraryFile::read(const QString &path)
{
    QString reason;
    const QByteArray text = readText(path, &reason);
    if (!reason.isEmpty()) {
        return {nullptr,
                sentence(QT_TRANSLATE_NOOP("StringLibraryFile",
                                           "The string library \"%1\" offers no words: %2. Mend the file or "
                                           "choose another one in the preferences."),
                         path, reason)};
    }
    const StringLibraryText words(text, stringLibraryFormat(path));
    Content content{std::make_shared<const StringLibrary>(StringLibraryBuilder::build(words.words())), {}};
    if (words.skippedWords() > 0) {
        content.report = translate("%n word(s) of more than 1000 bytes were left out of \"%1\".")
                             .replace(QLatin1String("%n"), QString::number(words.skippedWords()))
                             .arg(path);
    }
    return content;
}

bool StringLibraryFile::canHold(const QString &path, const QString &word)
{
    const bool isOneLine = !word.contains(QLatin1Char('\n')) && !word.contains(QLatin1Char('\r'));
    const bool isComment = stringLibraryFormat(path) == StringLibraryFormat::Lines
                           && word.startsWith(QLatin1Char('#'));
    const QByteArray bytes = word.toUtf8();
    return !word.isEmpty() && isOneLine && word.trimmed() == word && !isComment
           && quint32(bytes.size()) <= StringLibraryText::LongestWord
           && StringLibraryText::firstBadLine(bytes) == 0;
}

QString StringLibraryFile::add(const QString &path, const QString &word)
{
    QString reason;
    const QByteArray text = readText(path, &reason);
    const QByteArray added = withLine(text, lineFor(path, word));
    if (reason.isEmpty() && added.size() > LargestFile) {
        reason = translate("it would be larger than 64 MiB");
    } else if (reason.isEmpty()) {
        reason = kernel::DurableFile::replace(path, added);
    }
    return reason.isEmpty()
               ? QString()
               : sentence(
                   QT_TRANSLATE_NOOP("StringLibraryFile",
                                     "The word was not added to \"%1\": %2. Mend that and add it again."),
                   path, reason);
}

} // namespace interchange
