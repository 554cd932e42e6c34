#pragma once

#include "TreeMode.h"
#include "nkKernelServicesGUIExport.h"

#include <nkQt4Ext/QNKModelItem.h>

/// The invisible root of an nkMetadataTreeModel: makes the rows of the present list.
///
/// In Sets: a row a set, with its objects as children; else a row an object, with its sets as children. A
/// top-level row's id is its object's id as decimal text, a child row's its own object's id followed by its
/// parent's object's id, without separator.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataRootModelItem : public QNKModelItem
{
public:
    /// Lists TreeMode::Sets.
    nkMetadataRootModelItem();
    ~nkMetadataRootModelItem() override;

    TreeMode getTreeMode() const { return m_mode; }
    /// What the next reload lists.
    void setTreeMode(TreeMode mode) { m_mode = mode; }

    QVariant getClassName() const override;
    void reload() override;

private:
    TreeMode m_mode = TreeMode::Sets;
};
