#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QList>
#include <QMap>

class QNKStringCompleterLineEdit;
class QWidget;

/// Helpers shared by the metadata editors.
class NK_KERNEL_SERVICES_GUI_EXPORT nkMetadataGUIUtils
{
public:
    nkMetadataGUIUtils() = delete;

    enum ConflictResult : int { Cancel = 0, PasteAnyway = 1, Replace = 2 };

    /// The entries of set whose keys clash with keys of entries, in the set's order; none where the set is
    /// not editable, for nothing is pasted into it.
    static QList<nkdMetadataEntry> getConflictingEntries(const nkdMetadataSet &set,
                                                         const QList<nkdMetadataEntry> &entries);
    /// Asks the user what to do about conflicts, modally. @param conflicts from set id to the set's entries
    /// @return Cancel; Replace: the caller removes the conflicting entries before it pastes; PasteAnyway:
    ///         both are kept, the pasted keys are made unique
    static ConflictResult showConflictingEntriesWarning(
        const QMap<quint64, QList<nkdMetadataEntry>> &conflicts);
    /// A line edit that completes from the active string library. @param parent owns it
    static QNKStringCompleterLineEdit *createMetadataLineEdit(QWidget *parent);
};
