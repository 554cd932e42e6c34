#pragma once

#include <QTemporaryDir>

/// The surroundings of one test process: a home of its own and a fixed locale and time zone.
///
/// Made before the application object, because Qt reads locale, time zone, platform theme and the XDG
/// folders when that starts. Everything a test stores lands in a temporary folder that is removed with the
/// sandbox; preferences and caches of the person running the tests are neither read nor written.
class TestSandbox
{
public:
    /// Changes the environment of the process. Ends it with a message where no temporary folder can be made.
    TestSandbox();

    /// The temporary folder, absolute, with the folders "home", "config", "data", "cache" and "runtime".
    QString path() const;

private:
    Q_DISABLE_COPY(TestSandbox)

    void redirectFolders();
    static void fixLocaleAndTime();
    static void forgetDesktop();

    QTemporaryDir m_folder;
};
