#include "SceneplateLayer.h"

#include "SceneShaders.h"

#include <QOpenGLTexture>
#include <QVector2D>

#include <array>

namespace {

constexpr float veil = 0.5F;

} // namespace

SceneplateLayer::SceneplateLayer() = default;

SceneplateLayer::~SceneplateLayer() = default;

bool SceneplateLayer::initialize()
{
    initializeOpenGLFunctions();
    m_program = std::make_unique<QOpenGLShaderProgram>();
    m_program->bindAttributeLocation("position", 0);
    return m_program->addShaderFromSourceCode(QOpenGLShader::Vertex, SceneShaders::plateVertex)
           && m_program->addShaderFromSourceCode(QOpenGLShader::Fragment, SceneShaders::plateFragment)
           && m_program->link();
}

void SceneplateLayer::release()
{
    m_pictures.clear();
    m_program.reset();
}

void SceneplateLayer::upload(const std::vector<SceneplateImages::Plate> &plates)
{
    m_pictures.clear();
    for (const SceneplateImages::Plate &plate : plates) {
        Picture picture;
        picture.texture = std::make_unique<QOpenGLTexture>(plate.image.mirrored());
        picture.texture->setMinMagFilters(QOpenGLTexture::LinearMipMapLinear, QOpenGLTexture::Linear);
        picture.texture->setWrapMode(QOpenGLTexture::ClampToEdge);
        picture.size = plate.image.size();
        picture.isInFront = plate.isInFront;
        picture.opacity = plate.isInFront && !plate.image.hasAlphaChannel() ? veil : 1;
        m_pictures.push_back(std::move(picture));
    }
}

QSizeF SceneplateLayer::share(const QSizeF &image, const QSizeF &viewport, bool inFront)
{
    const QSizeF scaled = image.scaled(viewport,
                                       inFront ? Qt::KeepAspectRatio : Qt::KeepAspectRatioByExpanding);
    return {scaled.width() / viewport.width(), scaled.height() / viewport.height()};
}

void SceneplateLayer::draw(bool inFront, const QSizeF &viewport)
{
    static const std::array<float, 8> corners{-1, -1, 1, -1, -1, 1, 1, 1};
    m_program->bind();
    m_program->setUniformValue("picture", 0);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, corners.data());
    for (const Picture &picture : m_pictures) {
        if (picture.isInFront == inFront) {
            const QSizeF taken = share(picture.size, viewport, inFront);
            m_program->setUniformValue("share", QVector2D(float(taken.width()), float(taken.height())));
            m_program->setUniformValue("opacity", picture.opacity);
            picture.texture->bind(0);
            glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
            picture.texture->release(0);
        }
    }
    glDisableVertexAttribArray(0);
    glDisable(GL_BLEND);
}
