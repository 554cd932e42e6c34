#include "ResourceIconSource.h"

#include "PlaceholderIcon.h"
#include "SelectionIconEngine.h"

#include <nkKernelServices/nkLogService.h>

#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>

#include <cmath>

namespace kernel {

namespace {

const QLatin1String root(":/iconmanager/resources/");

/// The grid the icons are drawn on, hence their own size; the placeholder's too.
constexpr int gridSize = 24;

/// Pixmaps and icon engines need the platform plug-in and end the process without it.
bool isGuiRunning()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr;
}

/// A picture of this size in pixels, drawn by the file's image plug-in at that size rather than scaled.
QPixmap draw(const QString &file, const QSize &size)
{
    QImageReader reader(file);
    const QSize fitted = reader.size().scaled(size, Qt::KeepAspectRatio);
    reader.setScaledSize(fitted);
    QPixmap canvas(size);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.drawImage((size.width() - fitted.width()) / 2, (size.height() - fitted.height()) / 2,
                      reader.read());
    return canvas;
}

QIcon iconOf(const QString &file)
{
    return QIcon(new SelectionIconEngine(QIcon(file)));
}

} // namespace

QIcon ResourceIconSource::icon(const QString &name, const QString &category)
{
    if (!isGuiRunning()) {
        return QIcon();
    }
    const QString folder = category.isEmpty() ? QStringLiteral("Various") : category;
    const QString file = root + folder + QLatin1Char('/') + name + QStringLiteral(".svg");
    const auto known = m_icons.constFind(file);
    if (known != m_icons.constEnd()) {
        return *known;
    }
    const QIcon icon = isReadable(file) ? iconOf(file) : PlaceholderIcon::icon();
    m_icons.insert(file, icon);
    return icon;
}

QPixmap ResourceIconSource::pixmap(const QString &path)
{
    if (!isGuiRunning()) {
        return QPixmap();
    }
    const QString file = resolve(path);
    const QSize ownSize = isReadable(file) ? QImageReader(file).size() : QSize(gridSize, gridSize);
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap picture = render(path,
                             QSize(std::ceil(ownSize.width() * ratio), std::ceil(ownSize.height() * ratio)));
    picture.setDevicePixelRatio(ratio);
    return picture;
}

QPixmap ResourceIconSource::render(const QString &path, const QSize &size)
{
    if (!isGuiRunning() || size.isEmpty()) {
        return QPixmap();
    }
    const QString file = resolve(path);
    return isReadable(file) ? draw(file, size) : PlaceholderIcon::pixmap(size);
}

QString ResourceIconSource::resolve(const QString &path) const
{
    return path.startsWith(QLatin1String(":/")) ? path : root + path;
}

bool ResourceIconSource::isReadable(const QString &file)
{
    // The size is asked for too: a plug-in that recognises a broken file by its first bytes has none for it.
    QImageReader reader(file);
    const bool readable = reader.canRead() && !reader.size().isEmpty();
    if (!readable) {
        tellMissing(file);
    }
    return readable;
}

void ResourceIconSource::tellMissing(const QString &file)
{
    if (m_told.contains(file)) {
        return;
    }
    m_told.insert(file);
    const bool hasPlugin = QImageReader::supportedImageFormats().contains("svg");
    const QString reason = hasPlugin ? tr("The icon \"%1\" is missing.")
                                     : tr("The icon \"%1\" cannot be read: install the package libqt5svg5.");
    nkLogService::the().reportWarning(tr("Icons"), reason.arg(file));
}

} // namespace kernel
