#include <interchange/sidecar/SidecarReader.h>

#include <interchange/json/JsonReader.h>
#include <interchange/sets/ObjectMembers.h>
#include <interchange/sets/SetFileReader.h>
#include <interchange/sets/SetValueReader.h>

namespace interchange {

namespace {

namespace Names = SidecarNames;

/// A sidecar stands around the sets of a set file.
constexpr int DepthAround = 4;

QByteArray textOf(const JsonValue &value)
{
    return QByteArray(value.raw().data(), int(value.raw().size()));
}

bool isText(const JsonValue &value)
{
    return !value.isPresent() || value.isString();
}

JsonLimits limits()
{
    const SetFileLimits sets;
    return {sets.jsonDepth() + DepthAround, sets.values};
}

} // namespace

bool SidecarReader::read(const QByteArray &text, Sidecar &sidecar, const GoOn &goOn)
{
    sidecar = m_sidecar = Sidecar();
    JsonTree tree;
    JsonReader reader(limits());
    reader.setGoOn(goOn);
    if (!reader.read(text, tree)) {
        if (reader.error().code != JsonErrorCode::Cancelled)
            m_error = SetFileError::atJson(reader.error());
        return false;
    }
    if (!readRoot(tree.root()))
        return false;
    sidecar = std::move(m_sidecar);
    return true;
}

bool SidecarReader::readRoot(const JsonValue &root)
{
    ObjectMembers members({{Names::Format, true},
                           {Names::Version, true},
                           {Names::Sets, true},
                           {Names::Assets, true},
                           {Names::Objects, true},
                           {Names::Assigned, true}});
    return checkFormat(root) && members.read(root, m_error) && readSets(members.value(2))
           && readArray(members.value(3), [this](const JsonValue &value) { return readAsset(value); })
           && readArray(members.value(4), [this](const JsonValue &value) { return readObject(value); })
           && readArray(members.value(5), [this](const JsonValue &value) { return readRun(value); });
}

/// Before all else: what another version has is not wrong.
bool SidecarReader::checkFormat(const JsonValue &root)
{
    const JsonValue format = root.find(QLatin1String(Names::Format));
    const JsonValue version = root.find(QLatin1String(Names::Version));
    if (!format.isString() || format.toText() != QLatin1String(Names::FormatName.data()))
        return fail(root, tr("it is no file of a model's metadata: the “format” is not “%1”")
                              .arg(QLatin1String(Names::FormatName.data())));
    bool ok = false;
    if (!version.isPresent() || version.toInt(&ok) != Sidecar::Version || !ok)
        return fail(version.isPresent() ? version : root,
                    tr("its version is not %1, the only one that this program reads").arg(Sidecar::Version));
    return true;
}

bool SidecarReader::readSets(const JsonValue &value)
{
    JsonTree tree;
    if (!value.isObject() || !JsonReader(limits()).read(textOf(value), tree))
        return fail(value, tr("the sets are missing"));
    SetFileReader reader(tree, SetFileLimits());
    const auto keep = [this](kernel::SetCopy &&set, double) {
        m_sidecar.sets.push_back(std::move(set));
        return true;
    };
    return reader.readSets(keep) || fail(value, reader.error().clause());
}

bool SidecarReader::readAsset(const JsonValue &value)
{
    ObjectMembers members(
        {{Names::Set, true}, {Names::State, true}, {Names::Id, true}, {Names::Version, false}});
    Sidecar::Asset asset;
    if (!members.read(value, m_error) || !readIndex(members.value(0), m_sidecar.sets.size(), asset.set))
        return false;
    if (!members.value(2).isString())
        return fail(members.value(2), tr("the id of an asset is a text"));
    const bool isAtRest = members.text(1) == Names::AtRest;
    if (!isAtRest && members.text(1) != Names::Edited)
        return fail(members.value(1), tr("the state of an asset is “atRest” or “edited”"));
    asset.state = isAtRest ? kernel::AssetState::AtRest : kernel::AssetState::Edited;
    asset.id = SetValueReader::text(members.value(2));
    bool isNumber = true;
    asset.version = members.value(3).isPresent() ? members.value(3).toInt(&isNumber) : 0;
    if (!isNumber || asset.version < 0)
        return fail(members.value(3), tr("the version of an asset is a whole number from 0 on"));
    m_sidecar.assets.push_back(asset);
    return true;
}

bool SidecarReader::readObject(const JsonValue &value)
{
    ObjectMembers members({{Names::Node, false},
                           {Names::Material, false},
                           {Names::Name, true},
                           {Names::Renamed, false},
                           {Names::Locked, false},
                           {Names::Own, false}});
    if (!members.read(value, m_error))
        return false;
    Sidecar::Object object;
    object.isMaterial = members.value(1).isPresent();
    const JsonValue &key = members.value(object.isMaterial ? 1 : 0);
    const JsonValue &locked = members.value(4);
    if (members.value(0).isPresent() == object.isMaterial || !key.isString() || key.raw().size() <= 2)
        return fail(value, tr("an object has a key under “node” or “material”"));
    if (!members.value(2).isString() || !isText(members.value(3))
        || (locked.isPresent() && !locked.isBoolean()))
        return fail(value, tr("names of objects are texts, and “locked” is true or false"));
    object.key = SetValueReader::text(key);
    object.name = SetValueReader::text(members.value(2));
    if (members.value(3).isPresent())
        object.renamed = SetValueReader::text(members.value(3));
    object.isLocked = locked.isPresent() && locked.toBool();
    QSet<QString> &known = object.isMaterial ? m_materials : m_nodes;
    if (known.contains(object.key))
        return fail(key, tr("another object has this key"));
    known.insert(object.key);
    if (!readOwn(members.value(5), object))
        return false;
    m_sidecar.objects.push_back(std::move(object));
    return true;
}

bool SidecarReader::readOwn(const JsonValue &value, Sidecar::Object &object)
{
    if (!value.isPresent())
        return true;
    JsonTree tree;
    if (!value.isObject() || !JsonReader(limits()).read(textOf(value), tree))
        return fail(value, tr("an object's own set is a set"));
    SetFileReader reader(tree, SetFileLimits());
    object.own.emplace();
    return reader.readSet(*object.own) || fail(value, reader.error().clause());
}

bool SidecarReader::readRun(const JsonValue &value)
{
    ObjectMembers members({{Names::Set, true}, {Names::Objects, true}});
    Sidecar::Run run;
    if (!members.read(value, m_error) || !readIndex(members.value(0), m_sidecar.sets.size(), run.set))
        return false;
    const bool isRead = readArray(members.value(1), [&](const JsonValue &object) {
        run.objects.push_back(0);
        return readIndex(object, m_sidecar.objects.size(), run.objects.back());
    });
    m_sidecar.runs.push_back(std::move(run));
    return isRead;
}

bool SidecarReader::readIndex(const JsonValue &value, size_t count, quint32 &index)
{
    bool ok = false;
    const int number = value.toInt(&ok);
    if (!ok || number < 0 || size_t(number) >= count)
        return fail(value, tr("a place in a list is expected"));
    index = quint32(number);
    return true;
}

template <typename Read>
bool SidecarReader::readArray(const JsonValue &array, const Read &read)
{
    if (!array.isArray())
        return fail(array, tr("an array in brackets is expected"));
    for (const JsonValue element : array.children()) {
        if (!read(element))
            return false;
    }
    return true;
}

bool SidecarReader::fail(const JsonValue &value, const QString &reason)
{
    m_error = SetFileError::atValue(value, reason);
    return false;
}

} // namespace interchange
