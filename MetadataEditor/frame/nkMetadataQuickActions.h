#pragma once

class QAction;
class QMainWindow;
class QNKToolBar;

/// The tool bar at the lower edge of the editor window, made of the catalogue's commands.
namespace nkMetadataQuickActions {

/// "Create", with a menu of what can be created. @param window owns both
QAction *makeCreateAction(QMainWindow *window);
/// The bar, in its place in the window, which owns it. A click on "Create" opens its menu at once.
QNKToolBar *makeBar(QMainWindow *window, QAction *createAction);

} // namespace nkMetadataQuickActions
