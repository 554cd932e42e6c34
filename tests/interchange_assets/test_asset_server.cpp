#include "AssetScene.h"
#include "DatabaseServer.h"

#include "interchange/assets/SqlAssetStore.h"

#include <TestMain.h>

#include <QUndoStack>

using interchange::AssetAddress;
using interchange::SqlAssetStore;
using kernel::AssetInfo;
using kernel::AssetResult;
using kernel::AssetVersion;

namespace {

const char secret[] = "s3:cr/et@ ä?";

/// Whether any part of a text gives the password away.
bool tellsPassword(const QString &text)
{
    return text.contains(QString::fromUtf8(secret)) || text.contains(QLatin1String("s3:cr"))
           || text.contains(QLatin1String("s3%3A"));
}

} // namespace

/// A database server that is away, comes back, or wants a password.
class TestAssetServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        const QString error = m_server.start();
        QVERIFY2(error.isEmpty(), qPrintable(error));
        m_store = store();
    }
    void cleanup()
    {
        m_store.reset();
        m_server.kill();
    }

    void a_server_killed_in_the_middle_is_told_and_used_again_when_it_is_back()
    {
        QString id;
        QVERIFY(m_store->publish(QStringLiteral("Chair"), "oak", id).isDone());
        QVERIFY(m_store->checkOut(id, 1).isDone());
        m_server.kill();
        int version = 1;
        const AssetResult lost = m_store->save(id, QStringLiteral("Chair"), "elm", version);
        QCOMPARE(lost.outcome, AssetResult::Failed);
        QVERIFY2(lost.error.contains(m_store->place()), qPrintable(lost.error));
        QVERIFY(!tellsPassword(lost.error));
        QCOMPARE(version, 1);
        QVERIFY(m_server.start().isEmpty());
        QVERIFY(m_store->save(id, QStringLiteral("Chair"), "elm", version).isDone());
        QCOMPARE(version, 2);
    }

    void a_connection_that_breaks_in_a_change_leaves_nothing_of_it()
    {
        interchange::AssetConnection connection(address(), 1000);
        QVERIFY(connection.open().isDone());
        QVERIFY(connection.begin());
        QVERIFY(connection.run(
            "INSERT INTO assets (id, name, search_name, newest) VALUES ('half', 'h', 'h', 1)"));
        m_server.kill();
        QVERIFY(!connection.commit());
        QVERIFY(connection.wasLost());
        QVERIFY2(connection.trouble().error.contains(QStringLiteral("was lost; the scene is as it was")),
                 qPrintable(connection.trouble().error));
        connection.rollback();
        QVERIFY(m_server.start().isEmpty());
        AssetInfo asset;
        QCOMPARE(m_store->info(QStringLiteral("half"), asset).outcome, AssetResult::Refused);
    }

    void the_scene_stays_editable_while_the_server_is_away()
    {
        AssetScene scene(m_store.get());
        nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        nkdMetadataSet table = AssetScene::asset("Table", "oak");
        AssetScene::service().modifyAssets({chair});
        m_server.kill();
        chair.setValue(QStringLiteral("wood"), "elm");
        const int steps = AssetScene::document().undoStack()->count();
        AssetScene::service().saveAssets({chair});
        AssetScene::service().modifyAssets({table});
        AssetScene::service().reloadAssets({chair, table});
        const QStringList told = scene.told();
        QCOMPARE(told.size(), 3); // one each, however many sets
        for (const QString &text : told) {
            QVERIFY2(text.contains(m_store->place()) && !tellsPassword(text), qPrintable(text));
        }
        QCOMPARE(AssetScene::document().undoStack()->count(), steps);
        QCOMPARE(AssetScene::state(chair), QStringLiteral("edited 1"));
        chair.setValue(QStringLiteral("wood"), "pine");
        QVERIFY(m_server.start().isEmpty());
        AssetScene::service().saveAssets({chair});
        QVERIFY(scene.told().isEmpty());
        QCOMPARE(AssetScene::state(chair), QStringLiteral("at rest 2"));
        AssetVersion stored;
        QVERIFY(m_store->read(AssetScene::assetId(chair), 0, stored).isDone());
        QVERIFY(stored.content.contains("pine"));
    }

    void links_can_be_removed_while_the_server_is_away()
    {
        AssetScene scene(m_store.get());
        const nkdMetadataSet chair = AssetScene::asset("Chair", "oak");
        AssetScene::service().modifyAssets({chair});
        m_server.kill();
        AssetScene::service().removeAssetLinks({chair});
        QCOMPARE(AssetScene::state(chair), QStringLiteral("none"));
        QCOMPARE(scene.told().size(), 1);
    }

    void a_server_that_is_away_is_told()
    {
        m_server.kill();
        QVector<AssetInfo> assets;
        const AssetResult away = m_store->list(QString(), 10, assets);
        QCOMPARE(away.outcome, AssetResult::Failed);
        QVERIFY2(away.error.contains(QStringLiteral("is not to be reached")), qPrintable(away.error));
        QVERIFY(!tellsPassword(away.error));
        QVERIFY(!away.wantsPassword);
    }

    void a_wrong_password_is_told_without_any_password_and_may_be_mended()
    {
        AssetAddress wrong = address();
        wrong.setPassword(QString::fromUtf8(secret) + QLatin1Char('x'));
        SqlAssetStore refused(wrong, QStringLiteral("Ben"));
        QVector<AssetInfo> assets;
        const AssetResult result = refused.list(QString(), 10, assets);
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY(result.wantsPassword);
        QVERIFY2(result.error.contains(QStringLiteral("wants another password")), qPrintable(result.error));
        QVERIFY(!tellsPassword(result.error));
        refused.setPassword(QString());
        QVERIFY(refused.list(QString(), 10, assets).wantsPassword);
        refused.setPassword(QString::fromUtf8(secret));
        QVERIFY(refused.list(QString(), 10, assets).isDone());
    }

    void no_place_and_no_stored_url_tells_the_password()
    {
        QVERIFY(!tellsPassword(m_store->place()));
        QVERIFY(!tellsPassword(address().urlWithoutPassword()));
        QString error;
        const AssetAddress again = AssetAddress::ofUrl(address().urlWithoutPassword(), &error);
        QCOMPARE(again.user(), address().user());
        QCOMPARE(again.host(), address().host());
        QVERIFY(!again.hasPassword());
    }

    void a_database_that_is_not_there_is_told()
    {
        QString error;
        const QString url = m_server.url().replace(QLatin1String("/postgres?"), QLatin1String("/missing?"));
        SqlAssetStore lost(AssetAddress::ofUrl(url, &error), QStringLiteral("Ben"));
        QVector<AssetInfo> assets;
        const AssetResult result = lost.list(QString(), 10, assets);
        QCOMPARE(result.outcome, AssetResult::Failed);
        QVERIFY2(result.error.contains(QStringLiteral("missing")), qPrintable(result.error));
        QVERIFY(!tellsPassword(result.error));
    }

private:
    AssetAddress address() const
    {
        QString error;
        return AssetAddress::ofUrl(m_server.url(), &error);
    }
    std::unique_ptr<SqlAssetStore> store() const
    {
        return std::make_unique<SqlAssetStore>(address(), QStringLiteral("Anna"));
    }

    DatabaseServer m_server{QString::fromUtf8(secret)};
    std::unique_ptr<SqlAssetStore> m_store;
};

NK_GUILESS_TEST_MAIN(TestAssetServer)
#include "test_asset_server.moc"
