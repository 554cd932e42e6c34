#include "ViewportControl.h"

#include "ViewportScene.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include <cmath>

using How = ViewportSelection::How;

namespace {

// A press of a key moves the view as a short drag does.
constexpr qreal keyStep = 30;
constexpr float keyZoom = 1.25F;
/// A wheel's notch is 120 eighths of a degree.
constexpr float zoomByNotch = 1.2F;

How howOf(Qt::KeyboardModifiers modifiers)
{
    if (modifiers.testFlag(Qt::ControlModifier)) {
        return How::Toggle;
    }
    return modifiers.testFlag(Qt::ShiftModifier) ? How::Add : How::Replace;
}

QPointF directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

ViewportControl::ViewportControl(ViewportScene *scene, ViewportSelection *selection, QObject *parent)
    : QObject(parent), m_scene(scene), m_selection(selection)
{
    connect(scene, &ViewportScene::changed, this, [this] {
        m_camera.setScene(m_scene->wholeBounds());
        Q_EMIT changed();
    });
    connect(scene, &ViewportScene::sceneShown, this, &ViewportControl::lookAtAll);
    connect(selection, &ViewportSelection::changed, this, &ViewportControl::changed);
}

ViewportControl::~ViewportControl() = default;

void ViewportControl::lookAtAll()
{
    m_camera.resetDirection();
    fitAll();
}

void ViewportControl::setSize(const QSizeF &size)
{
    m_camera.setSize(size);
    if (m_looksAtAll) {
        m_camera.fit(m_scene->bounds());
    }
}

void ViewportControl::moved()
{
    m_looksAtAll = false;
    Q_EMIT changed();
}

void ViewportControl::setShown(SceneGizmos::Kind kind, bool shown)
{
    m_gizmos.setFlag(kind, shown);
    Q_EMIT changed();
}

ViewportControl::Gesture ViewportControl::dragOf(const QMouseEvent &event) const
{
    if (event.button() == Qt::MiddleButton) {
        return event.modifiers().testFlag(Qt::ShiftModifier) ? Gesture::Pan : Gesture::Orbit;
    }
    if (event.modifiers().testFlag(Qt::AltModifier) || m_tool == Tool::Orbit) {
        return Gesture::Orbit;
    }
    return m_tool == Tool::Pan ? Gesture::Pan : Gesture::Band;
}

void ViewportControl::press(const QMouseEvent &event)
{
    const bool isOurs = event.button() == Qt::LeftButton || event.button() == Qt::MiddleButton;
    if (!isOurs || m_gesture != Gesture::None) {
        return;
    }
    m_button = event.button();
    m_drag = dragOf(event);
    m_gesture = Gesture::Click;
    m_how = howOf(event.modifiers());
    m_pressed = event.localPos();
    m_last = m_pressed;
}

void ViewportControl::move(const QMouseEvent &event)
{
    const QPointF place = event.localPos();
    if (m_gesture == Gesture::Click
        && (place - m_pressed).manhattanLength() >= QApplication::startDragDistance()) {
        m_gesture = m_drag;
    }
    if (m_gesture != Gesture::None && m_gesture != Gesture::Click) {
        drag(place);
    }
}

void ViewportControl::drag(const QPointF &place)
{
    if (m_gesture == Gesture::Orbit) {
        m_camera.orbit(place - m_last);
    } else if (m_gesture == Gesture::Pan) {
        m_camera.pan(place - m_last);
    } else {
        m_band = QRectF(m_pressed, place).normalized();
        Q_EMIT changed();
        return;
    }
    m_last = place;
    moved();
}

void ViewportControl::release(const QMouseEvent &event)
{
    if (m_gesture == Gesture::None || event.button() != m_button) {
        return;
    }
    const Gesture done = m_gesture;
    m_gesture = Gesture::None;
    if (done == Gesture::Click && m_button == Qt::LeftButton) {
        click(event.localPos());
    } else if (done == Gesture::Band) {
        m_selection->choose(m_scene->pickAll(m_camera, m_band, m_gizmos), m_how);
    }
    m_band = QRectF();
    Q_EMIT changed();
}

/// A click beside everything takes the selection away, unless it was to be added to.
void ViewportControl::click(const QPointF &place)
{
    const quint64 id = m_scene->pick(m_camera, place, m_gizmos);
    if (id != 0) {
        m_selection->choose({id}, m_how);
    } else if (m_how == How::Replace) {
        m_selection->choose({}, m_how);
    }
}

void ViewportControl::cancel()
{
    if (m_gesture != Gesture::None) {
        m_gesture = Gesture::None;
        m_band = QRectF();
        Q_EMIT changed();
    }
}

void ViewportControl::wheel(const QWheelEvent &event)
{
    const auto notches = float(event.angleDelta().y()) / 120;
    if (notches != 0.0F) {
        m_camera.zoom(std::pow(zoomByNotch, notches), event.position());
        moved();
    }
}

bool ViewportControl::key(const QKeyEvent &event)
{
    if (event.matches(QKeySequence::SelectAll)) {
        selectAll();
        return true;
    }
    if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != Qt::NoModifier) {
        return false;
    }
    switch (event.key()) {
    case Qt::Key_F:
        fitSelection();
        return true;
    case Qt::Key_A:
    case Qt::Key_Home:
        fitAll();
        return true;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomByKey(keyZoom);
        return true;
    case Qt::Key_Minus:
        zoomByKey(1 / keyZoom);
        return true;
    case Qt::Key_Escape:
        if (m_gesture != Gesture::None) {
            cancel();
        } else {
            selectNone();
        }
        return true;
    default:
        return moveByKey(event);
    }
}

bool ViewportControl::moveByKey(const QKeyEvent &event)
{
    const QPointF way = directionOf(event.key()) * keyStep;
    if (way.isNull()) {
        return false;
    }
    if (event.modifiers().testFlag(Qt::ShiftModifier)) {
        m_camera.pan(-way); // the eye goes where the arrow points
    } else {
        m_camera.orbit(way);
    }
    moved();
    return true;
}

void ViewportControl::zoomByKey(float factor)
{
    m_camera.zoom(factor, QPointF(m_camera.size().width() / 2, m_camera.size().height() / 2));
    moved();
}

void ViewportControl::fitSelection()
{
    const SceneBox box = m_scene->boundsOf(m_scene->mark(m_selection->ids()));
    m_camera.fit(box.isEmpty() ? m_scene->bounds() : box);
    moved();
}

void ViewportControl::fitAll()
{
    m_camera.fit(m_scene->bounds());
    m_looksAtAll = true;
    Q_EMIT changed();
}

void ViewportControl::selectAll()
{
    QList<quint64> ids;
    for (const SceneItem &item : m_scene->items()) {
        ids.append(item.id);
    }
    for (const SceneplateImages::Plate &plate : m_scene->plates()) {
        ids.append(plate.id);
    }
    m_selection->choose(ids, How::Replace);
}

void ViewportControl::selectNone()
{
    m_selection->choose({}, How::Replace);
}
