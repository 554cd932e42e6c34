#include "DocumentLoader.h"

#include "ChangeScopes.h"
#include "Document.h"
#include "EntryOperations.h"
#include "ObjectOperations.h"
#include "SetOperations.h"
#include "Store.h"
#include "ValueConversion.h"

namespace kernel {

DocumentLoader::DocumentLoader(Mode mode) : m_mode(mode)
{
    Document &document = Document::the();
    if (document.isScopeOpen()) {
        return;
    }
    if (mode == Mode::Replace) {
        m_aside = std::make_unique<Store>();
        m_target = m_aside.get();
    } else {
        document.scopes().beginLoad();
        m_target = document.m_store.get();
    }
}

DocumentLoader::~DocumentLoader()
{
    if (m_target && m_mode == Mode::Add) {
        Document::the().scopes().endLoad(false);
    }
}

bool DocumentLoader::commit()
{
    Document &document = Document::the();
    if (!m_target || (m_mode == Mode::Replace && document.isScopeOpen())) {
        return false;
    }
    m_target = nullptr;
    if (m_mode == Mode::Replace) {
        document.replaceScene(std::move(m_aside), m_isTreeFixed);
    } else {
        document.scopes().endLoad(true);
    }
    return true;
}

/// New records appear: at once in the aside store, by the log that can take them back in the open scene.
void DocumentLoader::appear(ChangeKind kind, quint32 slotOrLink)
{
    ChangeScopes &scopes = Document::the().scopes();
    if (m_mode == Mode::Add) {
        scopes.log().toggle(*m_target, kind, slotOrLink, scopes.effects());
        return;
    }
    switch (kind) {
    case ChangeKind::ObjectBorn:
        m_target->setObjectPresent(slotOrLink, true);
        break;
    case ChangeKind::SetBorn:
        m_target->setSetPresent(slotOrLink, true);
        break;
    case ChangeKind::EntryBorn:
        m_target->setEntryPresent(slotOrLink, true);
        break;
    default:
        m_target->setLinkPresent(slotOrLink, true);
        break;
    }
}

quint64 DocumentLoader::addObject(nkObjectType type, const QString &name, quint64 parentId)
{
    if (!m_target || !fitsBelow(*m_target, type, parentId)) {
        return 0;
    }
    const Slot object = m_target->addObject(type, name, m_target->objectSlot(parentId));
    appear(ChangeKind::ObjectBorn, object);
    return m_target->idOf(object);
}

quint64 DocumentLoader::addSet(const QString &name, const QColor &color, bool locked)
{
    if (!m_target) {
        return 0;
    }
    const Slot set = m_target->addSet(m_target->uniqueSetName(name.isEmpty() ? defaultSetName() : name),
                                      color);
    m_target->set(set).locked = locked;
    appear(ChangeKind::SetBorn, set);
    return m_target->idOf(set);
}

quint64 DocumentLoader::objectSet(quint64 objectId) const
{
    const ObjectRecord *object = m_target ? m_target->findObject(objectId) : nullptr;
    return object ? m_target->idOf(object->objectSet) : 0;
}

SetRecord *DocumentLoader::freshSet(quint64 setId) const
{
    const Slot set = m_target && m_mode == Mode::Replace ? m_target->setSlot(setId) : NoSlot;
    return set == NoSlot ? nullptr : &m_target->set(set);
}

bool DocumentLoader::setColor(quint64 setId, const QColor &color)
{
    SetRecord *const set = freshSet(setId);
    if (!set || !color.isValid()) {
        return false;
    }
    set->color = color;
    return true;
}

bool DocumentLoader::lockSet(quint64 setId)
{
    SetRecord *const set = freshSet(setId);
    if (set) {
        set->locked = true;
    }
    return set != nullptr;
}

bool DocumentLoader::lockObject(quint64 objectId)
{
    const Slot object = m_target && m_mode == Mode::Replace ? m_target->objectSlot(objectId) : NoSlot;
    if (object != NoSlot) {
        m_target->object(object).locked = true;
    }
    return object != NoSlot;
}

bool DocumentLoader::setAsset(quint64 setId, AssetState state, const QString &assetId, int version)
{
    SetRecord *const set = freshSet(setId);
    if (!set || set->owner != NoSlot) {
        return false;
    }
    set->asset = state == AssetState::None ? AssetLink() : AssetLink{state, assetId, version};
    return true;
}

bool DocumentLoader::setSceneplate(quint64 id, const QString &imagePath, SceneplatePlacement placement)
{
    const Slot plate = m_target && m_mode == Mode::Replace ? m_target->objectSlot(id) : NoSlot;
    if (plate == NoSlot || m_target->object(plate).type != nkObjectType::Sceneplate) {
        return false;
    }
    SceneplateRecord content{imagePath, placement};
    m_target->swapSceneplate(plate, content);
    return true;
}

quint64 DocumentLoader::addEntry(quint64 setId, const QString &key, nkMetadataTypes::ValueType type,
                                 const QVariant &value)
{
    const bool isType = type >= nkMetadataTypes::String && type <= nkMetadataTypes::List;
    const std::optional<EntryValue> held = !isType           ? std::nullopt
                                           : value.isValid() ? convertedValue(value, type)
                                                             : std::optional<EntryValue>(defaultValue(type));
    return held ? add(setId, key, *held) : 0;
}

quint64 DocumentLoader::addNumberText(quint64 setId, const QString &key, const QString &number)
{
    return add(setId, key,
               isNumberLiteral(number) ? EntryValue(EntryValue::NumberText{number}) : EntryValue(number));
}

quint64 DocumentLoader::addTag(quint64 setId, const QString &key)
{
    return add(setId, key.isEmpty() ? defaultKey(nkMetadataTypes::Tag) : key, EntryValue());
}

quint64 DocumentLoader::add(quint64 setId, const QString &key, EntryValue value)
{
    const Slot set = m_target ? m_target->setSlot(setId) : NoSlot;
    if (set == NoSlot) {
        return 0;
    }
    KeyPool &keys = m_target->keys();
    quint32 number = keys.number(key.isEmpty() ? defaultKey(nkMetadataTypes::String) : key);
    if (m_target->findKey(set, number) != NoSlot) {
        number = keys.number(m_target->uniqueKey(set, keys.text(number)));
    }
    const Slot entry = m_target->addEntry(set, number, std::move(value));
    appear(ChangeKind::EntryBorn, entry);
    return m_target->idOf(entry);
}

bool DocumentLoader::assign(quint64 setId, quint64 objectId)
{
    const Slot set = m_target ? m_target->setSlot(setId) : NoSlot;
    const Slot object = m_target ? m_target->objectSlot(objectId) : NoSlot;
    if (set == NoSlot || object == NoSlot || m_target->set(set).owner != NoSlot
        || m_target->findLink(set, object) != NoLink) {
        return false;
    }
    appear(ChangeKind::Linked, m_target->addLink(set, object));
    return true;
}

} // namespace kernel
