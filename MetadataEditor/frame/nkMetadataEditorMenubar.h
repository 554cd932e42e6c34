#pragma once

#include <QMenu>
#include <QMenuBar>

class nkMetadataActions;

/// The menu bar of the editor window: five menus of the catalogue's actions and sub-menus, built once.
class nkMetadataEditorMenubar : public QMenuBar
{
    Q_OBJECT
public:
    /// The catalogue (nkMetadataActions::instance()) has to exist and to outlive the bar's last use.
    explicit nkMetadataEditorMenubar(QWidget *parent);
    ~nkMetadataEditorMenubar() override;

private:
    void add(QMenu *menu, const QString &title);
    void fillEdit(nkMetadataActions *actions);
    void fillSelection(nkMetadataActions *actions);

    QMenu m_fileMenu;
    QMenu m_editMenu;
    QMenu m_createMenu;
    QMenu m_selectionMenu;
    QMenu m_windowMenu;
};
