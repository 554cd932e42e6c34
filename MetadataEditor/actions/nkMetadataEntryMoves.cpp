#include "actions/nkMetadataEntryMoves.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QSet>

namespace {

/// The object sets that take entries.
QList<nkdMetadataSet> targetsOf(const QList<nkdSceneObject> &objects)
{
    QList<nkdMetadataSet> targets;
    for (const nkdSceneObject &object : objects) {
        const nkdMetadataSet own = nkdMetadata::fromObject(object).getObjectSet();
        if (own.isEditable()) {
            targets.append(own);
        }
    }
    return targets;
}

QList<nkdMetadataSet> without(const QList<nkdMetadataSet> &sets, const QList<nkdMetadataSet> &others)
{
    QSet<quint64> excluded;
    for (const nkdMetadataSet &other : others) {
        excluded.insert(other.getObjectId());
    }
    QList<nkdMetadataSet> rest;
    for (const nkdMetadataSet &set : sets) {
        if (!excluded.contains(set.getObjectId())) {
            rest.append(set);
        }
    }
    return rest;
}

} // namespace

namespace nkMetadataEntryMoves {

void setsToObjects(const QList<nkdMetadataSet> &sets, const QList<nkdSceneObject> &objects)
{
    const QList<nkdMetadataSet> targets = targetsOf(objects);
    if (targets.isEmpty()) {
        return;
    }
    const QList<nkdMetadataSet> sources = without(sets, targets);
    for (const nkdMetadataSet &target : targets) {
        for (const nkdMetadataSet &source : sources) {
            target.getEntries().append(source.getEntries());
        }
    }
    for (const nkdMetadataSet &source : sources) {
        source.getEntries().clear();
    }
}

void objectToNewSet(const nkdSceneObject &object, const QString &baseName)
{
    const nkdMetadata metadata = nkdMetadata::fromObject(object);
    if (!metadata.hasObjectEntries()) {
        return;
    }
    nkMetadataService &service = nkMetadataService::the();
    const nkdMetadataSet own = metadata.getObjectSet();
    const nkdMetadataSet set = service.createSet(service.getUniqueSetName(baseName), {object});
    set.getEntries().append(own.getEntries());
    own.getEntries().clear();
}

} // namespace nkMetadataEntryMoves
