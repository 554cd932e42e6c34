#include "PublishableSets.h"

#include "kernel/document/Document.h"

#include <nkKernelServices/nkMetadataService.h>

#include <algorithm>

namespace {

bool isPublishable(const nkdObject &object)
{
    const nkdMetadataSet set(object);
    return !set.isNull() && !set.isObjectSet() && !set.isAsset();
}

} // namespace

QList<nkdMetadataSet> PublishableSets::selected()
{
    QList<nkdMetadataSet> sets;
    const QList<nkdObject> objects = nkMetadataService::the().getSelection();
    for (const nkdObject &object : objects) {
        if (isPublishable(object)) {
            sets.append(nkdMetadataSet(object));
        }
    }
    return sets;
}

bool PublishableSets::isAnySelected()
{
    const QList<nkdObject> objects = nkMetadataService::the().getSelection();
    return std::any_of(objects.begin(), objects.end(), isPublishable);
}

QStringList PublishableSets::assetsOf(const QList<nkdMetadataSet> &sets)
{
    QStringList ids;
    for (const nkdMetadataSet &set : sets) {
        const QString id = kernel::Document::the().assetId(set.getObjectId());
        if (!id.isEmpty()) {
            ids.append(id);
        }
    }
    return ids;
}

void PublishableSets::select(const QList<nkdMetadataSet> &sets)
{
    if (!sets.isEmpty()) {
        QList<nkdObject> objects;
        for (const nkdMetadataSet &set : sets) {
            objects.append(set);
        }
        nkMetadataService::the().setSelection(objects);
    }
}
