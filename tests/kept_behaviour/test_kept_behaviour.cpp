#include "../MetadataEditor/EditingFixture.h"

#include "actions/nkMetadataActions.h"
#include "frame/nkMetadataContextMenu.h"
#include "table/nkMetadataCellToolTip.h"
#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataKeyValueHeader.h"
#include "table/nkMetadataTableFilterModel.h"
#include "table/nkMetadataTypeFilterBar.h"
#include "table/nkMetadataValueType.h"

#include <TestMain.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>
#include <nkQt4Ext/QNKSearchBox.h>
#include <nkQt4Ext/QNKToolBar.h>
#include <nkQt4Ext/nkIconManager.h>

#include <QMenuBar>
#include <QTimeEdit>

using namespace nkMetadataKeyValue;

namespace {

QStringList textsOf(const QWidget *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        texts.append(action->text());
    }
    return texts;
}

/// Opens no doors, only the label.
class TypeLabels : public nkMetadataTypeFilterBar
{
public:
    using nkMetadataTypeFilterBar::getLabel;
};

} // namespace

/// What looks like a mistake in the Metadata Editor and is none: users and their files count on it. Every function
/// says so in one line. Who changes one of them on purpose changes its test with it; nobody does it by the way.
class TestKeptBehaviour : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        kernel::Document::the().clear();
        m_editor = std::make_unique<EditingFixture>();
    }
    void cleanup()
    {
        QNKViewBase::commitOpenEditors();
        m_editor.reset();
        nkIconManager::setSource({});
    }

    /// Meant: among rows of one colour, set names and then keys run backwards, against every other column's order.
    void rows_of_one_colour_run_backwards()
    {
        const QList<nkdMetadataSet> sets = addSets({"Bolts", "Axles"}, QColor(120, 30, 200));
        showInTable(sets);
        table()->sort(IconColumn, Qt::AscendingOrder);
        QCOMPARE(m_editor->keys(), (QStringList{"Bolts 2", "Bolts 1", "Axles 2", "Axles 1"}));
        table()->sort(KeyColumn, Qt::AscendingOrder);
        QCOMPARE(m_editor->keys(), (QStringList{"Axles 1", "Axles 2", "Bolts 1", "Bolts 2"}));
    }

    /// Meant: greys have no hue and stand before red, where every circle of colours begins.
    void greys_stand_before_all_colours()
    {
        const nkdMetadataSet red = addSets({"Red"}, QColor(255, 0, 0)).first();
        const nkdMetadataSet white = addSets({"White"}, QColor(255, 255, 255)).first();
        showInTable({red, white});
        table()->sort(IconColumn, Qt::AscendingOrder);
        QCOMPARE(m_editor->keys(), (QStringList{"White 2", "White 1", "Red 2", "Red 1"}));
    }

    /// Meant: the context menu and the bar hold the two sweeping deletions in opposite orders.
    void two_deletions_change_places_between_menu_and_bar()
    {
        const QString sets = QStringLiteral("Delete All Unassigned Sets");
        const QString entries = QStringLiteral("Delete All Entries");
        const QStringList menu = textsOf(m_editor->window->findChild<nkMetadataContextMenu *>());
        const QStringList bar = textsOf(m_editor->window->findChild<QNKToolBar *>());
        QCOMPARE(menu.indexOf(entries), menu.indexOf(sets) + 1);
        QCOMPARE(bar.indexOf(sets), bar.indexOf(entries) + 1);
    }

    /// Meant: the menu "Edit" of the menu bar deletes all entries, but not all unassigned sets.
    void the_edit_menu_does_not_delete_unassigned_sets()
    {
        const QStringList edit = textsOf(m_editor->window->menuBar()->actions().at(1)->menu());
        QVERIFY(edit.contains(QStringLiteral("Delete All Entries")));
        QVERIFY(!edit.contains(QStringLiteral("Delete All Unassigned Sets")));
    }

    /// Meant: the tree with the focus reads its list a second time before it opens a new set's name.
    void a_new_set_is_read_twice_where_it_is_named()
    {
        m_editor->show();
        m_editor->tree()->getTreeView()->setFocus();
        nkMetadataService::the().setSelection({});
        QSignalSpy above(treeModel(0), &QNKItemModel::aboutToReload);
        QSignalSpy below(treeModel(1), &QNKItemModel::aboutToReload);
        actions()->createSetAction()->trigger();
        QCOMPARE(above.size(), 2);
        QCOMPARE(below.size(), 1);
    }

    /// Meant: the type filter says "DateTime" where the type column says "Date and Time".
    void one_type_has_two_names()
    {
        QCOMPARE(nkMetadataValueType::name(nkMetadataTypes::DateTime), QStringLiteral("Date and Time"));
        QCOMPARE(TypeLabels().getLabel(nkMetadataTypes::DateTime), QStringLiteral("DateTime"));
    }

    /// Meant: a tag counts as a string too, so the type filter "String" shows tags.
    void tags_pass_the_filter_of_strings()
    {
        m_editor->showTypes();
        table()->setTypeFilter({nkMetadataTypes::String});
        QCOMPARE(sorted(m_editor->keys()), (QStringList{"fixed", "string", "tag"}));
        table()->setTypeFilter({nkMetadataTableFilterModel::TagType});
        QCOMPARE(m_editor->keys(), QStringList{"tag"});
    }

    /// Meant: a type filter with no type in it shows every row rather than none.
    void no_type_at_all_shows_every_row()
    {
        m_editor->showTypes();
        table()->setTypeFilter({nkMetadataTypes::Time});
        QCOMPARE(m_editor->keys().size(), 1);
        table()->setTypeFilter({});
        QCOMPARE(m_editor->keys().size(), 10);
    }

    /// Meant: any node, though it is no material, camera, light or sceneplate, enables selecting in all four editors.
    void a_node_enables_the_commands_of_all_editors()
    {
        nkMetadataService::the().setSelection({m_editor->chair});
        QVERIFY(actions()->selectInScenegraphAction()->isEnabled());
        QVERIFY(actions()->selectInMaterialEditorAction()->isEnabled());
        QVERIFY(actions()->selectInCameraEditorAction()->isEnabled());
        QVERIFY(actions()->selectInLightEditorAction()->isEnabled());
        QVERIFY(actions()->selectInSceneplateEditorAction()->isEnabled());
        nkMetadataService::the().setSelection({m_editor->paint});
        QVERIFY(!actions()->selectInScenegraphAction()->isEnabled());
        QVERIFY(!actions()->selectInCameraEditorAction()->isEnabled());
    }

    /// Meant: for two editable sets "Create Entry" is offered and creates nothing.
    void create_entry_is_offered_for_two_sets_and_does_nothing()
    {
        nkMetadataService::the().setSelection({m_editor->alpha, m_editor->beta});
        QVERIFY(actions()->createEntryMenu()->isEnabled());
        actions()->createStringEntryAction()->trigger();
        QCOMPARE(m_editor->alpha.getEntries().size(), 3);
        QCOMPARE(m_editor->beta.getEntries().size(), 1);
        QCOMPARE(EditingFixture::undoStack()->count(), 0);
    }

    /// Meant: "Delete All Entries" empties locked sets too; the lock is for single entries.
    void delete_all_entries_empties_locked_sets()
    {
        nkMetadataService::the().setSelection({m_editor->locked});
        QVERIFY(actions()->deleteAllEntriesAction()->isEnabled());
        actions()->deleteAllEntriesAction()->trigger();
        QCOMPARE(m_editor->locked.getEntries().size(), 0);
        QVERIFY(m_editor->locked.isLocked());
    }

    /// Meant: two commands exist and are never shown; they wait for a later design.
    void two_commands_are_never_shown()
    {
        for (const auto &selection : {QList<nkdObject>{}, QList<nkdObject>{m_editor->alpha},
                                      QList<nkdObject>{m_editor->chair, m_editor->alpha}}) {
            nkMetadataService::the().setSelection(selection);
            QVERIFY(!actions()->moveSetEntriesToObjectAction()->isVisible());
            QVERIFY(!actions()->createSetFromObjectEntriesAction()->isVisible());
        }
    }

    /// Meant: the picture of "Move Set Entries To Object" is named the other way round.
    void one_picture_is_named_the_other_way_round()
    {
        m_editor.reset();
        QStringList asked;
        nkIconManager::Source source;
        source.icon = [](const QString &, const QString &) { return QIcon(); };
        source.pixmap = [&asked](const QString &path) {
            asked.append(path);
            return QPixmap();
        };
        source.render = [](const QString &, const QSize &) { return QPixmap(); };
        nkIconManager::setSource(source);
        QWidget window;
        const nkMetadataActions catalogue(&window);
        QVERIFY(asked.contains(QStringLiteral("MetadataEditor/MoveObjectEntriestoSetOffNormal.svg")));
    }

    /// Meant: whatever the editor, the step of an assignment speaks of the last selected objects.
    void every_assignment_is_called_one_to_the_last_selection()
    {
        nkScenegraphService::the().setSelection({nkdNode(m_editor->chair)});
        nkMetadataService::the().setSelection({m_editor->gamma});
        actions()->assignToNodesAction()->trigger();
        QCOMPARE(EditingFixture::undoStack()->undoText(),
                 QStringLiteral("Add Sets to Last Selected Objects"));
    }

    /// Meant: inverting the selection leaves the rows below alone, selected ones too.
    void inverting_leaves_the_rows_below_alone()
    {
        m_editor->show();
        nkMetadataTreeView *view = m_editor->tree()->getTreeView();
        view->setFocus();
        const QModelIndex below = view->model()->index(0, 0, view->model()->index(0, 0));
        view->selectionModel()->select(below, QItemSelectionModel::ClearAndSelect);
        actions()->invertSelectionAction()->trigger();
        QVERIFY(view->selectionModel()->isSelected(below));
        QCOMPARE(view->selectionModel()->selectedIndexes().size(), view->model()->rowCount() + 1);
    }

    /// Meant: times have no seconds on the screen, and lose them when they are edited there, and only then.
    void an_edited_time_loses_its_seconds()
    {
        m_editor->showTypes();
        auto *edit = qobject_cast<QTimeEdit *>(m_editor->open("time", ValueColumn));
        QVERIFY(edit);
        QNKViewBase::commitOpenEditors();
        QCOMPARE(m_editor->of("time").getValue(), QVariant(QTime(13, 45, 30)));
        edit = qobject_cast<QTimeEdit *>(m_editor->open("time", ValueColumn));
        edit->stepUp();
        QNKViewBase::commitOpenEditors();
        QCOMPARE(m_editor->of("time").getValue(), QVariant(QTime(14, 45)));
    }

    /// Meant: Tab goes by the columns' numbers: from the key to the value to the type in front of both, and through
    /// the assignment that is not shown.
    void tab_goes_by_column_numbers()
    {
        m_editor->showTypes();
        QVERIFY(header()->isSectionHidden(AssignmentColumn));
        QVERIFY(header()->visualIndex(TypeColumn) < header()->visualIndex(KeyColumn));
        m_editor->view()->setFocus();
        m_editor->view()->setCurrentIndex(table()->index(0, IconColumn));
        QList<int> walk;
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(m_editor->view(), Qt::Key_Tab);
            walk.append(m_editor->view()->currentIndex().column());
        }
        QCOMPARE(walk, (QList<int>{AssignmentColumn, KeyColumn, ValueColumn, TypeColumn, IconColumn}));
    }

    /// Meant: the lines between the columns are nearly black in every palette.
    void the_lines_between_columns_are_dark_in_every_palette()
    {
        m_editor->show();
        for (const QColor &base : {QColor(Qt::white), QColor(40, 42, 46)}) {
            QPalette palette = m_editor->view()->palette();
            palette.setColor(QPalette::Base, base);
            m_editor->view()->setPalette(palette);
            const QImage picture = m_editor->view()->viewport()->grab().toImage();
            const int x = header()->sectionViewportPosition(ValueColumn) - header()->x();
            QCOMPARE(picture.pixelColor(x, picture.height() - 4), QColor(50, 50, 50));
        }
    }

    /// Meant: a column that is hidden forgets what it was filtered by.
    void a_hidden_column_forgets_its_filter()
    {
        m_editor->showTypes();
        auto *field = m_editor->window->findChild<QNKSearchBox *>(QStringLiteral("ValueFilter"));
        field->findChild<QLineEdit *>()->setText(QStringLiteral("some"));
        QTRY_COMPARE(m_editor->keys(), QStringList{"string"});
        header()->setColumnVisibility(ValueColumn, false);
        header()->setColumnVisibility(ValueColumn, true);
        QCOMPARE(field->findChild<QLineEdit *>()->text(), QString());
        QCOMPARE(m_editor->keys().size(), 10);
    }

    /// Meant: tool tips of values change from plain to wrapped at 21 characters, however wide these are.
    void tool_tips_of_values_wrap_from_21_characters_on()
    {
        nkdMetadataEntry entry = m_editor->of("string");
        const auto toolTip = [&] { return nkMetadataCellToolTip::text(m_editor->types, entry, ValueColumn); };
        entry.setValue(QString(20, QLatin1Char('i')));
        QCOMPARE(toolTip(), QStringLiteral("Metadata Value: ") + QString(20, QLatin1Char('i')));
        entry.setValue(QString(21, QLatin1Char('i')));
        QVERIFY(toolTip().startsWith(QStringLiteral("<html><head/><body><p>Metadata Value: ")));
    }

    /// Meant: the border of the list with the last focus is one light grey in every palette.
    void the_border_of_the_last_focus_is_light_grey_in_every_palette()
    {
        actions()->focusModeAction()->setChecked(true);
        QCOMPARE(m_editor->tree()->getTreeView()->styleSheet(),
                 QStringLiteral(
                     "nkMetadataTreeView[hasLastFocus=\"true\"] { border: 1px solid rgb(180, 180, 180); }"));
    }

