#pragma once

#include <QColor>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <memory>

class QOpenGLFramebufferObject;

/// A line around the shapes that are drawn between begin() and end(). They are drawn once, however many there are; the
/// line comes from the picture of them. Wants one and the same context to be current.
class SceneOutline : protected QOpenGLFunctions
{
public:
    SceneOutline();
    ~SceneOutline();

    /// @return false where the context cannot draw it
    bool initialize();
    void release();

    /// From here on, what is drawn in white is a shape; nothing of it is seen.
    /// @param size of the picture, in pixels
    bool begin(const QSize &size);
    /// Draws are seen again.
    void end();
    /// Draws the line over what is there, whatever stands in front of the shapes.
    /// @param width in pixels
    void draw(const QColor &color, float width);

private:
    std::unique_ptr<QOpenGLShaderProgram> m_program;
    std::unique_ptr<QOpenGLFramebufferObject> m_shapes;
    GLint m_picture = 0;
};
