#include "IncludeReader.h"

#include <QRegularExpression>

namespace {

/// The text with every comment blanked, lines kept. Quotes are followed, so that "//" in a string is none.
QByteArray withoutComments(QByteArray text)
{
    enum { Code, Line, Block, Text } state = Code;
    char quote = 0;
    for (int i = 0; i < text.size(); ++i) {
        const char c = text.at(i);
        const char next = i + 1 < text.size() ? text.at(i + 1) : '\0';
        if (state == Code && c == '/' && (next == '/' || next == '*')) {
            state = next == '/' ? Line : Block;
            text[i] = text[i + 1] = ' ';
            ++i;
        } else if (state == Block && c == '*' && next == '/') {
            state = Code;
            text[i] = text[i + 1] = ' ';
            ++i;
        } else if (c == '\n') {
            state = state == Block ? Block : Code;
        } else if (state == Line || state == Block) {
            text[i] = ' ';
        } else if (state == Text && c == '\\') {
            ++i;
        } else if (state == Text && c == quote) {
            state = Code;
        } else if (state == Code && (c == '"' || c == '\'')) {
            state = Text;
            quote = c;
        }
    }
    return text;
}

QVector<Include> matches(const QByteArray &text, const QRegularExpression &pattern)
{
    QVector<Include> includes;
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        const QRegularExpressionMatch match = pattern.match(QString::fromUtf8(lines.at(i)));
        if (match.hasMatch())
            includes.append({i + 1, match.captured(2), match.captured(1) != QLatin1String("\"")});
    }
    return includes;
}

} // namespace

QVector<Include> IncludeReader::ofSource(const QByteArray &text)
{
    static const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s*([\"<])([^\">]+)[\">]"));
    return matches(withoutComments(text), include);
}

QVector<Include> IncludeReader::ofForm(const QByteArray &text)
{
    static const QRegularExpression header(QStringLiteral("<(header|include)\\b[^>]*>([^<]+)</"));
    return matches(text, header);
}
