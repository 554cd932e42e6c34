#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkQt4Ext/QNKItemModel.h>

class nkMetadataRootModelItem;
class nkdMetadataSet;
class nkdObject;

/// The model of a tree of sets or objects: one column with name, icon and, for what is not editable, the
/// disabled text colour. Names are edited in place, inside an undo scope. Rows are dragged as
/// "application/calyx-metadata-object-item"; sets dropped on objects, and objects on sets, are assigned, and
/// table rows dropped on either are copied there.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataTreeModel : public QNKItemModel
{
    Q_OBJECT
public:
    explicit nkMetadataTreeModel(QObject *parent = nullptr);
    ~nkMetadataTreeModel() override;

    /// Takes ownership; null is ignored.
    void setRootItem(nkMetadataRootModelItem *root);

    /// Item data of column 0: the row's object as a QVariant of the meta-type "nkdObject".
    static constexpr int ObjectRole = Qt::UserRole + 1;
};
