#pragma once

#include <QIcon>

/// The small signs on the controls' own buttons. They are drawn, not loaded: in the colour of the palette
/// that is in force when they are painted, and sharp at every scale.
namespace GlyphIcon {

enum class Sign {
    Clear,
    Search,
    Depth,
    Funnel,
    FunnelActive, ///< the funnel filled in the highlight colour: it lets only some through
    Columns,
    Plus,
    Minus,
    Up,
    Down,
};

QIcon make(Sign sign);

/// The extent, in device-independent pixels, at which the signs are designed.
constexpr int extent = 16;

} // namespace GlyphIcon
