#include "TestMain.h"

#include <nkKernelServices/nkAssetsService.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>

/// Operations that are not built yet say so and pretend nothing.
class TestUnbuiltServices : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void assetOperationsAreNamedInTheLog();
    void assetOperationsWithoutSetsSayNothing();
};

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
