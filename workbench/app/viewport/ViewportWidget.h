#pragma once

#include "SceneRenderer.h"

#include <QOpenGLWidget>

class ViewportControl;
class ViewportScene;
class ViewportSelection;

/// The picture of the scene, drawn with OpenGL; what a person does in it goes to the control. To be made only where
/// OpenGlCheck finds nothing missing.
class ViewportWidget : public QOpenGLWidget
{
    Q_OBJECT
public:
    /// All three outlive the widget.
    ViewportWidget(ViewportScene *scene, ViewportSelection *selection, ViewportControl *control,
                   QWidget *parent = nullptr);
    ~ViewportWidget() override;

Q_SIGNALS:
    /// The graphics card does not understand what it is to do; nothing will be drawn.
    void failed();

protected:
    void initializeGL() override;
    void paintGL() override;
    void resizeGL(int width, int height) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    bool event(QEvent *event) override;

private:
    void prepare();
    SceneRenderer::Frame frame() const;
    SceneRenderer::Look look() const;
    void releaseGraphics();

    ViewportScene *m_scene;
    ViewportSelection *m_selection;
    ViewportControl *m_control;
    SceneRenderer m_renderer;
    int m_uploaded = 0; ///< the scene's revision
    bool m_isSelectionStale = true;
    bool m_isPlateSelected = false;
};
