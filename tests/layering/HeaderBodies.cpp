#include "HeaderBodies.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

/// The text without comments, preprocessor lines and the insides of literals; lines are kept.
QString bareText(const QByteArray &text)
{
    QString bare = QString::fromUtf8(text);
    static const QRegularExpression noise(
        QStringLiteral("\"(?:[^\"\\\\\\n]|\\\\.)*\"|'(?:[^'\\\\\\n]|\\\\.)+'|//[^\\n]*|/\\*.*?\\*/"
                       "|^[ \\t]*#(?:[^\\n\\\\]|\\\\.)*"),
        QRegularExpression::DotMatchesEverythingOption | QRegularExpression::MultilineOption);
    int from = 0;
    for (auto match = noise.match(bare); match.hasMatch(); match = noise.match(bare, from)) {
        const int lines = match.captured().count(QLatin1Char('\n'));
        bare.replace(match.capturedStart(), match.capturedLength(), QString(lines, QLatin1Char('\n')));
        from = match.capturedStart() + lines;
    }
    return bare;
}

/// Where the block that opens at the place ends; the end of the text where it never does.
int endOfBlock(const QString &text, int open)
{
    int depth = 0;
    for (int i = open; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('{'))
            ++depth;
        else if (text.at(i) == QLatin1Char('}') && --depth == 0)
            return i;
    }
    return text.size();
}

bool opensScope(const QString &head)
{
    static const QRegularExpression scope(
        QStringLiteral(
            "^(?:template\\s*<.*>\\s*)?(?:inline\\s+)?(?:class|struct|union|enum|namespace|extern)\\b[^()]*"
            "(?:\\(.*\\))?[^()]*$"),
        QRegularExpression::DotMatchesEverythingOption);
    return scope.match(head).hasMatch();
}

/// Up to three statements: accessors, and the assignment and increment of a value type.
bool isTrivial(const QString &body)
{
    return body.count(QLatin1Char(';')) <= 3 && !body.contains(QLatin1Char('{'));
}

/// What stands between the last statement, block or access word and the place: the head of a block there.
QString headBefore(const QString &text, int begin, int open)
{
    static const QRegularExpression access(
        QStringLiteral("\\b(?:public|protected|private|Q_SIGNALS|Q_SLOTS)\\s*:(?!:)"));
    QString head = text.mid(begin, open - begin);
    const int last = head.lastIndexOf(access);
    if (last >= 0 && !head.left(last).contains(QLatin1String("class")))
        head = head.mid(head.indexOf(QLatin1Char(':'), last) + 1);
    return head.trimmed();
}

} // namespace

Violations HeaderBodies::inHeader(const QString &file, const QByteArray &text)
{
    Violations found;
    const QString bare = bareText(text);
    int headBegin = 0;
    for (int i = 0; i < bare.size(); ++i) {
        const QChar c = bare.at(i);
        if (c == QLatin1Char(';') || c == QLatin1Char('}'))
            headBegin = i + 1;
        if (c != QLatin1Char('{'))
            continue;
        const QString head = headBefore(bare, headBegin, i);
        headBegin = i + 1;
        if (opensScope(head))
            continue;
        const int end = endOfBlock(bare, i);
        if (!head.contains(QLatin1String("template")) && !isTrivial(bare.mid(i + 1, end - i - 1)))
            found.append({file, bare.left(i).count(QLatin1Char('\n')) + 1,
                          QStringLiteral("a function body here; declarations and short accessors only")});
        i = end;
        headBegin = end + 1;
    }
    return found;
}
