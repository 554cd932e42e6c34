#include "EditingFixture.h"
#include "TestIcons.h"

#include "actions/nkMetadataActions.h"
#include "table/nkMetadataKeyValueHeader.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkQt4Ext/nkPlatform.h>

#include <QAbstractButton>
#include <QAction>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QToolButton>

/// The table as a widget: its set-up, its menu and keys, the walk of Tab, its header.
class TestTableView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { TestIcons::install(); }
    void cleanupTestCase() { TestIcons::remove(); }

    void init()
    {
        kernel::Document::the().clear();
        m_editor = std::make_unique<EditingFixture>();
        m_editor->showTypes();
    }
    void cleanup()
    {
        QNKViewBase::commitOpenEditors();
        m_editor.reset();
    }

    void is_flat_and_a_source_of_drags()
    {
        const nkMetadataKeyValueTreeView *table = view();
        QVERIFY(!table->rootIsDecorated());
        QVERIFY(!table->alternatingRowColors());
        QVERIFY(table->hasMouseTracking() && table->viewport()->hasMouseTracking());
        QVERIFY(table->dragEnabled());
        QVERIFY(!table->acceptDrops() && !table->viewport()->acceptDrops());
        QVERIFY(!table->dragPixmap().isNull());
        QCOMPARE(table->editTriggers(),
                 QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked);
        QVERIFY(table->uniformRowHeights());
    }

    void the_menu_offers_its_entries_in_order()
    {
        const QMenu *menu = view()->contextMenu();
        QCOMPARE(menu->title(), QStringLiteral("Edit Entries"));
        QVERIFY(menu->isTearOffEnabled());
        QCOMPARE(texts(menu),
                 (QStringList{"Create Entry", "Edit", "Copy\tCtrl+C", "Paste\tCtrl+V", "Delete\tDel"}));
        QCOMPARE(menu->actions().first()->menu(), nkMetadataActions::instance()->createEntryMenu());
        view()->setCreateEntryMenu(nullptr);
        QCOMPARE(menu->actions().size(), 5);
    }

    void the_menu_comes_where_it_was_asked_for()
    {
        const QPoint place = centerOf("integer", 0);
        askAt(place);
        QVERIFY(view()->contextMenu()->isVisible());
        QCOMPARE(view()->contextMenu()->pos(), view()->viewport()->mapToGlobal(place));
        view()->contextMenu()->hide();
    }

    void the_menu_follows_the_cell_under_the_mouse_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("column");
        QTest::addColumn<bool>("hasCopied");
        QTest::addColumn<QStringList>("enabled");
        const QStringList all{"Edit", "Copy", "Paste", "Delete"};
        const QStringList noPaste{"Edit", "Copy", "Delete"};
        QTest::newRow("value") << "integer" << 3 << true << all;
        QTest::newRow("nothing copied") << "integer" << 3 << false << noPaste;
        QTest::newRow("icon") << "integer" << 0 << false << QStringList{"Copy", "Delete"};
        QTest::newRow("locked") << "fixed" << 3 << true << QStringList{"Copy"};
        QTest::newRow("tag value") << "tag" << 3 << false << noPaste;
        QTest::newRow("empty space") << "" << 3 << false << QStringList();
        QTest::newRow("empty space, something copied") << "" << 3 << true << QStringList{"Paste"};
    }
    void the_menu_follows_the_cell_under_the_mouse()
    {
        QFETCH(QString, key);
        QFETCH(int, column);
        QFETCH(bool, hasCopied);
        if (hasCopied) {
            nkMetadataService::the().copyEntries({m_editor->of("integer")});
        }
        const QPoint below(200, view()->viewport()->height() - 3);
        askAt(key.isEmpty() ? below : view()->visualRect(m_editor->cell(key, column)).center());
        QTEST(enabled(), "enabled");
        view()->contextMenu()->hide();
    }

    void edit_opens_the_cell_it_was_asked_for()
    {
        view()->setCurrentIndex(m_editor->cellOf("string", 2));
        askAt(centerOf("integer", 3));
        trigger("Edit");
        QCOMPARE(view()->currentIndex(), m_editor->cellOf("integer", 3));
        QVERIFY(m_editor->editor());
        view()->contextMenu()->hide();
    }

    void edit_opens_nothing_in_the_assignment_or_where_nothing_can_be_edited()
    {
        askAt(centerOf("tag", 3));
        trigger("Edit");
        QVERIFY(!m_editor->editor());
        view()->contextMenu()->hide();
        header()->setColumnVisibility(1, true);
        WindowFixture::settle();
        askAt(centerOf("integer", 1));
        trigger("Edit");
        QVERIFY(!m_editor->editor());
        view()->contextMenu()->hide();
    }

    void the_menu_key_asks_for_the_current_cell()
    {
        view()->setCurrentIndex(m_editor->cellOf("float", 3));
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), view()->mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(view(), &event);
        QVERIFY(view()->contextMenu()->isVisible());
        trigger("Edit");
        QCOMPARE(view()->currentIndex(), m_editor->cellOf("float", 3));
        QVERIFY(m_editor->editor());
        view()->contextMenu()->hide();
    }

    void the_actions_follow_the_current_cell()
    {
        view()->selectionModel()->clear();
        QCOMPARE(enabled(), QStringList());
        view()->setCurrentIndex(m_editor->cellOf("fixed", 3));
        QCOMPARE(enabled(), QStringList{"Copy"});
        view()->setCurrentIndex(m_editor->cellOf("string", 3));
        QCOMPARE(enabled(), (QStringList{"Edit", "Copy", "Delete"}));
        m_editor->types.setLocked(true);
        QCOMPARE(enabled(), QStringList{"Copy"});
    }

    void keys_do_what_the_menu_would()
    {
        QSignalSpy copied(view(), &nkMetadataKeyValueTreeView::copyEntries);
        QSignalSpy pasted(view(), &nkMetadataKeyValueTreeView::pasteEntries);
        view()->setFocus();
        view()->selectionModel()->clear();
        QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
        QTest::keyClick(view(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(copied.count() + pasted.count(), 0);
        view()->setCurrentIndex(m_editor->cellOf("string", 3));
        QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(copied.count(), 1);
        QVERIFY(!nkMetadataService::the().hasNoCopiedEntries());
        // The clipboard was filled without a word to the table. Its entry clashes with its original.
        const ModalAnswer cancel = ModalAnswer::reject();
        QTest::keyClick(view(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(pasted.count(), 1);
    }

    void delete_removes_the_selected_entries_in_one_step()
    {
        m_editor->select({m_editor->types, m_editor->alpha});
        view()->setFocus();
        view()->setCurrentIndex(m_editor->cellOf("string", 3));
        view()->selectionModel()->select(m_editor->cellOf("count", 3),
                                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
        QTest::keyClick(view(), Qt::Key_Delete);
        QVERIFY(m_editor->of("string").isNull());
        QVERIFY(WindowFixture::entry(m_editor->alpha, "count").isNull());
        QCOMPARE(EditingFixture::undoStack()->count(), 1);
        QCOMPARE(EditingFixture::undoStack()->undoText(), QStringLiteral("Delete Entries"));
        EditingFixture::undoStack()->undo();
        QVERIFY(!m_editor->of("string").isNull());
    }

    void copy_takes_the_selected_entries_from_top_to_bottom()
    {
        view()->setCurrentIndex(m_editor->cellOf("date", 3));
        for (const char *key : {"integer", "string"}) {
            view()->selectionModel()->select(m_editor->cellOf(key, 3),
                                             QItemSelectionModel::Select | QItemSelectionModel::Rows);
        }
        m_editor->window->copyEntries();
        QStringList keys;
        const QList<nkdMetadataEntry> entries = nkMetadataService::the().getClipboardEntries();
        for (const nkdMetadataEntry &entry : entries) {
            keys.append(entry.getKey());
        }
        QCOMPARE(keys, (QStringList{"string", "integer", "date"}));
    }

    void copying_nothing_keeps_the_clipboard()
    {
        nkMetadataService::the().copyEntries({m_editor->of("date")});
        view()->selectionModel()->clear();
        m_editor->window->copyEntries();
        QCOMPARE(nkMetadataService::the().getClipboardEntries().size(), 1);
    }

    void paste_goes_to_every_selected_set_once()
    {
        nkMetadataService::the().copyEntries({WindowFixture::entry(m_editor->alpha, "count")});
        const nkdMetadataSet own = nkdMetadata::fromObject(m_editor->chair).getObjectSet();
        nkMetadataService::the().setSelection({m_editor->gamma, m_editor->chair, own});
        m_editor->window->pasteEntries();
        QCOMPARE(m_editor->gamma.getEntries().size(), 1);
        QCOMPARE(own.getEntries().size(), 2);
        QCOMPARE(EditingFixture::undoStack()->count(), 1);
    }

    void pasting_nothing_makes_no_step()
    {
        m_editor->window->pasteEntries();
        QCOMPARE(EditingFixture::undoStack()->count(), 0);
    }

    void clashing_keys_are_asked_about_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<int>("value");
        QTest::newRow("cancel") << 0 << QStringList{"count"} << 1;
        QTest::newRow("replace") << 2 << QStringList{"count"} << 7;
        QTest::newRow("anyway") << 1 << QStringList{"count", "count2"} << 1;
    }
    void clashing_keys_are_asked_about()
    {
        QFETCH(int, answer);
        QFETCH(QStringList, keys);
        QFETCH(int, value);
        m_editor->gamma.setValue(QStringLiteral("count"), 1);
        nkMetadataService::the().copyEntries({WindowFixture::entry(m_editor->alpha, "count")});
        nkMetadataService::the().setSelection({m_editor->gamma});
        const int steps = EditingFixture::undoStack()->count();
        const ModalAnswer box([answer](QDialog *dialog) { pressConflictButton(dialog, answer); });
        m_editor->window->pasteEntries();
        QVERIFY(box.given());
        QStringList present;
        for (const nkdMetadataEntry &entry : m_editor->gamma.getEntries()) {
            present.append(entry.getKey());
        }
        QCOMPARE(present, keys);
        QCOMPARE(m_editor->gamma.getValue(QStringLiteral("count")), QVariant(value));
        QCOMPARE(EditingFixture::undoStack()->count(), answer == 0 ? steps : steps + 1);
    }

    void a_created_entry_opens_its_key()
    {
        const nkdMetadataEntry entry = m_editor->gamma.createEntry(nkMetadataTypes::String);
        m_editor->window->onEntryCreated(entry, m_editor->gamma);
        QCOMPARE(view()->currentIndex(), m_editor->cellOf("Key", 2));
        QVERIFY(qobject_cast<QLineEdit *>(m_editor->editor()));
        m_editor->window->onEntryCreated(nkdMetadataEntry(), nkdMetadataSet());
        QVERIFY(m_editor->editor());
    }

    void keys_belong_to_an_open_editor_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("column");
        QTest::newRow("text") << "string" << 3;
        QTest::newRow("combo box") << "boolean" << 3;
        QTest::newRow("type") << "integer" << 4;
        QTest::newRow("spinner") << "integer" << 3;
        QTest::newRow("list") << "list" << 3;
    }
    void keys_belong_to_an_open_editor()
    {
        QFETCH(QString, key);
        QFETCH(int, column);
        QWidget *editor = m_editor->open(m_editor->cell(key, column));
        QVERIFY(editor);
        QSignalSpy copied(view(), &nkMetadataKeyValueTreeView::copyEntries);
        QSignalSpy deleted(view(), &nkMetadataKeyValueTreeView::deleteEntries);
        auto *combo = qobject_cast<QComboBox *>(editor);
        QWidget *target = combo ? static_cast<QWidget *>(combo->view()) : editor;
        QTest::keyClick(target, Qt::Key_Delete);
        QTest::keyClick(target, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(copied.count() + deleted.count(), 0);
        if (combo) {
            combo->hidePopup();
        }
        QNKViewBase::commitOpenEditors();
        view()->setFocus();
        QTest::keyClick(view(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(copied.count(), 1);
    }

    void a_closed_editor_is_told()
    {
        QSignalSpy closed(view(), &nkMetadataKeyValueTreeView::editorClosed);
        m_editor->open("string", 3);
        QCOMPARE(closed.count(), 0);
        m_editor->press(Qt::Key_Escape);
        QCOMPARE(closed.count(), 1);
    }

    void tab_walks_through_the_whole_table()
    {
        view()->setFocus();
        const int last = view()->model()->rowCount() - 1;
        view()->setCurrentIndex(view()->model()->index(0, 0));
        QStringList walk;
        for (int i = 0; i < 7; ++i) {
            QTest::keyClick(view(), Qt::Key_Tab);
            walk.append(QStringLiteral("%1%2")
                            .arg(view()->currentIndex().row())
                            .arg(view()->currentIndex().column()));
        }
        QCOMPARE(walk, (QStringList{"01", "02", "03", "04", "10", "11", "12"}));
        view()->setCurrentIndex(view()->model()->index(last, 4));
        QTest::keyClick(view(), Qt::Key_Tab);
        QCOMPARE(view()->currentIndex(), view()->model()->index(0, 0));
        QTest::keyClick(view(), Qt::Key_Backtab);
        QCOMPARE(view()->currentIndex(), view()->model()->index(last, 4));
        view()->setCurrentIndex(view()->model()->index(1, 0));
        QTest::keyClick(view(), Qt::Key_Backtab);
        QCOMPARE(view()->currentIndex(), view()->model()->index(0, 4));
    }

    void an_empty_table_has_nothing_to_walk_through()
    {
        m_editor->select({m_editor->gamma});
        view()->setFocus();
        QTest::keyClick(view(), Qt::Key_Tab);
        QVERIFY(!view()->currentIndex().isValid());
    }

    void columns_are_parted_by_lines()
    {
        const QImage picture = view()->viewport()->grab().toImage();
        const int bottom = view()->viewport()->height() - 4;
        for (int column : {2, 3, 4}) {
            const int x = header()->sectionViewportPosition(column) - header()->x();
            QCOMPARE(picture.pixelColor(x, bottom), QColor(50, 50, 50));
            QVERIFY(picture.pixelColor(x + 5, bottom) != QColor(50, 50, 50));
        }
    }

    void the_header_is_set_up()
    {
        QCOMPARE(header()->minimumSectionSize(), int(36 * nkPlatform::getDpiScaleX()));
        QVERIFY(header()->isFirstSectionMovable() && header()->sectionsMovable());
        QVERIFY(header()->stretchLastSection());
        QVERIFY(view()->isColumnHidden(1));
        QList<int> order;
        for (int i = 0; i < 5; ++i) {
            order.append(header()->logicalIndex(i));
        }
        QCOMPARE(order, (QList<int>{0, 1, 4, 2, 3}));
        for (int column : {0, 4}) {
            QCOMPARE(header()->sectionResizeMode(column), QHeaderView::ResizeToContents);
        }
        for (int column : {1, 2, 3}) {
            QCOMPARE(header()->sectionResizeMode(column), QHeaderView::Interactive);
        }
        QVERIFY(header()->toolButton() && header()->toolButton()->isVisible());
    }

    void the_largest_section_leaves_room_for_the_others()
    {
        const auto expected = [this](int sharing) {
            const int taken = header()->sectionSize(0) + header()->sectionSize(4);
            return qMax(header()->minimumSectionSize(), (header()->width() - taken) / sharing - 1);
        };
        m_editor->window->resize(1300, 630);
        WindowFixture::settle();
        QCOMPARE(header()->maximumSectionSize(), expected(2));
        header()->setColumnVisibility(1, true);
        QCOMPARE(header()->maximumSectionSize(), expected(3));
        for (int column : {1, 2, 3}) {
            header()->setColumnVisibility(column, false);
        }
        QCOMPARE(header()->maximumSectionSize(), expected(1));
    }

    void columns_are_shown_and_hidden_with_a_word()
    {
        QSignalSpy told(header(), &nkMetadataKeyValueHeader::columnVisibilityChanged);
        header()->setColumnVisibility(1, true);
        QVERIFY(!view()->isColumnHidden(1));
        QVERIFY(header()->isColumnVisible(1));
        header()->setColumnVisibility(2, false);
        QVERIFY(view()->isColumnHidden(2) && !header()->isColumnVisible(2));
        QCOMPARE(told.count(), 2);
        QCOMPARE(told.last(), (QList<QVariant>{2, false}));
        QCOMPARE(header()->getModel(), view()->model());
    }

    void a_header_without_a_view_shows_nothing()
    {
        nkMetadataKeyValueHeader alone(nullptr);
        QVERIFY(!alone.isColumnVisible(2));
        QVERIFY(!alone.getModel());
        alone.setColumnVisibility(2, false);
    }

private:
    nkMetadataKeyValueTreeView *view() const { return m_editor->view(); }
    nkMetadataKeyValueHeader *header() const { return view()->findChild<nkMetadataKeyValueHeader *>(); }

    QPoint centerOf(const char *key, int column) const
    {
        return view()->visualRect(m_editor->cellOf(key, column)).center();
    }

    void askAt(const QPoint &place) const
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, view()->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view()->viewport(), &event);
    }

    static QStringList texts(const QMenu *menu)
    {
        QStringList texts;
        const QList<QAction *> actions = menu->actions();
        for (const QAction *action : actions) {
            texts.append(action->text());
        }
        return texts;
    }

    QStringList enabled() const
    {
        QStringList texts;
        const QList<QAction *> actions = view()->contextMenu()->actions();
        for (const QAction *action : actions) {
            if (action->isEnabled() && !action->menu()) {
                texts.append(action->text().section(QLatin1Char('\t'), 0, 0));
            }
        }
        return texts;
    }

    void trigger(const char *text) const
    {
        const QList<QAction *> actions = view()->contextMenu()->actions();
        for (QAction *action : actions) {
            if (action->text().section(QLatin1Char('\t'), 0, 0) == QLatin1String(text)) {
                action->trigger();
            }
        }
    }

    static void pressConflictButton(QDialog *dialog, int answer)
    {
        const QStringList words{"Cancel", "anyway", "Replace"};
        const QList<QAbstractButton *> buttons = dialog->findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons) {
            if (button->text().contains(words.at(answer), Qt::CaseInsensitive)) {
                button->click();
                return;
            }
        }
        dialog->reject();
    }

    std::unique_ptr<EditingFixture> m_editor;
};

NK_TEST_MAIN(TestTableView)
#include "test_table_view.moc"
