#include <interchange/geometry/GltfMember.h>

#include <array>
#include <cmath>

namespace interchange {

namespace {

constexpr double LargestWhole = 9007199254740992.0; // 2^53
constexpr double LargestFloat = 3.0e38;
constexpr int MostNumbers = 16; // of a matrix

} // namespace

std::optional<qint64> GltfMember::wholeNumber(const JsonValue &value)
{
    if (!value.isNumber())
        return {};
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok || number < 0 || number > LargestWhole || std::floor(number) != number)
        return {};
    return qint64(number);
}

std::optional<qint64> GltfMember::wholeNumber(const JsonValue &object, QLatin1String key, qint64 byDefault)
{
    const JsonValue member = object.find(key);
    return member.isPresent() ? wholeNumber(member) : std::optional<qint64>(byDefault);
}

qint32 GltfMember::index(const JsonValue &value, size_t count)
{
    const std::optional<qint64> number = wholeNumber(value);
    return number && size_t(*number) < count && *number <= 0x7fffffff ? qint32(*number) : -1;
}

std::optional<float> GltfMember::number(const JsonValue &value)
{
    if (!value.isNumber())
        return {};
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok || std::abs(number) > LargestFloat)
        return {};
    return float(number);
}

bool GltfMember::numbers(const JsonValue &value, float *numbers, int count)
{
    if (!value.isArray() || value.count() != quint32(count) || count > MostNumbers)
        return false;
    std::array<float, MostNumbers> read{};
    int at = 0;
    for (const JsonValue element : value.children()) {
        const std::optional<float> found = number(element);
        if (!found)
            return false;
        read[size_t(at++)] = *found;
    }
    std::copy_n(read.begin(), count, numbers);
    return true;
}

std::vector<JsonValue> GltfMember::elements(const JsonValue &value)
{
    std::vector<JsonValue> found;
    if (value.isArray()) {
        for (const JsonValue element : value.children())
            found.push_back(element);
    }
    return found;
}

JsonValue GltfMember::extension(const JsonValue &object, QLatin1String name)
{
    return object.find(QLatin1String("extensions")).find(name);
}

} // namespace interchange
