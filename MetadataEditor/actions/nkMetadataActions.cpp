#include "actions/nkMetadataActions.h"

#include "actions/nkMetadataActionTable.h"
#include "actions/nkMetadataActionsHandler.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdNode.h>
#include <nkQt4Ext/nkIconCache.h>
#include <nkQt4Ext/nkIconManager.h>

using namespace nkMetadataAction;

namespace {

nkMetadataActions *theActions = nullptr;

// Names are made on the heap: the host may keep them longer than the plug-in's literals live.
QIcon iconOf(const Icon &icon)
{
    switch (icon.source) {
    case IconSource::Named:
        return nkIconManager::getIcon(QString::fromLatin1(icon.name), QString::fromLatin1(icon.category));
    case IconSource::Path:
        return QIcon(nkIconManager::get(QString::fromLatin1(icon.name)));
    case IconSource::Tag:
        return nkIconCache::Metadata::getMetadataTagIcon();
    case IconSource::GraphFocused:
        return nkIconCache::Metadata::getGraphFocusedIcon();
    case IconSource::None:
        break;
    }
    return QIcon();
}

void setUp(QAction *action, const QString &text, QObject *parent, const QIcon &icon,
           const QKeySequence &shortcut)
{
    action->setText(text);
    action->setParent(parent);
    if (!icon.isNull()) {
        action->setIcon(icon);
    }
    if (!shortcut.isEmpty()) {
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        action->setShortcut(shortcut);
    }
}

bool isEditableCarrier(const nkdObject &object)
{
    const nkdNode node(object);
    return node.isEditable() && nkMetadataService::the().canHaveMetadata(node);
}

} // namespace

nkMetadataActions::nkMetadataActions(QObject *parent)
    : QObject(parent), m_widget(qobject_cast<QWidget *>(parent))
{
    theActions = this;
    createActions();
    createFocusMode();
    createMenus();
    m_handler = new nkMetadataActionsHandler(this);
    // After the handler's own connection, so that this rule has the last word.
    connect(&nkMetadataService::the(), &nkMetadataService::selectionChanged, this,
            &nkMetadataActions::updateCreateEntryMenu);
}

nkMetadataActions::~nkMetadataActions()
{
    if (theActions == this) {
        theActions = nullptr;
    }
}

nkMetadataActions *nkMetadataActions::instance()
{
    return theActions;
}

QAction *nkMetadataActions::action(Id id)
{
    return id >= 0 && id < Count ? &m_actions[size_t(id)] : nullptr;
}

QMenu *nkMetadataActions::menu(Menu menu)
{
    return menu >= 0 && menu < MenuCount ? &m_menus[size_t(menu)] : nullptr;
}

void nkMetadataActions::createActions()
{
    separatorAction()->setSeparator(true);
    separatorAction()->setParent(parent());
    for (const Row &row : rows()) {
        setUp(action(row.id), tr(row.text), parent(), iconOf(row.icon), row.shortcut.sequence());
    }
    for (const Row &row : rows()) {
        if (row.toolTip) {
            action(row.id)->setToolTip(tr(row.toolTip));
        }
    }
}

void nkMetadataActions::createFocusMode()
{
    QAction *focusMode = focusModeAction();
    focusMode->setCheckable(true);
    focusMode->setIconVisibleInMenu(false);
    focusMode->setStatusTip(tr("Display content of the focused graph in the table."));
}

void nkMetadataActions::createMenus()
{
    for (const MenuRow &row : menuRows()) {
        QList<QAction *> actions;
        for (const Id id : row.actions) {
            actions.append(action(id));
        }
        menu(row.menu)->setTitle(tr(row.title));
        menu(row.menu)->setTearOffEnabled(true);
        menu(row.menu)->addActions(actions);
    }
}

void nkMetadataActions::updateCreateEntryMenu(const QList<nkdObject> &selection)
{
    bool editableSet = false;
    bool metadataObject = false;
    nkdMetadataSet set;
    for (const nkdObject &object : selection) {
        if (object.getType() == nkObjectType::MetadataSet) {
            // Only the ids: making a handle costs more than asking it.
            static_cast<nkdObject &>(set) = object;
            editableSet = editableSet || set.isEditable();
        } else {
            metadataObject = metadataObject || isEditableCarrier(object);
        }
        if (editableSet && metadataObject) {
            break;
        }
    }
    createEntryMenu()->setEnabled(editableSet != metadataObject);
}
