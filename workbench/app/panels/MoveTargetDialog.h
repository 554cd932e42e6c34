#pragma once

#include "EditorModule.h"

#include <QDialog>
#include <QList>

class QNKSearchBox;
class QPushButton;
class SceneObjectModel;
class SceneObjectView;

/// Asks a person below which object of a tree others are to be moved.
class MoveTargetDialog : public QDialog
{
    Q_OBJECT
public:
    /// @param moved what moves: neither these nor what is below them can be chosen
    MoveTargetDialog(EditorModule module, const QList<quint64> &moved, QWidget *parent = nullptr);
    ~MoveTargetDialog() override;

    /// What was chosen, when the dialog was accepted; 0 for the top level.
    quint64 target() const { return m_target; }

    SceneObjectView *view() const { return m_view; }
    QPushButton *moveButton() const { return m_move; }
    QPushButton *topLevelButton() const { return m_topLevel; }

private:
    void createButtons();
    void layOut();
    void updateButton();
    void chooseCurrent();
    bool mayBeTarget(quint64 id) const;

    const EditorModule m_module;
    const QList<quint64> m_moved;
    quint64 m_target = 0;
    SceneObjectModel *m_model;
    SceneObjectView *m_view;
    QNKSearchBox *m_search;
    QPushButton *m_move = nullptr;
    QPushButton *m_topLevel = nullptr;
};
