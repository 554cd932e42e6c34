#include "TestMain.h"

#include <nkKernelServices/nkAssetsService.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkQueryService.h>

/// Operations that are not built yet say so and pretend nothing.
class TestUnbuiltServices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aQueryIsNamedInTheLogAndNeverStarts();
    void cancellingWithoutAQuerySaysNothing();
    void assetOperationsAreNamedInTheLog();
    void assetOperationsWithoutSetsSayNothing();
};

void TestUnbuiltServices::aQueryIsNamedInTheLogAndNeverStarts()
{
    nkQueryService &queries = nkQueryService::the();
    QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
    QSignalSpy started(&queries, &nkQueryService::asyncMetadataQueryStarted);
    QSignalSpy finished(&queries, &nkQueryService::asyncMetadataQueryFinished);
    queries.startAsyncMetadataQuery(QStringLiteral("key:%1"));
    QCoreApplication::processEvents();
    QCOMPARE(reports.size(), 1);
    QCOMPARE(reports.first().at(0).toInt(), 1);
    QVERIFY(reports.first().at(2).toString().contains(QStringLiteral("key:%1")));
    QVERIFY(started.isEmpty());
    QVERIFY(finished.isEmpty());
    QCOMPARE(queries.getQueryError(), QString());
}

void TestUnbuiltServices::cancellingWithoutAQuerySaysNothing()
{
    QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
    nkQueryService::the().cancelAsyncMetadataQuery();
    QVERIFY(reports.isEmpty());
}

void TestUnbuiltServices::assetOperationsAreNamedInTheLog()
{
    nkAssetsService &assets = nkAssetsService::the();
    const nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("Paint"), {});
    QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
    QSignalSpy assetsChanged(&assets, &nkAssetsService::assetsChanged);
    QSignalSpy metadataChanged(&nkMetadataService::the(), &nkMetadataService::metadataChanged);
    assets.modifyAssets({set});
    assets.saveAssets({set});
    assets.findAssets({set});
    assets.reloadAssets({set});
    assets.removeAssetLinks({set});
    QCOMPARE(reports.size(), 5);
    QSet<QString> texts;
    for (const QVariantList &report : qAsConst(reports)) {
        QCOMPARE(report.at(0).toInt(), 1);
        texts.insert(report.at(2).toString());
    }
    QCOMPARE(texts.size(), 5);
    QVERIFY(assetsChanged.isEmpty());
    QVERIFY(metadataChanged.isEmpty());
    QVERIFY(!set.isAsset());
}

void TestUnbuiltServices::assetOperationsWithoutSetsSayNothing()
{
    QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
    nkAssetsService &assets = nkAssetsService::the();
    assets.modifyAssets({});
    assets.saveAssets({});
    assets.findAssets({});
    assets.reloadAssets({});
    assets.removeAssetLinks({});
    QVERIFY(reports.isEmpty());
}

NK_GUILESS_TEST_MAIN(TestUnbuiltServices)
#include "test_unbuilt_services.moc"
