#include "AssetsService.h"

#include "../document/Document.h"
#include "../document/HandleLists.h"
#include "../document/SetOperations.h"
#include "../document/Store.h"
#include "AssetRound.h"
#include "ServiceRegistry.h"

#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>

namespace kernel {

namespace {

Document &document()
{
    return Document::the();
}

QList<quint64> idsOf(const QList<nkdMetadataSet> &sets)
{
    const Store &store = document().store();
    return store.idsOf(sharedSetSlots(store, sets));
}

void link(quint64 setId, AssetState state, const QString &assetId, int version, AssetRound &round)
{
    if (document().setAssetState(setId, state, assetId, version)) {
        round.noteChange();
    }
}

/// The sets of the scene that are being edited as this asset.
QList<nkdMetadataSet> editedSets(const QString &assetId)
{
    QList<nkdMetadataSet> found;
    const QList<nkdMetadataSet> all = nkMetadataService::the().getAllSets();
    for (const nkdMetadataSet &set : all) {
        const quint64 id = set.getObjectId();
        if (document().assetState(id) == AssetState::Edited && document().assetId(id) == assetId) {
            found.append(set);
        }
    }
    return found;
}

} // namespace

AssetsService::AssetsService()
{
    connect(&document(), &Document::cleared, this, &AssetsService::endCheckOuts);
}

/// One undo step for all; whatever has to be told is told when the step is complete.
void AssetsService::run(const Words &words, const std::function<void(AssetRound &)> &work)
{
    QStringList errors;
    bool hasChanged = false;
    {
        AssetRound round(words.title, words.missing);
        work(round);
        errors = round.errors();
        hasChanged = round.hasChanged();
    }
    if (hasChanged) {
        Q_EMIT assetsChanged();
    }
    if (!errors.isEmpty()) {
        nkLogService::the().reportError(tr("Asset Manager"), errors.join(QLatin1Char('\n')));
    }
}

void AssetsService::runForEach(const QList<nkdMetadataSet> &sets, const Words &words, Step step)
{
    const QList<quint64> ids = idsOf(sets);
    if (ids.isEmpty()) {
        return;
    }
    run(words, [this, &ids, step](AssetRound &round) {
        for (int i = 0; i < ids.size() && round.goesOn(); ++i) {
            (this->*step)(ids.at(i), round);
        }
    });
}

// The contract ------------------------------------------------------------------------------------------

void AssetsService::modifyAssets(const QList<nkdMetadataSet> &sets)
{
    runForEach(
        sets,
        {tr("Modify Assets"),
         tr("Modifying assets takes an asset database, and this program has none; nothing was changed.")},
        &AssetsService::modify);
}

void AssetsService::modify(quint64 setId, AssetRound &round)
{
    if (document().assetState(setId) != AssetState::AtRest) {
        return;
    }
    const QString assetId = document().assetId(setId);
    const int version = document().assetVersion(setId);
    const QList<nkdMetadataSet> twins = editedSets(assetId);
    if (!twins.isEmpty()) {
        round.refuse(
            tr("“%1” is an asset that is being edited as “%2” already; edit it there or reload this one "
               "when that is stored.")
                .arg(nkdMetadataSet(setId).getName(), twins.constFirst().getName()));
    } else if (checkOut(assetId, version, round)) {
        link(setId, AssetState::Edited, assetId, version, round);
    }
}

bool AssetsService::checkOut(const QString &assetId, int version, AssetRound &round)
{
    const bool isTaken = round.take(round.store()->checkOut(assetId, version));
    if (isTaken) {
        m_taken.insert(assetId);
    }
    return isTaken;
}

void AssetsService::saveAssets(const QList<nkdMetadataSet> &sets)
{
    runForEach(sets,
               {tr("Save in Asset Manager"),
                tr("Saving assets takes an asset database, and this program has none; nothing was saved.")},
               &AssetsService::save);
}

void AssetsService::save(quint64 setId, AssetRound &round)
{
    QByteArray content;
    if (document().assetState(setId) != AssetState::Edited || !round.write(setId, content)) {
        return;
    }
    const QString assetId = document().assetId(setId);
    int version = document().assetVersion(setId);
    // The check-outs of a scene end when it is closed; who opens it again goes on where nobody came in between.
    if (!m_taken.contains(assetId) && !checkOut(assetId, version, round)) {
        return;
    }
    if (round.take(round.store()->save(assetId, nkdMetadataSet(setId).getName(), content, version))) {
        link(setId, AssetState::AtRest, assetId, version, round);
    }
}

void AssetsService::findAssets(const QList<nkdMetadataSet> &sets)
{
    QStringList assetIds;
    const QList<quint64> ids = idsOf(sets);
    for (const quint64 id : ids) {
        const QString assetId = document().assetId(id);
        if (!assetId.isEmpty() && !assetIds.contains(assetId)) {
            assetIds.append(assetId);
        }
    }
    if (!ids.isEmpty() && !AssetStore::installed()) {
        nkLogService::the().reportWarning(
            tr("Asset Manager"), tr("Finding assets takes an asset database, and this program has none; "
                                    "nothing was searched for."));
    } else if (!assetIds.isEmpty()) {
        Q_EMIT findRequested(assetIds);
    }
}

void AssetsService::reloadAssets(const QList<nkdMetadataSet> &sets)
{
    runForEach(
        sets,
        {tr("Reload from Asset Manager"),
         tr("Reloading assets takes an asset database, and this program has none; nothing was changed.")},
        &AssetsService::reload);
}

void AssetsService::reload(quint64 setId, AssetRound &round)
{
    const AssetState state = document().assetState(setId);
    const QString assetId = document().assetId(setId);
    SetCopy copy;
    AssetVersion found;
    AssetInfo info;
    if (state == AssetState::None || !round.read(assetId, 0, copy, found)
        || (state == AssetState::Edited && !round.take(round.store()->info(assetId, info)))) {
        return;
    }
    const AssetState next = info.isHeldHere ? AssetState::Edited : AssetState::AtRest;
    if (SetOperations::takeVersion(setId, copy, {next, assetId, found.version})) {
        round.noteChange();
    } else {
        round.refuse(
            tr("“%1” is locked and was not reloaded; unlock it first.").arg(nkdMetadataSet(setId).getName()));
    }
}

void AssetsService::removeAssetLinks(const QList<nkdMetadataSet> &sets)
{
    runForEach(
        sets,
        {tr("Remove Asset Links"), tr("Removing asset links takes an asset database, and this program has "
                                      "none; nothing was changed.")},
        &AssetsService::removeLink);
}

void AssetsService::removeLink(quint64 setId, AssetRound &round)
{
    const AssetState state = document().assetState(setId);
    if (state == AssetState::Edited) {
        // Somebody else's check-out, or none, is as good as given back.
        const AssetResult result = round.store()->release(document().assetId(setId), false);
        if (result.outcome == AssetResult::Failed) {
            round.refuse(result.error);
        }
    }
    if (state != AssetState::None) {
        link(setId, AssetState::None, QString(), 0, round);
    }
}

// For the asset panel -----------------------------------------------------------------------------------

void AssetsService::publishSets(const QList<nkdMetadataSet> &sets)
{
    runForEach(
        sets,
        {tr("Publish as Assets"),
         tr("Publishing sets takes an asset database, and this program has none; nothing was published.")},
        &AssetsService::publish);
}

void AssetsService::publish(quint64 setId, AssetRound &round)
{
    QByteArray content;
    QString assetId;
    if (document().assetState(setId) != AssetState::None || !round.write(setId, content)) {
        return;
    }
    if (round.take(round.store()->publish(nkdMetadataSet(setId).getName(), content, assetId))) {
        link(setId, AssetState::AtRest, assetId, 1, round);
    }
}

QList<nkdMetadataSet> AssetsService::placeAssets(const QStringList &assetIds, int version)
{
    QList<nkdMetadataSet> placed;
    if (assetIds.isEmpty()) {
        return placed;
    }
    run({tr("Place Assets"),
         tr("Placing assets takes an asset database, and this program has none; nothing was placed.")},
        [this, &assetIds, version, &placed](AssetRound &round) {
            for (int i = 0; i < assetIds.size() && round.goesOn(); ++i) {
                const quint64 id = place(assetIds.at(i), version, round);
                if (id != 0) {
                    placed.append(nkdMetadataSet(id));
                }
            }
        });
    return placed;
}

quint64 AssetsService::place(const QString &assetId, int version, AssetRound &round)
{
    SetCopy copy;
    AssetVersion found;
    if (!round.read(assetId, version, copy, found)) {
        return 0;
    }
    const QVector<Slot> made = SetOperations::load({copy}, {});
    const quint64 id = document().store().idOf(made.constFirst());
    link(id, AssetState::AtRest, assetId, found.version, round);
    return id;
}

void AssetsService::releaseAsset(const QString &assetId, bool ofOthers)
{
    run({tr("End Check-Out"),
         tr("Ending check-outs takes an asset database, and this program has none; nothing was "
            "changed.")},
        [this, &assetId, ofOthers](AssetRound &round) {
            if (!round.goesOn() || !round.take(round.store()->release(assetId, ofOthers))) {
                return;
            }
            const QList<nkdMetadataSet> sets = editedSets(assetId);
            for (const nkdMetadataSet &set : sets) {
                reload(set.getObjectId(), round);
            }
        });
}

void AssetsService::endCheckOuts()
{
    m_taken.clear();
    AssetStore *store = AssetStore::installed();
    const AssetResult result = store ? store->releaseAll() : AssetResult();
    if (!result.isDone()) {
        nkLogService::the().reportWarning(tr("Asset Manager"), result.error);
    }
}

} // namespace kernel

nkAssetsService &nkAssetsService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::AssetsService>();
}
