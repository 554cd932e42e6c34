#include "UniqueNames.h"

namespace kernel {

namespace {

/// Numbers of more digits than this are never given out: there are not that many names.
constexpr int MostDigits = 9;

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

} // namespace

void UniqueNames::released(const QString &name)
{
    if (m_nextNumber.isEmpty()) {
        return;
    }
    // "Key12" may be the twelfth "Key" and the second "Key1": each reading counts.
    for (int start = name.size() - 1; start >= 0 && isDigit(name.at(start)); --start) {
        if (name.size() - start > MostDigits) {
            return;
        }
        const auto known = m_nextNumber.find(name.left(start));
        if (known != m_nextNumber.end() && name.at(start) != QLatin1Char('0')) {
            *known = qMin(*known, qMax(FirstNumber, name.midRef(start).toInt()));
        }
    }
}

} // namespace kernel
