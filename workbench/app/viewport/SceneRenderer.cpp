#include "SceneRenderer.h"

#include "SceneShaders.h"

#include <array>
#include <cstddef>

namespace {

const void *offset(size_t bytes)
{
    return reinterpret_cast<const void *>(bytes);
}

// Some systems store what a buffer holds under an int.
constexpr size_t mostBytes = 0x7fffffff;

} // namespace

SceneRenderer::SceneRenderer() = default;

SceneRenderer::~SceneRenderer() = default;

SceneRenderer::Program SceneRenderer::makeProgram(const char *vertex, const char *fragment)
{
    auto program = std::make_unique<QOpenGLShaderProgram>();
    program->bindAttributeLocation("position", Position);
    program->bindAttributeLocation("normal", Normal);
    program->bindAttributeLocation("color", Color);
    const bool isMade = program->addShaderFromSourceCode(QOpenGLShader::Vertex, vertex)
                        && program->addShaderFromSourceCode(QOpenGLShader::Fragment, fragment)
                        && program->link();
    return isMade ? std::move(program) : nullptr;
}

bool SceneRenderer::initialize()
{
    initializeOpenGLFunctions();
    m_shaded = makeProgram(SceneShaders::shadedVertex, SceneShaders::shadedFragment);
    m_plain = makeProgram(SceneShaders::plainVertex, SceneShaders::plainFragment);
    m_isReady = m_shaded && m_plain && m_outline.initialize() && m_plates.initialize();
    for (QOpenGLBuffer *buffer :
         {&m_vertices, &m_gizmoPoints, &m_opaque, &m_translucent, &m_shared, &m_selected}) {
        m_isReady = m_isReady && buffer->create();
    }
    return m_isReady;
}

void SceneRenderer::release()
{
    for (QOpenGLBuffer *buffer :
         {&m_vertices, &m_gizmoPoints, &m_opaque, &m_translucent, &m_shared, &m_selected}) {
        buffer->destroy();
    }
    m_shaded.reset();
    m_plain.reset();
    m_outline.release();
    m_plates.release();
    m_batches = nullptr;
    m_gizmos = nullptr;
    m_isReady = false;
}

void SceneRenderer::fill(QOpenGLBuffer &buffer, const void *data, size_t bytes)
{
    buffer.bind();
    buffer.allocate(data, int(qMin(bytes, mostBytes)));
    buffer.release();
}

void SceneRenderer::upload(const SceneBatches &batches, const SceneGizmos &gizmos)
{
    m_batches = &batches;
    m_gizmos = &gizmos;
    fill(m_vertices, batches.vertices().data(), batches.vertices().size() * sizeof(DrawVertex));
    fill(m_opaque, batches.opaque().data(), batches.opaque().size() * sizeof(quint32));
    fill(m_translucent, batches.translucent().data(), batches.translucent().size() * sizeof(quint32));
    fill(m_shared, batches.shared().data(), batches.shared().size() * sizeof(quint32));
    fill(m_gizmoPoints, gizmos.points().data(), gizmos.points().size() * sizeof(QVector3D));
    select({});
}

void SceneRenderer::upload(const std::vector<SceneplateImages::Plate> &plates)
{
    m_plates.upload(plates);
}

void SceneRenderer::select(const std::vector<bool> &marked)
{
    const std::vector<quint32> indices = m_batches->trianglesOf(marked);
    fill(m_selected, indices.data(), indices.size() * sizeof(quint32));
    m_selectedCount = quint32(indices.size());
    m_selectedInstances.clear();
    for (const SceneBatches::Instance &instance : m_batches->instances()) {
        if (instance.item < marked.size() && marked[instance.item]) {
            m_selectedInstances.push_back(instance);
        }
    }
    m_marked = marked;
}

void SceneRenderer::draw(const Frame &frame)
{
    glViewport(0, 0, frame.size.width(), frame.size.height());
    glDisable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    glDisable(GL_STENCIL_TEST);
    glDisable(GL_SCISSOR_TEST);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawBackground(frame.look);
    m_plates.draw(false, frame.size);
    if (m_batches) {
        glEnable(GL_DEPTH_TEST);
        glDepthFunc(GL_LEQUAL);
        drawMeshes(frame);
        drawGizmos(frame);
        drawSelected(frame);
    }
    m_plates.draw(true, frame.size);
    drawPlateFrame(frame);
    drawBand(frame);
    glDisable(GL_DEPTH_TEST);
}

