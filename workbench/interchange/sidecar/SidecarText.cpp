#include <interchange/sidecar/SidecarText.h>

#include <interchange/sets/SetFileWriter.h>

namespace interchange {

namespace {

namespace Names = SidecarNames;

/// Writes the members of one object with the commas between them.
class Members
{
    Q_DISABLE_COPY(Members)

public:
    explicit Members(TextBuffer &out) : m_out(out) { m_out.add("{"); }
    ~Members() { m_out.add("}"); }

    void begin(std::string_view key)
    {
        m_out.add(m_isFirst ? "\"" : ",\"");
        m_out.add(key);
        m_out.add("\":");
        m_isFirst = false;
    }
    void add(std::string_view key, const QString &text)
    {
        begin(key);
        m_out.addString(text);
    }
    void add(std::string_view key, qint64 number)
    {
        begin(key);
        m_out.addInteger(number);
    }
    void addWord(std::string_view key, std::string_view word)
    {
        begin(key);
        m_out.add(word);
    }

private:
    TextBuffer &m_out;
    bool m_isFirst = true;
};

/// @param between comes in front of each element
template <typename List, typename Add>
void addArray(TextBuffer &out, const List &list, std::string_view between, const Add &add)
{
    out.add("[");
    bool isFirst = true;
    for (const auto &element : list) {
        out.add(isFirst ? "" : ",");
        out.add(between);
        isFirst = false;
        add(element);
    }
    out.add(isFirst ? "" : between);
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

void addAsset(TextBuffer &out, const Sidecar::Asset &asset)
{
    Members members(out);
    members.add(Names::Set, asset.set);
    const bool isAtRest = asset.state == kernel::AssetState::AtRest;
    members.addWord(Names::State, isAtRest ? "\"atRest\"" : "\"edited\"");
    members.add(Names::Id, asset.id);
    if (asset.version > 0)
        members.add(Names::Version, quint32(asset.version));
}

void addObject(TextBuffer &out, const Sidecar::Object &object)
{
    Members members(out);
    members.add(object.isMaterial ? Names::Material : Names::Node, object.key);
    members.add(Names::Name, object.name);
    if (object.renamed)
        members.add(Names::Renamed, *object.renamed);
    if (object.isLocked)
        members.addWord(Names::Locked, "true");
    if (object.own) {
        members.begin(Names::Own);
        SetFileWriter(out).writeSet(*object.own);
    }
}

void addRun(TextBuffer &out, const Sidecar::Run &run)
{
    Members members(out);
    members.add(Names::Set, run.set);
    members.begin(Names::Objects);
    addArray(out, run.objects, {}, [&out](quint32 object) { out.addInteger(object); });
}

} // namespace

QByteArray textOfSidecar(const Sidecar &sidecar)
{
    TextBuffer out;
    {
        Members members(out);
        members.add(Names::Format, QString::fromLatin1(Names::FormatName.data()));
        members.add(Names::Version, Sidecar::Version);
        members.begin(Names::Sets);
        addSets(out, sidecar.sets);
        members.begin(Names::Assets);
        addArray(out, sidecar.assets, "\n", [&out](const auto &asset) { addAsset(out, asset); });
        members.begin(Names::Objects);
        addArray(out, sidecar.objects, "\n", [&out](const auto &object) { addObject(out, object); });
        members.begin(Names::Assigned);
        addArray(out, sidecar.runs, "\n", [&out](const auto &run) { addRun(out, run); });
    }
    out.add("\n");
    return out.isOverfull() ? QByteArray() : out.bytes();
}

} // namespace interchange
