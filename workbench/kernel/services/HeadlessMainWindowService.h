#pragma once

#include <nkKernelServices/nkMainWindowService.h>

namespace kernel {

/// Stands in while no application has installed a main window (command-line tools, tests): modules that
/// register are named in the log and shown nowhere.
class NK_KERNEL_SERVICES_EXPORT HeadlessMainWindowService final : public nkMainWindowService
{
    Q_OBJECT
public:
    void registerModule(const QString &name, const QString &group, QWidget *window,
                        const QString &toolClipName, const QIcon &icon, const QString &shortTitle,
                        bool startHidden) override;
    QWidget *getMainWindow() const override;
};

} // namespace kernel
