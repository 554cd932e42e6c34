#pragma once

#include "OrbitCamera.h"
#include "SceneGizmos.h"
#include "ViewportSelection.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;
class ViewportScene;

/// What a person does in the viewport: moves the eye, and selects. Draws nothing; whoever draws asks it for the
/// camera and for the rubber band.
///
/// The left button does what the tool says; a click selects with every tool. With any tool the middle button, and the
/// left one with Alt, turn the view, the middle one with Shift moves it, and the wheel comes closer.
class ViewportControl : public QObject
{
    Q_OBJECT
public:
    enum class Tool { Select, Orbit, Pan };

    /// Both outlive the control.
    ViewportControl(ViewportScene *scene, ViewportSelection *selection, QObject *parent = nullptr);
    ~ViewportControl() override;

    const OrbitCamera &camera() const { return m_camera; }
    /// Of the viewport. As long as nobody has moved the eye, it keeps looking at everything.
    void setSize(const QSizeF &size);
    Tool tool() const { return m_tool; }
    void setTool(Tool tool) { m_tool = tool; }
    /// The gizmos that are shown and can be selected.
    SceneGizmos::Kinds gizmos() const { return m_gizmos; }
    void setShown(SceneGizmos::Kind kind, bool shown);
    /// The rubber band, in logical pixels; empty while there is none.
    QRectF band() const { return m_gesture == Gesture::Band ? m_band : QRectF(); }

    void press(const QMouseEvent &event);
    void move(const QMouseEvent &event);
    void release(const QMouseEvent &event);
    void wheel(const QWheelEvent &event);
    /// @return whether the key means anything here
    bool key(const QKeyEvent &event);
    /// Ends what the mouse began, without an effect.
    void cancel();

    /// Looks at what is selected, or at everything where nothing is that can be seen.
    void fitSelection();
    void fitAll();
    void selectAll();
    void selectNone();

Q_SIGNALS:
    /// What is seen is different.
    void changed();

private:
    enum class Gesture { None, Click, Band, Orbit, Pan };

    Gesture dragOf(const QMouseEvent &event) const;
    void drag(const QPointF &place);
    void click(const QPointF &place);
    bool moveByKey(const QKeyEvent &event);
    void zoomByKey(float factor);
    void lookAtAll();
    void moved();

    ViewportScene *m_scene;
    ViewportSelection *m_selection;
    OrbitCamera m_camera;
    Tool m_tool = Tool::Select;
    SceneGizmos::Kinds m_gizmos = SceneGizmos::Cameras | SceneGizmos::Lights;
    Gesture m_gesture = Gesture::None;
    Gesture m_drag = Gesture::None; ///< what a click becomes when the mouse moves
    Qt::MouseButton m_button = Qt::NoButton;
    ViewportSelection::How m_how = ViewportSelection::How::Replace;
    QPointF m_pressed;
    QPointF m_last;
    QRectF m_band;
    bool m_looksAtAll = true;
};
