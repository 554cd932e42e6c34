#include "table/nkMetadataKeyValueTreeView.h"

#include <nkQt4Ext/nkIconCache.h>

nkMetadataKeyValueTreeView::nkMetadataKeyValueTreeView(QWidget *parent) : QNKTreeView(parent)
{
    setRootIsDecorated(false);
    setAlternatingRowColors(false);
    // The icon column's cursor follows the mouse without a pressed button.
    setAttribute(Qt::WA_MouseTracking);
    setDragDropMode(QAbstractItemView::DragOnly);
    setAcceptDrops(false);
    setDragPixmap(nkIconCache::Metadata::getMetadataSetIconPixmap());
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked);
    setContextMenuPolicy(Qt::CustomContextMenu);
}

nkMetadataKeyValueTreeView::~nkMetadataKeyValueTreeView() = default;
