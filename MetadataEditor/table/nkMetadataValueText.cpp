#include "table/nkMetadataValueText.h"

#include <nkQt4Ext/QNKDoubleSpiner.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

namespace {

void appendText(QString &text, const QVariant &value);

void appendList(QString &text, const QVariantList &values)
{
    bool first = true;
    for (const QVariant &value : values) {
        if (!first) {
            text += QLatin1String(", ");
        }
        first = false;
        appendText(text, value);
    }
}

void appendText(QString &text, const QVariant &value)
{
    // Month and day names follow the system, not the locale the application was switched to.
    switch (value.userType()) {
    case QMetaType::Double:
    case QMetaType::Float:
        text += QNKDoubleSpiner::text(value.toDouble());
        break;
    case QMetaType::QDate:
        text += QLocale::system().toString(value.toDate(), QStringLiteral("MMMM dd, yyyy"));
        break;
    case QMetaType::QTime:
        text += QLocale::system().toString(value.toTime(), QStringLiteral("HH:mm"));
        break;
    case QMetaType::QDateTime:
        text += QLocale::system().toString(value.toDateTime(), QStringLiteral("MMMM dd, yyyy hh:mm:ss"));
        break;
    case QMetaType::QVariantList:
        appendList(text, value.toList());
        break;
    default:
        text += value.toString();
    }
}

} // namespace

QString nkMetadataValueText::text(const QVariant &value)
{
    // The common case: nothing is copied.
    if (value.userType() == QMetaType::QString) {
        return value.toString();
    }
    QString text;
    appendText(text, value);
    return text;
}

QString nkMetadataValueText::iconWord(bool isTag, bool isOnObject)
{
    const char *word = isTag ? (isOnObject ? QT_TRANSLATE_NOOP("MetadataIconInfo", "Tag on Object")
                                           : QT_TRANSLATE_NOOP("MetadataIconInfo", "Tag inside Set"))
                             : (isOnObject ? QT_TRANSLATE_NOOP("MetadataIconInfo", "Entry on Object")
                                           : QT_TRANSLATE_NOOP("MetadataIconInfo", "Entry inside Set"));
    return QCoreApplication::translate("MetadataIconInfo", word);
}
