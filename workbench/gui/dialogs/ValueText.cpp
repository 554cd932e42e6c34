#include "ValueText.h"

#include <nkQt4Ext/QNKDoubleSpiner.h>

#include <QDateTime>
#include <QStringList>
#include <QVariant>

namespace ValueText {
namespace {

// More than a list ever shows of one line; texts of files reach megabytes, which views lay out whole.
constexpr int longestLine = 1000;

QString ofList(const QVariantList &list)
{
    QStringList texts;
    for (const QVariant &element : list) {
        texts.append(of(element));
    }
    return texts.join(QStringLiteral(", "));
}

} // namespace

QString of(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QVariantList:
        return ofList(value.toList());
    case QMetaType::Double:
        return QNKDoubleSpiner::text(value.toDouble());
    case QMetaType::QTime:
        return value.toTime().toString(Qt::ISODate);
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(Qt::ISODate);
    default:
        return value.toString();
    }
}

QString oneLine(const QString &text)
{
    QString line = text.left(longestLine);
    for (QChar &character : line) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line
            || category == QChar::Separator_Paragraph) {
            character = QLatin1Char(' ');
        }
    }
    return text.size() > longestLine ? QString(line + QChar(0x2026)) : line;
}

QString literal(const QString &text)
{
    return QLatin1String("<qt>") + text.toHtmlEscaped() + QLatin1String("</qt>");
}

} // namespace ValueText
