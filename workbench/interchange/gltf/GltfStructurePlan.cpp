#include <interchange/gltf/GltfStructurePlan.h>

#include <algorithm>

namespace interchange {

using kernel::Document;
using kernel::NoSlot;
using kernel::Slot;

GltfStructurePlan::GltfStructurePlan(const SceneSource &source)
    : m_source(source), m_store(Document::the().store())
{
    findNew();
    for (const Origin &origin : source.objects())
        compare(origin);
    m_hasOtherRoots = roots() != source.rootIds;
    m_isNeeded = m_isNeeded || m_hasOtherRoots || !m_newNodes.empty() || !m_newMaterials.empty();
}

void GltfStructurePlan::findNew()
{
    int known = 0;
    for (const Origin &origin : m_source.objects())
        known += isAlive(origin.id) ? 1 : 0;
    if (known == m_store.objectCount())
        return;
    const auto find = [this](nkObjectType kind, Ids &ids) {
        const QList<quint64> all = Document::the().objects(kind);
        std::copy_if(all.begin(), all.end(), std::back_inserter(ids),
                     [this](quint64 id) { return !m_source.object(id); });
    };
    for (const auto kind :
         {nkObjectType::Node, nkObjectType::Camera, nkObjectType::Light, nkObjectType::Sceneplate})
        find(kind, m_newNodes);
    find(nkObjectType::Material, m_newMaterials);
    std::sort(m_newNodes.begin(), m_newNodes.end());
    std::sort(m_newMaterials.begin(), m_newMaterials.end());
}

void GltfStructurePlan::compare(const Origin &origin)
{
    const bool isNode = origin.list == SceneSource::List::Nodes;
    const Slot slot = m_store.objectSlot(origin.id);
    // What a save of ours has put there may be taken out again.
    m_isNeeded = m_isNeeded || (origin.isMade && slot == NoSlot);
    if (!isNode)
        return;
    if (slot == NoSlot && !origin.isGone)
        m_gone.push_back(&origin);
    if (slot != NoSlot && m_store.idOf(m_store.object(slot).place.parent) != origin.parentId)
        m_moved.push_back(&origin);
    m_isNeeded = m_isNeeded || !hasSameChildren(origin);
}

bool GltfStructurePlan::hasSameChildren(const Origin &origin) const
{
    const Slot slot = m_store.objectSlot(origin.id);
    const quint64 *const present = m_source.children().data() + origin.children.first;
    if (slot == NoSlot)
        return std::none_of(present, present + origin.children.count,
                            [this](quint64 id) { return isAlive(id); });
    const QVector<Slot> &children = m_store.object(slot).children.slots();
    return quint32(children.size()) == origin.children.count
           && std::equal(children.begin(), children.end(), present,
                         [this](Slot child, quint64 id) { return m_store.idOf(child) == id; });
}

GltfStructurePlan::Ids GltfStructurePlan::childrenOf(quint64 id) const
{
    Ids ids;
    const Slot slot = m_store.objectSlot(id);
    if (slot != NoSlot) {
        for (const Slot child : m_store.object(slot).children.slots())
            ids.push_back(m_store.idOf(child));
    } else if (const Origin *origin = m_source.object(id)) {
        for (quint32 i = origin->children.first; i < origin->children.end(); ++i) {
            if (!isAlive(m_source.children()[i]))
                ids.push_back(m_source.children()[i]);
        }
    }
    return ids;
}

GltfStructurePlan::Ids GltfStructurePlan::roots() const
{
    Ids ids;
    for (const Slot root : m_store.topLevelNodes().slots())
        ids.push_back(m_store.idOf(root));
    return ids;
}

} // namespace interchange
