#include <interchange/gltf/GltfTransform.h>

#include <QByteArrayList>

#include <algorithm>
#include <cmath>

namespace interchange {

namespace {

constexpr double Rounding = 1e-9;
/// What computing leaves of nothing, and how many digits it leaves of anything else.
constexpr double Noise = 1e-15;
constexpr int Digits = 15;

template <size_t Count>
bool readNumbers(const JsonValue &list, std::array<double, Count> &values)
{
    std::array<double, Count> read{};
    size_t count = 0;
    for (const JsonValue element : list.children()) {
        bool ok = false;
        if (count == Count || !element.isNumber())
            return false;
        read[count++] = element.toDouble(&ok);
        if (!ok)
            return false;
    }
    if (count != Count)
        return false;
    values = read;
    return true;
}

/// The quaternion of a matrix that turns and does nothing else, by its largest part: dividing by a small one would
/// lose digits.
template <typename Entry>
std::array<double, 4> quaternionOf(const Entry &r)
{
    const double trace = r(0, 0) + r(1, 1) + r(2, 2);
    if (trace > 0) {
        const double s = 2 * std::sqrt(trace + 1);
        return {(r(2, 1) - r(1, 2)) / s, (r(0, 2) - r(2, 0)) / s, (r(1, 0) - r(0, 1)) / s, s / 4};
    }
    const int i = r(0, 0) >= r(1, 1) && r(0, 0) >= r(2, 2) ? 0 : r(1, 1) >= r(2, 2) ? 1 : 2;
    const int j = (i + 1) % 3;
    const int k = (i + 2) % 3;
    const double s = 2 * std::sqrt(std::max(0.0, 1 + r(i, i) - r(j, j) - r(k, k)));
    std::array<double, 4> q{0, 0, 0, 1};
    if (s == 0)
        return q;
    q[size_t(i)] = s / 4;
    q[size_t(j)] = (r(j, i) + r(i, j)) / s;
    q[size_t(k)] = (r(k, i) + r(i, k)) / s;
    q[3] = (r(k, j) - r(j, k)) / s;
    return q;
}

} // namespace

GltfTransform::GltfTransform() : m_values{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1} {}

GltfTransform GltfTransform::ofNode(const JsonValue &node)
{
    GltfTransform transform;
    if (readNumbers(node.find(QLatin1String("matrix")), transform.m_values))
        return transform;
    return of(stepsOf(node));
}

GltfTransform::Steps GltfTransform::stepsOf(const JsonValue &node)
{
    Steps steps;
    readNumbers(node.find(QLatin1String("translation")), steps.translation);
    readNumbers(node.find(QLatin1String("rotation")), steps.rotation);
    readNumbers(node.find(QLatin1String("scale")), steps.scale);
    return steps;
}

GltfTransform GltfTransform::of(const Steps &steps)
{
    const auto [x, y, z, w] = steps.rotation;
    const double turned[3][3] = {
        {1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)},
        {2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)},
        {2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)},
    };
    GltfTransform transform;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            transform.at(row, column) = turned[row][column] * steps.scale[size_t(column)];
        transform.at(row, 3) = steps.translation[size_t(row)];
    }
    return transform;
}

GltfTransform GltfTransform::operator*(const GltfTransform &inner) const
{
    GltfTransform product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = 0;
            for (int i = 0; i < 4; ++i)
                sum += at(row, i) * inner.at(i, column);
            product.at(row, column) = sum;
        }
    }
    return product;
}

double GltfTransform::determinant() const
{
    return at(0, 0) * (at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1))
           - at(0, 1) * (at(1, 0) * at(2, 2) - at(1, 2) * at(2, 0))
           + at(0, 2) * (at(1, 0) * at(2, 1) - at(1, 1) * at(2, 0));
}

/// The last row of a place in glTF is 0 0 0 1: turning the nine numbers round is enough.
std::optional<GltfTransform> GltfTransform::inverted() const
{
    const double whole = determinant();
    if (!std::isfinite(whole) || whole == 0 || !std::isfinite(1 / whole))
        return std::nullopt;
    GltfTransform inverse;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const int r1 = (column + 1) % 3, r2 = (column + 2) % 3;
            const int c1 = (row + 1) % 3, c2 = (row + 2) % 3;
            inverse.at(row, column) = (at(r1, c1) * at(r2, c2) - at(r1, c2) * at(r2, c1)) / whole;
        }
    }
    for (int row = 0; row < 3; ++row) {
        for (int i = 0; i < 3; ++i)
            inverse.at(row, 3) -= inverse.at(row, i) * at(i, 3);
    }
    return inverse;
}

GltfTransform::Steps GltfTransform::steps(bool &isExact) const
{
    Steps steps;
    for (int i = 0; i < 3; ++i) {
        steps.translation[size_t(i)] = at(i, 3);
        steps.scale[size_t(i)] = std::hypot(at(0, i), at(1, i), at(2, i));
    }
    if (determinant() < 0)
        steps.scale[0] = -steps.scale[0];
    const bool isFlat = std::find(steps.scale.begin(), steps.scale.end(), 0.0) != steps.scale.end();
    if (!isFlat)
        steps.rotation = quaternionOf(
            [&](int row, int column) { return at(row, column) / steps.scale[size_t(column)]; });
    for (double &factor : steps.scale) {
        // What was never scaled stays so.
        if (std::abs(std::abs(factor) - 1) < Rounding)
            factor = factor < 0 ? -1 : 1;
    }
    isExact = isNear(of(steps));
    return steps;
}

bool GltfTransform::isNear(const GltfTransform &other) const
{
    for (size_t i = 0; i < m_values.size(); ++i) {
        const double size = std::max({1.0, std::abs(m_values[i]), std::abs(other.m_values[i])});
        if (!(std::abs(m_values[i] - other.m_values[i]) <= Rounding * size))
            return false;
    }
    return true;
}

QByteArray GltfTransform::text(bool isSpaced) const
{
    return text(m_values, isSpaced);
}

template <size_t Count>
QByteArray GltfTransform::text(const std::array<double, Count> &values, bool isSpaced)
{
    QByteArrayList texts;
    for (const double value : values)
        texts.append(QByteArray::number(std::abs(value) < Noise ? 0.0 : value, 'g', Digits));
    return '[' + texts.join(isSpaced ? ", " : ",") + ']';
}

template QByteArray GltfTransform::text(const std::array<double, 3> &values, bool isSpaced);
template QByteArray GltfTransform::text(const std::array<double, 4> &values, bool isSpaced);

} // namespace interchange
