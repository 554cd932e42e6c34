#pragma once

#include <QByteArray>
#include <QString>

/// The order of texts in sorted lists: runs of digits by their number ("Part 9" before "Part 10"), everything
/// else case-insensitively by code points; what is equal then, by the code points as they are.
/// @return negative, 0 (only for equal texts) or positive
int compareNaturally(const QString &left, const QString &right);

/// Appends the text's sort key: bytes whose order is compareNaturally's. No key is the beginning of another.
void appendNaturalKey(const QString &text, QByteArray &key);
