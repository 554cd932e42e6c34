// What is drawn over the meshes: what is selected, gizmos, the rubber band.

#include "SceneRenderer.h"

#include <array>

namespace {

/// Of the line around what is selected, in logical pixels.
constexpr float outlineWidth = 2;
constexpr int bandAlpha = 45;

} // namespace

void SceneRenderer::drawSelectedMeshes(const QMatrix4x4 &viewProjection)
{
    m_plain->setUniformValue("matrix", viewProjection);
    drawTriangles(m_selected, 0, m_selectedCount);
    for (const SceneBatches::Instance &instance : m_selectedInstances) {
        m_plain->setUniformValue("matrix", viewProjection * instance.world);
        drawTriangles(m_shared, instance.opaque.first, instance.opaque.count);
        drawTriangles(m_shared, instance.translucent.first, instance.translucent.count);
    }
}

/// What stands in front of it does not hide the outline.
void SceneRenderer::drawSelected(const Frame &frame)
{
    const bool isAny = m_selectedCount > 0 || !m_selectedInstances.empty();
    if (!isAny || !m_outline.begin(frame.size)) {
        return;
    }
    bindVertices();
    usePlain(QMatrix4x4(), Qt::white);
    drawSelectedMeshes(frame.projection * frame.view);
    glDisableVertexAttribArray(Position);
    m_vertices.release();
    m_outline.end();
    m_outline.draw(frame.look.highlight, outlineWidth * frame.pixelRatio);
}

void SceneRenderer::drawGizmos(const Frame &frame)
{
    const auto all = GLsizei(m_gizmos->points().size());
    const auto cameras = GLsizei(m_gizmos->cameraPoints());
    if (all == 0) {
        return;
    }
    m_gizmoPoints.bind();
    glEnableVertexAttribArray(Position);
    glVertexAttribPointer(Position, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
    glLineWidth(frame.pixelRatio);
    const QMatrix4x4 matrix = frame.projection * frame.view;
    if (frame.gizmos.testFlag(SceneGizmos::Cameras)) {
        usePlain(matrix, frame.look.camera);
        glDrawArrays(GL_LINES, 0, cameras);
    }
    if (frame.gizmos.testFlag(SceneGizmos::Lights)) {
        usePlain(matrix, frame.look.light);
        glDrawArrays(GL_LINES, cameras, all - cameras);
    }
    usePlain(matrix, frame.look.highlight);
    glLineWidth(outlineWidth * frame.pixelRatio);
    for (const SceneGizmos::Gizmo &gizmo : m_gizmos->all()) {
        if (gizmo.item < m_marked.size() && m_marked[gizmo.item] && frame.gizmos.testFlag(gizmo.kind)) {
            glDrawArrays(GL_LINES, GLint(gizmo.first), GLsizei(gizmo.count));
        }
    }
    glLineWidth(1);
    glDisableVertexAttribArray(Position);
    m_gizmoPoints.release();
}

void SceneRenderer::drawRectangle(const QRectF &rect, GLenum mode)
{
    const std::array<float, 12> corners{
        float(rect.left()),  float(rect.top()),    0, float(rect.right()), float(rect.top()),    0,
        float(rect.right()), float(rect.bottom()), 0, float(rect.left()),  float(rect.bottom()), 0};
    glDisable(GL_DEPTH_TEST);
    glEnableVertexAttribArray(Position);
    glVertexAttribPointer(Position, 3, GL_FLOAT, GL_FALSE, 0, corners.data());
    glDrawArrays(mode, 0, 4);
    glDisableVertexAttribArray(Position);
}

/// Just inside of the edges.
void SceneRenderer::drawPlateFrame(const Frame &frame)
{
    if (frame.isPlateSelected) {
        const double width = 2.0 * double(outlineWidth * frame.pixelRatio) / frame.size.width();
        const double height = 2.0 * double(outlineWidth * frame.pixelRatio) / frame.size.height();
        usePlain(QMatrix4x4(), frame.look.highlight);
        glLineWidth(outlineWidth * frame.pixelRatio);
        drawRectangle(QRectF(width - 1, height - 1, 2 - 2 * width, 2 - 2 * height), GL_LINE_LOOP);
        glLineWidth(1);
    }
}

void SceneRenderer::drawBand(const Frame &frame)
{
    if (frame.band.isEmpty()) {
        return;
    }
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    QColor area = frame.look.highlight;
    area.setAlpha(bandAlpha);
    usePlain(QMatrix4x4(), area);
    drawRectangle(frame.band, GL_TRIANGLE_FAN);
    glDisable(GL_BLEND);
    usePlain(QMatrix4x4(), frame.look.highlight);
    glLineWidth(frame.pixelRatio);
    drawRectangle(frame.band, GL_LINE_LOOP);
    glLineWidth(1);
}
