#include <nkKernelServicesGUI/nkMetadataTreeModel.h>

#include "TreeDragRecord.h"

#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>

#include <QCoreApplication>

nkMetadataTreeModel::nkMetadataTreeModel(QObject *parent) : QNKItemModel(parent)
{
    setHeader({QCoreApplication::translate("Metadata", "Name")});
    setMimeType(TreeDragRecord::mimeType());
    setSupportedDragActions(Qt::CopyAction | Qt::MoveAction);
}

nkMetadataTreeModel::~nkMetadataTreeModel() = default;

void nkMetadataTreeModel::setRootItem(nkMetadataRootModelItem *root)
{
    QNKItemModel::setRootItem(root);
}
