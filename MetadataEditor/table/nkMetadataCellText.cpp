#include "table/nkMetadataCellText.h"

#include <algorithm>

namespace {

bool breaksLine(QChar character)
{
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator
           || character == QChar::ParagraphSeparator;
}

} // namespace

QString nkMetadataCellText::singleLine(const QString &text)
{
    QString line = text.left(MaximumLength);
    if (std::any_of(line.cbegin(), line.cend(), breaksLine)) {
        std::replace_if(line.begin(), line.end(), breaksLine, QLatin1Char(' '));
    }
    if (line.size() < text.size()) {
        line += QChar(0x2026);
    }
    return line;
}
