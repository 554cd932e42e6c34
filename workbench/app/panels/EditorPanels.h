#pragma once

#include <QList>

class EditorPanel;
class QAction;
class QDockWidget;
class QMainWindow;

/// The editors' panels in their docks at the left of the main window: the scene graph above, the others as
/// tabs below it.
class EditorPanels
{
public:
    /// Makes the panels and their docks; the window owns them.
    explicit EditorPanels(QMainWindow *window);

    const QList<EditorPanel *> &panels() const { return m_panels; }
    /// The docks, in the order of the panels.
    const QList<QDockWidget *> &docks() const { return m_docks; }
    /// For menus, checked while the panel is there: each hides its panel where it is seen, and otherwise shows
    /// it, brings it in front of the others and gives it the focus. Owned by the docks.
    const QList<QAction *> &actions() const { return m_actions; }

private:
    QList<EditorPanel *> m_panels;
    QList<QDockWidget *> m_docks;
    QList<QAction *> m_actions;
};
