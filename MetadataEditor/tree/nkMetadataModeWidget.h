#pragma once

#include <nkKernelServicesGUI/TreeMode.h>

#include <QWidget>

class QNKComboBox;
class QNKInlineButton;

/// The switch above a tree: chooses what the tree lists, and holds the choice. The combo box offers the lists
/// of the scene; the button beside it the objects of the host's last selection.
class nkMetadataModeWidget : public QWidget
{
    Q_OBJECT
public:
    /// Shows TreeMode::Sets.
    explicit nkMetadataModeWidget(QWidget *parent = nullptr, Qt::WindowFlags flags = {});
    ~nkMetadataModeWidget() override;

    TreeMode getMode() const { return m_mode; }
    /// Shows a mode and tells it; the mode it shows already is no change. While LastSelection is shown the
    /// combo box is disabled and keeps its choice, to which unchecking the button returns.
    void setMode(TreeMode mode);

Q_SIGNALS:
    /// The mode differs from before, whoever changed it.
    void modeChanged(TreeMode mode);

private:
    void createModeCombo();
    void createLastSelectionButton();

    TreeMode m_mode = TreeMode::Sets;
    QNKComboBox *m_modeCombo = nullptr;
    QNKInlineButton *m_lastSelectionButton = nullptr;
};
