#pragma once

#include <QString>
#include <QStringList>

/// What the workbench was asked for on its command line: workbench [--screenshot OUT.png] [--sample | FILE].
struct CommandLine
{
    /// The scene to open, as an absolute path; empty: none.
    QString file;
    /// Whether to open the sample scene: asked for, or nothing else to take a picture of.
    bool sample = false;
    /// Where to leave a picture of the main window; empty: none, the workbench stays open.
    QString screenshot;
    /// What to print and stop for; empty where all is well.
    QString message;
    /// The exit status to stop with when message is not empty: 0 for help, 2 for wrong usage.
    int status = 0;

    /// @param arguments the program's arguments, its name first
    static CommandLine parse(const QStringList &arguments);
};
