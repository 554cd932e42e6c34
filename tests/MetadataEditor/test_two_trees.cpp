#include "WindowFixture.h"
#include "actions/nkMetadataActions.h"

#include <TestMain.h>
#include <nkKernelServices/nkInternalUiService.h>
#include <nkKernelServices/nkScenegraphService.h>

/// The two trees of the window together: focus, the last selection, focus mode.
class TestTwoTrees : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_editor = std::make_unique<WindowFixture>(); }
    void cleanup() { m_editor.reset(); }

    void start_with_sets_above_and_the_last_selection_below()
    {
        QCOMPARE(m_editor->window->treeWidgets().size(), 2);
        QCOMPARE(upper()->getMode(), TreeMode::Sets);
        QCOMPARE(lower()->getMode(), TreeMode::LastSelection);
        QVERIFY(upper()->hasLastFocus());
        QVERIFY(!lower()->hasLastFocus());
    }

    void focus_in_one_clears_the_selection_of_the_other()
    {
        m_editor->show();
        upper()->getTreeView()->setFocus();
        m_editor->select({m_editor->alpha});
        QVERIFY(upper()->getTreeView()->selectionModel()->hasSelection());
        lower()->getTreeView()->setFocus();
        QVERIFY(!upper()->getTreeView()->selectionModel()->hasSelection());
        QVERIFY(lower()->hasLastFocus());
        QVERIFY(!upper()->hasLastFocus());
        QCOMPARE(m_editor->keys(), QStringList());
        upper()->getTreeView()->setFocus();
        QVERIFY(upper()->hasLastFocus());
        QVERIFY(!lower()->hasLastFocus());
    }

    void the_table_shows_what_the_tree_with_the_focus_selected()
    {
        m_editor->show();
        lower()->setMode(TreeMode::Materials);
        lower()->setMode(TreeMode::Sets);
        upper()->getTreeView()->setFocus();
        m_editor->select({m_editor->alpha});
        QCOMPARE(m_editor->keys().size(), 3);
        lower()->getTreeView()->setFocus();
        lower()->getTreeView()->selectObjects({m_editor->beta});
        QCOMPARE(m_editor->keys(), QStringList{QStringLiteral("name")});
        QVERIFY(!upper()->getTreeView()->selectionModel()->hasSelection());
        upper()->getTreeView()->setFocus();
        QVERIFY(!lower()->getTreeView()->selectionModel()->hasSelection());
        QVERIFY(m_editor->keys().isEmpty());
        m_editor->select({m_editor->alpha});
        QCOMPARE(m_editor->keys().size(), 3);
    }

    void focus_that_a_menu_borrows_moves_no_selection()
    {
        m_editor->show();
        upper()->getTreeView()->setFocus();
        m_editor->select({m_editor->alpha});
        const ModalAnswer closed = ModalAnswer::menu(QString());
        m_editor->window->onShowContextMenu(m_editor->window->mapToGlobal(QPoint(40, 40)));
        QVERIFY(closed.given());
        QVERIFY(upper()->hasLastFocus());
        QVERIFY(upper()->getTreeView()->selectionModel()->hasSelection());
    }

    void focus_in_the_table_or_the_panel_keeps_the_selection_of_the_tree()
    {
        m_editor->show();
        upper()->getTreeView()->setFocus();
        m_editor->select({m_editor->alpha});
        m_editor->view()->setFocus();
        m_editor->view()->selectAll();
        QVERIFY(upper()->getTreeView()->selectionModel()->hasSelection());
        QVERIFY(upper()->hasLastFocus());
        QCOMPARE(m_editor->keys().size(), 3);
    }

    void a_selection_in_the_scene_graph_is_listed_below()
    {
        m_editor->show();
        nkScenegraphService::the().setSelection({chair()});
        WindowFixture::settle();
        QCOMPARE(names(lower()), QStringList{QStringLiteral("Chair")});
    }

    void the_host_can_ask_for_the_last_selection()
    {
        m_editor->show();
        m_editor->select({m_editor->beta});
        lower()->setMode(TreeMode::Materials);
        nkScenegraphService::the().setSelection({chair()});
        Q_EMIT nkInternalUiService::the().requestMetadataEditorSelectionModeInLowerTree();
        // Not inside the call.
        QCOMPARE(lower()->getMode(), TreeMode::Materials);
        WindowFixture::settle();
        QCOMPARE(lower()->getMode(), TreeMode::LastSelection);
        QVERIFY(!upper()->getTreeView()->selectionModel()->hasSelection());
        QVERIFY(m_editor->keys().contains(QStringLiteral("weight")));
    }

    void focus_mode_shows_every_set_of_the_list_with_the_focus()
    {
        m_editor->show();
        upper()->getTreeView()->setFocus();
        m_editor->select({m_editor->beta});
        QCOMPARE(m_editor->keys(), QStringList{QStringLiteral("name")});
        nkMetadataActions::instance()->focusModeAction()->setChecked(true);
        lower()->getTreeView()->setFocus();
        upper()->getTreeView()->setFocus();
        QCOMPARE(m_editor->keys().size(), 4);
        m_editor->select({m_editor->beta});
        QCOMPARE(m_editor->keys().size(), 4);
        nkMetadataActions::instance()->focusModeAction()->setChecked(false);
        QCOMPARE(m_editor->keys(), QStringList{QStringLiteral("name")});
    }

private:
    nkMetadataTreeWidget *upper() const { return m_editor->window->treeWidgets().at(0); }
    nkMetadataTreeWidget *lower() const { return m_editor->window->treeWidgets().at(1); }
    nkdNode chair() const { return nkScenegraphService::the().getRootNodes().constFirst(); }

    static QStringList names(const nkMetadataTreeWidget *tree)
    {
        QStringList texts;
        const QAbstractItemModel *model = tree->getTreeView()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            texts.append(model->index(row, 0).data().toString());
        }
        return texts;
    }

    std::unique_ptr<WindowFixture> m_editor;
};

NK_TEST_MAIN(TestTwoTrees)
#include "test_two_trees.moc"