/// From top to bottom of the viewport, as wide as it is.
void SceneRenderer::drawBackground(const Look &look)
{
    static const std::array<float, 12> corners{-1, -1, 0, 1, -1, 0, -1, 1, 0, 1, 1, 0};
    std::array<float, 16> colors{};
    for (size_t i = 0; i < 4; ++i) {
        const QColor &color = i < 2 ? look.bottom : look.top;
        colors[i * 4] = float(color.redF());
        colors[i * 4 + 1] = float(color.greenF());
        colors[i * 4 + 2] = float(color.blueF());
        colors[i * 4 + 3] = 1;
    }
    glDisable(GL_DEPTH_TEST);
    usePlain(QMatrix4x4(), look.top);
    glEnableVertexAttribArray(Position);
    glEnableVertexAttribArray(Color);
    glVertexAttribPointer(Position, 3, GL_FLOAT, GL_FALSE, 0, corners.data());
    glVertexAttribPointer(Color, 4, GL_FLOAT, GL_FALSE, 0, colors.data());
    glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
    glDisableVertexAttribArray(Color);
    glDisableVertexAttribArray(Position);
}

void SceneRenderer::bindVertices()
{
    m_vertices.bind();
    glEnableVertexAttribArray(Position);
    glVertexAttribPointer(Position, 3, GL_FLOAT, GL_FALSE, sizeof(DrawVertex), offset(0));
}

void SceneRenderer::drawTriangles(QOpenGLBuffer &indices, quint32 first, quint32 count)
{
    if (count > 0) {
        indices.bind();
        glDrawElements(GL_TRIANGLES, GLsizei(count), GL_UNSIGNED_INT,
                       offset(size_t(first) * sizeof(quint32)));
        indices.release();
    }
}

void SceneRenderer::setMatrices(const Frame &frame, const QMatrix4x4 &model)
{
    const QMatrix4x4 toView = frame.view * model;
    m_shaded->setUniformValue("toView", toView);
    m_shaded->setUniformValue("normalToView", toView.normalMatrix());
    m_shaded->setUniformValue("matrix", frame.projection * toView);
}

void SceneRenderer::drawMeshes(const Frame &frame)
{
    m_shaded->bind();
    bindVertices();
    glEnableVertexAttribArray(Normal);
    glEnableVertexAttribArray(Color);
    glVertexAttribPointer(Normal, 3, GL_BYTE, GL_TRUE, sizeof(DrawVertex), offset(offsetof(DrawVertex, nx)));
    glVertexAttribPointer(Color, 4, GL_UNSIGNED_BYTE, GL_TRUE, sizeof(DrawVertex),
                          offset(offsetof(DrawVertex, red)));
    m_shaded->setUniformValue("up", frame.view.mapVector({0, 1, 0}));
    setMatrices(frame, QMatrix4x4());
    drawTriangles(m_opaque, 0, quint32(m_batches->opaque().size()));
    drawInstances(frame, true);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDepthMask(GL_FALSE);
    setMatrices(frame, QMatrix4x4());
    drawTriangles(m_translucent, 0, quint32(m_batches->translucent().size()));
    drawInstances(frame, false);
    glDepthMask(GL_TRUE);
    glDisable(GL_BLEND);
    glDisableVertexAttribArray(Normal);
    glDisableVertexAttribArray(Color);
    glDisableVertexAttribArray(Position);
    m_vertices.release();
}

void SceneRenderer::drawInstances(const Frame &frame, bool opaque)
{
    for (const SceneBatches::Instance &instance : m_batches->instances()) {
        const SceneBatches::Run &run = opaque ? instance.opaque : instance.translucent;
        if (run.count > 0) {
            setMatrices(frame, instance.world);
            drawTriangles(m_shared, run.first, run.count);
        }
    }
}

void SceneRenderer::usePlain(const QMatrix4x4 &matrix, const QColor &color)
{
    m_plain->bind();
    m_plain->setUniformValue("matrix", matrix);
    glVertexAttrib4f(Color, float(color.redF()), float(color.greenF()), float(color.blueF()),
                     float(color.alphaF()));
}
