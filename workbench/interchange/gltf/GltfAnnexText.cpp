#include <interchange/gltf/GltfAnnexText.h>

#include <interchange/sets/SetFileWriter.h>

#include <algorithm>

namespace interchange {

namespace {

namespace Names = GltfAnnexNames;

/// Writes members with the commas between them.
class Members
{
public:
    explicit Members(TextBuffer &out) : m_out(out) { m_out.add("{"); }
    ~Members() { m_out.add("}"); }
    Q_DISABLE_COPY(Members)

    void begin(std::string_view key)
    {
        m_out.add(m_isFirst ? "\"" : ",\"");
        m_out.add(key);
        m_out.add("\":");
        m_isFirst = false;
    }

private:
    TextBuffer &m_out;
    bool m_isFirst = true;
};

template <typename List, typename Add>
void addArray(TextBuffer &out, const List &list, const Add &add)
{
    out.add("[");
    bool isFirst = true;
    for (const auto &element : list) {
        if (!isFirst)
            out.add(",");
        isFirst = false;
        add(element);
    }
    out.add("]");
}

void addSets(TextBuffer &out, const std::vector<kernel::SetCopy> &sets)
{
    SetFileWriter writer(out);
    writer.beginSets();
    for (const kernel::SetCopy &set : sets)
        writer.addSet(set);
    writer.endSets();
}

void addAsset(TextBuffer &out, const GltfAnnex::Asset &asset)
{
    Members members(out);
    members.begin(Names::Set);
    out.addInteger(asset.set);
    members.begin(Names::State);
    out.add("\"");
    out.add(asset.state == kernel::AssetState::AtRest ? Names::AtRest : Names::Edited);
    out.add("\"");
    members.begin(Names::Id);
    out.addString(asset.id);
    if (asset.version > 0) {
        members.begin(Names::Version);
        out.addInteger(asset.version);
    }
}

void addReference(TextBuffer &out, Members &members, const GltfAnnex::Reference &reference)
{
    static const char *const kinds[] = {Names::Node, Names::Material, Names::Group};
    members.begin(kinds[reference.kind]);
    out.addInteger(reference.index);
    if (!reference.name.isEmpty()) {
        members.begin(Names::Name);
        out.addString(reference.name);
    }
}

void addReferences(TextBuffer &out, const std::vector<GltfAnnex::Reference> &references)
{
    addArray(out, references, [&out](const GltfAnnex::Reference &reference) {
        Members members(out);
        addReference(out, members, reference);
    });
}

/// A group is counted by its place, so its name is all that there is to say.
void addMaterial(TextBuffer &out, const GltfAnnex::MaterialItem &item)
{
    Members members(out);
    if (item.kind == GltfAnnex::Reference::Group) {
        members.begin(Names::Group);
        out.addString(item.name);
    } else {
        addReference(out, members, item);
    }
    if (item.group >= 0) {
        members.begin(Names::In);
        out.addInteger(item.group);
    }
}

void addSceneplate(TextBuffer &out, const GltfAnnex::Sceneplate &sceneplate)
{
    Members members(out);
    members.begin(Names::Image);
    out.addString(sceneplate.image);
    members.begin(Names::Placement);
    out.add("\"");
    out.add(sceneplate.placement == kernel::SceneplatePlacement::Behind ? Names::Behind : Names::InFront);
    out.add("\"");
}

void addPlaces(TextBuffer &out, Members &members, const GltfAnnex::Object &object)
{
    QStringList keys = object.apart.values();
    std::sort(keys.begin(), keys.end());
    if (!keys.isEmpty()) {
        members.begin(Names::Apart);
        addArray(out, keys, [&out](const QString &key) { out.addString(key); });
    }
    keys = object.renamed.keys();
    std::sort(keys.begin(), keys.end());
    if (!keys.isEmpty()) {
        members.begin(Names::Renamed);
        addArray(out, keys, [&](const QString &key) {
            addArray(out, QStringList{key, object.renamed.value(key)},
                     [&out](const QString &text) { out.addString(text); });
        });
    }
}

void addObject(TextBuffer &out, const GltfAnnex::Object &object)
{
    Members members(out);
    addReference(out, members, object);
    if (object.isLocked) {
        members.begin(Names::Locked);
        out.add("true");
    }
    if (object.sceneplate) {
        members.begin(Names::Sceneplate);
        addSceneplate(out, *object.sceneplate);
    }
    if (object.own) {
        members.begin(Names::Own);
        SetFileWriter(out).writeSet(*object.own);
    }
    addPlaces(out, members, object);
}

void addRun(TextBuffer &out, const GltfAnnex::Run &run)
{
    Members members(out);
    members.begin(Names::Set);
    out.addInteger(run.set);
    members.begin(Names::Objects);
    addArray(out, run.objects, [&out](quint32 object) { out.addInteger(object); });
}

void addStructure(TextBuffer &out, Members &members, const GltfAnnex &annex)
{
    if (!annex.materials.empty()) {
        members.begin(Names::Materials);
        addArray(out, annex.materials,
                 [&out](const GltfAnnex::MaterialItem &item) { addMaterial(out, item); });
    }
    if (!annex.roots.empty()) {
        members.begin(Names::Roots);
        addReferences(out, annex.roots);
    }
    if (!annex.removed.empty()) {
        members.begin(Names::Removed);
        addReferences(out, annex.removed);
    }
}

} // namespace

QByteArray textOfAnnex(const GltfAnnex &annex)
{
    TextBuffer out;
    {
        Members members(out);
        members.begin(Names::Version);
        out.addInteger(GltfAnnex::Version);
        members.begin(Names::Sets);
        addSets(out, annex.sets);
        members.begin(Names::Assets);
        addArray(out, annex.assets, [&out](const GltfAnnex::Asset &asset) { addAsset(out, asset); });
        members.begin(Names::Objects);
        addArray(out, annex.objects, [&out](const GltfAnnex::Object &object) { addObject(out, object); });
        members.begin(Names::Assigned);
        addArray(out, annex.runs, [&out](const GltfAnnex::Run &run) { addRun(out, run); });
        addStructure(out, members, annex);
    }
    return out.isOverfull() ? QByteArray() : out.bytes();
}

} // namespace interchange
