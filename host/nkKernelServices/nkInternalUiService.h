#pragma once

#include "nkKernelServicesExport.h"

#include <QObject>

/// Requests between the host's editors and modules.
class NK_KERNEL_SERVICES_EXPORT nkInternalUiService : public QObject
{
    Q_OBJECT
public:
    static nkInternalUiService &the();

Q_SIGNALS:
    /// Asks the Metadata Editor to switch its lower tree to the objects of the last selection. Whoever wants
    /// that calls it; the editor listens.
    void requestMetadataEditorSelectionModeInLowerTree();
};
