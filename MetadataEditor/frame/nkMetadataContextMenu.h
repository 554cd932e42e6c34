#pragma once

#include <QMenu>

/// The context menu of both trees: actions and sub-menus of the catalogue, built once.
class nkMetadataContextMenu : public QMenu
{
    Q_OBJECT
public:
    /// The catalogue (nkMetadataActions::instance()) has to exist and to outlive the menu's last use.
    explicit nkMetadataContextMenu(QWidget *parent);
    ~nkMetadataContextMenu() override;
};
