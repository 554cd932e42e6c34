#include "PlatformService.h"

#include "ServiceRegistry.h"
#include <nkKernelServices/nkLogService.h>

#include <QDir>
#include <QGuiApplication>
#include <QStandardPaths>

namespace kernel {

QString PlatformService::getUserDataDirectory() const
{
    const QString path = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    const bool usable = QDir().mkpath(path);
    if (!usable && !m_failureTold) {
        m_failureTold = true;
        nkLogService::the().reportWarning(tr("User Data"), tr("The folder \"%1\" cannot be made.").arg(path));
    }
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

QString PlatformService::getInformationTitle() const
{
    // Answers the plain application name where no display name was set, also without a GUI.
    return QGuiApplication::applicationDisplayName();
}

} // namespace kernel

nkPlatformService &nkPlatformService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::PlatformService>();
}
