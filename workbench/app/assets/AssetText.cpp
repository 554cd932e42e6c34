#include "AssetText.h"

#include <QLocale>

QString AssetText::line(QString text)
{
    for (QChar &character : text) {
        if (character.category() == QChar::Other_Control || character == QChar::LineSeparator
            || character == QChar::ParagraphSeparator) {
            character = QLatin1Char(' ');
        }
    }
    return text;
}

QString AssetText::moment(const QDateTime &moment)
{
    return QLocale().toString(moment.toLocalTime(), QLocale::ShortFormat);
}
