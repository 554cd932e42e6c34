#include "EditorCommands.h"

#include "EditorPanel.h"
#include "MoveTargetDialog.h"
#include "SceneObjectModel.h"
#include "SceneObjectView.h"
#include "SceneplateImage.h"

#include "kernel/document/Document.h"

#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkUndoString.h>
#include <nkKernelServices/nkdSceneObject.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QAction>
#include <QFileInfo>
#include <QMenu>
#include <QSet>

#include <algorithm>

using kernel::Document;
using kernel::SceneplatePlacement;

namespace {

/// The words of a button: what it does, and by which key too.
QString toolTip(const EditorCommandRow &row)
{
    return row.key.isEmpty()
               ? row.help
               : QStringLiteral("%1 (%2)").arg(row.help, row.key.toString(QKeySequence::NativeText));
}

bool isInFront(quint64 id)
{
    return Document::the().sceneplatePlacement(id) == SceneplatePlacement::InFront;
}

bool isLocked(quint64 id)
{
    return nkdSceneObject(nkdObject(id)).getLocked();
}

bool startsGroup(EditorCommand command)
{
    return command == EditorCommand::GroupSelected || command == EditorCommand::MoveUp
           || command == EditorCommand::Rename || command == EditorCommand::Delete;
}

/// All but what changes an object where it stands.
bool changesTree(EditorCommand command)
{
    switch (command) {
    case EditorCommand::Rename:
    case EditorCommand::ChooseImage:
    case EditorCommand::InFront:
    case EditorCommand::Lock:
        return false;
    default:
        return true;
    }
}

} // namespace

EditorCommands::EditorCommands(EditorPanel *panel)
    : QObject(panel), m_panel(panel), m_rows(editorCommands(panel->module()))
{
    for (const EditorCommandRow &row : qAsConst(m_rows)) {
        m_actions.insert(row.command, makeAction(row));
    }
    connect(panel->view()->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &EditorCommands::update);
    connect(panel->model(), &QAbstractItemModel::dataChanged, this, &EditorCommands::update);
    connect(panel->model(), &SceneObjectModel::followed, this, &EditorCommands::update);
    connect(&Document::the(), &Document::treeFixedChanged, this, &EditorCommands::tellFixedTree);
    tellFixedTree();
}

EditorCommands::~EditorCommands() = default;

QAction *EditorCommands::makeAction(const EditorCommandRow &row)
{
    auto *action = new QAction(row.text, this);
    action->setObjectName(row.objectName);
    if (!row.icon.isEmpty()) {
        action->setIcon(nkIconManager::getIcon(row.icon, row.iconCategory));
    }
    action->setCheckable(row.command == EditorCommand::Lock || row.command == EditorCommand::InFront);
    action->setShortcut(row.key);
    action->setShortcutContext(Qt::WidgetShortcut);
    if (row.command == EditorCommand::Rename) {
        // The key is the view's own, which knows when it is pressed in a name that is being edited.
        action->setText(row.text + QStringLiteral("\tF2"));
    }
    m_panel->view()->addAction(action);
    connect(action, &QAction::triggered, this, [this, row] { run(row.command); });
    return action;
}

/// What is off in all of the scene says why.
void EditorCommands::tellFixedTree()
{
    const QString reason = SceneEditing::fixedTreeReason();
    for (const EditorCommandRow &row : qAsConst(m_rows)) {
        const bool isOff = !reason.isEmpty() && changesTree(row.command);
        QAction *one = action(row.command);
        one->setToolTip(isOff ? QStringLiteral("%1\n\n%2").arg(toolTip(row), reason) : toolTip(row));
        one->setStatusTip(isOff ? QString(reason).replace(QLatin1Char('\n'), QLatin1Char(' ')) : QString());
    }
    update();
}

QList<QAction *> EditorCommands::toolBarActions() const
{
    QList<QAction *> actions;
    for (const EditorCommandRow &row : m_rows) {
        if (row.isInToolBar) {
            actions.append(m_actions.value(row.command));
        }
    }
    return actions;
}

void EditorCommands::fillMenu(QMenu *menu) const
{
    for (const EditorCommandRow &row : m_rows) {
        if (startsGroup(row.command)) {
            menu->addSeparator();
        }
        menu->addAction(m_actions.value(row.command));
    }
}

