#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QLibrary;

/// Loads the plug-ins of a folder and calls their entry points, and unloads them at the end.
///
/// A plug-in is a library that exports initPlugin, initPreferencesPlugin, or both: functions without
/// arguments and result. What is no plug-in, or was built against other libraries, is named in the log and
/// skipped.
class PluginLoader
{
public:
    PluginLoader();
    /// Unloads what is still loaded.
    ~PluginLoader();

    /// Loads every library of the folder, in order of name. Tells the log what was loaded, what was not, and
    /// why; a folder that is missing or holds no plug-in is told too.
    void loadAll(const QString &folder);
    /// The file names of the loaded plug-ins.
    QStringList loadedPlugins() const;
    /// Unloads in reverse order. Their windows must have left their frames.
    void unloadAll();

private:
    Q_DISABLE_COPY(PluginLoader)
    void load(const QString &path);

    std::vector<std::unique_ptr<QLibrary>> m_libraries;
};
