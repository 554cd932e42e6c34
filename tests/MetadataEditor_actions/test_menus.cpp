#include "actions/nkMetadataActions.h"
#include "frame/nkMetadataContextMenu.h"
#include "frame/nkMetadataEditorMenubar.h"

#include <TestMain.h>
#include <kernel/document/Document.h>

#include <QMainWindow>

#include <memory>

namespace {

/// The texts of a menu's entries; "-" for a separator, "> " before a sub-menu.
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

QStringList list(const char *texts)
{
    return QString::fromLatin1(texts).split(QLatin1Char('|'));
}

} // namespace

/// The menu bar and the context menu: what they hold, in which order.
class TestMenus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QMainWindow>();
        m_actions = new nkMetadataActions(m_window.get());
        m_contextMenu = new nkMetadataContextMenu(m_window.get());
        m_menuBar = new nkMetadataEditorMenubar(m_window.get());
        m_window->setMenuBar(m_menuBar);
    }
    void cleanup() { m_window.reset(); }

    void context_menu_holds_its_entries_in_order()
    {
        QCOMPARE(m_contextMenu->title(), QStringLiteral("Metadata Editor Menu"));
        QVERIFY(m_contextMenu->isTearOffEnabled());
        QCOMPARE(m_contextMenu->parentWidget(), m_window.get());
        QCOMPARE(
            entriesOf(m_contextMenu),
            list("Create Set|> Create Entry|-|> Edit|> Asset|-|> Select Objects in|Select All|Deselect "
                 "All|Invert selection|-|> Assign Sets to|Remove Selected Assignments|Remove All "
                 "Assignments|Delete All Unassigned Sets|Delete All Entries|-|Load Metadata Sets...|Save "
                 "Metadata Sets..."));
    }

    void menu_bar_holds_five_menus_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("File") << 0 << QStringLiteral("File")
                              << list("Load Metadata Sets...|Save Metadata Sets...");
        QTest::newRow("Edit") << 1 << QStringLiteral("Edit")
                              << list("Rename|Copy|Paste|Duplicate|Delete|-|Lock|Unlock|-|> Assign Sets "
                                      "to|Remove Selected Assignments|Remove All Assignments|Delete All "
                                      "Entries");
        QTest::newRow("Create") << 2 << QStringLiteral("Create") << list("Create Set|> Create Entry");
        QTest::newRow("Selection") << 3 << QStringLiteral("Selection")
                                   << list("All Editors|Scenegraph|Material Editor|Camera Editor|Light "
                                           "Editor|Sceneplate Editor|-|Select All|Deselect All|Invert "
                                           "selection");
        QTest::newRow("Window") << 4 << QStringLiteral("Window") << list("Focus Mode");
    }
    void menu_bar_holds_five_menus()
    {
        QFETCH(int, position);
        QFETCH(QString, title);
        QFETCH(QStringList, entries);
        QCOMPARE(m_menuBar->actions().size(), 5);
        const QMenu *menu = m_menuBar->actions().at(position)->menu();
        QCOMPARE(menu->title(), title);
        QVERIFY(menu->isTearOffEnabled());
        QVERIFY(!menu->parent());
        QCOMPARE(entriesOf(menu), entries);
    }

    void every_entry_is_the_catalogues_own()
    {
        QList<const QWidget *> menus{m_contextMenu};
        for (const QAction *action : m_menuBar->actions()) {
            menus.append(action->menu());
        }
        for (const QWidget *menu : menus) {
            for (QAction *action : menu->actions()) {
                QVERIFY2(action->isSeparator() || isCatalogued(action), qPrintable(action->text()));
            }
        }
    }

    void a_disabled_action_is_grey_everywhere()
    {
        m_actions->lockAction()->setEnabled(false);
        m_actions->assignMenu()->setEnabled(false);
        QVERIFY(!entry(m_menuBar->actions().at(1)->menu(), "Lock")->isEnabled());
        QVERIFY(!entry(m_menuBar->actions().at(1)->menu(), "Assign Sets to")->isEnabled());
        QVERIFY(!entry(m_contextMenu, "Assign Sets to")->isEnabled());
        m_actions->assignMenu()->setEnabled(true);
        QVERIFY(entry(m_contextMenu, "Assign Sets to")->isEnabled());
    }

    void focus_mode_is_checked_everywhere()
    {
        QAction *action = entry(m_menuBar->actions().at(4)->menu(), "Focus Mode");
        action->trigger();
        QVERIFY(m_actions->focusModeAction()->isChecked());
    }

    void menus_go_with_the_window_in_any_order()
    {
        delete m_menuBar;
        delete m_contextMenu;
        QCOMPARE(m_actions->editMenu()->actions().size(), 8);
        m_window.reset();
        QVERIFY(!nkMetadataActions::instance());
    }

private:
    static QAction *entry(const QWidget *menu, const char *text)
    {
        for (QAction *action : menu->actions()) {
            if (action->text() == QLatin1String(text)) {
                return action;
            }
        }
        return nullptr;
    }

    bool isCatalogued(const QAction *action) const
    {
        for (int id = 0; id < nkMetadataAction::Count; ++id) {
            if (m_actions->action(nkMetadataAction::Id(id)) == action) {
                return true;
            }
        }
        for (int menu = 0; menu < nkMetadataAction::MenuCount; ++menu) {
            if (m_actions->menu(nkMetadataAction::Menu(menu))->menuAction() == action) {
                return true;
            }
        }
        return false;
    }

    std::unique_ptr<QMainWindow> m_window;
    nkMetadataActions *m_actions = nullptr;
    nkMetadataContextMenu *m_contextMenu = nullptr;
    nkMetadataEditorMenubar *m_menuBar = nullptr;
};

NK_TEST_MAIN(TestMenus)
#include "test_menus.moc"
