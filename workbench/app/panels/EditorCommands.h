#pragma once

#include "EditorCommandTable.h"
#include "SceneEditing.h"

#include <QMap>
#include <QObject>

class EditorPanel;
class QAction;
class QMenu;
class QToolBar;
class QWidget;

/// The commands of an editor's panel: their actions, when they can be used, and what they do to the selection.
/// New and moved objects are selected by them as by a person's gesture, new ones with their names being edited.
class EditorCommands : public QObject
{
    Q_OBJECT
public:
    /// @param panel whose selection the commands work on; owns this
    explicit EditorCommands(EditorPanel *panel);
    ~EditorCommands() override;

    /// Null where the panel has no such command.
    QAction *action(EditorCommand command) const { return m_actions.value(command); }
    /// Those that the panel shows as buttons.
    QList<QAction *> toolBarActions() const;
    /// All of them, in groups.
    void fillMenu(QMenu *menu) const;
    /// Enables what can be done with the present selection; the panel calls it when that has changed.
    void update();
    /// Carries out what a person has asked for by a drop.
    void move(const QList<quint64> &ids, quint64 parentId, int position);

private:
    void tellFixedTree();
    QAction *makeAction(const EditorCommandRow &row);
    QList<quint64> chosen() const;
    void run(EditorCommand command);
    void create(nkObjectType type);
    void createSceneplate();
    void chooseImage();
    void setInFront(bool on);
    void moveTo();
    void remove();
    quint64 nextAfterRemoval(const QList<quint64> &ids) const;
    /// Tells a refusal, or selects what came of it. @param rename whether its name is to be edited
    void finish(const SceneEditing::Outcome &outcome, bool rename = false);
    nkObjectType groupType() const;

    EditorPanel *m_panel;
    QVector<EditorCommandRow> m_rows;
    QMap<EditorCommand, QAction *> m_actions;
};
