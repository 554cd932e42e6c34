#include "Document.h"

#include "ChangeScopes.h"
#include "Clipboard.h"
#include "Kernel.h"
#include "ObjectOperations.h"
#include "SceneWalk.h"
#include "SetOperations.h"
#include "Store.h"

#include <algorithm>

namespace kernel {

Document::Document()
    : m_store(std::make_unique<Store>()),
      m_scopes(std::make_unique<ChangeScopes>(*this)),
      m_clipboard(std::make_unique<Clipboard>())
{}

Document::~Document() = default;

Document &Document::the()
{
    return Kernel::the().document();
}

bool Document::clear()
{
    if (isScopeOpen()) {
        return false;
    }
    m_clipboard->clear();
    replaceScene(std::make_unique<Store>(), false);
    return true;
}

void Document::replaceScene(std::unique_ptr<Store> store, bool isTreeFixed)
{
    const bool isFixedAnew = m_isTreeFixed != isTreeFixed;
    const bool hasNews = !m_store->isEmpty() || !store->isEmpty();
    // The history goes before anybody hears of the new scene, the old scene after.
    m_store.swap(store);
    m_isTreeFixed = isTreeFixed;
    m_scopes->startAnew(hasNews);
    if (isFixedAnew) {
        Q_EMIT treeFixedChanged(isTreeFixed);
    }
}

// Undo --------------------------------------------------------------------------------------------------

QUndoStack *Document::undoStack() const
{
    return &m_scopes->stack();
}

bool Document::undo()
{
    if (isScopeOpen() || !undoStack()->canUndo()) {
        return false;
    }
    undoStack()->undo();
    return true;
}

bool Document::redo()
{
    if (isScopeOpen() || !undoStack()->canRedo()) {
        return false;
    }
    undoStack()->redo();
    return true;
}

bool Document::goToStep(int index)
{
    if (isScopeOpen() || index < 0 || index > undoStack()->count()) {
        return false;
    }
    undoStack()->setIndex(index);
    return true;
}

bool Document::isScopeOpen() const
{
    return m_scopes->isOpen();
}

bool Document::isModified() const
{
    return m_scopes->isModified();
}

void Document::markSaved()
{
    m_scopes->markSaved();
}

// Operations --------------------------------------------------------------------------------------------

quint64 Document::createObject(nkObjectType type, const QString &name, quint64 parentId)
{
    return m_isTreeFixed ? 0 : ObjectOperations::create(type, name, parentId);
}

bool Document::deleteObjects(const QList<quint64> &ids)
{
    return !m_isTreeFixed && ObjectOperations::remove(ids);
}

quint64 Document::createSceneplate(const QString &name, const QString &imagePath,
                                   SceneplatePlacement placement, quint64 parentId)
{
    return m_isTreeFixed ? 0 : ObjectOperations::createSceneplate(name, {imagePath, placement}, parentId);
}

bool Document::moveObjects(const QList<quint64> &ids, quint64 parentId, int position)
{
    return !m_isTreeFixed && ObjectOperations::move(ids, parentId, position);
}

bool Document::setSceneplateImage(quint64 id, const QString &imagePath)
{
    return ObjectOperations::setSceneplate(id, {imagePath, sceneplatePlacement(id)});
}

bool Document::setSceneplatePlacement(quint64 id, SceneplatePlacement placement)
{
    return ObjectOperations::setSceneplate(id, {sceneplateImage(id), placement});
}

bool Document::setAssetState(quint64 setId, AssetState state, const QString &assetId, int version)
{
    return SetOperations::setAsset(setId, {state, assetId, version});
}

// Reading -----------------------------------------------------------------------------------------------

nkObjectType Document::typeOf(quint64 id) const
{
    return m_store->typeOf(m_store->slotOf(id));
}

AssetState Document::assetState(quint64 setId) const
{
    const SetRecord *set = m_store->findSet(setId);
    return set ? set->asset.state : AssetState::None;
}

QString Document::assetId(quint64 setId) const
{
    const SetRecord *set = m_store->findSet(setId);
    return set ? set->asset.assetId : QString();
}

int Document::assetVersion(quint64 setId) const
{
    const SetRecord *set = m_store->findSet(setId);
    return set ? set->asset.version : 0;
}

bool Document::isNumberText(quint64 entryId) const
{
    const EntryRecord *entry = m_store->findEntry(entryId);
    return entry && entry->value.isNumberText();
}

bool Document::isAssignedToKind(quint64 setId, nkObjectType kind) const
{
    const SetRecord *set = m_store->findSet(setId);
    const int index = sceneKindIndex(kind);
    return set && index >= 0 && index < SceneKindCount && set->linkedKinds[size_t(index)] > 0;
}

quint32 Document::assignedKinds(quint64 setId) const
{
    const SetRecord *set = m_store->findSet(setId);
    if (!set) {
        return 0;
    }
    if (set->owner != NoSlot) {
        return 1u << quint32(typeOf(m_store->idOf(set->owner)));
    }
    quint32 kinds = 0;
    for (int index = 0; index < SceneKindCount; ++index) {
        kinds |= set->linkedKinds[size_t(index)] > 0 ? 1u << (index + int(nkObjectType::Node)) : 0u;
    }
    return kinds;
}

QString Document::sceneplateImage(quint64 id) const
{
    return m_store->findObject(id) ? m_store->sceneplate(m_store->objectSlot(id)).imagePath : QString();
}

SceneplatePlacement Document::sceneplatePlacement(quint64 id) const
{
    return m_store->findObject(id) ? m_store->sceneplate(m_store->objectSlot(id)).placement
                                   : SceneplatePlacement::Behind;
}

quint64 Document::parentOf(quint64 objectId) const
{
    const ObjectRecord *object = m_store->findObject(objectId);
    return object ? m_store->idOf(object->place.parent) : 0;
}

QList<quint64> Document::childrenOf(quint64 objectId) const
{
    const ObjectRecord *object = m_store->findObject(objectId);
    return object ? m_store->idsOf(object->children.slots()) : QList<quint64>();
}

QList<quint64> Document::topLevelNodes() const
{
    return m_store->idsOf(m_store->topLevelNodes().slots());
}

QList<quint64> Document::topLevelMaterials() const
{
    return m_store->idsOf(m_store->topLevelMaterials().slots());
}

QList<quint64> Document::objects(nkObjectType kind) const
{
    return m_store->idsOf(SceneWalk(*m_store).objects(kind));
}

QList<quint64> Document::objectsWithMetadata(nkObjectType kind) const
{
    QVector<Slot> objects = SceneWalk(*m_store).objects(kind);
    const auto hasNone = [this](Slot object) { return !m_store->hasMetadata(object); };
    objects.erase(std::remove_if(objects.begin(), objects.end(), hasNone), objects.end());
    return m_store->idsOf(objects);
}

QVector<Document::Assignment> Document::assignments() const
{
    QVector<Assignment> assignments;
    for (LinkIndex index = 0; index < m_store->linkCount(); ++index) {
        const AssignmentLink &link = m_store->link(index);
        // Links that are undone, or whose set or object is, lie there too.
        if (m_store->findLink(link.set, link.object) == index) {
            assignments.append({m_store->idOf(link.set), m_store->idOf(link.object)});
        }
    }
    return assignments;
}

int Document::objectCount() const
{
    return m_store->objectCount();
}

int Document::setCount() const
{
    return m_store->sharedSets().size();
}

int Document::entryCount() const
{
    return m_store->entryCount();
}

} // namespace kernel
