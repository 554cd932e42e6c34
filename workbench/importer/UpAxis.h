#pragma once

#include <assimp/scene.h>

/// Which way is up. The library turns the scenes of most kinds of files upright itself; of some it only tells how
/// their axes are meant.
namespace UpAxis {

/// From the scene's space to one in which y points up and x to the right; the unit matrix where the scene says
/// nothing of it or nothing that makes sense.
aiMatrix4x4 upright(const aiScene &scene);

} // namespace UpAxis
