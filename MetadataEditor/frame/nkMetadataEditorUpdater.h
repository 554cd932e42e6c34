#pragma once

#include <nkQt4Ext/QNKUpdateScheduler.h>

/// What a refresh of the editor window covers; bits are combined by OR.
namespace nkMetadataUpdate {

enum Bit : uint {
    UpperTree = 1,
    LowerTree = 2,
    Table = 4,
    PropertyPanel = 8,
    /// Each tree that lists the host's last selection.
    SelectionLists = 16,

    BothTrees = UpperTree | LowerTree,
    AllButSelectionLists = BothTrees | Table | PropertyPanel
};

} // namespace nkMetadataUpdate

/// Collects what the host's notifications ask the editor window to refresh (nkMetadataUpdate::Bit), so that a
/// burst of them costs one refresh of each view.
class nkMetadataEditorUpdater : public QNKUpdateScheduler
{
    Q_OBJECT
public:
    using QNKUpdateScheduler::QNKUpdateScheduler;
};
