#include "ActionsFixture.h"

#include <TestMain.h>

/// Creating, renaming, copying, pasting, duplicating, deleting and locking sets through their actions.
class TestSetOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ActionsFixture>();
        m_fixture->show();
        m_fixture->handler()->updateActionStates();
    }
    void cleanup() { m_fixture.reset(); }

    void creates_an_unassigned_set_without_objects()
    {
        QSignalSpy created(f().handler(), &nkMetadataActionsHandler::setCreated);
        f().select({});
        f().triggerOneStep(a().createSetAction(), QStringLiteral("Create Metadata Set"));
        const nkdMetadataSet set = f().setNamed(QStringLiteral("MetadataSet"));
        QVERIFY(!set.isNull() && !set.isAssigned());
        QCOMPARE(created.size(), 1);
        QCOMPARE(created.first().at(0).value<nkdMetadataSet>(), set);
        QVERIFY(created.first().at(1).value<nkdSceneObject>().isNull());
    }

    void creates_a_set_on_every_selected_object()
    {
        QSignalSpy created(f().handler(), &nkMetadataActionsHandler::setCreated);
        f().select({f().chair, f().alpha, f().paint, f().cam});
        f().triggerOneStep(a().createSetAction(), QStringLiteral("Create Metadata Set"));
        const nkdMetadataSet set = created.first().at(0).value<nkdMetadataSet>();
        QCOMPARE(f().carriers(set),
                 QStringList({QStringLiteral("Chair"), QStringLiteral("Paint"), QStringLiteral("Cam")}));
        QCOMPARE(created.first().at(1).value<nkdSceneObject>(), nkdSceneObject(f().cam));
    }

    void makes_the_names_of_new_sets_unique()
    {
        f().select({});
        a().createSetAction()->trigger();
        a().createSetAction()->trigger();
        QCOMPARE(f().names(nkMetadataService::the().getAllSets()).mid(3),
                 QStringList({QStringLiteral("MetadataSet"), QStringLiteral("MetadataSet2")}));
    }

    void says_created_only_when_the_undo_step_is_complete()
    {
        f().select({});
        bool scopeOpen = true;
        const QObject listener;
        connect(f().handler(), &nkMetadataActionsHandler::setCreated, &listener,
                [&scopeOpen] { scopeOpen = kernel::Document::the().isScopeOpen(); });
        a().createSetAction()->trigger();
        QVERIFY(!scopeOpen);
    }

    void leaves_renaming_to_the_trees()
    {
        QSignalSpy rename(f().handler(), &nkMetadataActionsHandler::renameSet);
        f().elsewhere->setFocus();
        f().select({f().alpha});
        f().triggerNothing(a().renameAction());
        QCOMPARE(rename.size(), 1);
    }

    void copies_sets_and_can_paste_them_at_once()
    {
        f().select({f().chair, f().alpha});
        QVERIFY(!a().pasteAction()->isEnabled());
        f().triggerNothing(a().copyAction());
        QVERIFY(!nkMetadataService::the().hasNoCopiedSets());
        QVERIFY(a().pasteAction()->isEnabled());
    }

    void pastes_onto_the_selected_objects()
    {
        f().select({f().alpha});
        a().copyAction()->trigger();
        f().select({f().table, f().plate});
        f().triggerOneStep(a().pasteAction());
        const nkdMetadataSet pasted = nkMetadataService::the().getAllSets().last();
        QCOMPARE(f().carriers(pasted), QStringList({QStringLiteral("Table"), QStringLiteral("Plate")}));
        QCOMPARE(f().keys(pasted), f().keys(f().alpha));
    }

    void pastes_unassigned_without_objects()
    {
        f().select({f().alpha, f().beta});
        a().copyAction()->trigger();
        f().select({});
        f().triggerOneStep(a().pasteAction());
        QCOMPARE(nkMetadataService::the().getAllSets().size(), 5);
        QVERIFY(!nkMetadataService::the().getAllSets().last().isAssigned());
    }

    void duplicates_the_selected_sets()
    {
        f().select({f().beta, f().alpha});
        f().triggerOneStep(a().duplicateAction());
        const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
        QCOMPARE(sets.size(), 5);
        QCOMPARE(f().keys(sets.at(3)), f().keys(f().beta));
        QCOMPARE(f().keys(sets.at(4)), f().keys(f().alpha));
    }

    void deletes_the_selected_sets()
    {
        f().alpha.setLocked(true);
        f().select({f().alpha, f().gamma});
        f().triggerOneStep(a().deleteAction());
        QCOMPARE(f().names(nkMetadataService::the().getAllSets()), QStringList(QStringLiteral("Beta")));
    }

    void deletes_by_key_in_the_list_of_sets()
    {
        f().upper->selectObjects({f().beta});
        QTest::keyClick(f().upper->getTreeView(), Qt::Key_Delete);
        QVERIFY(!f().beta.isAlive());
    }

    void deletes_nothing_from_a_list_of_objects()
    {
        f().lower->getTreeView()->setFocus();
        f().select({f().alpha});
        f().triggerNothing(a().deleteAction());
        f().lower->selectObjects({f().chair});
        QTest::keyClick(f().lower->getTreeView(), Qt::Key_Delete);
        QVERIFY(f().alpha.isAlive() && f().chair.isAlive());
        f().elsewhere->setFocus();
        f().select({f().alpha});
        f().triggerNothing(a().deleteAction());
    }

    void locks_and_unlocks_the_selected_sets()
    {
        f().beta.setLocked(true);
        f().select({f().alpha, f().beta});
        f().triggerOneStep(a().lockAction());
        QVERIFY(f().alpha.isLocked() && f().beta.isLocked());
        QVERIFY(!a().lockAction()->isEnabled());
        QVERIFY(a().unlockAction()->isEnabled());
        f().triggerOneStep(a().unlockAction());
        QVERIFY(!f().alpha.isLocked() && !f().beta.isLocked());
        QVERIFY(!a().unlockAction()->isEnabled());
    }

    void deletes_all_unassigned_sets_as_one_step()
    {
        nkMetadataService::the().createSet(QStringLiteral("Loose"), {});
        f().select({f().alpha});
        f().triggerOneStep(a().deleteUnassignedSetsAction(), QStringLiteral("Delete All Unassigned Sets"));
        QCOMPARE(f().names(nkMetadataService::the().getAllSets()),
                 QStringList({QStringLiteral("Alpha"), QStringLiteral("Beta")}));
        f().triggerNothing(a().deleteUnassignedSetsAction());
    }

    void does_nothing_with_nothing_selected_data()
    {
        QTest::addColumn<int>("action");
        for (const int id : {nkMetadataAction::Duplicate, nkMetadataAction::Delete, nkMetadataAction::Lock,
                             nkMetadataAction::Unlock, nkMetadataAction::Paste}) {
            QTest::addRow("%d", id) << id;
        }
    }
    void does_nothing_with_nothing_selected()
    {
        QFETCH(int, action);
        f().select({});
        f().triggerNothing(a().action(nkMetadataAction::Id(action)));
    }

private:
    ActionsFixture &f() const { return *m_fixture; }
    nkMetadataActions &a() const { return *m_fixture->actions; }

    std::unique_ptr<ActionsFixture> m_fixture;
};

NK_TEST_MAIN(TestSetOperations)
#include "test_set_operations.moc"
