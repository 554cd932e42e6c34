#pragma once

#include "interchange/sets/SetFileCodec.h"
#include "kernel/document/Document.h"
#include "kernel/services/AssetsService.h"
#include "kernel/services/ServiceRegistry.h"

#include <SceneFixture.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QSignalSpy>

/// An empty scene in front of a store of assets, and what is said there.
class AssetScene
{
public:
    explicit AssetScene(kernel::AssetStore *store)
    {
        SceneFixture::reset();
        kernel::SetCodec::install(&m_codec);
        kernel::AssetStore::install(store);
    }
    ~AssetScene()
    {
        SceneFixture::reset();
        kernel::AssetStore::install(nullptr);
        kernel::SetCodec::install(nullptr);
    }

    static kernel::AssetsService &service()
    {
        return kernel::ServiceRegistry::the().service<kernel::AssetsService>();
    }
    static kernel::Document &document() { return kernel::Document::the(); }
    static nkdMetadataSet set(const char *name, const QVariantMap &values)
    {
        nkdMetadataSet made = nkMetadataService::the().createSet(QString::fromUtf8(name), {});
        for (auto value = values.begin(); value != values.end(); ++value) {
            made.setValue(value.key(), value.value());
        }
        return made;
    }
    /// A set that was published with one value.
    static nkdMetadataSet asset(const char *name, const QVariant &wood)
    {
        const nkdMetadataSet made = set(name, {{QStringLiteral("wood"), wood}});
        service().publishSets({made});
        return made;
    }
    static QString assetId(const nkdMetadataSet &set) { return document().assetId(set.getObjectId()); }
    static int version(const nkdMetadataSet &set) { return document().assetVersion(set.getObjectId()); }
    static QVariant wood(const nkdMetadataSet &set) { return set.getValue(QStringLiteral("wood")); }
    /// "none", "at rest" or "edited", and the version.
    static QString state(const nkdMetadataSet &set)
    {
        const QString name = set.isEditedAsset() ? QStringLiteral("edited") : QStringLiteral("at rest");
        return set.isAsset() ? QStringLiteral("%1 %2").arg(name).arg(version(set)) : QStringLiteral("none");
    }

    /// What was reported since the last time; one text a report.
    QStringList told()
    {
        QStringList texts;
        for (const QVariantList &report : qAsConst(reports)) {
            texts.append(report.at(2).toString());
        }
        reports.clear();
        return texts;
    }

    QSignalSpy reports{&nkLogService::the(), &nkLogService::reported};
    QSignalSpy changes{&service(), &nkAssetsService::assetsChanged};

private:
    interchange::SetFileCodec m_codec;
};
