#pragma once

#include <QDockWidget>

class QAction;

/// A dock with a panel and an action for the View menu: checked while the panel is there, it hides the panel where
/// it is seen, and otherwise shows it, brings it in front of others and gives it the focus.
class PanelDock : public QDockWidget
{
    Q_OBJECT
public:
    /// @param menuText the title with a mnemonic that no other entry of the View menu has
    /// @param objectName what the dock is called in saved layouts; never translated
    /// @param icon of the category "General"
    PanelDock(const QString &title, const QString &menuText, const QString &objectName, const QString &icon,
              QWidget *parent = nullptr);
    ~PanelDock() override;

    QAction *action() const { return m_action; }

private:
    void hideOrShow();
    void tellState();

    QAction *m_action;
};
