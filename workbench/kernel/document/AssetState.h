#pragma once

namespace kernel {

/// How a metadata set stands to the asset manager.
enum class AssetState : unsigned char {
    /// No asset.
    None,
    /// An asset nobody is modifying: not editable.
    AtRest,
    /// An asset that "Modify" has made editable.
    Edited
};

} // namespace kernel
