#include "Operation.h"

#include "ChangeScopes.h"
#include "Document.h"
#include "Store.h"

namespace kernel {

Operation::Operation(const char *title)
    : m_scopes(*Document::the().m_scopes), m_store(*Document::the().m_store)
{
    m_scopes.beginOperation(title);
}

Operation::~Operation()
{
    m_scopes.endOperation();
}

void Operation::toggle(ChangeKind kind, quint32 slotOrLink)
{
    m_scopes.log().toggle(m_store, kind, slotOrLink, m_scopes.effects());
}

void Operation::changeName(ChangeKind kind, Slot slot, const QString &name)
{
    m_scopes.log().changeName(m_store, kind, slot, name, m_scopes.effects());
}

void Operation::toggleLock(ChangeKind kind, Slot slot)
{
    m_scopes.log().changeLock(m_store, kind, slot, m_scopes.effects());
}

void Operation::changePlace(Slot object, const ObjectPlace &place)
{
    m_scopes.log().changePlace(m_store, object, place, m_scopes.effects());
}

void Operation::changeSceneplate(Slot object, const SceneplateRecord &content)
{
    m_scopes.log().changeSceneplate(m_store, object, content, m_scopes.effects());
}

void Operation::changeColor(Slot set, const QColor &color)
{
    m_scopes.log().changeColor(m_store, set, color, m_scopes.effects());
}

void Operation::changeAsset(Slot set, const AssetLink &asset)
{
    m_scopes.log().changeAsset(m_store, set, asset, m_scopes.effects());
}

void Operation::changeKey(Slot entry, const QString &key)
{
    m_scopes.log().changeKey(m_store, entry, m_store.keys().number(key), m_scopes.effects());
}

void Operation::changeContent(Slot entry, EntryValue value)
{
    m_scopes.log().changeContent(m_store, entry, std::move(value), m_scopes.effects());
}

Slot Operation::addEntry(Slot set, const QString &key, EntryValue value)
{
    const Slot entry = m_store.addEntry(set, m_store.keys().number(key), std::move(value));
    toggle(ChangeKind::EntryBorn, entry);
    return entry;
}

void Operation::link(Slot set, Slot object)
{
    if (m_store.findLink(set, object) == NoLink) {
        toggle(ChangeKind::Linked, m_store.addLink(set, object));
    }
}

void Operation::unlink(Slot set, Slot object)
{
    const LinkIndex link = m_store.findLink(set, object);
    if (link != NoLink) {
        toggle(ChangeKind::Unlinked, link);
    }
}

} // namespace kernel
