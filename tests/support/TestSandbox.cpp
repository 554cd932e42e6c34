#include "TestSandbox.h"

#include <QDir>
#include <QFile>
#include <QLocale>

#include <ctime>

TestSandbox::TestSandbox()
{
    if (!m_folder.isValid())
        qFatal("No temporary folder for the tests: %s", qPrintable(m_folder.errorString()));
    redirectFolders();
    fixLocaleAndTime();
    forgetDesktop();
}

QString TestSandbox::path() const
{
    return m_folder.path();
}

void TestSandbox::redirectFolders()
{
    const struct
    {
        const char *variable;
        const char *folder;
    } folders[] = {
        {"HOME", "home"},
        {"XDG_CONFIG_HOME", "config"},
        {"XDG_DATA_HOME", "data"},
        {"XDG_CACHE_HOME", "cache"},
        {"XDG_RUNTIME_DIR", "runtime"},
    };
    QDir root(m_folder.path());
    for (const auto &entry : folders) {
        const QString folder = QLatin1String(entry.folder);
        root.mkpath(folder);
        qputenv(entry.variable, QFile::encodeName(root.filePath(folder)));
    }
    // Qt warns about a runtime folder that others may read.
    QFile::setPermissions(root.filePath(QStringLiteral("runtime")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void TestSandbox::fixLocaleAndTime()
{
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("LANGUAGE", "C");
    qputenv("TZ", "UTC");
    tzset();
    QLocale::setDefault(QLocale::c());
}

void TestSandbox::forgetDesktop()
{
    // Each of these changes fonts, sizes, dialogs or styles to those of somebody's desktop.
    for (const char *variable :
         {"XDG_CURRENT_DESKTOP", "DESKTOP_SESSION", "QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE",
          "QT_SCALE_FACTOR", "QT_FONT_DPI", "QT_PLUGIN_PATH", "SESSION_MANAGER"})
        qunsetenv(variable);
}
