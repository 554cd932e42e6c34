#include "TestMessages.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>
#include <QtTest>

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace {

std::atomic<int> strays{0};
QtMessageHandler handlerOfQtTest = nullptr;

/// The offscreen platform of Qt 5.15 has no size hints, no stacking and no grabs, and says so with a warning
/// whenever a fixed-size dialog or a pop-up is shown. Under X11 a request about a window can cross the window's
/// end on its way to the server, whose answer "BadWindow" then comes as a warning now and then. Nothing that the
/// code under test could change.
bool isPlatformNoise(const QString &message)
{
    return message == QLatin1String("This plugin does not support propagateSizeHints()")
           || message == QLatin1String("This plugin does not support raise()")
           || message == QLatin1String("This plugin does not support grabbing the keyboard")
           || message.startsWith(QLatin1String("QXcbConnection: XCB error: 3 (BadWindow)"));
}

void printStray(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (isPlatformNoise(message))
        return;
    const bool harmless = type == QtDebugMsg || type == QtInfoMsg;
    if (!harmless)
        ++strays;
    const QByteArray text = message.toLocal8Bit();
    std::fprintf(stderr, "%s: outside the test functions: %s\n", harmless ? "QDEBUG " : "QWARN  ",
                 text.constData());
    std::fflush(stderr);
    if (type == QtFatalMsg)
        std::abort();
}

void passOn(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!isPlatformNoise(message))
        handlerOfQtTest(type, context, message);
}

} // namespace

void TestMessages::watch()
{
    qInstallMessageHandler(printStray);
}

int TestMessages::strayCount()
{
    return strays;
}

void TestMessages::leaveOutPlatformNoise()
{
    if (!handlerOfQtTest && QTest::currentTestFunction())
        handlerOfQtTest = qInstallMessageHandler(passOn);
}
