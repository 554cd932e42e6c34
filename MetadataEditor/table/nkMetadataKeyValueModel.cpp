#include "table/nkMetadataKeyValueModel.h"

#include "table/nkMetadataKeyValueRootModelItem.h"

nkMetadataKeyValueModel::nkMetadataKeyValueModel()
{
    setMimeType(QStringLiteral("application/calyx-metadata-entry-item"));
    setSupportedDragActions(Qt::CopyAction);
}

nkMetadataKeyValueModel::~nkMetadataKeyValueModel() = default;

void nkMetadataKeyValueModel::setRootItem(nkMetadataKeyValueRootModelItem *root)
{
    if (root) {
        QNKItemModel::setRootItem(root);
    }
}
