#include "ActionsFixture.h"

#include <TestMain.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>

#include <QLineEdit>

/// What the trees do at the catalogue's commands.
class TestTreeCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ActionsFixture>();
        m_fixture->show();
    }
    void cleanup() { m_fixture.reset(); }

    void offer_eight_actions_by_their_keys()
    {
        const QList<QAction *> expected{a().selectAllEditorsAction(),
                                        a().createSetAction(),
                                        a().renameAction(),
                                        a().copyAction(),
                                        a().pasteAction(),
                                        a().duplicateAction(),
                                        a().deleteAction(),
                                        a().removeSelectedAssignmentsAction()};
        QCOMPARE(upper()->actions(), expected);
        QCOMPARE(lower()->actions(), expected);
        QSet<QKeySequence> keys;
        for (const QAction *action : expected) {
            QVERIFY(action->shortcut().isEmpty() || !keys.contains(action->shortcut()));
            keys.insert(action->shortcut());
        }
    }

    void rename_edits_the_row_of_the_tree_with_the_focus()
    {
        f().upper->selectObjects({f().beta});
        QTest::keyClick(upper(), Qt::Key_R, Qt::ControlModifier);
        auto *editor = upper()->findChild<QLineEdit *>();
        QVERIFY(editor);
        QVERIFY(!lower()->findChild<QLineEdit *>());
        editor->setText(QStringLiteral("Better"));
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
        QCOMPARE(f().beta.getName(), QStringLiteral("Better"));
    }

    void rename_leaves_trees_without_focus_and_locked_sets_alone()
    {
        f().upper->selectObjects({f().beta});
        f().elsewhere->setFocus();
        Q_EMIT f().handler()->renameSet();
        QVERIFY(!upper()->findChild<QLineEdit *>());
        upper()->setFocus();
        f().beta.setLocked(true);
        f().upper->reload();
        Q_EMIT f().handler()->renameSet();
        QVERIFY(!upper()->findChild<QLineEdit *>());
    }

    void rename_without_a_current_row_does_nothing()
    {
        f().upper->clearSelection();
        Q_EMIT f().handler()->renameSet();
        QVERIFY(!upper()->findChild<QLineEdit *>());
    }

    void a_new_set_is_named_at_once()
    {
        f().select({});
        a().createSetAction()->trigger();
        auto *editor = upper()->findChild<QLineEdit *>();
        QVERIFY(editor);
        QCOMPARE(editor->text(), QStringLiteral("MetadataSet"));
        QCOMPARE(upper()->getMetadataSet(upper()->currentIndex()).getName(), QStringLiteral("MetadataSet"));
    }

    void a_new_set_of_an_object_is_named_below_it()
    {
        lower()->setFocus();
        f().lower->selectObjects({f().chair});
        a().createSetAction()->trigger();
        auto *editor = lower()->findChild<QLineEdit *>();
        QVERIFY(editor);
        QCOMPARE(editor->text(), QStringLiteral("MetadataSet"));
        QCOMPARE(nkdSceneObject(lower()->getObject(lower()->currentIndex().parent())),
                 nkdSceneObject(f().chair));
    }

    void a_new_set_shows_in_both_trees()
    {
        f().lower->setMode(TreeMode::Sets);
        f().elsewhere->setFocus();
        f().select({f().chair});
        a().createSetAction()->trigger();
        QCOMPARE(upper()->model()->rowCount(), 4);
        QCOMPARE(lower()->model()->rowCount(), 4);
        QVERIFY(!upper()->findChild<QLineEdit *>());
    }

    void a_new_set_that_is_filtered_out_is_not_edited()
    {
        upper()->setCurrentIndex(upper()->model()->index(0, 0));
        auto *proxy = qobject_cast<QSortFilterProxyModel *>(upper()->model());
        QVERIFY(QMetaObject::invokeMethod(f().upper->findChild<QLineEdit *>(), "setText",
                                          Q_ARG(QString, QStringLiteral("Alp"))));
        QTRY_COMPARE(proxy->rowCount(), 1);
        upper()->setFocus();
        f().select({});
        a().createSetAction()->trigger();
        QVERIFY(!upper()->viewport()->findChild<QLineEdit *>());
        QCOMPARE(nkMetadataService::the().getAllSets().size(), 4);
    }

    void selection_commands_reach_the_tree_with_the_focus()
    {
        a().selectAllAction()->trigger();
        QCOMPARE(upper()->getSelectedObjects(4).size(), 3);
        QVERIFY(!lower()->selectionModel()->hasSelection());
        a().deselectAllAction()->trigger();
        QVERIFY(!upper()->selectionModel()->hasSelection());
        f().elsewhere->setFocus();
        a().selectAllAction()->trigger();
        a().invertSelectionAction()->trigger();
        QVERIFY(!upper()->selectionModel()->hasSelection());
    }

    void inverting_toggles_top_level_rows_only()
    {
        const QModelIndex child = childOf(row(upper(), QStringLiteral("Alpha")), QStringLiteral("Cam"));
        upper()->selectionModel()->select(child, QItemSelectionModel::ClearAndSelect);
        const int steps = f().stack()->count();
        a().invertSelectionAction()->trigger();
        QVERIFY(upper()->selectionModel()->isSelected(child));
        QCOMPARE(upper()->selectionModel()->selectedIndexes().size(), 4);
        a().invertSelectionAction()->trigger();
        QCOMPARE(upper()->selectionModel()->selectedIndexes(), QModelIndexList{child});
        QCOMPARE(f().stack()->count(), steps);
    }

    void inverting_an_empty_list_does_nothing()
    {
        SceneFixture::reset();
        f().upper->reload();
        Q_EMIT f().handler()->invertSelection();
        QVERIFY(!upper()->selectionModel()->hasSelection());
    }

    void removing_selected_assignments_from_sets()
    {
        const QModelIndex alphaRow = row(upper(), QStringLiteral("Alpha"));
        upper()->selectionModel()->select(childOf(alphaRow, QStringLiteral("Cam")),
                                          QItemSelectionModel::ClearAndSelect);
        upper()->selectionModel()->select(childOf(alphaRow, QStringLiteral("Paint")),
                                          QItemSelectionModel::Select);
        f().triggerOneStep(a().removeSelectedAssignmentsAction(),
                           QStringLiteral("Remove Selected Assignments"));
        QCOMPARE(f().carriers(f().alpha), QStringList(QStringLiteral("Chair")));
    }

    void removing_selected_assignments_of_set_rows_does_nothing()
    {
        f().upper->selectObjects({f().alpha, f().beta});
        f().triggerNothing(a().removeSelectedAssignmentsAction());
    }

    void removing_selected_assignments_from_objects_by_key()
    {
        lower()->setFocus();
        const QModelIndex below = childOf(row(lower(), QStringLiteral("Chair")), QStringLiteral("Beta"));
        lower()->selectionModel()->select(below, QItemSelectionModel::ClearAndSelect);
        QTest::keyClick(lower(), Qt::Key_Backspace);
        QCOMPARE(f().names(nkdMetadata::fromObject(f().chair).getSets()),
                 QStringList(QStringLiteral("Alpha")));
        QVERIFY(kernel::Document::the().undo());
        QVERIFY(f().beta.isAssigned());
    }

    void removing_all_assignments_of_sets()
    {
        f().upper->selectObjects({f().alpha, f().beta});
        f().triggerOneStep(a().removeAllAssignmentsAction(), QStringLiteral("Remove All Assignments"));
        QVERIFY(!f().alpha.isAssigned() && !f().beta.isAssigned());
    }

    void removing_all_assignments_of_objects()
    {
        lower()->setFocus();
        f().lower->selectObjects({f().chair, f().paint});
        f().triggerOneStep(a().removeAllAssignmentsAction(), QStringLiteral("Remove All Assignments"));
        QCOMPARE(f().carriers(f().alpha), QStringList(QStringLiteral("Cam")));
        QVERIFY(!f().beta.isAssigned());
        QVERIFY(nkdMetadata::fromObject(f().chair).hasObjectEntries());
    }

    void a_reload_in_the_middle_of_a_removal_is_survived()
    {
        const QModelIndex alphaRow = row(upper(), QStringLiteral("Alpha"));
        for (const QString &name :
             {QStringLiteral("Chair"), QStringLiteral("Cam"), QStringLiteral("Paint")}) {
            upper()->selectionModel()->select(childOf(alphaRow, name), QItemSelectionModel::Select);
        }
        const QMetaObject::Connection reloads = connect(&nkMetadataService::the(),
                                                        &nkMetadataService::metadataChanged, this,
                                                        [this] { f().upper->reload(); });
        f().triggerOneStep(a().removeSelectedAssignmentsAction());
        disconnect(reloads);
        QVERIFY(!f().alpha.isAssigned());
    }

    /// That the list is read twice is meant.
    void a_new_set_is_listed_twice_before_it_is_named()
    {
        QSignalSpy reloads(f().upper->findChild<nkMetadataTreeModel *>(), &QNKItemModel::aboutToReload);
        f().select({});
        a().createSetAction()->trigger();
        QCOMPARE(reloads.size(), 2);
    }

    void a_new_entry_is_told_to_the_selected_rows()
    {
        f().upper->selectObjects({f().alpha});
        f().alpha.setName(QStringLiteral("Renamed"));
        f().beta.setName(QStringLiteral("Renamed too"));
        QSignalSpy changes(f().upper->findChild<nkMetadataTreeModel *>(), &QAbstractItemModel::dataChanged);
        Q_EMIT f().handler()->entryCreated(nkdMetadataEntry());
        QCOMPARE(changes.size(), 1);
        QCOMPARE(upper()->getSelectedObjects(4), QList<nkdObject>{f().alpha});
    }

    void trees_without_a_catalogue_have_no_commands()
    {
        m_fixture.reset();
        const nkMetadataTreeWidget tree(nullptr);
        QVERIFY(tree.getTreeView()->actions().isEmpty());
    }

private:
    static QModelIndex childOf(const QModelIndex &parent, const QString &name)
    {
        const QAbstractItemModel *model = parent.model();
        for (int row = 0; row < model->rowCount(parent); ++row) {
            const QModelIndex child = model->index(row, 0, parent);
            if (child.data().toString() == name) {
                return child;
            }
        }
        return QModelIndex();
    }

    static QModelIndex row(const nkMetadataTreeView *view, const QString &name)
    {
        const QAbstractItemModel *model = view->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->index(row, 0).data().toString() == name) {
                return model->index(row, 0);
            }
        }
        return QModelIndex();
    }

    nkMetadataTreeView *upper() const { return m_fixture->upper->getTreeView(); }
    nkMetadataTreeView *lower() const { return m_fixture->lower->getTreeView(); }
    ActionsFixture &f() const { return *m_fixture; }
    nkMetadataActions &a() const { return *m_fixture->actions; }

    std::unique_ptr<ActionsFixture> m_fixture;
};

NK_TEST_MAIN(TestTreeCommands)
#include "test_tree_commands.moc"
