#pragma once

#include "ChangeLog.h"

#include <nkKernelServices/nkUndoString.h>

#include <QUndoCommand>

namespace kernel {

class ChangeScopes;

/// One undo step: the changes of one outermost scope. Made after its changes stand, so the redo that pushing
/// brings does nothing.
class DocumentCommand : public QUndoCommand
{
public:
    /// @param firstNew slots from this one on were born in the step
    /// @param before, after the document's revisions around the step
    DocumentCommand(ChangeScopes &scopes, ChangeLog log, const nkUndoString &title, Slot firstNew,
                    quint64 before, quint64 after);

    void undo() override;
    void redo() override;

    ChangeLog &log() { return m_log; }
    Slot firstNew() const { return m_firstNew; }
    quint64 revision(bool after) const { return after ? m_after : m_before; }
    /// The title as it was given, with its category.
    const nkUndoString &title() const { return m_title; }

private:
    ChangeScopes &m_scopes;
    ChangeLog m_log;
    nkUndoString m_title;
    Slot m_firstNew;
    quint64 m_before;
    quint64 m_after;
};

} // namespace kernel
