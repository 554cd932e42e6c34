#pragma once

namespace kernel {

/// Where a sceneplate's image is drawn.
enum class SceneplatePlacement {
    /// Behind everything of the scene.
    Behind,
    /// In front of everything.
    InFront
};

} // namespace kernel
