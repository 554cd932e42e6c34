#include "table/nkMetadataKeyValueModel.h"

#include "table/nkMetadataKeyValueRootModelItem.h"

nkMetadataKeyValueModel::nkMetadataKeyValueModel()
{
    // Drag data outlives the model: no literal, which would go with the plug-in.
    setMimeType(QString(QLatin1String("application/calyx-metadata-entry-item")));
    setSupportedDragActions(Qt::CopyAction);
}

nkMetadataKeyValueModel::~nkMetadataKeyValueModel() = default;

void nkMetadataKeyValueModel::setRootItem(nkMetadataKeyValueRootModelItem *root)
{
    if (root) {
        QNKItemModel::setRootItem(root);
    }
}
