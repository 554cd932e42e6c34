#include "OpenGlCheck.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("OpenGlCheck", text);
}

bool isRecent(const QSurfaceFormat &format, bool isEmbedded)
{
    return format.version() >= (isEmbedded ? qMakePair(2, 0) : qMakePair(2, 1));
}

struct Findings
{
    QString missing;
    bool isSoftware = false;
};

bool isSoftwareOf(QOpenGLContext &context)
{
    const GLubyte *name = context.functions()->glGetString(GL_RENDERER);
    const QByteArray renderer = QByteArray(reinterpret_cast<const char *>(name)).toLower();
    return renderer.contains("llvmpipe") || renderer.contains("softpipe") || renderer.contains("software");
}

Findings look()
{
    // It can make contexts, but has no windows that show what they draw.
    if (QGuiApplication::platformName() == QLatin1String("offscreen")
        || QGuiApplication::platformName() == QLatin1String("minimal")) {
        return {tr("There is no display.")};
    }
    QOpenGLContext context;
    if (!context.create()) {
        return {tr("This display has no OpenGL.")};
    }
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface)) {
        return {tr("OpenGL does not work on this display.")};
    }
    Findings found;
    found.isSoftware = isSoftwareOf(context);
    if (!isRecent(context.format(), context.isOpenGLES())) {
        found.missing = tr("The OpenGL of this display is older than 2.1.");
    }
    context.doneCurrent();
    return found;
}

const Findings &findings()
{
    static const Findings found = look();
    return found;
}

} // namespace

QString OpenGlCheck::missing()
{
    return findings().missing;
}

bool OpenGlCheck::isSoftware()
{
    return findings().isSoftware;
}
