#pragma once

#include "nkKernelServicesExport.h"

#include <QIcon>
#include <QObject>
#include <QString>

class QWidget;

/// The host's main window.
class NK_KERNEL_SERVICES_EXPORT nkMainWindowService : public QObject
{
    Q_OBJECT
public:
    static nkMainWindowService &the();

    /// Places a module window in the main window. Called once a module. The window stays the plug-in's:
    /// the host never owns nor deletes it.
    /// @param name the module's name, as in menus
    /// @param group the group of modules it stands under, for example "Scene"
    /// @param toolClipName names the help clip of the module's button
    /// @param shortTitle the title on the window's tab
    /// @param startHidden the window is not shown at the first start
    virtual void registerModule(const QString &name, const QString &group, QWidget *window,
                                const QString &toolClipName, const QIcon &icon, const QString &shortTitle,
                                bool startHidden) = 0;
    /// The main window, for dialogs to centre on; null in a host without one.
    virtual QWidget *getMainWindow() const = 0;
};
