#pragma once

#include <QString>
#include <QVariant>

/// The texts the table shows for values and icons.
namespace nkMetadataValueText {

/// The text of a value, by its storage type: floating-point numbers as the float editor prints them, a date
/// as "MMMM dd, yyyy", a time as "HH:mm", both together as "MMMM dd, yyyy hh:mm:ss" in the system's locale, a
/// list as its elements' texts joined with ", " (lists in lists alike), anything else as QVariant::toString.
/// Empty for an invalid value.
QString text(const QVariant &value);

/// What an entry's icon stands for, translated now: "Tag on Object", "Tag inside Set", "Entry on Object" or
/// "Entry inside Set".
QString iconWord(bool isTag, bool isOnObject);

} // namespace nkMetadataValueText
