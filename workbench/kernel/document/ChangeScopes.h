#pragma once

#include "ChangeLog.h"

#include <nkKernelServices/nkUndoString.h>

#include <QObject>
#include <QUndoStack>

#include <vector>

namespace kernel {

class Document;
class DocumentCommand;

/// The undo scopes of a document: what belongs to one undo step, when it is announced, and the undo stack.
///
/// The outermost scope decides. Its first operation that changes something is announced when it ends, what
/// follows when the scope closes. Listeners may do anything: what they change while the scope is open belongs
/// to it, what they change from its closing announcement on does not.
class ChangeScopes : public QObject
{
    Q_OBJECT
public:
    explicit ChangeScopes(Document &document);
    ~ChangeScopes() override;

    bool isOpen() const { return m_depth > 0; }
    /// Opens a scope; undoable counts for the outermost one only.
    void open(bool undoable);
    void close();
    /// A scope that titles the step, if it is the outermost of its sort in which something changes.
    void openTitled(const nkUndoString &title);
    void closeTitled();

    /// An operation of the document: changes that are told together, at the earliest when it ends.
    /// @param title of the step, where nobody gives another
    void beginOperation(const char *title);
    void endOperation();
    /// Where the running operation records and carries out its changes. Asking for it means that a change
    /// comes.
    ChangeLog &log();
    /// Where the changes of the running operation leave what they have done.
    ChangeEffects &effects() { return m_scope.effects; }

    QUndoStack &stack() { return m_stack; }
    bool isModified() const { return m_revision != m_savedRevision; }
    void markSaved();
    /// Another scene has taken the store's place: no history, unmodified.
    /// @param hasNews announce it, at once
    void startAnew(bool hasNews);

    /// Everything until endLoad is one operation that cannot be undone and says nothing meanwhile.
    void beginLoad();
    /// @param keep false: takes back what was done since
    void endLoad(bool keep);

private:
    friend class DocumentCommand;

    /// What the open outermost scope has gathered.
    struct Scope
    {
        bool undoable = true;
        /// Slots from this one on are born in the scope.
        Slot firstNew = 0;
        quint64 revisionBefore = 0;
        /// Given by the first change.
        QString firstTitle;
        /// Given by the outermost multi-command that saw a change.
        bool isTitled = false;
        nkUndoString title = QString();
        ChangeLog log;
        /// Not announced yet: effects, and property changes from this position on.
        ChangeEffects effects;
        int announcedTo = 0;
        bool isFirstAnnounced = false;
    };

    /// Something to tell, independent of scopes: objects are named by id.
    struct Announcement
    {
        int flags = 0;
        std::vector<PropertyNews> properties;
    };

    void finish(Scope scope);
    void noteFirstChange();
    void announceFirst();
    void tellDeaths(QList<quint64> &died);
    Announcement pending(const Scope &scope) const;
    void announce(const Announcement &announcement);
    void announceProperties(const std::vector<PropertyNews> &news);
    void announceProperty(quint64 id, const QString &name);
    void tellModified();

    // For commands: undo and redo through the stack.
    bool refuseStep();
    void takeStep(DocumentCommand &command, bool forward);
    void onIndexChanged();

    Store &store();

    Document &m_document;
    QUndoStack m_stack;
    Scope m_scope;
    int m_depth = 0;
    int m_operationDepth = 0;
    const char *m_operationTitle = nullptr;
    std::vector<nkUndoString> m_titles;

    quint64 m_revision = 0;
    quint64 m_savedRevision = 0;
    quint64 m_lastRevision = 0;
    bool m_toldModified = false;

    /// A command is just being pushed: its changes stand already.
    bool m_isPushing = false;
    /// The stack's index before it moved over refused commands; -1 where none was refused.
    int m_refusedIndex = -1;
    bool m_isRestoring = false;
    /// What the steps taken since the stack last told its index have to tell.
    Announcement m_stepNews;
    QList<quint64> m_stepDeaths;
    bool m_hasStepNews = false;
};

} // namespace kernel
