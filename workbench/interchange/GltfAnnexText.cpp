#include <interchange/GltfAnnexText.h>

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

void addObject(TextBuffer &out, const GltfAnnex::Object &object)
{
    Members members(out);
    members.begin(object.isMaterial ? Names::Material : Names::Node);
    out.addInteger(object.index);
    if (!object.name.isEmpty()) {
        members.begin(Names::Name);
        out.addString(object.name);
    }
    if (object.isLocked) {
        members.begin(Names::Locked);
        out.add("true");
    }
    if (object.own) {
        members.begin(Names::Own);
        SetFileWriter(out).writeSet(*object.own);
    }
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

void addRun(TextBuffer &out, const GltfAnnex::Run &run)
{
    Members members(out);
    members.begin(Names::Set);
    out.addInteger(run.set);
    members.begin(Names::Objects);
    addArray(out, run.objects, [&out](quint32 object) { out.addInteger(object); });
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
    }
    return out.isOverfull() ? QByteArray() : out.bytes();
}

} // namespace interchange
