#pragma once

#include <QDockWidget>

class MainWindow;
class QAction;
class SceneSession;
class ViewportPanel;

/// The viewport in its dock. Shows the scene of the session.
class ViewportDock : public QDockWidget
{
    Q_OBJECT
public:
    /// Places itself in the window and in its View menu. @param session outlives the dock
    ViewportDock(MainWindow *window, SceneSession *session);
    ~ViewportDock() override;

    ViewportPanel *panel() const { return m_panel; }
    /// For menus, checked while the viewport is there: hides it where it is seen, and otherwise shows it, brings it to
    /// the front and gives it the focus.
    QAction *action() const { return m_action; }
    void bringToFront();

private:
    void hideOrShow();
    void tellState();

    ViewportPanel *m_panel;
    QAction *m_action;
};
