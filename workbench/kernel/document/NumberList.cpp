#include "NumberList.h"

#include "ValueConversion.h"

#include <algorithm>

namespace kernel {

namespace {

bool isNumber(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        // A number too long for the number types stands in lists as its text.
        return value.userType() == QMetaType::QString && isNumberLiteral(value.toString());
    }
}

} // namespace

std::optional<std::vector<double>> numbersOf(const QVariant &list, int count)
{
    constexpr int vectorSize = 3;
    const QVariantList elements = list.userType() == QMetaType::QVariantList ? list.toList() : QVariantList();
    const bool fits = count == vectorSize ? elements.size() >= count : elements.size() == count;
    if (!fits || !std::all_of(elements.cbegin(), elements.cbegin() + count, &isNumber)) {
        return std::nullopt;
    }
    std::vector<double> numbers;
    std::transform(elements.cbegin(), elements.cbegin() + count, std::back_inserter(numbers),
                   [](const QVariant &element) { return element.toDouble(); });
    return numbers;
}

QColor colorOf(const QVariant &list)
{
    const QVariantList elements = list.userType() == QMetaType::QVariantList ? list.toList() : QVariantList();
    if (elements.size() != 3 && elements.size() != 4) {
        return QColor();
    }
    const std::optional<std::vector<double>> numbers = numbersOf(list, elements.size());
    const auto isPart = [](double number) { return number >= 0.0 && number <= 1.0; };
    if (!numbers || !std::all_of(numbers->cbegin(), numbers->cend(), isPart)) {
        return QColor();
    }
    return QColor::fromRgbF((*numbers)[0], (*numbers)[1], (*numbers)[2],
                            numbers->size() == 4 ? (*numbers)[3] : 1.0);
}

} // namespace kernel
