#include "AssetScene.h"
#include "SuitePlace.h"

#include <TestMain.h>

#include <QUndoStack>

using kernel::AssetInfo;
using kernel::AssetVersion;

/// The operations of the asset manager between a scene and a database.
class TestAssetService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QString error = m_place.start();
        QVERIFY2(error.isEmpty(), qPrintable(error));
    }
    void init()
    {
        m_here = m_place.person("Anna");
        m_ben = m_place.person("Ben");
        m_scene = std::make_unique<AssetScene>(m_here.get());
    }
    void cleanup()
    {
        m_scene.reset();
        m_here.reset();
        m_ben.reset();
        m_place.clear();
    }

    void publishing_makes_an_asset_at_rest()
    {
        nkdMetadataSet set = AssetScene::set("Chair", {{"wood", "oak"}, {"legs", 4}});
        set.setColor(Qt::red);
        service().publishSets({set});
        QCOMPARE(AssetScene::state(set), QStringLiteral("at rest 1"));
        QVERIFY(!set.isEditable());
        QCOMPARE(m_scene->changes.size(), 1);
        AssetInfo asset;
        QVERIFY(m_ben->info(AssetScene::assetId(set), asset).isDone());
        QCOMPARE(asset.name, QStringLiteral("Chair"));
        service().publishSets({set});
        QCOMPARE(m_scene->changes.size(), 1);
        QVERIFY(m_scene->told().isEmpty());
    }

    void publishing_skips_object_sets_and_keeps_locks_out_of_the_asset()
    {
        nkdMetadataSet locked = AssetScene::set("Locked", {{"a", 1}});
        locked.setLocked(true);
        const nkdNode node = SceneFixture::node(QStringLiteral("Node"));
        const nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
        service().publishSets({own, locked});
        QVERIFY(!own.isAsset());
        QVERIFY(locked.isAsset());
        const QList<nkdMetadataSet> placed = service().placeAssets({AssetScene::assetId(locked)});
        QCOMPARE(placed.size(), 1);
        QVERIFY(!placed.constFirst().isLocked());
    }

    void placing_makes_a_set_like_the_asset_in_one_step()
    {
        nkdMetadataSet chair = AssetScene::set("Chair", {{"wood", "oak"}, {"legs", 4}});
        chair.setColor(Qt::red);
        const nkdMetadataSet table = AssetScene::set("Table", {{"wood", "elm"}});
        service().publishSets({chair, table});
        const QStringList ids{AssetScene::assetId(table), AssetScene::assetId(chair)};
        SceneFixture::reset();
        const QList<nkdMetadataSet> placed = service().placeAssets(ids);
        QCOMPARE(placed.size(), 2);
        QCOMPARE(placed.at(1).getName(), QStringLiteral("Chair"));
        QCOMPARE(placed.at(1).getColor(), QColor(Qt::red));
        QCOMPARE(placed.at(1).getValue(QStringLiteral("legs")), QVariant(4));
        QCOMPARE(AssetScene::state(placed.at(0)), QStringLiteral("at rest 1"));
        QCOMPARE(stack()->count(), 1);
        QCOMPARE(stack()->undoText(), QStringLiteral("Place Assets"));
        QVERIFY(AssetScene::document().undo());
        QVERIFY(!nkMetadataService::the().hasSets());
        QVERIFY(AssetScene::document().redo());
        QCOMPARE(AssetScene::state(placed.at(1)), QStringLiteral("at rest 1"));
    }

    void an_older_version_is_placed_on_demand_and_cannot_be_modified()
    {
        const nkdMetadataSet chair = storedAnew("oak", "elm");
        const QList<nkdMetadataSet> placed = service().placeAssets({AssetScene::assetId(chair)}, 1);
        QCOMPARE(AssetScene::wood(placed.constFirst()), QVariant("oak"));
        QCOMPARE(AssetScene::state(placed.constFirst()), QStringLiteral("at rest 1"));
        service().modifyAssets(placed);
        QCOMPARE(AssetScene::state(placed.constFirst()), QStringLiteral("at rest 1"));
        QVERIFY(m_scene->told().constFirst().contains(QStringLiteral("has moved on")));
    }

    void modifying_checks_out_and_storing_gives_back()
    {
        nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        m_scene->changes.clear();
        service().modifyAssets({chair});
        QCOMPARE(AssetScene::state(chair), QStringLiteral("edited 1"));
        QVERIFY(chair.isEditable());
        QCOMPARE(holder(chair), QStringLiteral("Anna"));
        chair.setValue(QStringLiteral("wood"), "elm");
        chair.setName(QStringLiteral("Stool"));
        service().saveAssets({chair});
        QCOMPARE(AssetScene::state(chair), QStringLiteral("at rest 2"));
        QVERIFY(holder(chair).isEmpty());
        QCOMPARE(m_scene->changes.size(), 2);
        AssetVersion stored;
        QVERIFY(m_ben->read(AssetScene::assetId(chair), 0, stored).isDone());
        QCOMPARE(stored.name, QStringLiteral("Stool"));
        QVERIFY(stored.content.contains("elm"));
    }

    void a_set_that_somebody_has_is_refused_with_the_name_and_the_others_go_on()
    {
        const nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        const nkdMetadataSet table = AssetScene::asset("Table", "elm");
        QVERIFY(m_ben->checkOut(AssetScene::assetId(chair), 1).isDone());
        service().modifyAssets({chair, table});
        QCOMPARE(AssetScene::state(chair), QStringLiteral("at rest 1"));
        QCOMPARE(AssetScene::state(table), QStringLiteral("edited 1"));
        const QStringList told = m_scene->told();
        QCOMPARE(told.size(), 1);
        QVERIFY2(told.constFirst().contains(QStringLiteral("“Chair” is checked out by Ben")),
                 qPrintable(told.constFirst()));
    }

    void a_version_that_moved_on_is_told_and_kept()
    {
        nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        service().modifyAssets({chair});
        chair.setValue(QStringLiteral("wood"), "elm");
        passBy(chair, "pine");
        service().saveAssets({chair});
        QCOMPARE(AssetScene::state(chair), QStringLiteral("edited 1"));
        QCOMPARE(AssetScene::wood(chair), QVariant("elm"));
        const QString told = m_scene->told().value(0);
        QVERIFY2(told.contains(QStringLiteral("Ben has stored version 2 and this is version 1; reload it")),
                 qPrintable(told));
        AssetVersion stored;
        QVERIFY(m_ben->read(AssetScene::assetId(chair), 0, stored).isDone());
        QCOMPARE(stored.version, 2);
        QVERIFY(stored.content.contains("pine"));
        service().reloadAssets({chair});
        QCOMPARE(AssetScene::wood(chair), QVariant("pine"));
        QCOMPARE(AssetScene::state(chair), QStringLiteral("at rest 2"));
    }

    void reloading_takes_the_newest_version_as_one_step()
    {
        const nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        passBy(chair, "pine");
        const int steps = stack()->count();
        service().reloadAssets({chair});
        QCOMPARE(AssetScene::wood(chair), QVariant("pine"));
        QCOMPARE(chair.getName(), QStringLiteral("Pine"));
        QCOMPARE(AssetScene::state(chair), QStringLiteral("at rest 2"));
        QCOMPARE(stack()->count(), steps + 1);
        QCOMPARE(stack()->undoText(), QStringLiteral("Reload from Asset Manager"));
        QVERIFY(AssetScene::document().undo());
        QCOMPARE(AssetScene::wood(chair), QVariant("oak"));
        QCOMPARE(chair.getName(), QStringLiteral("Chair"));
        QCOMPARE(AssetScene::state(chair), QStringLiteral("at rest 1"));
        QVERIFY(AssetScene::document().redo());
        QCOMPARE(AssetScene::wood(chair), QVariant("pine"));
        service().reloadAssets({chair});
        QCOMPARE(stack()->count(), steps + 1); // nothing new, no step
    }

    void reloading_an_edited_set_keeps_the_check_out()
    {
        nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        service().modifyAssets({chair});
        chair.setValue(QStringLiteral("wood"), "elm");
        service().reloadAssets({chair});
        QCOMPARE(AssetScene::wood(chair), QVariant("oak"));
        QCOMPARE(AssetScene::state(chair), QStringLiteral("edited 1"));
        QCOMPARE(holder(chair), QStringLiteral("Anna"));
    }

    void a_locked_set_is_not_reloaded()
    {
        nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        passBy(chair, "pine");
        chair.setLocked(true);
        service().reloadAssets({chair});
        QCOMPARE(AssetScene::wood(chair), QVariant("oak"));
        QVERIFY(m_scene->told().value(0).contains(QStringLiteral("“Chair” is locked")));
    }

    void removing_the_link_keeps_the_set_and_gives_back_the_check_out()
    {
        nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        const QString id = AssetScene::assetId(chair);
        service().modifyAssets({chair});
        chair.setValue(QStringLiteral("wood"), "elm");
        service().removeAssetLinks({chair});
        QCOMPARE(AssetScene::state(chair), QStringLiteral("none"));
        QCOMPARE(AssetScene::wood(chair), QVariant("elm"));
        QVERIFY(chair.isEditable());
        QVERIFY(m_ben->checkOut(id, 1).isDone());
        QVERIFY(m_scene->told().isEmpty());
    }

    void finding_asks_for_each_asset_once()
    {
        const nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        const nkdMetadataSet plain = AssetScene::set("Plain", {});
        const nkdMetadataSet twin = service().placeAssets({AssetScene::assetId(chair)}).constFirst();
        QSignalSpy finds(&service(), &kernel::AssetsService::findRequested);
        service().findAssets({plain, chair, twin});
        QCOMPARE(finds.size(), 1);
        QCOMPARE(finds.at(0).at(0).toStringList(), QStringList{AssetScene::assetId(chair)});
        service().findAssets({plain});
        QCOMPARE(finds.size(), 1);
    }

    void one_asset_is_edited_in_one_set_of_the_scene()
    {
        const nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        const nkdMetadataSet twin = service().placeAssets({AssetScene::assetId(chair)}).constFirst();
        service().modifyAssets({chair, twin});
        QCOMPARE(AssetScene::state(chair), QStringLiteral("edited 1"));
        QCOMPARE(AssetScene::state(twin), QStringLiteral("at rest 1"));
        QVERIFY(
            m_scene->told().value(0).contains(QStringLiteral("“Chair2” is an asset that is being edited as "
                                                             "“Chair” already")));
    }

    void ending_a_check_out_brings_the_stored_version_back_and_can_be_undone()
    {
        nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        service().modifyAssets({chair});
        chair.setValue(QStringLiteral("wood"), "elm");
        service().releaseAsset(AssetScene::assetId(chair), false);
        QCOMPARE(AssetScene::state(chair), QStringLiteral("at rest 1"));
        QCOMPARE(AssetScene::wood(chair), QVariant("oak"));
        QVERIFY(holder(chair).isEmpty());
        QVERIFY(AssetScene::document().undo());
        QCOMPARE(AssetScene::wood(chair), QVariant("elm"));
    }

    void an_undone_save_is_not_stored_over_what_it_stored()
    {
        nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        service().modifyAssets({chair});
        chair.setValue(QStringLiteral("wood"), "elm");
        service().saveAssets({chair});
        QVERIFY(AssetScene::document().undo());
        QCOMPARE(AssetScene::state(chair), QStringLiteral("edited 1"));
        chair.setValue(QStringLiteral("wood"), "pine");
        service().saveAssets({chair});
        QCOMPARE(AssetScene::state(chair), QStringLiteral("edited 1"));
        QVERIFY(m_scene->told().value(0).contains(QStringLiteral("has moved on")));
    }

    void check_outs_end_with_the_scene()
    {
        const nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        const QString id = AssetScene::assetId(chair);
        service().modifyAssets({chair});
        SceneFixture::reset();
        QVERIFY(m_ben->checkOut(id, 1).isDone());
    }

    void a_version_that_cannot_be_read_is_told_and_changes_nothing()
    {
        const nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        m_place.run({QStringLiteral("UPDATE asset_versions SET content = '{broken'")});
        service().reloadAssets({chair});
        QVERIFY(service().placeAssets({AssetScene::assetId(chair)}).isEmpty());
        QCOMPARE(AssetScene::wood(chair), QVariant("oak"));
        QCOMPARE(nkMetadataService::the().getAllSets().size(), 1);
        const QStringList told = m_scene->told();
        QCOMPARE(told.size(), 2);
        QVERIFY2(told.constFirst().contains(QStringLiteral("Version 1 of “Chair” in the asset database")),
                 qPrintable(told.constFirst()));
    }

