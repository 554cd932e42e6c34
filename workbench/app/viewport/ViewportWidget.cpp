#include "ViewportWidget.h"

#include "ViewportControl.h"
#include "ViewportScene.h"

#include <QKeyEvent>
#include <QOpenGLContext>
#include <QPalette>
#include <QSet>

#include <algorithm>

namespace {

/// Samples a pixel.
constexpr int smoothness = 4;
// Bright enough on dark backgrounds, dark enough on bright ones.
const QColor selectionColor(255, 140, 0);

bool isDark(const QColor &color)
{
    return color.lightnessF() < 0.5;
}

} // namespace

ViewportWidget::ViewportWidget(ViewportScene *scene, ViewportSelection *selection, ViewportControl *control,
                               QWidget *parent)
    : QOpenGLWidget(parent), m_scene(scene), m_selection(selection), m_control(control)
{
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setDepthBufferSize(24);
    format.setSamples(smoothness);
    setFormat(format);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(120, 90);
    connect(control, &ViewportControl::changed, this, qOverload<>(&ViewportWidget::update));
    connect(selection, &ViewportSelection::changed, this, [this] {
        m_isSelectionStale = true;
        update();
    });
}

ViewportWidget::~ViewportWidget()
{
    releaseGraphics();
}

void ViewportWidget::releaseGraphics()
{
    if (m_renderer.isReady()) {
        makeCurrent();
        m_renderer.release();
        doneCurrent();
    }
    m_uploaded = 0;
}

/// Comes again when the widget gets another window, which has a context of its own.
void ViewportWidget::initializeGL()
{
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, &ViewportWidget::releaseGraphics);
    m_uploaded = 0;
    if (!m_renderer.initialize()) {
        Q_EMIT failed();
    }
}

void ViewportWidget::resizeGL(int width, int height)
{
    m_control->setSize(QSizeF(width, height));
}

void ViewportWidget::prepare()
{
    if (m_uploaded != m_scene->revision()) {
        m_uploaded = m_scene->revision();
        m_renderer.upload(m_scene->batches(), m_scene->gizmos());
        m_renderer.upload(m_scene->plates());
        m_isSelectionStale = true;
    }
    if (m_isSelectionStale) {
        m_isSelectionStale = false;
        const QList<quint64> ids = m_selection->ids();
        m_renderer.select(m_scene->mark(ids));
        const QSet<quint64> selected(ids.cbegin(), ids.cend());
        m_isPlateSelected = std::any_of(
            m_scene->plates().begin(), m_scene->plates().end(),
            [&selected](const SceneplateImages::Plate &plate) { return selected.contains(plate.id); });
    }
}

SceneRenderer::Look ViewportWidget::look() const
{
    const QColor base = palette().color(QPalette::Window);
    const bool dark = isDark(base);
    SceneRenderer::Look look;
    look.top = dark ? base.lighter(125) : base.darker(104);
    look.bottom = dark ? base.darker(135) : base.darker(135);
    look.highlight = selectionColor;
    look.camera = dark ? QColor(120, 190, 255) : QColor(20, 80, 160);
    look.light = dark ? QColor(255, 220, 90) : QColor(150, 100, 0);
    return look;
}

SceneRenderer::Frame ViewportWidget::frame() const
{
    const OrbitCamera &camera = m_control->camera();
    SceneRenderer::Frame frame;
    frame.view = camera.view();
    frame.projection = camera.projection();
    frame.pixelRatio = float(devicePixelRatioF());
    frame.size = QSize(qRound(width() * devicePixelRatioF()), qRound(height() * devicePixelRatioF()));
    frame.isPlateSelected = m_isPlateSelected;
    frame.gizmos = m_control->gizmos();
    const QRectF band = m_control->band();
    frame.band = band.isEmpty() ? QRectF() : camera.part(band);
    frame.look = look();
    return frame;
}

void ViewportWidget::paintGL()
{
    if (m_renderer.isReady()) {
        prepare();
        m_renderer.draw(frame());
    }
}

void ViewportWidget::mousePressEvent(QMouseEvent *event)
{
    m_control->press(*event);
}

void ViewportWidget::mouseMoveEvent(QMouseEvent *event)
{
    m_control->move(*event);
}

void ViewportWidget::mouseReleaseEvent(QMouseEvent *event)
{
    m_control->release(*event);
}

void ViewportWidget::wheelEvent(QWheelEvent *event)
{
    m_control->wheel(*event);
    event->accept();
}

void ViewportWidget::keyPressEvent(QKeyEvent *event)
{
    if (!m_control->key(*event)) {
        QOpenGLWidget::keyPressEvent(event);
    }
}

void ViewportWidget::focusOutEvent(QFocusEvent *event)
{
    if (event->reason() != Qt::PopupFocusReason) {
        m_control->cancel();
    }
    QOpenGLWidget::focusOutEvent(event);
}

bool ViewportWidget::event(QEvent *event)
{
    // The keys of the viewport are its own while it has the focus, whatever shortcuts there are.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_Escape || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QOpenGLWidget::event(event);
}
