#pragma once

#include <QStringList>

class QMainWindow;

/// How a person has left the main window: its size, its docks, kept in the preferences.
namespace LayoutMemory {

/// @param docks the names of the window's docks, sorted
void store(const QMainWindow *window, const QStringList &docks);

/// Puts the window back as it was stored. What is damaged, of another version, or of a window with other docks is
/// left alone; a dock that floats where no screen is any more comes back into the window.
/// @return whether there was something to put back
bool restore(QMainWindow *window, const QStringList &docks);

} // namespace LayoutMemory
