#include "OpenGlCheck.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("OpenGlCheck", text);
}

bool isRecent(const QSurfaceFormat &format, bool isEmbedded)
{
    return format.version() >= (isEmbedded ? qMakePair(2, 0) : qMakePair(2, 1));
}

QString look()
{
    // It can make contexts, but has no windows that show what they draw.
    if (QGuiApplication::platformName() == QLatin1String("offscreen")
        || QGuiApplication::platformName() == QLatin1String("minimal")) {
        return tr("There is no display.");
    }
    QOpenGLContext context;
    if (!context.create()) {
        return tr("This display has no OpenGL.");
    }
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface)) {
        return tr("OpenGL does not work on this display.");
    }
    context.doneCurrent();
    return isRecent(context.format(), context.isOpenGLES())
               ? QString()
               : tr("The OpenGL of this display is older than 2.1.");
}

} // namespace

QString OpenGlCheck::missing()
{
    static const QString text = look();
    return text;
}
