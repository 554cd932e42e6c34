#pragma once

#include <QList>
#include <QPointer>
#include <QStringList>

class QDockWidget;
class QMainWindow;

/// Where the docks of the main window stand: at first, and again when a person asks for it.
///
///     +-------------+-----------------------+
///     | SceneGraph  | Middle                |
///     | (tabs)      |                       |
///     +-------------+-----------------------+
///     | Editors     | Modules               |
///     | (tabs)      |                       |
///     |             +-----------------------+
///     |             | Bottom                |
///     +-------------+-----------------------+
///
/// In a window that is too short for two above each other, those below become tabs of those above.
class DockLayout
{
public:
    enum class Place {
        SceneGraph, ///< a tab beside the scene graph's, behind it
        Editors,    ///< a tab among the lists of the scene's other objects
        Middle,     ///< large, in the upper half: what shows the scene
        Modules,    ///< wide, below the middle: the plug-ins' windows
        Bottom,     ///< a strip below the modules
    };

    /// @param window not owned; has no central widget
    explicit DockLayout(QMainWindow *window);

    /// Takes a dock in and lays all of them out. The first of a place is in front of those that follow.
    /// @param dock not owned; named, so that its place can be remembered
    void add(QDockWidget *dock, Place place, bool startHidden = false);
    /// Brings every dock back to its place, shown or hidden as at the start.
    void reset();
    /// Gives the places their shares of the window. The window has its size by now.
    void share() const;
    /// The docks' names, sorted.
    QStringList names() const;
    QList<QDockWidget *> docks() const;

private:
    struct Entry
    {
        QPointer<QDockWidget> dock;
        Place place;
        bool startHidden;
    };

    void put(Place place);
    void raiseFronts() const;
    Place fitted(Place place) const;
    QList<QDockWidget *> docksAt(Place place) const;
    QDockWidget *firstAt(Place place) const { return docksAt(place).value(0); }

    QMainWindow *m_window;
    QList<Entry> m_entries;
};
