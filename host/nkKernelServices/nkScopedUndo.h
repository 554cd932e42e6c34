#pragma once

#include "nkKernelServicesExport.h"

#include <QtGlobal>

/// An undo scope for its lifetime. Scopes nest; the outermost one is at most one undo step, titled by its
/// outermost nkScopedMultiCommand, else by its first change. A scope in which nothing changed leaves nothing.
/// A change outside any scope is a step of its own.
///
/// In an outermost scope the first change is announced synchronously, inside the call that makes it; the
/// rest is merged into one announcement when the scope closes. Outside a scope each change is announced at
/// once. While a scope is open, undo and redo are refused.
class NK_KERNEL_SERVICES_EXPORT nkScopedUndo
{
    Q_DISABLE_COPY(nkScopedUndo)
public:
    /// @param undoable false: what changes during the scope is not undoable (and ends the history before it).
    ///        Inside an outer scope the outer scope's choice holds.
    explicit nkScopedUndo(bool undoable);
    ~nkScopedUndo();
};
