#pragma once

#include <interchange/SceneFile.h>

#include <QObject>

class MainWindow;
class SceneSession;

/// What the File menu does, with its questions: whatever would lose changes asks first, and an open editor is
/// committed before anything happens.
class FileCommands : public QObject
{
    Q_OBJECT
public:
    /// @param window, session not owned; outlive this
    FileCommands(MainWindow *window, SceneSession *session, QObject *parent = nullptr);

    /// Opens a scene that a person has chosen; a failure is told.
    void open(const QString &path);
    void chooseAndOpen();
    /// An empty scene.
    void makeNew();
    /// No scene any more.
    void close();
    /// @return whether the scene is saved now
    bool save();
    bool saveAs();
    /// Back to the file, as it is now.
    void revert();
    /// Whether the present scene may go: it has no changes, or the person has saved them or does not want them.
    bool mayLeave();

private:
    bool saveTo(const QString &path);
    bool overwriteOrSaveAs(const QString &path, const QString &changedFile);
    /// What a person has to know of a save that went well.
    void tellSaved(const SceneFile::Saved &saved);
    QString suggestedPath() const;
    QString folder() const;

    MainWindow *m_window;
    SceneSession *m_session;
};
