#include <interchange/gltf/GltfStructurePatch.h>

#include <interchange/gltf/GltfDevices.h>
#include <interchange/gltf/GltfPlacer.h>
#include <interchange/gltf/GltfSceneLists.h>
#include <interchange/json/JsonReader.h>

#include <algorithm>

namespace interchange {

using kernel::Slot;

namespace {

const QLatin1String NodesKey("nodes");
const QLatin1String MaterialsKey("materials");
const QLatin1String NameKey("name");
const QLatin1String ChildrenKey("children");

std::vector<JsonValue> elementsOf(const JsonValue &list)
{
    std::vector<JsonValue> elements;
    for (const JsonValue element : list.children())
        elements.push_back(element);
    return elements;
}

} // namespace

GltfStructurePatch::GltfStructurePatch(const SceneSource &source, const GltfStructurePlan &plan)
    : m_source(source), m_plan(plan), m_store(kernel::Document::the().store())
{}

GltfStructurePatch::~GltfStructurePatch() = default;

QByteArray GltfStructurePatch::text()
{
    collect();
    cut(List::Nodes, m_nodes, NodesKey);
    cut(List::Materials, m_materials, MaterialsKey);
    numberNew();
    GltfDevices devices(m_tree, m_source, *m_edit);
    devices.cut(m_nodes);
    patchChildren();
    GltfPlacer placer(m_tree, m_source, m_plan, m_nodes, *m_edit);
    placer.place();
    m_disturbedCount = placer.disturbedCount();
    m_lostCount = placer.lostCount();
    GltfSceneLists(m_tree, m_source, m_plan, *m_edit, [this](quint64 id) { return numberOf(id); }).patch();
    QByteArrayList nodes;
    for (const quint64 id : m_plan.newNodes())
        nodes.append(newNode(id, devices));
    add(NodesKey, nodes);
    QByteArrayList materials;
    for (const quint64 id : m_plan.newMaterials())
        materials.append(newMaterial(id));
    add(MaterialsKey, materials);
    devices.finish();
    m_madeCameras = devices.madeCameras();
    m_madeLights = devices.madeLights();
    m_edit->finish();
    return m_patches.applied(m_source.json);
}

void GltfStructurePatch::collect()
{
    // The text was read before.
    JsonReader().read(m_source.json, m_tree);
    m_edit = std::make_unique<JsonEdit>(m_tree, 0, m_patches);
    m_nodes = elementsOf(m_tree.root().find(NodesKey));
    m_materials = elementsOf(m_tree.root().find(MaterialsKey));
}

void GltfStructurePatch::cut(List list, std::vector<JsonValue> &elements, QLatin1String key)
{
    QHash<quint32, const Origin *> made;
    for (const Origin &origin : m_source.objects()) {
        if (origin.list == list && origin.isMade && !m_plan.isAlive(origin.id))
            made.insert(origin.index, &origin);
    }
    const JsonValue values = m_tree.root().find(key);
    while (!elements.empty()) {
        const Origin *const last = made.value(quint32(elements.size()) - 1);
        if (!last || !canBeCut(*last, elements.back()))
            break;
        m_cut.insert(last->id);
        m_edit->remove(values, elements.back());
        elements.pop_back();
    }
}

/// A place of its own in the world could not be given back when the deletion is undone.
bool GltfStructurePatch::canBeCut(const Origin &origin, const JsonValue &element)
{
    return origin.list == List::Materials || GltfTransform::ofNode(element).isIdentity();
}

void GltfStructurePatch::numberNew()
{
    auto number = quint32(m_nodes.size());
    for (const quint64 id : m_plan.newNodes())
        m_newNumbers.insert(id, number++);
    number = quint32(m_materials.size());
    for (const quint64 id : m_plan.newMaterials())
        m_newNumbers.insert(id, number++);
}

quint32 GltfStructurePatch::numberOf(quint64 id) const
{
    const Origin *const origin = m_source.object(id);
    return origin ? origin->index : m_newNumbers.value(id);
}

void GltfStructurePatch::patchChildren()
{
    for (const Origin &origin : m_source.objects()) {
        if (origin.list != List::Nodes || m_cut.contains(origin.id))
            continue;
        const GltfStructurePlan::Ids wanted = m_plan.childrenOf(origin.id);
        const quint64 *const present = m_source.children().data() + origin.children.first;
        if (std::equal(wanted.begin(), wanted.end(), present, present + origin.children.count)
            && std::none_of(wanted.begin(), wanted.end(), [this](quint64 id) { return m_cut.contains(id); }))
            continue;
        std::vector<quint32> numbers;
        for (const quint64 id : wanted) {
            if (!m_cut.contains(id))
                numbers.push_back(numberOf(id));
        }
        m_edit->setNumbers(m_nodes[origin.index], ChildrenKey, numbers);
    }
}

QByteArray GltfStructurePatch::newNode(quint64 id, GltfDevices &devices) const
{
    const Slot slot = m_store.objectSlot(id);
    const kernel::ObjectRecord &record = m_store.object(slot);
    QVector<JsonEdit::Member> members{{NameKey, JsonEdit::quoted(record.name)}};
    if (record.type == nkObjectType::Camera)
        members.append(devices.addCamera());
    else if (record.type == nkObjectType::Light)
        members.append(devices.addLight());
    QByteArrayList children;
    for (const Slot child : record.children.slots())
        children.append(QByteArray::number(numberOf(m_store.idOf(child))));
    const JsonValue like = m_nodes.empty() ? JsonValue() : m_nodes.back();
    const bool isSpaced = m_edit->isSpaced(like.hasChildren() ? like : m_tree.root());
    if (!children.isEmpty())
        members.append({ChildrenKey, '[' + children.join(isSpaced ? ", " : ",") + ']'});
    return m_edit->elementText(like, m_tree.root(), members);
}

QByteArray GltfStructurePatch::newMaterial(quint64 id) const
{
    const JsonValue like = m_materials.empty() ? JsonValue() : m_materials.back();
    return m_edit->elementText(like, m_tree.root(),
                               {{NameKey, JsonEdit::quoted(m_store.object(m_store.objectSlot(id)).name)}});
}

void GltfStructurePatch::add(QLatin1String key, const QByteArrayList &added)
{
    const JsonValue list = m_tree.root().find(key);
    if (!list.isPresent() && !added.isEmpty())
        return m_edit->appendList(m_tree.root(), key, added);
    for (const QByteArray &element : added)
        m_edit->appendElement(list, element);
}

SceneSource GltfStructurePatch::sourceFor(const QByteArray &json, const GltfScene &scene) const
{
    SceneSource target;
    target.json = json;
    target.removed = m_source.removed;
    target.madeCameras = m_madeCameras;
    target.madeLights = m_madeLights;
    std::vector<Origin> added;
    for (const quint64 id : m_plan.newNodes())
        added.push_back(newOrigin(id, List::Nodes, scene));
    for (const quint64 id : m_plan.newMaterials())
        added.push_back(newOrigin(id, List::Materials, scene));
    std::sort(added.begin(), added.end(), [](const Origin &a, const Origin &b) { return a.id < b.id; });
    auto next = added.begin();
    for (const Origin &origin : m_source.objects()) {
        // What undo has brought back is older than what it was made before.
        for (; next != added.end() && next->id < origin.id; ++next)
            target.add(*next);
        if (!m_cut.contains(origin.id))
            keep(target, origin, scene);
    }
    for (; next != added.end(); ++next)
        target.add(*next);
    return target;
}

GltfStructurePatch::Origin GltfStructurePatch::newOrigin(quint64 id, List list, const GltfScene &scene) const
{
    Origin origin;
    origin.id = id;
    origin.index = numberOf(id);
    origin.list = list;
    origin.isMade = true;
    origin.span = list == List::Nodes ? scene.nodes[origin.index].span : scene.materials[origin.index].span;
    origin.name = m_store.object(m_store.objectSlot(id)).name;
    return origin;
}

/// Extras are not touched here: what stands in them has moved as they have.
void GltfStructurePatch::keep(SceneSource &target, const Origin &origin, const GltfScene &scene) const
{
    const bool isNode = origin.list == List::Nodes;
    Origin kept = origin;
    kept.span = isNode ? scene.nodes[origin.index].span : scene.materials[origin.index].span;
    kept.extrasSpan = isNode ? scene.nodes[origin.index].extrasSpan
                             : scene.materials[origin.index].extrasSpan;
    target.add(kept);
    for (quint32 i = origin.entries.first; i < origin.entries.end(); ++i)
        target.add(m_source.entries()[i].moved(origin.extrasSpan.offset, kept.extrasSpan.offset));
}

} // namespace interchange
