#include "nkQt4Ext/nkPlatform.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

/// The resolution at which a logical pixel is a device-independent one.
constexpr double referenceDpi = 96.0;

} // namespace

double nkPlatform::getDpiScaleX()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const double dpi = screen ? screen->logicalDotsPerInchX() : referenceDpi;
    return dpi > 0.0 ? dpi / referenceDpi : 1.0;
}
