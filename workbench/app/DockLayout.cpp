#include "DockLayout.h"

#include <QDockWidget>
#include <QLayout>
#include <QMainWindow>
#include <QStyle>

#include <algorithm>

using Place = DockLayout::Place;

namespace {

/// From left to right and from above to below: the order in which they are made.
const QList<Place> places{Place::SceneGraph, Place::Editors, Place::Middle, Place::Modules, Place::Bottom};

/// Of the window's width; more where the font makes the names of the tabs wider.
constexpr int leftWidth = 330;
constexpr int tabBorders = 4;
/// What the module below the middle needs so that its lists and its table show some rows each.
constexpr int modulesHeight = 510;
/// Of the height that the middle and the modules share, where there is more than enough.
constexpr double modulesShare = 0.5;
constexpr double sceneGraphShare = 0.55;
constexpr int bottomHeight = 160;
/// The menu and the status line have it.
constexpr int frameHeight = 60;
/// Below these heights of the window the modules stand behind the middle, and the lists behind the scene graph.
constexpr int leastForModules = 720;
constexpr int leastForLists = 520;

/// What the tabs of these docks need so that their names are read.
int tabsWidth(const QList<QDockWidget *> &docks)
{
    int width = 0;
    for (const QDockWidget *dock : docks) {
        width += dock->fontMetrics().horizontalAdvance(dock->windowTitle())
                 + dock->style()->pixelMetric(QStyle::PM_TabBarTabHSpace) + tabBorders;
    }
    return width;
}

Qt::DockWidgetArea areaOf(Place place)
{
    switch (place) {
    case Place::SceneGraph:
    case Place::Editors:
        return Qt::LeftDockWidgetArea;
    case Place::Bottom:
        return Qt::BottomDockWidgetArea;
    case Place::Middle:
    case Place::Modules:
        break;
    }
    return Qt::RightDockWidgetArea;
}

} // namespace

DockLayout::DockLayout(QMainWindow *window) : m_window(window)
{
    window->setDockNestingEnabled(true);
    window->setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
    // The left column is as high as the window.
    window->setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
}

void DockLayout::add(QDockWidget *dock, Place place, bool startHidden)
{
    m_entries.append({dock, place, startHidden});
    reset();
}

void DockLayout::reset()
{
    for (QDockWidget *dock : docks()) {
        dock->setFloating(false);
        m_window->removeDockWidget(dock);
    }
    for (const Place place : places) {
        put(place);
    }
    for (const Entry &entry : qAsConst(m_entries)) {
        if (entry.dock) {
            entry.dock->setVisible(!entry.startHidden);
        }
    }
    // Tabs of docks that were hidden are made by the layout; before that nothing can be raised.
    m_window->layout()->activate();
    raiseFronts();
    share();
}

/// The modules last: where they share their place, they are what a person works with.
void DockLayout::raiseFronts() const
{
    const auto raise = [this](const auto &isMeant) {
        for (int i = m_entries.size() - 1; i >= 0; --i) {
            const Entry &entry = m_entries.at(i);
            if (entry.dock && !entry.startHidden && isMeant(entry.place)) {
                entry.dock->raise();
            }
        }
    };
    raise([this](Place place) { return fitted(place) == place; });
    raise([](Place place) { return place == Place::Modules; });
}

Place DockLayout::fitted(Place place) const
{
    const int height = m_window->height();
    if (place == Place::Modules && height < leastForModules) {
        return Place::Middle;
    }
    return place == Place::Editors && height < leastForLists ? Place::SceneGraph : place;
}

void DockLayout::put(Place place)
{
    QDockWidget *previous = nullptr;
    for (QDockWidget *dock : docksAt(place)) {
        if (previous) {
            m_window->tabifyDockWidget(previous, dock);
        } else {
            m_window->addDockWidget(areaOf(place), dock, Qt::Vertical);
        }
        previous = dock;
    }
}

void DockLayout::share() const
{
    const auto split = [this](QList<QDockWidget *> docks, QList<int> sizes, Qt::Orientation orientation) {
        for (int i = docks.size() - 1; i >= 0; --i) {
            if (!docks.at(i) || docks.at(i)->isHidden()) {
                docks.removeAt(i);
                sizes.removeAt(i);
            }
        }
        m_window->resizeDocks(docks, sizes, orientation);
    };
    const int height = m_window->height() - frameHeight;
    const int above = int(height * sceneGraphShare);
    const int modules = std::min(std::max(modulesHeight, int(height * modulesShare)), height - 1);
    const int left = std::max(leftWidth, tabsWidth(docksAt(Place::Editors)));
    QDockWidget *right = firstAt(Place::Middle) ? firstAt(Place::Middle) : firstAt(Place::Modules);
    split({firstAt(Place::SceneGraph), right}, {left, m_window->width() - left}, Qt::Horizontal);
    split({firstAt(Place::SceneGraph), firstAt(Place::Editors)}, {above, height - above}, Qt::Vertical);
    split({firstAt(Place::Middle), firstAt(Place::Modules)}, {height - modules, modules}, Qt::Vertical);
    split({firstAt(Place::Bottom)}, {bottomHeight}, Qt::Vertical);
}

QStringList DockLayout::names() const
{
    QStringList names;
    for (const QDockWidget *dock : docks()) {
        names.append(dock->objectName());
    }
    names.sort();
    return names;
}

QList<QDockWidget *> DockLayout::docks() const
{
    QList<QDockWidget *> docks;
    for (const Entry &entry : m_entries) {
        if (entry.dock) {
            docks.append(entry.dock);
        }
    }
    return docks;
}

QList<QDockWidget *> DockLayout::docksAt(Place place) const
{
    QList<QDockWidget *> docks;
    for (const Entry &entry : m_entries) {
        if (entry.dock && fitted(entry.place) == place) {
            docks.append(entry.dock);
        }
    }
    return docks;
}
