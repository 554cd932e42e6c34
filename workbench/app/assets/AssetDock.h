#pragma once

#include "AssetDatabase.h"

#include <QDockWidget>

class AssetPanel;
class QAction;

/// The asset panel in its dock, with the database behind it. Comes to the front when somebody asks to find assets.
class AssetDock : public QDockWidget
{
    Q_OBJECT
public:
    explicit AssetDock(QWidget *parent = nullptr);

    AssetPanel *panel() const { return m_panel; }
    AssetDatabase &database() { return m_database; }
    /// For menus, checked while the panel is there: hides it where it is seen, and otherwise shows it, brings it to
    /// the front and gives it the focus.
    QAction *action() const { return m_action; }
    void bringToFront();

private:
    void chooseDatabase();
    void find(const QStringList &assetIds);
    void hideOrShow();
    void tellState();

    AssetDatabase m_database;
    AssetPanel *m_panel;
    QAction *m_action;
};
