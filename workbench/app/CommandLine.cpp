#include "CommandLine.h"

#include <QCommandLineParser>
#include <QFileInfo>

CommandLine CommandLine::parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Opens a 3D scene and keeps the metadata of its objects."));
    const QCommandLineOption help(QStringLiteral("help"), QStringLiteral("Shows this text."));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Saves a picture of the window and ends."),
                                        QStringLiteral("OUT.png"));
    const QCommandLineOption sample(QStringLiteral("sample"),
                                    QStringLiteral("Opens a copy of the sample scene."));
    parser.addOption(help);
    parser.addOption(sample);
    parser.addOption(screenshot);
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The scene to open."),
                                 QStringLiteral("[FILE]"));

    CommandLine result;
    if (!parser.parse(arguments)) {
        result.message = QStringLiteral("%1 Try --help.").arg(parser.errorText());
        result.status = 2;
    } else if (parser.isSet(help)) {
        result.message = parser.helpText();
    } else if (parser.positionalArguments().size() > 1) {
        result.message = QStringLiteral("One scene at a time, please: more than one file was given.");
        result.status = 2;
    } else if (parser.isSet(sample) && !parser.positionalArguments().isEmpty()) {
        result.message = QStringLiteral("One scene at a time, please: --sample and a file were given.");
        result.status = 2;
    } else if (parser.isSet(screenshot) && parser.value(screenshot).isEmpty()) {
        result.message = QStringLiteral("--screenshot needs the name of the picture to write.");
        result.status = 2;
    } else {
        result.screenshot = parser.value(screenshot);
        if (!parser.positionalArguments().isEmpty()) {
            result.file = QFileInfo(parser.positionalArguments().constFirst()).absoluteFilePath();
        }
        result.sample = result.file.isEmpty() && (parser.isSet(sample) || parser.isSet(screenshot));
    }
    return result;
}
