#pragma once

#include <QString>

/// Texts of message boxes that name files. A box grows no wider than a share of the display and cuts off what cannot
/// be broken into lines: of a long file name, its end and all that tells it from others.
namespace BoxText {

/// The text with every stretch of it that no line break can come into, and that is too wide for a box, elided in its
/// middle. Whatever fits stays as it is. Plain text.
QString elided(const QString &text);

} // namespace BoxText
