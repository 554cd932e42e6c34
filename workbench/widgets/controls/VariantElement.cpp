#include "VariantElement.h"

#include "NumberText.h"

#include <QCoreApplication>
#include <QDateTime>

#include <algorithm>
#include <cstring>

namespace {

QString oneLine(QString text)
{
    for (QChar &character : text) {
        const bool breaks = character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
        if (breaks || character.category() == QChar::Other_Control)
            character = QLatin1Char(' ');
    }
    return text;
}

QString listText(const QVariantList &values, const QLocale &locale)
{
    QStringList texts;
    texts.reserve(values.size());
    for (const QVariant &value : values)
        texts.append(VariantElement::text(value, locale));
    return texts.join(QStringLiteral(", "));
}

bool sameDouble(double left, double right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

bool sameList(const QVariantList &left, const QVariantList &right)
{
    return std::equal(left.cbegin(), left.cend(), right.cbegin(), right.cend(), &VariantElement::same);
}

/// QDateTime finds equal instants equal, whatever their time zones.
bool sameDateTime(const QDateTime &left, const QDateTime &right)
{
    return left == right && left.timeSpec() == right.timeSpec()
           && left.offsetFromUtc() == right.offsetFromUtc();
}

QString translated(const char *name)
{
    return QCoreApplication::translate("Metadata", name);
}

} // namespace

QString VariantElement::text(const QVariant &value, const QLocale &locale)
{
    switch (value.userType()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return NumberText::shortest(value.toDouble());
    case QMetaType::QDate:
        return locale.toString(value.toDate(), QStringLiteral("MMMM dd, yyyy"));
    case QMetaType::QTime:
        return locale.toString(value.toTime(), QStringLiteral("HH:mm"));
    case QMetaType::QDateTime:
        return locale.toString(value.toDateTime(), QStringLiteral("MMMM dd, yyyy hh:mm:ss"));
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return listText(value.toList(), locale);
    default:
        return oneLine(value.toString());
    }
}

bool VariantElement::same(const QVariant &left, const QVariant &right)
{
    if (left.userType() != right.userType())
        return false;
    switch (left.userType()) {
    case QMetaType::UnknownType:
        return true;
    case QMetaType::Double:
    case QMetaType::Float:
        return sameDouble(left.toDouble(), right.toDouble());
    case QMetaType::QDateTime:
        return sameDateTime(left.toDateTime(), right.toDateTime());
    case QMetaType::QVariantList:
        return sameList(left.toList(), right.toList());
    default:
        return left == right;
    }
}

QList<VariantElement::Type> VariantElement::types()
{
    const QDate today = QDate::currentDate();
    return {
        {translated(QT_TRANSLATE_NOOP("Metadata", "String")), QString()},
        {translated(QT_TRANSLATE_NOOP("Metadata", "Integer")), 0},
        {translated(QT_TRANSLATE_NOOP("Metadata", "Float")), 0.0},
        {translated(QT_TRANSLATE_NOOP("Metadata", "Boolean")), false},
        {translated(QT_TRANSLATE_NOOP("Metadata", "Time")), QTime(0, 0)},
        {translated(QT_TRANSLATE_NOOP("Metadata", "Date")), today},
        {translated(QT_TRANSLATE_NOOP("Metadata", "Date and Time")), QDateTime(today, QTime(0, 0))},
        {translated(QT_TRANSLATE_NOOP("Metadata", "List")), QVariantList()},
    };
}

QVariant VariantElement::initialLike(const QVariant &value)
{
    const QList<Type> all = types();
    const auto found = std::find_if(all.cbegin(), all.cend(), [&value](const Type &type) {
        return type.initial.userType() == value.userType();
    });
    return found == all.cend() ? QVariant(QString()) : found->initial;
}
