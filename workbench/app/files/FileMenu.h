#pragma once

#include <QObject>

class FileCommands;
class QAction;
class QMenu;
class QWidget;
class SceneSession;

/// The File menu: its actions, and when they make sense.
class FileMenu : public QObject
{
    Q_OBJECT
public:
    /// Fills the menu. @param session, commands outlive this
    FileMenu(QMenu *menu, SceneSession *session, FileCommands *commands, QObject *parent = nullptr);

Q_SIGNALS:
    void reportRequested();
    void quitRequested();

private:
    QAction *add(const QString &text, const QKeySequence &shortcut, const QString &name);
    void addOpening(FileCommands *commands);
    void addSaving(FileCommands *commands);
    void addLeaving(FileCommands *commands);
    void update();

    QMenu *m_menu;
    SceneSession *m_session;
    QList<QAction *> m_saving;
    QAction *m_revert = nullptr;
    QAction *m_close = nullptr;
    QAction *m_report = nullptr;
};
