#pragma once

#include <nkKernelServices/nkMainWindowService.h>

#include <QList>

/// A host main window that notes which modules are registered with it.
class RecordingMainWindow : public nkMainWindowService
{
public:
    struct Module
    {
        QString name;
        QString group;
        QWidget *window = nullptr;
        QString toolClipName;
        bool hasIcon = false;
        QString shortTitle;
        bool startHidden = true;
    };

    void registerModule(const QString &name, const QString &group, QWidget *window,
                        const QString &toolClipName, const QIcon &icon, const QString &shortTitle,
                        bool startHidden) override
    {
        modules.append({name, group, window, toolClipName, !icon.isNull(), shortTitle, startHidden});
    }

    QWidget *getMainWindow() const override { return mainWindow; }

    QList<Module> modules;
    QWidget *mainWindow = nullptr;
};
