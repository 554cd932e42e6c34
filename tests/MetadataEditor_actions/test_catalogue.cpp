#include "actions/nkMetadataActions.h"
#include "actions/nkMetadataActionsHandler.h"

#include <TestMain.h>
#include <kernel/document/Document.h>
#include <nkQt4Ext/nkIconCache.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QPainter>

#include <memory>

namespace {

const char focusModeToolTip[] =
    "<html><head/><body><p><b>Focus Mode:</b><br>The table displays the content of the graph which is "
    "currently in focus. Toggle content in table by using the dual graph function.<br>If Focus Mode is "
    "disabled, the table always displays the content of the current selection, regardless of if it's a "
    "single "
    "or dual graph.</p></body></html>";

/// A picture that tells what it was made from.
QPixmap picture(const QString &source)
{
    QPixmap pixmap(24, 24);
    pixmap.fill(QColor::fromRgb(qHash(source) & 0xffffffu));
    QPainter painter(&pixmap);
    painter.drawText(pixmap.rect(), source.right(4));
    return pixmap;
}

QString named(const char *name, const char *category)
{
    return QStringLiteral("name %1 of %2").arg(QLatin1String(name), QLatin1String(category));
}

QString path(const char *path)
{
    return QStringLiteral("path %1").arg(QLatin1String(path));
}

QString tagIcon()
{
    return QStringLiteral("tag");
}

QString focusIcon()
{
    return QStringLiteral("focus");
}

struct ExpectedAction
{
    const char *accessor;
    QAction *(nkMetadataActions::*action)();
    const char *text;
    const char *toolTip; ///< null: none is set
    QString icon;
    const char *shortcut;
};

const QVector<ExpectedAction> &expectedActions()
{
    // clang-format off
    static const QVector<ExpectedAction> actions{
        {"renameAction", &nkMetadataActions::renameAction, "Rename", "Rename Set", named("RenameReference", ""), "Ctrl+R"},
        {"copyAction", &nkMetadataActions::copyAction, "Copy", "Copy all selected Set(s) to clipboard", named("Copy", ""), "Ctrl+C"},
        {"pasteAction", &nkMetadataActions::pasteAction, "Paste", "Paste all Set(s) from clipboard", named("Paste", ""), "Ctrl+V"},
        {"duplicateAction", &nkMetadataActions::duplicateAction, "Duplicate", "Duplicate Set", named("Duplicate", ""), "Ctrl+D"},
        {"deleteAction", &nkMetadataActions::deleteAction, "Delete", "Delete Set", named("Delete", ""), "Del"},
        {"lockAction", &nkMetadataActions::lockAction, "Lock", "Lock Set", named("Lock", ""), ""},
        {"unlockAction", &nkMetadataActions::unlockAction, "Unlock", "Unlock Set", named("Unlock", ""), ""},
        {"removeSelectedAssignmentsAction", &nkMetadataActions::removeSelectedAssignmentsAction, "Remove Selected Assignments", "Removes selected metadata assignments", named("RemoveSelectedSet", "MetadataEditor"), "Backspace"},
        {"removeAllAssignmentsAction", &nkMetadataActions::removeAllAssignmentsAction, "Remove All Assignments", "Remove all metadata assignments", named("RemoveAllSets", "MetadataEditor"), ""},
        {"deleteAllEntriesAction", &nkMetadataActions::deleteAllEntriesAction, "Delete All Entries", "Delete All Entries", named("RemoveAllEntries", "MetadataEditor"), ""},
        {"deleteUnassignedSetsAction", &nkMetadataActions::deleteUnassignedSetsAction, "Delete All Unassigned Sets", nullptr, named("RemoveUnused", ""), ""},
        {"createSetAction", &nkMetadataActions::createSetAction, "Create Set", "Create Set", named("MetadataSet", "MetadataEditor"), ""},
        {"selectAllEditorsAction", &nkMetadataActions::selectAllEditorsAction, "All Editors", "Select All Objects", named("SelectObjects", "MetadataEditor"), ""},
        {"selectInScenegraphAction", &nkMetadataActions::selectInScenegraphAction, "Scenegraph", "Select Nodes", named("GroupNode", "General"), ""},
        {"selectInMaterialEditorAction", &nkMetadataActions::selectInMaterialEditorAction, "Material Editor", "Select Materials", named("ModuleMaterialEditor", "General"), ""},
        {"selectInCameraEditorAction", &nkMetadataActions::selectInCameraEditorAction, "Camera Editor", "Select Cameras", named("OrthographicCamera", "General"), ""},
        {"selectInLightEditorAction", &nkMetadataActions::selectInLightEditorAction, "Light Editor", "Select Lights", named("ModuleLights", "General"), ""},
        {"selectInSceneplateEditorAction", &nkMetadataActions::selectInSceneplateEditorAction, "Sceneplate Editor", "Select Sceneplates", named("Sceneplate", "General"), ""},
        {"focusModeAction", &nkMetadataActions::focusModeAction, "Focus Mode", focusModeToolTip, focusIcon(), ""},
        {"selectAllAction", &nkMetadataActions::selectAllAction, "Select All", "Select All", named("SelectAll", "General"), ""},
        {"deselectAllAction", &nkMetadataActions::deselectAllAction, "Deselect All", "Deselect All", named("DeselectAll", "General"), ""},
        {"invertSelectionAction", &nkMetadataActions::invertSelectionAction, "Invert selection", "Invert selection", named("SelectInverse", "General"), ""},
        {"modifyAssetAction", &nkMetadataActions::modifyAssetAction, "Modify", nullptr, path("MetadataEditor/ModifyAsset.svg"), ""},
        {"saveInAssetManagerAction", &nkMetadataActions::saveInAssetManagerAction, "Save in Asset Manager", "Save Set in the Asset Manager", path("MetadataEditor/SaveInAssetManager.svg"), ""},
        {"findInAssetManagerAction", &nkMetadataActions::findInAssetManagerAction, "Find in Asset Manager", "Find Set in the Asset Manager", path("MetadataEditor/FindInAssetManager.svg"), ""},
        {"reloadFromAssetManagerAction", &nkMetadataActions::reloadFromAssetManagerAction, "Reload from Asset Manager", "Reload Set from the Asset Manager", path("MetadataEditor/ReloadFromAssetManager.svg"), ""},
        {"removeAssetLinkAction", &nkMetadataActions::removeAssetLinkAction, "Remove Link", "Remove Sets Link to the Asset Manager", path("MetadataEditor/RemoveAssetLink.svg"), ""},
        {"assignToLastSelectionAction", &nkMetadataActions::assignToLastSelectionAction, "Last Selection", "Assign Set(s) to selected Object", named("AssigntoLastSelection", "MetadataEditor"), ""},
        {"assignToNodesAction", &nkMetadataActions::assignToNodesAction, "Selected Nodes", "Assign Set(s) to selected Nodes", named("GroupNode", "General"), ""},
        {"assignToMaterialsAction", &nkMetadataActions::assignToMaterialsAction, "Selected Materials", "Assign Set(s) to selected Materials", named("ModuleMaterialEditor", "General"), ""},
        {"assignToCamerasAction", &nkMetadataActions::assignToCamerasAction, "Selected Cameras", "Assign Set(s) to selected Cameras", named("OrthographicCamera", "General"), ""},
        {"assignToLightsAction", &nkMetadataActions::assignToLightsAction, "Selected Lights", "Assign Set(s) to selected Lights", named("ModuleLights", "General"), ""},
        {"assignToSceneplatesAction", &nkMetadataActions::assignToSceneplatesAction, "Selected Sceneplates", "Assign Set(s) to selected Sceneplates", named("Sceneplate", "General"), ""},
        {"loadMetadataAction", &nkMetadataActions::loadMetadataAction, "Load Metadata Sets...", "Load Metadata Sets", named("LoadMetadata", "MetadataEditor"), ""},
        {"saveMetadataAction", &nkMetadataActions::saveMetadataAction, "Save Metadata Sets...", "Save Metadata Sets", named("SaveMetadata", "MetadataEditor"), ""},
        {"createStringEntryAction", &nkMetadataActions::createStringEntryAction, "String", "Create new String Key / Value entry for this Set", path("MetadataEditor/EntryOnObjectOffNormal.svg"), ""},
        {"createIntegerEntryAction", &nkMetadataActions::createIntegerEntryAction, "Integer", "Create new Integer Key / Value entry for this Set", path("MetadataEditor/EntryOnObjectOffNormal.svg"), ""},
        {"createFloatEntryAction", &nkMetadataActions::createFloatEntryAction, "Float", "Create new Float Key / Value entry for this Set", path("MetadataEditor/EntryOnObjectOffNormal.svg"), ""},
        {"createBooleanEntryAction", &nkMetadataActions::createBooleanEntryAction, "Boolean", "Create new Boolean Key / Value entry for this Set", path("MetadataEditor/EntryOnObjectOffNormal.svg"), ""},
        {"createTimeEntryAction", &nkMetadataActions::createTimeEntryAction, "Time", "Create new Time Key / Value entry for this Set", path("MetadataEditor/EntryOnObjectOffNormal.svg"), ""},
        {"createDateEntryAction", &nkMetadataActions::createDateEntryAction, "Date", "Create new Date Key / Value entry for this Set", path("MetadataEditor/EntryOnObjectOffNormal.svg"), ""},
        {"createDateTimeEntryAction", &nkMetadataActions::createDateTimeEntryAction, "Date and Time", "Create new Date and Time Key / Value entry for this Set", path("MetadataEditor/EntryOnObjectOffNormal.svg"), ""},
        {"createListEntryAction", &nkMetadataActions::createListEntryAction, "List", "Create new List Key / Value entry for this Set", path("MetadataEditor/EntryOnObjectOffNormal.svg"), ""},
        {"createTagEntryAction", &nkMetadataActions::createTagEntryAction, "Tag", "Create new Tag Key / Value entry for this Set", tagIcon(), ""},
        {"moveSetEntriesToObjectAction", &nkMetadataActions::moveSetEntriesToObjectAction, "Move Set Entries To Object", "Move Set Entries To Object", path("MetadataEditor/MoveObjectEntriestoSetOffNormal.svg"), ""},
        {"createSetFromObjectEntriesAction", &nkMetadataActions::createSetFromObjectEntriesAction, "Create Set From Object Entries", "Create Set From Object Entries", path("MetadataEditor/CreateSetfromObjectEntriesOffNormal.svg"), ""},
    };
    // clang-format on
    return actions;
}

struct ExpectedMenu
{
    QMenu *(nkMetadataActions::*menu)();
    const char *title;
    QStringList entries; ///< "-" for the separator
};

QStringList list(const char *texts)
{
    return QString::fromLatin1(texts).split(QLatin1Char('|'));
}

QVector<ExpectedMenu> expectedMenus()
{
    return {
        {&nkMetadataActions::assignMenu, "Assign Sets to",
         list("Last Selection|Selected Nodes|Selected Materials|Selected Cameras|Selected Lights|Selected "
              "Sceneplates")},
        {&nkMetadataActions::createEntryMenu, "Create Entry",
         list("String|Integer|Float|Boolean|Time|Date|Date and Time|List|-|Tag")},
        {&nkMetadataActions::selectObjectsMenu, "Select Objects in",
         list("All Editors|Scenegraph|Material Editor|Camera Editor|Light Editor|Sceneplate Editor")},
        {&nkMetadataActions::editMenu, "Edit", list("Rename|Copy|Paste|Duplicate|Delete|-|Lock|Unlock")},
        {&nkMetadataActions::assetMenu, "Asset",
         list("Modify|Save in Asset Manager|Find in Asset Manager|Reload from Asset Manager|Remove Link")},
    };
}

QImage imageOf(const QIcon &icon)
{
    return icon.pixmap(24, 24).toImage();
}

QImage expectedImage(const QString &source)
{
    if (source == tagIcon()) {
        return imageOf(nkIconCache::Metadata::getMetadataTagIcon());
    }
    if (source == focusIcon()) {
        return imageOf(nkIconCache::Metadata::getGraphFocusedIcon());
    }
    return imageOf(QIcon(picture(source)));
}

} // namespace

