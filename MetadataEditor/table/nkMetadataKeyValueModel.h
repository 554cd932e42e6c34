#pragma once

#include <nkQt4Ext/QNKItemModel.h>

class nkMetadataKeyValueRootModelItem;

/// The model of the key/value table: a flat list of entries, five columns (nkMetadataKeyValue::Column). It
/// keeps no data of its own; edits go straight to the host. Rows are dragged as
/// "application/calyx-metadata-entry-item", one nkMetadataEntryMime a row, and only to be copied.
class nkMetadataKeyValueModel : public QNKItemModel
{
    Q_OBJECT
public:
    /// Empty, without header and parent.
    nkMetadataKeyValueModel();
    ~nkMetadataKeyValueModel() override;

    /// Takes ownership; null is ignored. The rows come with the next reload.
    void setRootItem(nkMetadataKeyValueRootModelItem *root);
};
