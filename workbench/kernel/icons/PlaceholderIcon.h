#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSize>

namespace kernel {

/// What stands where an icon is missing: a crossed frame in signal colour. Drawn without any file or plug-in.
class PlaceholderIcon
{
public:
    PlaceholderIcon() = delete;

    /// The placeholder at the usual icon sizes.
    static QIcon icon();
    /// The placeholder at exactly this size in pixels.
    static QPixmap pixmap(const QSize &size);
};

} // namespace kernel