/// What a search hides stays selected; a command leaves it alone.
QList<quint64> EditorCommands::chosen() const
{
    QList<quint64> ids = m_panel->selectedObjects();
    const SceneObjectModel *model = m_panel->model();
    if (model->isSearching()) {
        const auto isHidden = [model](quint64 id) { return !model->indexOf(id).isValid(); };
        ids.erase(std::remove_if(ids.begin(), ids.end(), isHidden), ids.end());
    }
    return ids;
}

void EditorCommands::update()
{
    const QList<quint64> ids = chosen();
    const quint64 current = m_panel->model()->idOf(m_panel->view()->currentIndex());
    const bool isFixed = Document::the().isTreeFixed();
    const auto enable = [this, isFixed](EditorCommand command, bool on) {
        if (QAction *one = action(command)) {
            one->setEnabled(on && !(isFixed && changesTree(command)));
        }
    };
    for (const EditorCommand command :
         {EditorCommand::NewGroup, EditorCommand::NewMaterial, EditorCommand::NewCamera,
          EditorCommand::NewLight, EditorCommand::NewSceneplate}) {
        enable(command, true);
    }
    for (const EditorCommand command : {EditorCommand::GroupSelected, EditorCommand::Ungroup,
                                        EditorCommand::MoveUp, EditorCommand::MoveDown, EditorCommand::MoveTo,
                                        EditorCommand::InFront, EditorCommand::Lock, EditorCommand::Delete}) {
        enable(command, !ids.isEmpty());
    }
    const auto isGroup = [](quint64 id) { return Document::the().typeOf(id) == nkObjectType::MaterialGroup; };
    enable(EditorCommand::Ungroup, std::any_of(ids.cbegin(), ids.cend(), isGroup));
    enable(EditorCommand::Rename, current != 0 && !isLocked(current));
    enable(EditorCommand::ChooseImage, current != 0 && !isLocked(current));
    action(EditorCommand::Lock)
        ->setChecked(!ids.isEmpty() && std::all_of(ids.cbegin(), ids.cend(), &isLocked));
    if (QAction *inFront = action(EditorCommand::InFront)) {
        inFront->setChecked(!ids.isEmpty() && std::all_of(ids.cbegin(), ids.cend(), &isInFront));
    }
}

void EditorCommands::run(EditorCommand command)
{
    QNKViewBase::commitOpenEditors();
    const QList<quint64> ids = chosen();
    switch (command) {
    case EditorCommand::NewGroup:
        return create(groupType());
    case EditorCommand::NewMaterial:
        return create(nkObjectType::Material);
    case EditorCommand::NewCamera:
        return create(nkObjectType::Camera);
    case EditorCommand::NewLight:
        return create(nkObjectType::Light);
    case EditorCommand::NewSceneplate:
        return createSceneplate();
    case EditorCommand::GroupSelected:
        return finish(SceneEditing::group(groupType(), ids), true);
    case EditorCommand::Ungroup:
        return finish(SceneEditing::ungroup(ids));
    case EditorCommand::MoveUp:
        return finish(SceneEditing::shift(ids, -1));
    case EditorCommand::MoveDown:
        return finish(SceneEditing::shift(ids, 1));
    case EditorCommand::MoveTo:
        return moveTo();
    case EditorCommand::Rename:
        return m_panel->view()->edit(m_panel->view()->currentIndex());
    case EditorCommand::ChooseImage:
        return chooseImage();
    case EditorCommand::InFront:
        return setInFront(action(command)->isChecked());
    case EditorCommand::Lock:
        SceneEditing::setLocked(ids, action(command)->isChecked());
        return update();
    case EditorCommand::Delete:
        return remove();
    }
}

nkObjectType EditorCommands::groupType() const
{
    return m_panel->module() == EditorModule::Material ? nkObjectType::MaterialGroup : nkObjectType::Node;
}

void EditorCommands::create(nkObjectType type)
{
    // In lists, which show one kind out of the whole tree, the new one comes at the end.
    // A view with the focus has a current row, whether or not a person has chosen it.
    const QList<quint64> ids = chosen();
    const quint64 current = m_panel->model()->idOf(m_panel->view()->currentIndex());
    const quint64 near = ids.contains(current) ? current : ids.value(ids.size() - 1);
    finish(SceneEditing::create(type, m_panel->model()->isTree() ? near : 0), true);
}

