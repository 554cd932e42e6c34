#pragma once

#include "DockLayout.h"

#include <QMainWindow>
#include <QString>
#include <QStringList>

#include <functional>

class EditorPanel;
class ModuleFrame;
class QAction;
class QDockWidget;
class QMenu;

/// The main window of the workbench: menus, the panels of the scene's editors at the left, what shows the scene
/// and the frames of the modules beside them, a status line.
///
/// It holds no document of its own and knows nothing of files: who does fills the File menu.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Places a module's window in a dock and lists it in the View menu, under its group.
    void addModule(const QString &name, const QString &group, QWidget *window, const QIcon &icon,
                   const QString &shortTitle, bool startHidden);
    /// Places a panel and lists its action in the View menu, after those of the editors.
    /// @param dock named, so that its place can be remembered
    /// @param startHidden not seen until a person asks for it
    void addPanel(QDockWidget *dock, QAction *action, DockLayout::Place place = DockLayout::Place::SceneGraph,
                  bool startHidden = false);
    /// From now on the window stands as it was left the last time, and remembers how it is left this time. Once, when
    /// all panels and modules are there. Without this it stands as laid out, the same everywhere.
    void rememberLayout();
    /// Brings the frames of the modules into view.
    void showModules();
    /// Takes the window of every module out of its frame, so that the plug-ins can be unloaded.
    void releaseModules();

    /// Names the open scene in the title. @param path absolute; empty for a scene without a file
    void showScene(const QString &path);
    /// Says in the title that no scene is open.
    void showNoScene();
    /// Shows a sentence in the status line for long enough to be read. Plain text.
    void showStatus(const QString &text);
    /// Shows a failure in a box over the window, once the event loop runs. Plain text.
    void showError(const QString &title, const QString &text);

    /// The File menu, for those who know what to do with files. Owned.
    QMenu *fileMenu() const { return m_file; }
    /// Asked before the window closes; false keeps it open. By default it may always close.
    void setCloseGuard(const std::function<bool()> &mayClose) { m_mayClose = mayClose; }

    /// The panels of the scene's editors: scene graph, materials, cameras, lights, sceneplates. Owned.
    const QList<EditorPanel *> &panels() const { return m_panels; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void createEditMenu();
    void createViewMenu();
    void createPanels();
    void showPreferences();
    void updateUndoActions();
    QMenu *groupMenu(const QString &group);

    QAction *m_undo = nullptr;
    QAction *m_redo = nullptr;
    QMenu *m_file;
    QMenu *m_view = nullptr;
    /// The separator after the panels.
    QAction *m_endOfPanels = nullptr;
    /// The separator before what concerns all panels.
    QAction *m_endOfModules = nullptr;
    DockLayout m_layout;
    bool m_remembersLayout = false;
    QList<EditorPanel *> m_panels;
    QList<ModuleFrame *> m_frames;
    std::function<bool()> m_mayClose;
};
