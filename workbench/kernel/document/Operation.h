#pragma once

#include "ChangeLog.h"

#include <QtGlobal>

namespace kernel {

class ChangeScopes;
class Store;

/// One operation of the document, for its lifetime: the only way to change the store of the open scene. What
/// it changes belongs to the open undo scope or is a step of its own, and is announced when it ends, by the
/// rules of nkScopedUndo.
///
/// Callers have checked what they ask for: that slots are alive, and that there is something to change.
class Operation
{
    Q_DISABLE_COPY(Operation)
public:
    /// @param title of the undo step, where nobody gives another; marked for translation in "Document"
    explicit Operation(const char *title);
    ~Operation();

    Store &store() { return m_store; }

    /// New records of the store, and links, appear; or existing ones vanish (their counterparts).
    void toggle(ChangeKind kind, quint32 slotOrLink);
    /// @param kind ObjectName or SetName
    void changeName(ChangeKind kind, Slot slot, const QString &name);
    /// @param kind ObjectLock or SetLock
    void toggleLock(ChangeKind kind, Slot slot);
    void changePlace(Slot object, const ObjectPlace &place);
    void changeSceneplate(Slot object, const SceneplateRecord &content);
    void changeColor(Slot set, const QColor &color);
    void changeAsset(Slot set, const AssetLink &asset);
    void changeKey(Slot entry, const QString &key);
    void changeContent(Slot entry, EntryValue value);

    /// A new entry at the end of the set.
    /// @param key not taken in the set
    Slot addEntry(Slot set, const QString &key, EntryValue value);
    /// Assigns the set to the object, unless it is.
    void link(Slot set, Slot object);
    /// Takes the set off the object, where it is assigned.
    void unlink(Slot set, Slot object);

private:
    ChangeScopes &m_scopes;
    Store &m_store;
};

} // namespace kernel