void EditorCommands::createSceneplate()
{
    const QString path = SceneplateImage::ask(m_panel->window(), tr("New Sceneplate"), QString());
    const QString fault = path.isEmpty() ? QString() : SceneplateImage::faultOf(path);
    if (!fault.isEmpty()) {
        nkLogService::the().reportError(tr("New Sceneplate"), fault);
    } else if (!path.isEmpty()) {
        const QString name = QFileInfo(path).completeBaseName();
        finish({{Document::the().createSceneplate(name, path, SceneplatePlacement::Behind)}, {}}, true);
    }
}

void EditorCommands::chooseImage()
{
    const quint64 id = m_panel->model()->idOf(m_panel->view()->currentIndex());
    const QString before = Document::the().sceneplateImage(id);
    const QString path = SceneplateImage::ask(m_panel->window(), tr("Choose Image"), before);
    const QString fault = path.isEmpty() ? QString() : SceneplateImage::faultOf(path);
    if (!fault.isEmpty()) {
        nkLogService::the().reportError(tr("Choose Image"), fault);
    } else if (!path.isEmpty()) {
        Document::the().setSceneplateImage(id, path);
    }
}

void EditorCommands::setInFront(bool on)
{
    const QList<quint64> ids = chosen();
    const auto locked = std::find_if(ids.cbegin(), ids.cend(), &isLocked);
    if (locked == ids.cend()) {
        const nkScopedMultiCommand command(
            nkUndoString(on ? tr("Bring Sceneplates to the Front") : tr("Send Sceneplates Behind")), true);
        for (const quint64 id : ids) {
            Document::the().setSceneplatePlacement(id, on ? SceneplatePlacement::InFront
                                                          : SceneplatePlacement::Behind);
        }
    } else {
        finish(SceneEditing::refusalFor(*locked));
    }
    update();
}

void EditorCommands::moveTo()
{
    const QList<quint64> ids = SceneEditing::topmost(chosen());
    MoveTargetDialog dialog(m_panel->module(), ids, m_panel->window());
    if (dialog.exec() == QDialog::Accepted) {
        move(ids, dialog.target(), -1);
    }
}

void EditorCommands::move(const QList<quint64> &ids, quint64 parentId, int position)
{
    QNKViewBase::commitOpenEditors();
    finish(SceneEditing::move(ids, parentId, position));
}

void EditorCommands::remove()
{
    const QList<quint64> ids = chosen();
    const quint64 next = nextAfterRemoval(ids);
    bool isDone = false;
    const SceneEditing::Outcome outcome = SceneEditing::remove(ids, &isDone);
    if (isDone) {
        m_panel->selectObjects(next != 0 ? QList<quint64>{next} : QList<quint64>());
    } else {
        finish(outcome);
    }
}

/// The row below the last that goes, or else the one above the first.
quint64 EditorCommands::nextAfterRemoval(const QList<quint64> &ids) const
{
    const SceneObjectModel *model = m_panel->model();
    const QSet<quint64> going(ids.cbegin(), ids.cend());
    const auto stays = [&going, model](QModelIndex index) {
        for (; index.isValid(); index = index.parent()) {
            if (going.contains(model->idOf(index))) {
                return false;
            }
        }
        return true;
    };
    QModelIndex start = m_panel->view()->currentIndex();
    if (!going.contains(model->idOf(start))) {
        start = model->indexOf(ids.value(0));
    }
    QModelIndex next = start;
    while (next.isValid() && !stays(next)) {
        next = m_panel->view()->indexBelow(next);
    }
    for (QModelIndex above = start; !next.isValid() && above.isValid();) {
        above = m_panel->view()->indexAbove(above);
        next = above.isValid() && stays(above) ? above : QModelIndex();
    }
    return model->idOf(next);
}

void EditorCommands::finish(const SceneEditing::Outcome &outcome, bool rename)
{
    if (!outcome.refusal.isEmpty()) {
        Q_EMIT m_panel->statusMessage(outcome.refusal);
    }
    if (!outcome.objects.isEmpty()) {
        m_panel->selectObjects(outcome.objects);
        if (rename) {
            m_panel->renameObject(outcome.objects.constFirst());
        }
    }
}
