#pragma once

#include <QString>

/// Floating-point numbers as the number editor and the cells print and read them.
namespace NumberText {

/// The shortest digits that give the same single back; where the single would be infinite or zero and the
/// value is not, the shortest digits that give the same double back. Plain notation from 0.0001 up to nine
/// digits before the point, else with an exponent ("1e-05"). The decimal point is the default locale's, there
/// are no group separators. "nan", "inf" and "-inf" for what is no number.
QString shortest(double value);

/// What a text is on the way to a number.
enum class State {
    Number,    ///< a finite number
    Beginning, ///< may become one by typing on
    NoNumber,
};

/// Reads a text with "." or the default locale's decimal point and an optional exponent; no group separators.
/// Blanks around it do not count. A text beyond the range of double is none.
/// @param value set only for State::Number; may be null
State read(const QString &text, double *value);

} // namespace NumberText
