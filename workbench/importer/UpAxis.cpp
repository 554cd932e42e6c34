#include "UpAxis.h"

namespace {

struct Axis
{
    int32_t number = -1; ///< 0 to 2 for x, y, z
    int32_t sign = 1;

    bool isSound() const { return number >= 0 && number <= 2 && (sign == 1 || sign == -1); }
};

Axis axisOf(const aiMetadata &metadata, const char *name)
{
    Axis axis;
    const std::string key(name);
    if (!metadata.Get(key, axis.number) || !metadata.Get(key + "Sign", axis.sign))
        axis.number = -1;
    return axis;
}

} // namespace

aiMatrix4x4 UpAxis::upright(const aiScene &scene)
{
    if (!scene.mMetaData)
        return aiMatrix4x4();
    aiMatrix4x4 matrix(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1);
    unsigned row = 0;
    for (const char *name : {"CoordAxis", "UpAxis", "FrontAxis"}) {
        const Axis axis = axisOf(*scene.mMetaData, name);
        if (!axis.isSound())
            return aiMatrix4x4();
        matrix[row++][axis.number] = ai_real(axis.sign);
    }
    // Axes that are one, or that make a mirror, are a mistake of whoever wrote the file.
    return matrix.Determinant() > 0 ? matrix : aiMatrix4x4();
}
