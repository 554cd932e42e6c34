#include "TestIcons.h"
#include "WindowFixture.h"

#include "actions/nkMetadataActions.h"
#include "frame/nkMetadataContextMenu.h"
#include "frame/nkMetadataEditorMenubar.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>
#include <nkKernelServicesGUI/nkBaseControl.h>
#include <nkKernelServicesGUI/nkPropertyEditorWidget.h>
#include <nkQt4Ext/QNKToolBar.h>

#include <QAccessible>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QToolButton>

namespace {

/// The texts of a menu's or a bar's entries; "-" for a separator, "> " before a sub-menu.
QStringList entriesOf(const QWidget *menu)
{
    QStringList entries;
    for (const QAction *action : menu->actions()) {
        entries.append(action->isSeparator()
                           ? QStringLiteral("-")
                           : (action->menu() ? QStringLiteral("> ") : QString()) + action->text());
    }
    return entries;
}

/// Every action below a menu or a menu bar, those of sub-menus too.
QSet<const QAction *> allBelow(const QWidget *menu)
{
    QSet<const QAction *> found;
    for (const QAction *action : menu->actions()) {
        found.insert(action);
        if (action->menu()) {
            found.unite(allBelow(action->menu()));
        }
    }
    return found;
}

} // namespace

/// The commands in the window: the bar at its lower edge, its menus, its keys.
class TestWindowCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { TestIcons::install(); }
    void cleanupTestCase() { TestIcons::remove(); }

    void init() { m_editor = std::make_unique<WindowFixture>(); }
    void cleanup() { m_editor.reset(); }

    void the_bar_stays_at_the_lower_edge()
    {
        QCOMPARE(bar()->windowTitle(), QStringLiteral("MetadataEditorActions"));
        QCOMPARE(bar()->objectName(), QStringLiteral("QuickActionBar"));
        QCOMPARE(bar()->allowedAreas(), Qt::ToolBarAreas(Qt::BottomToolBarArea));
        QVERIFY(!bar()->isMovable());
        QVERIFY(!bar()->isFloatable());
        QCOMPARE(bar()->contextMenuPolicy(), Qt::ActionsContextMenu);
        QCOMPARE(m_editor->window->toolBarArea(bar()), Qt::BottomToolBarArea);
        QCOMPARE(m_editor->window->findChildren<QToolBar *>().size(), 1);
    }

    void the_bar_holds_its_commands_in_order()
    {
        QCOMPARE(entriesOf(bar()),
                 (QStringList{"> Create", "Duplicate", "Delete", "All Editors", "Last Selection",
                              "Remove Selected Assignments", "Remove All Assignments", "Delete All Entries",
                              "Delete All Unassigned Sets", "Focus Mode"}));
        nkMetadataActions *const actions = nkMetadataActions::instance();
        QCOMPARE(bar()->actions().mid(1),
                 (QList<QAction *>{actions->duplicateAction(), actions->deleteAction(),
                                   actions->selectAllEditorsAction(), actions->assignToLastSelectionAction(),
                                   actions->removeSelectedAssignmentsAction(),
                                   actions->removeAllAssignmentsAction(), actions->deleteAllEntriesAction(),
                                   actions->deleteUnassignedSetsAction(), actions->focusModeAction()}));
    }

    void create_offers_sets_and_entries()
    {
        const QAction *create = bar()->actions().first();
        QCOMPARE(create->text(), QStringLiteral("Create"));
        QCOMPARE(create->toolTip(), QStringLiteral("Create Sets or Entries"));
        QCOMPARE(create->statusTip(), QStringLiteral("Create a new metadata set or entry"));
        QCOMPARE(create->parent(), m_editor->window.get());
        QVERIFY(!create->icon().isNull());
        QCOMPARE(create->menu()->title(), QStringLiteral("Create"));
        QCOMPARE(entriesOf(create->menu()), (QStringList{"Create Set", "> Create Entry"}));
        QCOMPARE(create->menu()->actions().last()->menu(), nkMetadataActions::instance()->createEntryMenu());
    }

    void create_opens_its_menu_at_once_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("click") << false;
        QTest::newRow("space") << true;
    }
    void create_opens_its_menu_at_once()
    {
        QFETCH(bool, byKey);
        m_editor->show();
        m_editor->tree()->getTreeView()->setFocus();
        const ModalAnswer answer = ModalAnswer::menu(byKey ? QString() : QStringLiteral("Create Set"));
        QToolButton *create = button(0);
        if (byKey) {
            create->setFocus(Qt::TabFocusReason);
            QTest::keyClick(create, Qt::Key_Space);
        } else {
            QTest::mouseClick(create, Qt::LeftButton);
        }
        QVERIFY(answer.given());
        QCOMPARE(answer.record().buttons, (QStringList{"Create Set", "Create Entry"}));
        QCOMPARE(nkMetadataService::the().getAllSets().size(), byKey ? 3 : 4);
        QNKViewBase::commitOpenEditors();
    }

    void a_disabled_command_is_grey_everywhere()
    {
        m_editor->show();
        QAction *action = nkMetadataActions::instance()->deleteAllEntriesAction();
        for (bool isEnabled : {false, true}) {
            action->setEnabled(isEnabled);
            QCOMPARE(button(7)->isEnabled(), isEnabled);
            QCOMPARE(entry(menuBar()->actions().at(1)->menu(), "Delete All Entries")->isEnabled(), isEnabled);
            QCOMPARE(entry(contextMenu(), "Delete All Entries")->isEnabled(), isEnabled);
        }
    }

    void the_bar_follows_the_selection()
    {
        m_editor->show();
        QVERIFY(!button(1)->isEnabled());
        m_editor->select({m_editor->alpha});
        QVERIFY(button(1)->isEnabled());
        m_editor->tree()->clearSelection();
        QVERIFY(!button(1)->isEnabled());
    }

    void focus_mode_is_checked_in_menu_and_bar_alike()
    {
        m_editor->show();
        QAction *inMenu = entry(menuBar()->actions().at(4)->menu(), "Focus Mode");
        QVERIFY(inMenu->isCheckable() && !button(9)->isChecked());
        inMenu->trigger();
        QVERIFY(inMenu->isChecked() && button(9)->isChecked());
        QTest::mouseClick(button(9), Qt::LeftButton);
        QVERIFY(!inMenu->isChecked() && !button(9)->isChecked());
    }

    void focus_mode_empties_the_table_until_a_list_fills_it()
    {
        m_editor->show();
        m_editor->tree()->setHasLastFocus(false);
        m_editor->select({m_editor->alpha});
        QCOMPARE(m_editor->keys().size(), 3);
        nkMetadataActions::instance()->focusModeAction()->setChecked(true);
        QVERIFY(m_editor->keys().isEmpty());
    }

    void the_menus_of_the_window_hold_their_entries()
    {
        QCOMPARE(m_editor->window->menuBar(), menuBar());
        QCOMPARE(menuBar()->parentWidget(), m_editor->window.get());
        QCOMPARE(entriesOf(menuBar()),
                 (QStringList{"> File", "> Edit", "> Create", "> Selection", "> Window"}));
        QCOMPARE(contextMenu()->parentWidget(), m_editor->window.get());
        QCOMPARE(entriesOf(contextMenu()).size(), 19);
    }

    void the_context_menu_closes_its_torn_off_copy_first()
    {
        m_editor->show();
        {
            const ModalAnswer left = ModalAnswer::menu(ModalAnswer::MenuAction([](QMenu *) {}));
            contextMenu()->showTearOffMenu(QPoint(5, 5));
            WindowFixture::settle();
        }
        QVERIFY(contextMenu()->isTearOffMenuVisible());
        bool isTornOffVisible = true;
        const ModalAnswer answer = ModalAnswer::menu(ModalAnswer::MenuAction([&](QMenu *menu) {
            isTornOffVisible = contextMenu()->isTearOffMenuVisible();
            menu->close();
        }));
        m_editor->window->onShowContextMenu(QPoint(50, 50));
        QVERIFY(answer.given());
        QVERIFY(!isTornOffVisible);
    }

    void both_trees_open_the_one_context_menu_data()
    {
        QTest::addColumn<int>("tree");
        QTest::newRow("upper") << 0;
        QTest::newRow("lower") << 1;
    }
    void both_trees_open_the_one_context_menu()
    {
        QFETCH(int, tree);
        m_editor->show();
        QWidget *view = m_editor->window->treeWidgets().at(tree)->getTreeView();
        QMenu *opened = nullptr;
        const ModalAnswer answer = ModalAnswer::menu(ModalAnswer::MenuAction([&](QMenu *menu) {
            opened = menu;
            menu->close();
        }));
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), view->mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(view, &event);
        QVERIFY(answer.given());
        QCOMPARE(opened, contextMenu());
    }

    void every_entry_of_a_menu_or_bar_has_a_text()
    {
        QSet<const QAction *> entries = allBelow(menuBar());
        entries.unite(allBelow(bar()));
        const QList<QMenu *> menus = m_editor->window->findChildren<QMenu *>();
        for (const QMenu *menu : menus) {
            entries.unite(allBelow(menu));
        }
        QVERIFY(entries.size() > 60);
        for (const QAction *entry : qAsConst(entries)) {
            QVERIFY2(entry->isSeparator() || !entry->text().isEmpty(),
                     entry->parent()->metaObject()->className());
        }
    }

    void every_control_has_a_name_for_screen_readers()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        m_editor->view()->selectAll();
        WindowFixture::settle();
        QStringList nameless;
        const QList<QWidget *> widgets = m_editor->window->findChildren<QWidget *>();
        for (QWidget *widget : widgets) {
            if (isControl(widget) && accessibleName(widget).isEmpty()) {
                nameless.append(QString::fromLatin1(widget->metaObject()->className()) + QLatin1Char(' ')
                                + widget->objectName());
            }
        }
        QCOMPARE(nameless.join(QStringLiteral(", ")), QString());
    }

    void every_command_is_reached_by_keyboard()
    {
        QSet<const QAction *> reached = allBelow(menuBar());
        reached.unite(allBelow(contextMenu()));
        nkMetadataActions *const actions = nkMetadataActions::instance();
        for (int id = 0; id < nkMetadataAction::Count; ++id) {
            const QAction *action = actions->action(nkMetadataAction::Id(id));
            // Two commands exist and are never offered.
            const bool isOffered = action != actions->moveSetEntriesToObjectAction()
                                   && action != actions->createSetFromObjectEntriesAction();
            QVERIFY2(reached.contains(action) == isOffered || action->isSeparator(),
                     qPrintable(action->text()));
        }
    }

    void commands_of_the_menu_bar_are_given_by_keyboard()
    {
        m_editor->show();
        m_editor->tree()->getTreeView()->setFocus();
        m_editor->select({m_editor->gamma});
        const ModalAnswer answer = ModalAnswer::menu(ModalAnswer::MenuAction([](QMenu *menu) {
            for (int i = 0; i < menu->actions().size() && !isActive(menu, "Delete"); ++i) {
                QTest::keyClick(menu, Qt::Key_Down);
            }
            QTest::keyClick(menu, Qt::Key_Return);
        }));
        QTest::keyClick(m_editor->tree()->getTreeView(), Qt::Key_Alt);
        QCOMPARE(menuBar()->activeAction(), menuBar()->actions().first());
        QTest::keyClick(menuBar(), Qt::Key_Right);
        QTest::keyClick(menuBar(), Qt::Key_Down);
        QTRY_VERIFY(answer.given());
        QCOMPARE(nkMetadataService::the().getAllSets().size(), 2);
    }

    void tab_stops_at_every_button_of_the_bar()
    {
        for (int i = 0; i < bar()->actions().size(); ++i) {
            QCOMPARE(button(i)->focusPolicy(), Qt::TabFocus);
            QCOMPARE(accessibleName(button(i)), bar()->actions().at(i)->text());
        }
    }

    void no_key_has_two_meanings_in_one_place()
    {
        m_editor->show();
        m_editor->select({m_editor->alpha});
        m_editor->view()->selectAll();
        const QList<QWidget *> places{
            m_editor->tree()->getTreeView(),
            m_editor->window->treeWidgets().last()->getTreeView(),
            m_editor->view(),
            button(1),
            m_editor->window->findChild<nkAdvancedSearchBar *>()->lineEdit(),
            m_editor->window->findChild<nkPropertyEditorWidget *>()->getControl(QStringLiteral("key")),
        };
        for (QWidget *place : places) {
            const QStringList keys = keysAt(place);
            QVERIFY2(keys.size() == QSet<QString>(keys.begin(), keys.end()).size(),
                     qPrintable(keys.join(QLatin1Char(' '))));
        }
        QVERIFY(keysAt(places.at(0)).contains(QStringLiteral("Ctrl+R")));
        QVERIFY(keysAt(places.at(2)).contains(QStringLiteral("Ctrl+C")));
    }

    void keys_of_the_tree_work_though_the_bar_holds_the_commands_too()
    {
        m_editor->show();
        m_editor->tree()->getTreeView()->setFocus();
        m_editor->select({m_editor->alpha});
        QTest::keyClick(m_editor->tree()->getTreeView(), Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(nkMetadataService::the().getAllSets().size(), 4);
        QTest::keyClick(m_editor->tree()->getTreeView(), Qt::Key_Delete);
        QVERIFY(nkMetadataService::the().getAllSets().size() < 4);
    }

private:
    QNKToolBar *bar() const { return m_editor->window->findChild<QNKToolBar *>(); }
    nkMetadataEditorMenubar *menuBar() const
    {
        return m_editor->window->findChild<nkMetadataEditorMenubar *>();
    }
    nkMetadataContextMenu *contextMenu() const
    {
        return m_editor->window->findChild<nkMetadataContextMenu *>();
    }
    QToolButton *button(int position) const
    {
        return qobject_cast<QToolButton *>(bar()->widgetForAction(bar()->actions().at(position)));
    }

    static QAction *entry(const QWidget *menu, const char *text)
    {
        for (QAction *action : menu->actions()) {
            if (action->text() == QLatin1String(text)) {
                return action;
            }
        }
        return nullptr;
    }

    static bool isActive(const QMenu *menu, const char *text)
    {
        return menu->activeAction() && menu->activeAction()->text() == QLatin1String(text);
    }

    static bool isControl(const QWidget *widget)
    {
        return widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy()
               && !widget->parentWidget()->inherits("QAbstractSpinBox");
    }

    static QString accessibleName(QWidget *widget)
    {
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
        return face ? face->text(QAccessible::Name) : QString();
    }

    /// The keys that mean something while the place has the focus; twice what means two things.
    QStringList keysAt(QWidget *place) const
    {
        QSet<QAction *> actions;
        QStringList keys;
        for (QWidget *widget = place; widget; widget = widget->parentWidget()) {
            for (QAction *action : widget->actions()) {
                const bool isHere = widget == place || action->shortcutContext() != Qt::WidgetShortcut;
                if (isHere && !actions.contains(action)) {
                    actions.insert(action);
                    keys.append(texts(action->shortcuts()));
                }
            }
            const auto shortcuts = widget->findChildren<QShortcut *>(QString(), Qt::FindDirectChildrenOnly);
            for (const QShortcut *shortcut : shortcuts) {
                keys.append(texts({shortcut->key()}));
            }
        }
        return keys;
    }

    static QStringList texts(const QList<QKeySequence> &sequences)
    {
        QStringList texts;
        for (const QKeySequence &sequence : sequences) {
            texts.append(sequence.toString());
        }
        return texts;
    }

    std::unique_ptr<WindowFixture> m_editor;
};

NK_TEST_MAIN(TestWindowCommands)
#include "test_window_commands.moc"
