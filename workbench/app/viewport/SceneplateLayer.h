#pragma once

#include "SceneplateImages.h"

#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>

#include <memory>

class QOpenGLTexture;

/// Draws the images of sceneplates over the whole viewport. Wants one and the same context to be current.
///
/// An image keeps its shape. Behind the scene it fills the viewport and loses what stands over; in front of it all of
/// it is seen. One in front that cannot be seen through itself is drawn half transparent: the scene would be gone.
class SceneplateLayer : protected QOpenGLFunctions
{
public:
    SceneplateLayer();
    ~SceneplateLayer();

    /// @return false where the context cannot draw it
    bool initialize();
    void release();

    void upload(const std::vector<SceneplateImages::Plate> &plates);
    void draw(bool inFront, const QSizeF &viewport);
    /// The half of the width and height that an image takes up, where the viewport's are 1 and 1.
    static QSizeF share(const QSizeF &image, const QSizeF &viewport, bool inFront);

private:
    struct Picture
    {
        std::unique_ptr<QOpenGLTexture> texture;
        QSizeF size;
        bool isInFront = false;
        float opacity = 1;
    };

    std::unique_ptr<QOpenGLShaderProgram> m_program;
    std::vector<Picture> m_pictures;
};
