#pragma once

#include <QImage>

/// A picture in as many colours as fit into one byte a pixel: a file of a third of the size, in which shaded surfaces
/// are hard to tell from what they were.
namespace FewColors {

/// @param picture opaque, of any number of colours
/// @return the picture with a palette of at most 256, the same for the same picture
QImage of(const QImage &picture);

} // namespace FewColors
