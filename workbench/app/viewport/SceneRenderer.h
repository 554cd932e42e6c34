#pragma once

#include "SceneBatches.h"
#include "SceneGizmos.h"
#include "SceneOutline.h"
#include "SceneplateLayer.h"

#include <QColor>
#include <QOpenGLBuffer>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QRectF>

#include <memory>

/// Draws a scene with OpenGL 2.1 or ES 2, and its selection around it. Everything but the constructor wants the same
/// context to be current.
class SceneRenderer : protected QOpenGLFunctions
{
public:
    struct Look
    {
        QColor top, bottom; ///< of the background
        QColor highlight;   ///< around what is selected
        QColor camera, light;
    };
    struct Frame
    {
        QMatrix4x4 view, projection;
        QSize size;           ///< in pixels of the device
        float pixelRatio = 1; ///< of those in a logical one
        SceneGizmos::Kinds gizmos;
        bool isPlateSelected = false; ///< so that a frame stands around the viewport
        QRectF band;                  ///< the rubber band, from -1 to 1 with y up; empty: none
        Look look;
    };

    SceneRenderer();
    ~SceneRenderer();

    /// Makes what a context needs once. @return false where it cannot draw
    bool initialize();
    /// Frees what initialize() and the uploads have made; initialize() may come again.
    void release();
    bool isReady() const { return m_isReady; }

    /// Both have to stay as they are until others are uploaded. Nothing is selected then.
    void upload(const SceneBatches &batches, const SceneGizmos &gizmos);
    /// The images of sceneplates; not kept.
    void upload(const std::vector<SceneplateImages::Plate> &plates);
    /// By item.
    void select(const std::vector<bool> &marked);
    void draw(const Frame &frame);

private:
    enum Attribute { Position = 0, Normal = 1, Color = 2 };
    using Program = std::unique_ptr<QOpenGLShaderProgram>;

    static Program makeProgram(const char *vertex, const char *fragment);
    void drawBackground(const Look &look);
    void drawMeshes(const Frame &frame);
    void drawInstances(const Frame &frame, bool opaque);
    void setMatrices(const Frame &frame, const QMatrix4x4 &model);
    void drawSelected(const Frame &frame);
    void drawSelectedMeshes(const QMatrix4x4 &viewProjection);
    void drawGizmos(const Frame &frame);
    void drawBand(const Frame &frame);
    void drawPlateFrame(const Frame &frame);
    void drawRectangle(const QRectF &rect, GLenum mode);
    void usePlain(const QMatrix4x4 &matrix, const QColor &color);
    void bindVertices();
    void drawTriangles(QOpenGLBuffer &indices, quint32 first, quint32 count);
    static void fill(QOpenGLBuffer &buffer, const void *data, size_t bytes);

    const SceneBatches *m_batches = nullptr;
    const SceneGizmos *m_gizmos = nullptr;
    Program m_shaded;
    Program m_plain;
    SceneOutline m_outline;
    SceneplateLayer m_plates;
    QOpenGLBuffer m_vertices{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_gizmoPoints{QOpenGLBuffer::VertexBuffer};
    QOpenGLBuffer m_opaque{QOpenGLBuffer::IndexBuffer};
    QOpenGLBuffer m_translucent{QOpenGLBuffer::IndexBuffer};
    QOpenGLBuffer m_shared{QOpenGLBuffer::IndexBuffer};
    QOpenGLBuffer m_selected{QOpenGLBuffer::IndexBuffer};
    quint32 m_selectedCount = 0;
    std::vector<SceneBatches::Instance> m_selectedInstances;
    std::vector<bool> m_marked;
    bool m_isReady = false;
};
