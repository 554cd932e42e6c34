#include "Sound.h"

#include <algorithm>
#include <cmath>

bool Sound::isFinite(const aiVector3D &vector)
{
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

bool Sound::isFinite(const aiMatrix4x4 &matrix)
{
    const ai_real *numbers = matrix[0];
    return std::all_of(numbers, numbers + 16, [](ai_real number) { return std::isfinite(number); });
}

float Sound::within(float value, float smallest, float largest, float usual)
{
    return value >= smallest && value <= largest ? value : usual;
}

std::string_view Sound::text(const aiString &text)
{
    return {text.data, std::min<size_t>(text.length, sizeof(text.data) - 1)};
}