private:
    static nkMetadataActions *actions() { return nkMetadataActions::instance(); }

    nkMetadataTableFilterModel *table() const
    {
        return qobject_cast<nkMetadataTableFilterModel *>(m_editor->view()->model());
    }

    nkMetadataKeyValueHeader *header() const
    {
        return m_editor->window->findChild<nkMetadataKeyValueHeader *>();
    }

    nkMetadataTreeModel *treeModel(int tree) const
    {
        return m_editor->window->treeWidgets().at(tree)->findChild<nkMetadataTreeModel *>();
    }

    static QStringList sorted(QStringList texts)
    {
        texts.sort();
        return texts;
    }

    /// Sets of these names and this colour, each with the tags "NAME 1" and "NAME 2".
    static QList<nkdMetadataSet> addSets(const QStringList &names, const QColor &colour)
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        QList<nkdMetadataSet> sets;
        for (const QString &name : names) {
            sets.append(nkdMetadataSet(loader.addSet(name, colour)));
            loader.addTag(sets.last().getObjectId(), name + QStringLiteral(" 1"));
            loader.addTag(sets.last().getObjectId(), name + QStringLiteral(" 2"));
        }
        loader.commit();
        return sets;
    }

    void showInTable(const QList<nkdMetadataSet> &sets) const
    {
        m_editor->show();
        m_editor->window->onMetadataSelectionChanged(sets);
    }

    std::unique_ptr<EditingFixture> m_editor;
};

NK_TEST_MAIN(TestKeptBehaviour)
#include "test_kept_behaviour.moc"
