#pragma once

#include "AssetStore.h"

#include <nkKernelServices/nkAssetsService.h>

#include <QSet>
#include <QStringList>

#include <functional>

namespace kernel {

class AssetRound;

/// The asset manager: ties sets of the scene to the assets of the installed AssetStore, where each set is a text in
/// the layout of set files.
///
/// Every operation asks the store first, set by set, and changes the scene only where the store has agreed: one undo
/// step for all sets. What is refused or fails is told in one report, and the others go on; after a failure
/// of the store itself they do not. Undo takes back what happened to the scene and never what happened in
/// the store: who stores a set that was undone to an older version is told that the asset has moved on.
///
/// When the scene goes, the check-outs of its sets end.
class NK_KERNEL_SERVICES_EXPORT AssetsService final : public nkAssetsService
{
    Q_OBJECT
public:
    AssetsService();

    /// Checks out the assets at rest. Refused where somebody else has one, where the set is not of its newest
    /// version, and where another set of the scene is being edited as the same asset.
    void modifyAssets(const QList<nkdMetadataSet> &sets) override;
    /// A set that was being edited when its scene was closed, and is stored now, is checked out for that.
    void saveAssets(const QList<nkdMetadataSet> &sets) override;
    /// Asks whoever shows assets to show these: findRequested.
    void findAssets(const QList<nkdMetadataSet> &sets) override;
    /// Also of edited sets, which stay checked out as long as they are. Locked sets are refused.
    void reloadAssets(const QList<nkdMetadataSet> &sets) override;
    /// Goes without the store; what was checked out is given back where the store can be reached.
    void removeAssetLinks(const QList<nkdMetadataSet> &sets) override;

    /// Makes new assets of shared sets that are none; they are at rest afterwards, of version 1.
    void publishSets(const QList<nkdMetadataSet> &sets);
    /// Makes a set of each asset, at rest, assigned to nothing. @param version 0 for the newest
    /// @return the new sets
    QList<nkdMetadataSet> placeAssets(const QStringList &assetIds, int version = 0);
    /// Ends the check-out of an asset without storing anything: sets of the scene that were edited get the newest
    /// version again. @param ofOthers whether one of another session is ended, too; else that is refused
    void releaseAsset(const QString &assetId, bool ofOthers);

Q_SIGNALS:
    /// Somebody wants to see these assets in the asset panel.
    void findRequested(const QStringList &assetIds);

private:
    /// What an operation is called in the undo menu, and what is told where there is no database.
    struct Words
    {
        QString title;
        QString missing;
    };
    using Step = void (AssetsService::*)(quint64 setId, AssetRound &round);

    void run(const Words &words, const std::function<void(AssetRound &)> &work);
    void runForEach(const QList<nkdMetadataSet> &sets, const Words &words, Step step);
    void modify(quint64 setId, AssetRound &round);
    bool checkOut(const QString &assetId, int version, AssetRound &round);
    void save(quint64 setId, AssetRound &round);
    void reload(quint64 setId, AssetRound &round);
    void removeLink(quint64 setId, AssetRound &round);
    void publish(quint64 setId, AssetRound &round);
    quint64 place(const QString &assetId, int version, AssetRound &round);
    void endCheckOuts();

    /// The assets that were checked out since the scene came; those of them that are not any more were given back, or
    /// somebody has taken them back.
    QSet<QString> m_taken;
};

} // namespace kernel
