#include "MainWindowService.h"

#include "MainWindow.h"

#include <QVariant>
#include <QWidget>

MainWindowService::MainWindowService(MainWindow *window) : m_window(window) {}

MainWindowService::~MainWindowService() = default;

void MainWindowService::registerModule(const QString &name, const QString &group, QWidget *window,
                                       const QString &toolClipName, const QIcon &icon,
                                       const QString &shortTitle, bool startHidden)
{
    // The workbench has no help clips yet; the name is kept on the window for those who write them.
    window->setProperty("toolClip", toolClipName);
    m_window->addModule(name, group, window, icon, shortTitle, startHidden);
}

QWidget *MainWindowService::getMainWindow() const
{
    return m_window;
}
