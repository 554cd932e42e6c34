#include "ChangeScopes.h"
#include "Document.h"

#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>

using kernel::Document;

nkScopedUndo::nkScopedUndo(bool undoable)
{
    Document::the().scopes().open(undoable);
}

nkScopedUndo::~nkScopedUndo()
{
    Document::the().scopes().close();
}

nkScopedMultiCommand::nkScopedMultiCommand(const nkUndoString &title, bool enabled) : m_enabled(enabled)
{
    if (m_enabled) {
        Document::the().scopes().openTitled(title);
    }
}

nkScopedMultiCommand::~nkScopedMultiCommand()
{
    if (m_enabled) {
        Document::the().scopes().closeTitled();
    }
}
