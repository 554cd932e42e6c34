#include "AssetScene.h"
#include "SuitePlace.h"

#include "interchange/SceneFile.h"

#include <TestMain.h>

#include <QTemporaryDir>

/// Sets that are linked to assets, in a scene that is closed and opened again: with its database, and where that knows
/// nothing of them.
class TestAssetReopening : public QObject
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
        m_folder = std::make_unique<QTemporaryDir>();
        m_here = m_place.person("Anna");
        m_scene = std::make_unique<AssetScene>(m_here.get());
        const nkdMetadataSet set = AssetScene::asset("Chair", "oak");
        m_assetId = AssetScene::assetId(set);
    }
    void cleanup()
    {
        m_scene.reset();
        m_here.reset();
        m_place.clear();
    }

    void a_set_at_rest_is_modified_and_stored_as_before()
    {
        reopen();
        QCOMPARE(AssetScene::state(set()), QStringLiteral("at rest 1"));
        QCOMPARE(AssetScene::assetId(set()), m_assetId);
        service().modifyAssets({set()});
        QCOMPARE(AssetScene::state(set()), QStringLiteral("edited 1"));
        set().setValue(QStringLiteral("wood"), QStringLiteral("ash"));
        service().saveAssets({set()});
        QCOMPARE(AssetScene::state(set()), QStringLiteral("at rest 2"));
        QCOMPARE(m_scene->told(), QStringList());
        reopen();
        QCOMPARE(AssetScene::state(set()), QStringLiteral("at rest 2"));
    }

    void what_moved_on_while_the_scene_was_closed_is_told()
    {
        save();
        othersStore("elm");
        open();
        service().modifyAssets({set()});
        QCOMPARE(AssetScene::state(set()), QStringLiteral("at rest 1"));
        QVERIFY(told().contains(QStringLiteral("“Chair” has moved on: Ben has stored version 2")));
        service().reloadAssets({set()});
        QCOMPARE(AssetScene::state(set()), QStringLiteral("at rest 2"));
        service().modifyAssets({set()});
        QCOMPARE(AssetScene::state(set()), QStringLiteral("edited 2"));
    }

    void a_set_saved_while_it_was_edited_is_edited_on_and_stored()
    {
        service().modifyAssets({set()});
        set().setValue(QStringLiteral("wood"), QStringLiteral("ash"));
        reopen();
        QCOMPARE(holder(), QString());
        QCOMPARE(AssetScene::state(set()), QStringLiteral("edited 1"));
        QVERIFY(set().isEditable());
        set().setValue(QStringLiteral("legs"), 4);
        service().saveAssets({set()});
        QCOMPARE(m_scene->told(), QStringList());
        QCOMPARE(AssetScene::state(set()), QStringLiteral("at rest 2"));
        kernel::AssetVersion stored;
        QVERIFY(m_here->read(m_assetId, 0, stored).isDone());
        QVERIFY(stored.content.contains("ash") && stored.content.contains("legs"));
    }

    void what_others_stored_meanwhile_is_not_stored_over()
    {
        service().modifyAssets({set()});
        set().setValue(QStringLiteral("wood"), QStringLiteral("ash"));
        save();
        SceneFixture::reset();
        othersStore("elm");
        open();
        service().saveAssets({set()});
        QVERIFY(told().contains(QStringLiteral("has moved on")));
        QCOMPARE(AssetScene::state(set()), QStringLiteral("edited 1"));
        QCOMPARE(AssetScene::wood(set()), QVariant("ash"));
    }

    void who_has_it_meanwhile_is_told_by_name()
    {
        service().modifyAssets({set()});
        save();
        SceneFixture::reset();
        const auto ben = m_place.person("Ben");
        QVERIFY(ben->checkOut(m_assetId, 1).isDone());
        open();
        service().saveAssets({set()});
        QVERIFY(told().contains(QStringLiteral("“Chair” is checked out by Ben")));
        QCOMPARE(AssetScene::state(set()), QStringLiteral("edited 1"));
        QCOMPARE(holder(), QStringLiteral("Ben"));
    }

    void a_scene_without_versions_says_that_it_has_to_be_reloaded()
    {
        save();
        QFile file(path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray text = file.readAll();
        file.close();
        QVERIFY(text.contains(R"(,"version":1}])"));
        text.replace(R"(,"version":1}])", "}]");
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        open();
        QCOMPARE(AssetScene::state(set()), QStringLiteral("at rest 0"));
        service().modifyAssets({set()});
        QCOMPARE(told(), QStringLiteral("Which version of “Chair” this is, is not known; reload it first."));
        service().reloadAssets({set()});
        service().modifyAssets({set()});
        QCOMPARE(AssetScene::state(set()), QStringLiteral("edited 1"));
    }

    void a_database_that_does_not_know_it_leaves_the_set_as_it_is_data()
    {
        QTest::addColumn<bool>("isEdited");
        QTest::newRow("at rest") << false;
        QTest::newRow("edited") << true;
    }
    void a_database_that_does_not_know_it_leaves_the_set_as_it_is()
    {
        QFETCH(bool, isEdited);
        if (isEdited) {
            service().modifyAssets({set()});
        }
        save();
        SceneFixture::reset();
        m_here.reset();
        m_place.clear();
        m_here = m_place.person("Anna");
        kernel::AssetStore::install(m_here.get());
        open();
        const QString state = isEdited ? QStringLiteral("edited 1") : QStringLiteral("at rest 1");
        QCOMPARE(m_scene->told(), QStringList());
        const QList<void (*)()> operations{[] { service().modifyAssets({set()}); },
                                           [] { service().reloadAssets({set()}); },
                                           [] { service().saveAssets({set()}); }};
        int refused = 0;
        for (const auto &operation : operations) {
            operation();
            const QStringList reports = m_scene->told();
            for (const QString &report : reports) {
                QVERIFY2(report.contains(QStringLiteral("is not in the asset database")), qPrintable(report));
                QVERIFY(report.contains(QStringLiteral("remove the link and publish the set anew")));
                ++refused;
            }
            QCOMPARE(AssetScene::state(set()), state);
            QCOMPARE(AssetScene::wood(set()), QVariant("oak"));
            QVERIFY(!AssetScene::document().isModified());
        }
        QCOMPARE(refused, 2);
        // Saved again, it is what it was: whoever has the database goes on with it.
        reopen();
        QCOMPARE(AssetScene::state(set()), state);
        QCOMPARE(AssetScene::assetId(set()), m_assetId);
        service().removeAssetLinks({set()});
        QVERIFY(set().isEditable() && !set().isAsset());
        QCOMPARE(m_scene->told(), QStringList());
        service().publishSets({set()});
        QCOMPARE(AssetScene::state(set()), QStringLiteral("at rest 1"));
        QVERIFY(AssetScene::assetId(set()) != m_assetId);
    }

private:
    static kernel::AssetsService &service() { return AssetScene::service(); }
    static nkdMetadataSet set() { return nkMetadataService::the().getAllSets().value(0); }
    QString path() const { return m_folder->filePath(QStringLiteral("scene.gltf")); }
    QString told() { return m_scene->told().join(QLatin1Char('\n')); }
    QString holder() const
    {
        kernel::AssetInfo asset;
        return m_here->info(m_assetId, asset).isDone() ? asset.holder : QStringLiteral("unknown");
    }
    void save()
    {
        const SceneFile::Saved saved = SceneFile::save(path(), m_source, SceneFile::IfChanged::Overwrite);
        QVERIFY2(saved.outcome == SceneFile::Saved::Done, qPrintable(saved.error));
        m_source.reset();
    }
    void open()
    {
        const SceneFile::Result result = SceneFile::open(path());
        QVERIFY2(result.isOpen(), qPrintable(result.error));
        m_source = result.source;
        QCOMPARE(nkMetadataService::the().getAllSets().size(), 1);
    }
    void reopen()
    {
        save();
        SceneFixture::reset();
        open();
    }
    void othersStore(const char *wood) const
    {
        const auto ben = m_place.person("Ben");
        kernel::AssetVersion present;
        int version = 1;
        QVERIFY(ben->checkOut(m_assetId, version).isDone());
        QVERIFY(ben->read(m_assetId, version, present).isDone());
        QVERIFY(ben->save(m_assetId, present.name, QByteArray(present.content).replace("oak", wood), version)
                    .isDone());
    }

    AssetPlace m_place{runsOnServer};
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<interchange::SqlAssetStore> m_here;
    std::unique_ptr<AssetScene> m_scene;
    std::shared_ptr<const interchange::SceneSource> m_source;
    QString m_assetId;
};

NK_GUILESS_TEST_MAIN(TestAssetReopening)
#include "test_asset_reopening.moc"
