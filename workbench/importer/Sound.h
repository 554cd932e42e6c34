#pragma once

#include <assimp/scene.h>

#include <string_view>

/// Keeps numbers of the library within what may be answered.
namespace Sound {

/// @return false where one of the three is infinite or no number
bool isFinite(const aiVector3D &vector);
bool isFinite(const aiMatrix4x4 &matrix);
/// The value where it is within the bounds, else the usual one.
float within(float value, float smallest, float largest, float usual);
std::string_view text(const aiString &text);

} // namespace Sound
