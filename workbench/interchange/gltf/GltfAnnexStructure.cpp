// The part of GltfAnnexMaker that is about which objects there are and in which order.

#include <interchange/gltf/GltfAnnexMaker.h>

namespace interchange {

using kernel::NoSlot;
using kernel::Slot;

/// Below a deleted node all are: naming the uppermost is enough.
void GltfAnnexMaker::addRemoved()
{
    const auto add = [this](SceneSource::List list, quint32 index) {
        if (list == SceneSource::List::Materials || m_scene.nodes[index].parent < 0)
            m_annex.removed.push_back(referenceTo(list, index));
    };
    for (const SceneSource::Removed &removed : m_source.removed)
        add(removed.list, removed.index);
    for (const SceneSource::ObjectOrigin &origin : m_source.objects()) {
        if (m_store.objectSlot(origin.id) == NoSlot)
            add(origin.list, origin.index);
    }
}

void GltfAnnexMaker::addRoots()
{
    QSet<quint32> removed;
    for (const GltfAnnex::Reference &reference : m_annex.removed) {
        if (reference.kind == GltfAnnex::Reference::Node)
            removed.insert(reference.index);
    }
    std::vector<quint32> inFile;
    for (const qint32 root : m_scene.roots) {
        if (!removed.contains(quint32(root)))
            inFile.push_back(quint32(root));
    }
    std::vector<quint32> wanted;
    for (const Slot root : m_store.topLevelNodes().slots())
        wanted.push_back(m_source.object(m_store.idOf(root))->index);
    if (wanted == inFile)
        return;
    for (const quint32 root : wanted)
        m_annex.roots.push_back(referenceTo(SceneSource::List::Nodes, root));
}

bool GltfAnnexMaker::isMaterialListEnough() const
{
    qint64 last = -1;
    for (const Slot slot : m_store.topLevelMaterials().slots()) {
        if (m_store.object(slot).type != nkObjectType::Material)
            return false;
        const qint64 index = m_source.object(m_store.idOf(slot))->index;
        if (index < last)
            return false;
        last = index;
    }
    return true;
}

/// Depth first with a stack of its own, groups before what is in them.
void GltfAnnexMaker::addMaterials()
{
    if (isMaterialListEnough())
        return;
    std::vector<std::pair<Slot, qint32>> waiting;
    const auto push = [&waiting](const QVector<Slot> &slots, qint32 group) {
        for (auto slot = slots.crbegin(); slot != slots.crend(); ++slot)
            waiting.emplace_back(*slot, group);
    };
    push(m_store.topLevelMaterials().slots(), -1);
    for (quint32 groups = 0; !waiting.empty();) {
        const auto [slot, group] = waiting.back();
        waiting.pop_back();
        const kernel::ObjectRecord &record = m_store.object(slot);
        const quint64 id = m_store.idOf(slot);
        GltfAnnex::MaterialItem item;
        item.group = group;
        if (record.type == nkObjectType::MaterialGroup) {
            static_cast<GltfAnnex::Reference &>(item) = {GltfAnnex::Reference::Group, groups, record.name};
            addGroup(id, item);
            push(record.children.slots(), qint32(groups++));
        } else {
            static_cast<GltfAnnex::Reference &>(item) = referenceTo(*m_source.object(id));
        }
        m_annex.materials.push_back(item);
    }
}

} // namespace interchange
