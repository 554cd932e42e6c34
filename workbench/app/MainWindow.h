#pragma once

#include <QMainWindow>
#include <QString>
#include <QStringList>

class EditorPanel;
class ModuleFrame;
class QAction;
class QDockWidget;
class QMenu;

/// The main window of the workbench: menus, the panels of the scene's editors at the left, the frames of the
/// modules beside them, a status line.
///
/// It tells what the user asked for by signals and holds no document of its own.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Places a module's window in a dock and lists it in the View menu, under its group.
    void addModule(const QString &name, const QString &group, QWidget *window, const QIcon &icon,
                   const QString &shortTitle, bool startHidden);
    /// Places a panel behind that of the scene graph and lists its action in the View menu, after theirs.
    void addPanel(QDockWidget *dock, QAction *action);
    /// Takes the window of every module out of its frame, so that the plug-ins can be unloaded.
    void releaseModules();

    /// Names the open scene in the title. @param path absolute; empty for a scene without a file
    void showScene(const QString &path);
    /// Shows a failure in a box over the window, once the event loop runs. Plain text.
    void showError(const QString &title, const QString &text);

    /// The default name filter of file dialogs for scenes.
    static QString sceneFileFilter();

    /// The panels of the scene's editors: scene graph, materials, cameras, lights, sceneplates. Owned.
    const QList<EditorPanel *> &panels() const { return m_panels; }

Q_SIGNALS:
    /// The user chose a scene to open.
    void openRequested(const QString &path);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void createFileMenu();
    void createEditMenu();
    void createViewMenu();
    void createPanels();
    void showModules();
    void showPreferences();
    void shareSpace();
    void updateUndoActions();
    void chooseScene();
    QMenu *groupMenu(const QString &group);

    QAction *m_undo = nullptr;
    QAction *m_redo = nullptr;
    QMenu *m_view = nullptr;
    /// The separator after the panels.
    QAction *m_endOfPanels = nullptr;
    QList<EditorPanel *> m_panels;
    QList<ModuleFrame *> m_frames;
};
