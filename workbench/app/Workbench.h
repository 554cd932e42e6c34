#pragma once

#include "PluginLoader.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>

class Autosave;
class FileCommands;
class ImportReportDialog;
class MainWindow;
class MainWindowService;
class Preferences;
class SceneSession;
class StartScreen;
class TaskProgress;

namespace interchange {
class SetFileCodec;
} // namespace interchange

/// The application put together: the document and its services, the main window, the plug-ins, and what
/// runs between them. Made after the QApplication and destroyed before it, in the order that plug-ins need.
class Workbench : public QObject
{
    Q_OBJECT
public:
    Workbench();
    /// Closes editors, clears document, undo stack and clipboards, takes the module windows out of their
    /// frames, and unloads the plug-ins.
    ~Workbench() override;

    /// Loads the plug-ins of the folder beside the executable.
    void loadPlugins();
    /// Opens a scene in place of the present one. Where the file cannot be read, the present one stays.
    /// @return an empty text, or one sentence that says what failed, where, and what to do
    QString open(const QString &path);
    /// Shows the window: in the editor what the open scene has of metadata, the start screen where no scene is open.
    void show();
    /// Asks about the scenes that a program which ended unexpectedly has left, and opens one where that is wanted.
    /// @return whether one was opened
    bool offerRecovery();
    /// Begins as a person does: with a scene, and the window as it was left the last time. Where there is something to
    /// recover, that is asked first, over the window and once the event loop runs; then the scene is opened, unless one
    /// was restored, which it would put away. What fails then is told over the window.
    /// @param path empty for no scene
    /// @return like open; where it is not empty, nothing is shown
    QString start(const QString &path);
    /// The sample scene that ships with the workbench.
    static QString sampleScene();

    MainWindow *window() const { return m_window.get(); }
    SceneSession *session() const { return m_session.get(); }
    Autosave *autosave() const { return m_autosave.get(); }

private:
    void createFileMenu();
    void createStartScreen();
    void tellImport() const;
    void searchAgain() const;
    void showScene();
    void showContent();
    static void showMetadata();
    void noteFile(const QString &path);
    void showImportReport();
    bool hasOddities() const;
    void showReport(int level, const QString &title, const QString &text);

    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<MainWindowService> m_windowService;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<interchange::SetFileCodec> m_setCodec;
    std::unique_ptr<TaskProgress> m_progress;
    PluginLoader m_plugins;
    std::unique_ptr<SceneSession> m_session;
    std::unique_ptr<FileCommands> m_files;
    /// The window's.
    StartScreen *m_start = nullptr;
    std::unique_ptr<Autosave> m_autosave;
    QPointer<ImportReportDialog> m_importReport;
};
