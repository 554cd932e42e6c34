#include "frame/nkMetadataQuickActions.h"

#include "actions/nkMetadataActions.h"

#include <nkQt4Ext/QNKToolBar.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QAction>
#include <QCoreApplication>
#include <QMainWindow>
#include <QMenu>
#include <QToolButton>

namespace {

/// A text of the window.
QString text(const char *source)
{
    return QCoreApplication::translate("nkMetadataEditorModule", source);
}

QMenu *makeCreateMenu(QMainWindow *window)
{
    nkMetadataActions *const actions = nkMetadataActions::instance();
    auto *menu = new QMenu(text(QT_TRANSLATE_NOOP("nkMetadataEditorModule", "Create")), window);
    menu->addAction(actions->createSetAction());
    menu->addMenu(actions->createEntryMenu());
    return menu;
}

/// Without this a click does nothing, and only a long press opens the menu.
void openMenuOnClick(const QNKToolBar *bar, const QAction *action)
{
    if (auto *button = qobject_cast<QToolButton *>(bar->children().last())) {
        QObject::connect(action, &QAction::triggered, button, &QToolButton::showMenu);
    }
}

} // namespace

QAction *nkMetadataQuickActions::makeCreateAction(QMainWindow *window)
{
    // Names are made on the heap: the host may keep them longer than the plug-in's literals live.
    auto *action = new QAction(nkIconManager::getIcon(QString(QLatin1String("CreateNew")), QString()),
                               text(QT_TRANSLATE_NOOP("nkMetadataEditorModule", "Create")), window);
    action->setStatusTip(
        text(QT_TRANSLATE_NOOP("nkMetadataEditorModule", "Create a new metadata set or entry")));
    action->setToolTip(text(QT_TRANSLATE_NOOP("nkMetadataEditorModule", "Create Sets or Entries")));
    action->setMenu(makeCreateMenu(window));
    return action;
}

QNKToolBar *nkMetadataQuickActions::makeBar(QMainWindow *window, QAction *createAction)
{
    nkMetadataActions *const actions = nkMetadataActions::instance();
    auto *bar = new QNKToolBar(text(QT_TRANSLATE_NOOP("nkMetadataEditorModule", "MetadataEditorActions")),
                               window);
    bar->setObjectName(QStringLiteral("QuickActionBar"));
    bar->setAllowedAreas(Qt::BottomToolBarArea);
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setContextMenuPolicy(Qt::ActionsContextMenu);
    window->addToolBar(Qt::BottomToolBarArea, bar);
    bar->addAction(createAction);
    openMenuOnClick(bar, createAction);
    // The context menu has the two deletions the other way round; both orders are meant.
    bar->addActions({actions->duplicateAction(), actions->deleteAction(), actions->selectAllEditorsAction(),
                     actions->assignToLastSelectionAction(), actions->removeSelectedAssignmentsAction(),
                     actions->removeAllAssignmentsAction(), actions->deleteAllEntriesAction(),
                     actions->deleteUnassignedSetsAction(), actions->focusModeAction()});
    return bar;
}
