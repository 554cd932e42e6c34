#include "CommandLine.h"
#include "MainWindow.h"
#include "Screenshot.h"
#include "Workbench.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTextStream>

#include <cstdio>

namespace {

void say(FILE *stream, const QString &text)
{
    QTextStream(stream) << text.trimmed() << '\n';
}

int fail(const QString &error)
{
    say(stderr, QStringLiteral("workbench: %1").arg(error));
    return 1;
}

/// Qt's platform for processes without a display says on every start what it cannot do; nobody needs it.
void sayWithoutPlatformNoise(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith(QLatin1String("This plugin does not support "))) {
        fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
    }
}

int runForPicture(Workbench &workbench, const QString &path)
{
    QString error;
    Screenshot screenshot(workbench.window(), path);
    QObject::connect(&screenshot, &Screenshot::finished, &workbench, [&error](const QString &reason) {
        error = reason;
        QApplication::quit();
    });
    QApplication::exec();
    return error.isEmpty() ? 0 : fail(error);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    qInstallMessageHandler(sayWithoutPlatformNoise);
    // The log keeps what it is told; on the terminal stands only what a person has to see.
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    QCoreApplication::setOrganizationName(QStringLiteral("MetadataEditor"));
    QCoreApplication::setApplicationName(QStringLiteral("workbench"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Workbench"));

    const CommandLine commandLine = CommandLine::parse(QCoreApplication::arguments());
    if (!commandLine.message.isEmpty()) {
        say(commandLine.status == 0 ? stdout : stderr, commandLine.message);
        return commandLine.status;
    }

    Workbench workbench;
    workbench.loadPlugins();
    const QString scene = commandLine.sample ? Workbench::sampleScene() : commandLine.file;
    const bool isPicture = !commandLine.screenshot.isEmpty();
    const QString error = !isPicture        ? workbench.start(scene)
                          : scene.isEmpty() ? QString()
                                            : workbench.open(scene);
    if (!error.isEmpty()) {
        return fail(error);
    }
    if (isPicture) {
        workbench.show();
        return runForPicture(workbench, commandLine.screenshot);
    }
    return QApplication::exec();
}
