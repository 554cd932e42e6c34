#include "ActionsFixture.h"

#include "../MetadataEditor/RecordingMainWindow.h"
#include "frame/nkMetadataEditorModule.h"
#include "frame/nkMetadataEditorUpdater.h"

#include <TestMain.h>
#include <kernel/services/ServiceRegistry.h>

/// Creating, deleting and moving entries through their actions.
class TestEntryOperations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ActionsFixture>();
        m_fixture->show();
    }
    void cleanup() { m_fixture.reset(); }

    void creates_an_entry_of_each_type_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("type");
        int type = nkMetadataTypes::String;
        for (const char *name :
             {"String", "Integer", "Float", "Boolean", "Time", "Date", "Date and Time", "List", "Tag"}) {
            QTest::newRow(name) << nkMetadataAction::CreateStringEntry + type << type;
            ++type;
        }
    }
    void creates_an_entry_of_each_type()
    {
        QFETCH(int, action);
        QFETCH(int, type);
        QAction *const create = a().action(nkMetadataAction::Id(action));
        QCOMPARE(create->text(), QString::fromLatin1(QTest::currentDataTag()));
        QSignalSpy created(f().handler(), &nkMetadataActionsHandler::entryCreated);
        f().select({f().alpha});
        f().triggerOneStep(create);
        QCOMPARE(created.size(), 1);
        const nkdMetadataEntry entry = created.first().first().value<nkdMetadataEntry>();
        QCOMPARE(entry.getSet(), f().alpha);
        QCOMPARE(entry.isTag(), type == nkMetadataTypes::Tag);
        QCOMPARE(int(entry.getValueType()),
                 type == nkMetadataTypes::Tag ? int(nkMetadataTypes::String) : type);
    }

    void creates_among_the_own_entries_of_an_object()
    {
        QSignalSpy created(f().handler(), &nkMetadataActionsHandler::entryCreated);
        f().select({f().table});
        f().triggerOneStep(a().createTagEntryAction());
        QVERIFY(nkdMetadata::fromObject(f().table).hasObjectEntries());
        const nkdMetadataEntry entry = created.first().first().value<nkdMetadataEntry>();
        QVERIFY(entry.isTag());
        QCOMPARE(entry.getSet(), f().ownSet(f().table));
    }

    void creates_nothing_where_not_one_member_takes_it()
    {
        QSignalSpy created(f().handler(), &nkMetadataActionsHandler::entryCreated);
        f().select({f().alpha, f().beta});
        QVERIFY(a().createEntryMenu()->isEnabled());
        f().triggerNothing(a().createStringEntryAction());
        f().select({});
        f().triggerNothing(a().createStringEntryAction());
        f().alpha.setLocked(true);
        f().select({f().alpha});
        f().triggerNothing(a().createStringEntryAction());
        QVERIFY(created.isEmpty());
    }

    void says_created_after_the_host_announced_it()
    {
        QStringList events;
        const QObject listener;
        connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, &listener,
                [&events] { events.append(QStringLiteral("changed")); });
        connect(f().handler(), &nkMetadataActionsHandler::entryCreated, &listener,
                [&events] { events.append(QStringLiteral("created")); });
        f().select({f().alpha});
        a().createIntegerEntryAction()->trigger();
        QCOMPARE(events, QStringList({QStringLiteral("changed"), QStringLiteral("created")}));
    }

    void keeps_the_window_from_refreshing_meanwhile()
    {
        RecordingMainWindow host;
        kernel::ServiceRegistry::the().setMainWindowService(&host);
        m_fixture.reset();
        nkMetadataEditorModule window(nullptr, QString());
        if (!nkMetadataActions::instance()) {
            new nkMetadataActions(&window);
        }
        const nkdMetadataSet set = nkMetadataService::the().getAllSets().first();
        window.updater()->enable();
        QCoreApplication::processEvents();
        QSignalSpy updates(window.updater(), &QNKUpdateScheduler::updateScheduled);
        nkMetadataService::the().setSelection({set});
        QCoreApplication::processEvents();
        updates.clear();
        nkMetadataActions::instance()->createStringEntryAction()->trigger();
        QCoreApplication::processEvents();
        QVERIFY(updates.isEmpty());
        // Blocked no longer.
        nkdMetadataSet(set).createEntry(nkMetadataTypes::String);
        QCoreApplication::processEvents();
        QCOMPARE(updates.size(), 1);
    }

    void deletes_all_entries_of_the_selected_sets()
    {
        f().beta.setLocked(true);
        f().select({f().alpha, f().beta, f().gamma, f().ownSet(f().chair)});
        f().triggerOneStep(a().deleteAllEntriesAction(), QStringLiteral("Delete All Entries"));
        for (const nkdMetadataSet &set : {f().alpha, f().beta, f().ownSet(f().chair)}) {
            QVERIFY(set.getEntries().isEmpty());
        }
        QVERIFY(!a().deleteAllEntriesAction()->isEnabled());
        f().triggerNothing(a().deleteAllEntriesAction());
    }

    void moves_entries_of_sets_behind_those_of_the_objects()
    {
        f().select({f().beta, f().chair, f().alpha, f().paint});
        f().triggerOneStep(shown(a().moveSetEntriesToObjectAction()),
                           QStringLiteral("Move Set Entries To Object"));
        const QStringList moved{QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")};
        QCOMPARE(f().keys(f().ownSet(f().chair)), QStringList(QStringLiteral("own")) + moved);
        QCOMPARE(f().keys(f().ownSet(f().paint)), moved);
        QVERIFY(f().alpha.getEntries().isEmpty() && f().beta.getEntries().isEmpty());
    }

    void moves_nothing_that_no_object_takes()
    {
        f().select({f().alpha});
        f().triggerNothing(shown(a().moveSetEntriesToObjectAction()));
        nkdMetadataSet own = f().ownSet(f().chair);
        f().select({own, f().chair});
        f().triggerNothing(shown(a().moveSetEntriesToObjectAction()));
        own.setLocked(true);
        f().select({f().alpha, f().chair});
        f().triggerNothing(shown(a().moveSetEntriesToObjectAction()));
        QCOMPARE(f().keys(f().alpha).size(), 2);
    }

    void turns_own_entries_into_a_set_of_the_object()
    {
        f().select({f().chair, f().table});
        f().triggerOneStep(shown(a().createSetFromObjectEntriesAction()),
                           QStringLiteral("Create Set From Object Entries"));
        const nkdMetadataSet set = f().setNamed(QStringLiteral("MetadataSet"));
        QCOMPARE(f().keys(set), QStringList(QStringLiteral("own")));
        QCOMPARE(f().carriers(set), QStringList(QStringLiteral("Chair")));
        QVERIFY(!nkdMetadata::fromObject(f().chair).hasObjectEntries());
        QCOMPARE(nkMetadataService::the().getAllSets().size(), 4);
    }

    void turns_nothing_into_a_set_without_own_entries()
    {
        f().select({f().table, f().alpha});
        f().triggerNothing(shown(a().createSetFromObjectEntriesAction()));
    }

private:
    /// Every evaluation hides the moves, and what is hidden cannot be triggered.
    static QAction *shown(QAction *action)
    {
        action->setVisible(true);
        return action;
    }

    ActionsFixture &f() const { return *m_fixture; }
    nkMetadataActions &a() const { return *m_fixture->actions; }

    std::unique_ptr<ActionsFixture> m_fixture;
};

NK_TEST_MAIN(TestEntryOperations)
#include "test_entry_operations.moc"
