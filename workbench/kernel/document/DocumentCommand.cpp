#include "DocumentCommand.h"

#include "ChangeScopes.h"

namespace kernel {

DocumentCommand::DocumentCommand(ChangeScopes &scopes, ChangeLog log, const nkUndoString &title,
                                 Slot firstNew, quint64 before, quint64 after)
    : QUndoCommand(title.text()),
      m_scopes(scopes),
      m_log(std::move(log)),
      m_title(title),
      m_firstNew(firstNew),
      m_before(before),
      m_after(after)
{}

void DocumentCommand::undo()
{
    m_scopes.takeStep(*this, false);
}

void DocumentCommand::redo()
{
    m_scopes.takeStep(*this, true);
}

} // namespace kernel
