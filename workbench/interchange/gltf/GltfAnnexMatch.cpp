#include <interchange/gltf/GltfAnnexMatch.h>

#include <interchange/json/JsonPath.h>

namespace interchange {

namespace {

template <typename List>
bool isNameAt(const List &list, quint32 index, const QString &name)
{
    return index < list.size() && (list[index].isNamed ? list[index].name : QString()) == name;
}

/// The only object of this name; -1 where there are none or several.
template <typename List>
qint64 onlyOne(const List &list, const QString &name)
{
    qint64 found = -1;
    for (size_t i = 0; i < list.size(); ++i) {
        if (!list[i].isNamed || list[i].name != name)
            continue;
        if (found >= 0)
            return -1;
        found = qint64(i);
    }
    return found;
}

template <typename List>
qint64 placeOf(const List &list, quint32 index, const QString &name)
{
    return isNameAt(list, index, name) ? index : name.isEmpty() ? -1 : onlyOne(list, name);
}

} // namespace

GltfAnnexMatch::GltfAnnexMatch(GltfScene &scene, const GltfAnnex &annex)
    : m_scene(scene),
      m_annex(annex),
      m_listed(scene.nodes.size()),
      m_isHidden(scene.nodes.size()),
      m_isHiddenMaterial(scene.materials.size())
{
    for (const SceneListing &listing : scene.scenes) {
        for (const qint32 node : listing.nodes)
            m_listed[size_t(node)] = true;
    }
    matchRemoved();
    matchObjects();
    matchRoots();
    matchMaterials();
}

const GltfAnnex::Object *GltfAnnexMatch::find(Kind kind, quint32 index) const
{
    const auto found = m_objects[kind].find(index);
    return found == m_objects[kind].end() ? nullptr : &m_annex.objects[*found];
}

void GltfAnnexMatch::matchObjects()
{
    for (size_t i = 0; i < m_annex.objects.size(); ++i) {
        const GltfAnnex::Object &object = m_annex.objects[i];
        QHash<quint32, quint32> &known = m_objects[object.kind];
        const qint64 index = indexOf(object);
        if (index < 0 || known.contains(quint32(index)))
            refuse(GltfAnnexNames::Objects, i, object.name);
        else
            known.insert(quint32(index), quint32(i));
    }
}

qint64 GltfAnnexMatch::indexOf(const GltfAnnex::Reference &reference) const
{
    switch (reference.kind) {
    case Kind::Node:
        return placeOf(m_scene.nodes, reference.index, reference.name);
    case Kind::Material:
        return placeOf(m_scene.materials, reference.index, reference.name);
    case Kind::Group:
        break;
    }
    return reference.index;
}

/// Programs that drop what nothing refers to have finished the deletion: that is no loss to tell about.
void GltfAnnexMatch::matchRemoved()
{
    for (const GltfAnnex::Reference &reference : m_annex.removed) {
        const bool isMaterial = reference.kind == Kind::Material;
        qint64 index = hiddenNode(reference);
        if (isMaterial && isNameAt(m_scene.materials, reference.index, reference.name))
            index = reference.index;
        std::vector<bool> &hidden = isMaterial ? m_isHiddenMaterial : m_isHidden;
        if (index < 0 || hidden[size_t(index)])
            continue;
        hidden[size_t(index)] = true;
        m_removed.push_back({reference.kind, quint32(index), reference.name});
    }
}

/// A node that something leads to again is no deleted one, whatever it is called.
qint64 GltfAnnexMatch::hiddenNode(const GltfAnnex::Reference &reference) const
{
    if (reference.kind != Kind::Node)
        return -1;
    const bool isExact = isNameAt(m_scene.nodes, reference.index, reference.name);
    if (!isExact && m_scene.scenes.empty())
        return -1;
    const qint64 index = placeOf(m_scene.nodes, reference.index, reference.name);
    const bool isLost = index >= 0 && m_scene.nodes[size_t(index)].parent < 0 && !isListed(index);
    return isLost ? index : -1;
}

/// Those that the annex does not know were added by others, and come behind.
void GltfAnnexMatch::matchRoots()
{
    std::vector<bool> isDone = m_isHidden;
    const auto add = [&](qint64 node) {
        if (node < 0 || m_scene.nodes[size_t(node)].parent >= 0 || isDone[size_t(node)])
            return;
        isDone[size_t(node)] = true;
        m_roots.push_back(qint32(node));
    };
    for (const GltfAnnex::Reference &reference : m_annex.roots)
        add(reference.kind == Kind::Node ? indexOf(reference) : -1);
    for (const qint32 root : m_scene.roots)
        add(root);
}

void GltfAnnexMatch::matchMaterials()
{
    std::vector<bool> isDone = m_isHiddenMaterial;
    for (size_t i = 0; i < m_annex.materials.size(); ++i) {
        GltfAnnex::MaterialItem item = m_annex.materials[i];
        const qint64 index = indexOf(item);
        if (item.kind == Kind::Material) {
            if (index < 0 || isDone[size_t(index)]) {
                refuse(GltfAnnexNames::Materials, i, item.name);
                continue;
            }
            isDone[size_t(index)] = true;
            item.index = quint32(index);
        }
        m_materials.push_back(item);
    }
    for (size_t i = 0; i < isDone.size(); ++i) {
        if (!isDone[i])
            m_materials.push_back({{Kind::Material, quint32(i), QString()}, -1});
    }
}

void GltfAnnexMatch::refuse(const char *list, size_t index, const QString &name)
{
    JsonPath path;
    path.append(QStringLiteral("extras")).append(QString(GltfAnnex::Member));
    path.append(QString::fromLatin1(list)).append(quint32(index));
    m_scene.report.addRefused(path.text(), ImportReason::UnknownObject, name);
}

} // namespace interchange
