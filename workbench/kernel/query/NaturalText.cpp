#include "NaturalText.h"

#include <algorithm>

namespace kernel {

namespace {

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// Takes the digits at the front of the text, and answers them without leading zeros.
QStringView takeNumber(QStringView &text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), &isDigit);
    const auto first = std::find_if(text.begin(), end, [](QChar digit) { return digit != QLatin1Char('0'); });
    const QStringView number(first, end - first);
    text = text.mid(end - text.begin());
    return number;
}

int compareNumbers(QStringView left, QStringView right)
{
    return left.size() != right.size() ? int(left.size() - right.size()) : left.compare(right);
}

} // namespace

int compareNaturalText(const QString &left, const QString &right)
{
    QStringView a(left);
    QStringView b(right);
    while (!a.isEmpty() && !b.isEmpty()) {
        int order = 0;
        if (isDigit(a.front()) && isDigit(b.front())) {
            const QStringView number = takeNumber(a);
            order = compareNumbers(number, takeNumber(b));
        } else {
            order = int(a.front().toCaseFolded().unicode()) - int(b.front().toCaseFolded().unicode());
            a = a.mid(1);
            b = b.mid(1);
        }
        if (order != 0) {
            return order;
        }
    }
    if (a.isEmpty() != b.isEmpty()) {
        return a.isEmpty() ? -1 : 1;
    }
    // Numbers with leading zeros, and letters that lie beyond the first plane.
    return left.compare(right, Qt::CaseInsensitive);
}

} // namespace kernel
