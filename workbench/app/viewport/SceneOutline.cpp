#include "SceneOutline.h"

#include "SceneShaders.h"

#include <QOpenGLFramebufferObject>
#include <QVector2D>

#include <array>

SceneOutline::SceneOutline() = default;

SceneOutline::~SceneOutline() = default;

bool SceneOutline::initialize()
{
    initializeOpenGLFunctions();
    m_program = std::make_unique<QOpenGLShaderProgram>();
    m_program->bindAttributeLocation("position", 0);
    return m_program->addShaderFromSourceCode(QOpenGLShader::Vertex, SceneShaders::outlineVertex)
           && m_program->addShaderFromSourceCode(QOpenGLShader::Fragment, SceneShaders::outlineFragment)
           && m_program->link();
}

void SceneOutline::release()
{
    m_program.reset();
    m_shapes.reset();
}

bool SceneOutline::begin(const QSize &size)
{
    // Not always the one of the context.
    glGetIntegerv(GL_FRAMEBUFFER_BINDING, &m_picture);
    if (!m_shapes || m_shapes->size() != size) {
        m_shapes = std::make_unique<QOpenGLFramebufferObject>(size);
    }
    if (!m_shapes->bind()) {
        end();
        return false;
    }
    glDisable(GL_DEPTH_TEST);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    return true;
}

void SceneOutline::end()
{
    glBindFramebuffer(GL_FRAMEBUFFER, GLuint(m_picture));
    glEnable(GL_DEPTH_TEST);
}

void SceneOutline::draw(const QColor &color, float width)
{
    static const std::array<float, 8> corners{-1, -1, 1, -1, -1, 1, 1, 1};
    m_program->bind();
    m_program->setUniformValue("shapes", 0);
    m_program->setUniformValue("color", color);
    m_program->setUniformValue(
        "reach", QVector2D(width / float(m_shapes->width()), width / float(m_shapes->height())));
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, m_shapes->texture());
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, corners.data());
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(0);
    glDisable(GL_BLEND);
    glEnable(GL_DEPTH_TEST);
    glBindTexture(GL_TEXTURE_2D, 0);
}
