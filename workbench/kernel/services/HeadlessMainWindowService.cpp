#include "HeadlessMainWindowService.h"

#include "ServiceRegistry.h"
#include <nkKernelServices/nkLogService.h>

namespace kernel {

void HeadlessMainWindowService::registerModule(const QString &name, const QString &, QWidget *,
                                               const QString &, const QIcon &, const QString &, bool)
{
    nkLogService::the().reportWarning(
        tr("Main Window"), tr("There is no main window; the module \"%1\" is not shown.").arg(name));
}

QWidget *HeadlessMainWindowService::getMainWindow() const
{
    return nullptr;
}

} // namespace kernel

nkMainWindowService &nkMainWindowService::the()
{
    kernel::ServiceRegistry &registry = kernel::ServiceRegistry::the();
    if (nkMainWindowService *installed = registry.mainWindowService()) {
        return *installed;
    }
    return registry.service<kernel::HeadlessMainWindowService>();
}
