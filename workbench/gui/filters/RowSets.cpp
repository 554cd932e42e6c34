#include "RowSets.h"

#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>

#include <QModelIndex>

namespace {

nkdObject objectOf(const QModelIndex &index)
{
    return index.data(nkMetadataTreeModel::ObjectRole).value<nkdObject>();
}

} // namespace

namespace RowSets {

QList<nkdMetadataSet> of(const QModelIndex &index)
{
    const nkdObject object = objectOf(index);
    const nkdMetadataSet set(object);
    if (!set.isNull()) {
        return {set};
    }
    // Else every set would be found that shares an object with one that is looked for.
    const nkdMetadataSet above(objectOf(index.parent()));
    if (!above.isNull()) {
        return {above};
    }
    const nkdMetadata metadata(object.getObjectId());
    QList<nkdMetadataSet> sets = metadata.getSets();
    if (metadata.hasObjectEntries()) {
        sets.prepend(metadata.getObjectSet());
    }
    return sets;
}

} // namespace RowSets