private:
    static kernel::AssetsService &service() { return AssetScene::service(); }
    static QUndoStack *stack() { return AssetScene::document().undoStack(); }
    QString holder(const nkdMetadataSet &set) const
    {
        AssetInfo asset;
        m_ben->info(AssetScene::assetId(set), asset);
        return asset.holder;
    }
    /// An asset with two versions, the set being of the second.
    static nkdMetadataSet storedAnew(const char *first, const char *second)
    {
        nkdMetadataSet set = AssetScene::asset("Chair", QLatin1String(first));
        service().modifyAssets({set});
        set.setValue(QStringLiteral("wood"), QLatin1String(second));
        service().saveAssets({set});
        return set;
    }
    /// Ben stores a version meanwhile, whoever has the asset.
    void passBy(const nkdMetadataSet &set, const char *wood) const
    {
        const QString id = AssetScene::assetId(set);
        int version = AssetScene::version(set);
        const QByteArray content = QByteArrayLiteral("{\"name\":\"Pine\",\"color\":\"#102030\",\"entries\":["
                                                     "{\"key\":\"wood\",\"type\":\"string\",\"value\":\"")
                                   + wood + "\"}]}";
        QVERIFY(m_ben->release(id, true).isDone());
        QVERIFY(m_ben->checkOut(id, version).isDone());
        QVERIFY(m_ben->save(id, QStringLiteral("Pine"), content, version).isDone());
    }

    AssetPlace m_place{runsOnServer};
    std::unique_ptr<interchange::SqlAssetStore> m_here;
    std::unique_ptr<interchange::SqlAssetStore> m_ben;
    std::unique_ptr<AssetScene> m_scene;
};

NK_GUILESS_TEST_MAIN(TestAssetService)
#include "test_asset_service.moc"
