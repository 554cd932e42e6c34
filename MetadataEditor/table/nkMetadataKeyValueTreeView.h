#pragma once

#include <nkQt4Ext/QNKTreeView.h>

/// The key/value table: flat, a source of drags and no target.
class nkMetadataKeyValueTreeView : public QNKTreeView
{
    Q_OBJECT
public:
    explicit nkMetadataKeyValueTreeView(QWidget *parent = nullptr);
    ~nkMetadataKeyValueTreeView() override;
};
