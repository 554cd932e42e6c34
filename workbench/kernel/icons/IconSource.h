#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QIcon>
#include <QObject>
#include <QPixmap>
#include <QSize>
#include <QString>

namespace kernel {

/// Where the kernel's handles and the host's icon manager take their pictures from. What is asked for and
/// missing is answered by a visible placeholder, never by nothing, and told in the log once.
///
/// In a process without a GUI application (QGuiApplication) there are no pictures: everything answers null,
/// without a word.
class NK_KERNEL_SERVICES_EXPORT IconSource : public QObject
{
    Q_OBJECT
public:
    /// The installed source, else the one that reads the built-in resources.
    static IconSource &the();
    /// Installs another source, which stays the caller's. Null takes it back; so does its destruction.
    static void setIconSource(IconSource *source);

    /// The icon of this name, sharp at every size and legible on selected rows.
    /// @param category for example "General"; empty for the default icons
    virtual QIcon icon(const QString &name, const QString &category = QString()) = 0;
    /// The picture at a path such as "MetadataEditor/MetadataSet.svg" or ":/..." at its own size, in the
    /// resolution of the sharpest screen.
    virtual QPixmap pixmap(const QString &path) = 0;
    /// The picture at a path at exactly this size in pixels, centred where its shape differs. Null for an
    /// empty size.
    virtual QPixmap render(const QString &path, const QSize &size) = 0;
};

} // namespace kernel
