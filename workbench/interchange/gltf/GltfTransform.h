#pragma once

#include <interchange/json/JsonValue.h>

#include <QByteArray>

#include <array>
#include <optional>

namespace interchange {

/// Where something stands relative to something else: 4 × 4 numbers, column by column, as glTF has them.
class GltfTransform
{
public:
    /// The same place.
    GltfTransform();
    /// That of a node's JSON object, by its `matrix` or by `translation`, `rotation` and `scale`; members that are not
    /// what they should be count as not there.
    static GltfTransform ofNode(const JsonValue &node);
    /// The steps that glTF takes one after the other: scale, rotation as quaternion, translation.
    struct Steps
    {
        std::array<double, 3> translation{0, 0, 0};
        std::array<double, 4> rotation{0, 0, 0, 1};
        std::array<double, 3> scale{1, 1, 1};
    };
    static GltfTransform of(const Steps &steps);
    static Steps stepsOf(const JsonValue &node);

    GltfTransform operator*(const GltfTransform &inner) const;
    bool operator==(const GltfTransform &other) const { return m_values == other.m_values; }
    bool operator!=(const GltfTransform &other) const { return !(*this == other); }
    /// Nothing where it maps everything into a plane, or where the numbers are out of all bounds.
    std::optional<GltfTransform> inverted() const;
    bool isIdentity() const { return *this == GltfTransform(); }

    /// The nearest steps. @param isExact whether they give this transform again, but for rounding
    Steps steps(bool &isExact) const;

    /// As JSON array.
    QByteArray text(bool isSpaced) const;
    template <size_t Count>
    static QByteArray text(const std::array<double, Count> &values, bool isSpaced);

private:
    double at(int row, int column) const { return m_values[size_t(column * 4 + row)]; }
    double &at(int row, int column) { return m_values[size_t(column * 4 + row)]; }
    double determinant() const;
    bool isNear(const GltfTransform &other) const;

    std::array<double, 16> m_values;
};

} // namespace interchange
