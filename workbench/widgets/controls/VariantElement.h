#pragma once

#include <QList>
#include <QLocale>
#include <QVariant>

/// What there is to know about one value of a list of typed values.
namespace VariantElement {

/// The value as one line of text: numbers as their editor prints them, dates and times by the locale's
/// names, the elements of a list joined by ", ". Line breaks and other control characters become blanks.
QString text(const QVariant &value, const QLocale &locale);

/// The same type and the same value. QVariant's own comparison converts ("1" equals 1) and finds no NaN
/// equal.
bool same(const QVariant &left, const QVariant &right);

/// A type of element that can be added.
struct Type
{
    QString name;     ///< as people read it
    QVariant initial; ///< what a new element holds
};

/// The types in the order of the metadata value types.
QList<Type> types();

/// A new element of the type of a present one; a text where that is of no type of the list.
QVariant initialLike(const QVariant &value);

} // namespace VariantElement