/// Every command once, as the table of them says, and the sub-menus that group them.
class TestCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        nkIconManager::Source source;
        source.icon = [](const QString &name, const QString &category) {
            return QIcon(picture(QStringLiteral("name %1 of %2").arg(name, category)));
        };
        source.pixmap = [](const QString &path) { return picture(QStringLiteral("path %1").arg(path)); };
        nkIconManager::setSource(source);
    }
    void cleanupTestCase() { nkIconManager::setSource({}); }

    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_actions = new nkMetadataActions(m_window.get());
    }
    void cleanup() { m_window.reset(); }

    void is_reached_from_everywhere_while_it_lives()
    {
        QCOMPARE(nkMetadataActions::instance(), m_actions);
        QCOMPARE(m_actions->widget(), m_window.get());
        QCOMPARE(m_actions->handler()->parent(), m_actions);
        m_window.reset();
        QVERIFY(!nkMetadataActions::instance());
    }

    void holds_46_commands_and_a_separator()
    {
        QCOMPARE(expectedActions().size(), 46);
        QCOMPARE(int(nkMetadataAction::Count), 47);
        QSet<QAction *> different;
        for (int id = 0; id < nkMetadataAction::Count; ++id) {
            different.insert(m_actions->action(nkMetadataAction::Id(id)));
        }
        QCOMPARE(different.size(), 47);
        QVERIFY(!different.contains(nullptr));
        QVERIFY(!m_actions->action(nkMetadataAction::Count));
        QVERIFY(!m_actions->action(nkMetadataAction::Id(-1)));
        QVERIFY(!m_actions->menu(nkMetadataAction::MenuCount));
    }

    void shows_each_command_as_its_row_says_data()
    {
        QTest::addColumn<int>("row");
        for (int row = 0; row < expectedActions().size(); ++row) {
            QTest::newRow(expectedActions().at(row).accessor) << row;
        }
    }
    void shows_each_command_as_its_row_says()
    {
        QFETCH(int, row);
        const ExpectedAction &expected = expectedActions().at(row);
        QAction *const action = (m_actions->*expected.action)();
        const QString text = QLatin1String(expected.text);
        QCOMPARE(action->text(), text);
        // Without a tool tip of its own an action answers its text, less the dots of a dialog.
        QCOMPARE(action->toolTip(), expected.toolTip ? QString::fromLatin1(expected.toolTip) : text);
        QVERIFY(!action->icon().isNull());
        QCOMPARE(imageOf(action->icon()), expectedImage(expected.icon));
        const QKeySequence shortcut(QString::fromLatin1(expected.shortcut));
        QCOMPARE(action->shortcuts(),
                 shortcut.isEmpty() ? QList<QKeySequence>() : QList<QKeySequence>{shortcut});
        QCOMPARE(action->shortcutContext(),
                 shortcut.isEmpty() ? Qt::WindowShortcut : Qt::WidgetWithChildrenShortcut);
        QCOMPARE(action->parent(), m_window.get());
        QCOMPARE(action->objectName(), QString());
        QVERIFY(action->isEnabled() && action->isVisible() && !action->isSeparator());
        QCOMPARE(action->isCheckable(), action == m_actions->focusModeAction());
    }

    void gives_no_key_to_two_commands()
    {
        QSet<QKeySequence> keys;
        for (int id = 0; id < nkMetadataAction::Count; ++id) {
            const QKeySequence key = m_actions->action(nkMetadataAction::Id(id))->shortcut();
            QVERIFY2(key.isEmpty() || !keys.contains(key), qPrintable(key.toString()));
            keys.insert(key);
        }
    }

    void starts_without_focus_mode_and_hides_its_icon_in_menus()
    {
        const QAction *action = m_actions->focusModeAction();
        QVERIFY(!action->isChecked());
        QVERIFY(!action->isIconVisibleInMenu());
        QCOMPARE(action->statusTip(), QStringLiteral("Display content of the focused graph in the table."));
    }

    void separates_by_an_action_of_its_own()
    {
        QVERIFY(m_actions->separatorAction()->isSeparator());
        QCOMPARE(m_actions->separatorAction()->parent(), m_window.get());
        QVERIFY(m_actions->createEntryMenu()->actions().contains(m_actions->separatorAction()));
        QVERIFY(m_actions->editMenu()->actions().contains(m_actions->separatorAction()));
    }

    void groups_commands_in_sub_menus()
    {
        for (const ExpectedMenu &expected : expectedMenus()) {
            QMenu *const menu = (m_actions->*expected.menu)();
            QCOMPARE(menu->title(), QString::fromLatin1(expected.title));
            QVERIFY(menu->isTearOffEnabled());
            QStringList entries;
            for (const QAction *action : menu->actions()) {
                entries.append(action->isSeparator() ? QStringLiteral("-") : action->text());
            }
            QCOMPARE(entries, expected.entries);
        }
    }

    void builds_without_icons()
    {
        nkIconManager::setSource({});
        QWidget window;
        nkMetadataActions actions(&window);
        QVERIFY(actions.renameAction()->icon().isNull());
        QCOMPARE(actions.renameAction()->text(), QStringLiteral("Rename"));
        initTestCase();
    }

    void leaves_no_pointer_behind_when_an_older_one_goes()
    {
        QWidget other;
        auto *younger = new nkMetadataActions(&other);
        m_window.reset();
        QCOMPARE(nkMetadataActions::instance(), younger);
    }

private:
    std::unique_ptr<QWidget> m_window;
    nkMetadataActions *m_actions = nullptr;
};

NK_TEST_MAIN(TestCatalogue)
#include "test_catalogue.moc"
