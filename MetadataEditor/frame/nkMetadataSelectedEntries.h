#pragma once

#include "frame/nkMetadataTableEntries.h"

#include <nkKernelServicesGUI/nkPropertyEditorNkdObjectWrapper.h>

#include <QList>

/// What the selected rows of the table mean for the property panel.
struct nkMetadataSelectedEntries
{
    /// Rows without an entry or a set are left out.
    static nkMetadataSelectedEntries of(const QList<nkMetadataTableEntries::Row> &rows);

    /// For the panel, in the order of the rows.
    QList<nkPropertyEditorNkdObjectWrapper> wrappers;
    /// Tags have neither value nor type.
    bool hasTag = false;
    /// Two entries of one set cannot be given one key.
    bool shareASet = false;
    /// Every set may be edited; true where nothing is selected.
    bool areEditable = true;
};
