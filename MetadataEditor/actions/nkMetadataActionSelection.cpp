#include "actions/nkMetadataActionSelection.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QSet>

namespace {

/// The selected objects of one kind of handle.
template <typename Handle>
QList<Handle> selected()
{
    QList<Handle> handles;
    const QList<nkdObject> selection = nkMetadataService::the().getSelection();
    for (const nkdObject &object : selection) {
        const Handle handle(object);
        if (!handle.isNull()) {
            handles.append(handle);
        }
    }
    return handles;
}

template <typename Test>
QList<nkdMetadataSet> selectedSetsThat(Test test)
{
    QList<nkdMetadataSet> sets;
    const QList<nkdMetadataSet> all = selected<nkdMetadataSet>();
    for (const nkdMetadataSet &set : all) {
        if (test(set)) {
            sets.append(set);
        }
    }
    return sets;
}

bool isUnlockedAsset(const nkdMetadataSet &set)
{
    return set.isAsset() && !set.isLocked();
}

/// A set stands for itself, a scene object for its sets.
QList<nkdMetadataSet> setsOf(const nkdObject &object)
{
    const nkdMetadataSet set(object);
    if (!set.isNull()) {
        return {set};
    }
    return nkdMetadata::fromObject(nkdSceneObject(object)).getSets();
}

} // namespace

namespace nkMetadataActionSelection {

QList<nkdMetadataSet> sets()
{
    return selected<nkdMetadataSet>();
}

QList<nkdSceneObject> objects()
{
    return selected<nkdSceneObject>();
}

QList<nkdMetadataSet> setsToSave()
{
    QList<nkdMetadataSet> sets;
    QSet<quint64> known;
    const QList<nkdObject> selection = nkMetadataService::the().getSelection();
    for (const nkdObject &object : selection) {
        const QList<nkdMetadataSet> candidates = setsOf(object);
        for (const nkdMetadataSet &set : candidates) {
            if (!known.contains(set.getObjectId())) {
                known.insert(set.getObjectId());
                sets.append(set);
            }
        }
    }
    return sets;
}

QList<nkdMetadataSet> assetsToModify()
{
    return selectedSetsThat(
        [](const nkdMetadataSet &set) { return isUnlockedAsset(set) && !set.isEditedAsset(); });
}

QList<nkdMetadataSet> assetsToStore()
{
    return selectedSetsThat(
        [](const nkdMetadataSet &set) { return isUnlockedAsset(set) && set.isEditedAsset(); });
}

QList<nkdMetadataSet> assets()
{
    return selectedSetsThat([](const nkdMetadataSet &set) { return set.isAsset(); });
}

QList<nkdMetadataSet> unlockedAssets()
{
    return selectedSetsThat(isUnlockedAsset);
}

} // namespace nkMetadataActionSelection
