#pragma once

#include "nkKernelServicesExport.h"
#include "nkUndoString.h"

#include <QtGlobal>

/// Groups every change made during its lifetime into one undo step with a title. Opens an undo scope of its
/// own where none is open. The outermost multi-command of a scope gives the step its title.
class NK_KERNEL_SERVICES_EXPORT nkScopedMultiCommand
{
    Q_DISABLE_COPY(nkScopedMultiCommand)
public:
    /// @param enabled false: gives no title, groups nothing
    explicit nkScopedMultiCommand(const nkUndoString &title, bool enabled = true);
    ~nkScopedMultiCommand();

private:
    const bool m_enabled;
};
