#pragma once

#include <nkKernelServices/nkMainWindowService.h>

class MainWindow;

/// Places module windows in the workbench's main window.
class MainWindowService : public nkMainWindowService
{
    Q_OBJECT
public:
    /// @param window not owned; outlives the service
    explicit MainWindowService(MainWindow *window);
    ~MainWindowService() override;

    void registerModule(const QString &name, const QString &group, QWidget *window,
                        const QString &toolClipName, const QIcon &icon, const QString &shortTitle,
                        bool startHidden) override;
    QWidget *getMainWindow() const override;

private:
    MainWindow *m_window;
};
