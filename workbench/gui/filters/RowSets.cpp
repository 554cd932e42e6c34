#include "RowSets.h"

#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkMetadataTreeModel.h>

#include <QModelIndex>

namespace RowSets {

QList<nkdMetadataSet> of(const QModelIndex &index)
{
    const nkdObject object = index.data(nkMetadataTreeModel::ObjectRole).value<nkdObject>();
    const nkdMetadataSet set(object);
    if (!set.isNull()) {
        return {set};
    }
    const nkdMetadata metadata(object.getObjectId());
    QList<nkdMetadataSet> sets = metadata.getSets();
    if (metadata.hasObjectEntries()) {
        sets.prepend(metadata.getObjectSet());
    }
    return sets;
}

} // namespace RowSets
