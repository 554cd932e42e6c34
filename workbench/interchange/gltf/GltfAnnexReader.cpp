#include <interchange/gltf/GltfAnnexReader.h>

#include <interchange/json/JsonReader.h>
#include <interchange/sets/SetFileReader.h>

#include <algorithm>
#include <limits>

namespace interchange {

namespace {

namespace Words = GltfAnnexNames;

JsonValue member(const JsonValue &object, const char *name)
{
    return object.find(QLatin1String(name));
}

QByteArray textOf(const JsonValue &value)
{
    return QByteArray(value.raw().data(), int(value.raw().size()));
}

} // namespace

bool GltfAnnexReader::read(const QByteArray &extras, GltfAnnex &annex)
{
    annex = m_annex = GltfAnnex();
    m_error.clear();
    JsonTree tree;
    // The whole text was read before, so a part of it can be.
    if (extras.isEmpty() || !JsonReader().read(extras, tree))
        return true;
    const JsonValue value = tree.root().find(GltfAnnex::Member);
    if (!value.isPresent())
        return true;
    if (!readAnnex(value))
        return false;
    annex = std::move(m_annex);
    return true;
}

bool GltfAnnexReader::readAnnex(const JsonValue &value)
{
    bool ok = false;
    const JsonValue version = member(value, Words::Version);
    if (!version.isPresent() || version.toInt(&ok) != GltfAnnex::Version || !ok)
        return fail(
            version.isPresent() ? version : value,
            tr("its version is not %1, the only one that this program reads").arg(GltfAnnex::Version));
    return hasOnly(value, {Words::Version, Words::Sets, Words::Assets, Words::Objects, Words::Assigned,
                           Words::Materials, Words::Roots, Words::Removed})
           && readMaterials(member(value, Words::Materials))
           && readReferences(member(value, Words::Roots), m_annex.roots)
           && readReferences(member(value, Words::Removed), m_annex.removed)
           && readSets(member(value, Words::Sets))
           && readArray(member(value, Words::Assets), [this](const JsonValue &v) { return readAsset(v); })
           && readArray(member(value, Words::Objects), [this](const JsonValue &v) { return readObject(v); })
           && readArray(member(value, Words::Assigned), [this](const JsonValue &v) { return readRun(v); });
}

bool GltfAnnexReader::readSets(const JsonValue &value)
{
    JsonTree tree;
    if (!value.isObject() || !JsonReader().read(textOf(value), tree))
        return fail(value, tr("the sets are missing"));
    SetFileReader reader(tree, SetFileLimits());
    const auto keep = [this](kernel::SetCopy &&set, double) {
        m_annex.sets.push_back(std::move(set));
        return true;
    };
    return reader.readSets(keep) || fail(value, reader.error().clause());
}

bool GltfAnnexReader::readAsset(const JsonValue &value)
{
    GltfAnnex::Asset asset;
    const JsonValue state = member(value, Words::State);
    const JsonValue id = member(value, Words::Id);
    const JsonValue version = member(value, Words::Version);
    bool isNumber = true;
    asset.version = version.isPresent() ? version.toInt(&isNumber) : 0;
    if (!isNumber || asset.version < 0)
        return fail(version, tr("the version of an asset is a whole number from 0 on"));
    if (!hasOnly(value, {Words::Set, Words::State, Words::Id, Words::Version})
        || !readIndex(member(value, Words::Set), m_annex.sets.size(), asset.set))
        return false;
    if (!state.isString() || !id.isString())
        return fail(value, tr("an asset has a state and an id"));
    const QString name = state.toText();
    asset.id = id.toText();
    asset.state = name == QLatin1String(Words::AtRest.data()) ? kernel::AssetState::AtRest
                                                              : kernel::AssetState::Edited;
    m_annex.assets.push_back(asset);
    return asset.state == kernel::AssetState::AtRest || name == QLatin1String(Words::Edited.data())
           || fail(state, tr("the state of an asset is “atRest” or “edited”"));
}

bool GltfAnnexReader::readObject(const JsonValue &value)
{
    GltfAnnex::Object object;
    const JsonValue locked = member(value, Words::Locked);
    const bool isGood = hasOnly(value,
                                {Words::Node, Words::Material, Words::Group, Words::Name, Words::Locked,
                                 Words::Sceneplate, Words::Own, Words::Apart, Words::Renamed})
                        && readReference(value, object)
                        && readSceneplate(member(value, Words::Sceneplate), object)
                        && readOwn(member(value, Words::Own), object)
                        && readApart(member(value, Words::Apart), object)
                        && readRenamed(member(value, Words::Renamed), object);
    if (!isGood)
        return false;
    if (locked.isPresent() && !locked.isBoolean())
        return fail(value, tr("“locked” is true or false"));
    object.isLocked = locked.isPresent() && locked.toBool();
    m_annex.objects.push_back(std::move(object));
    return true;
}

bool GltfAnnexReader::readReference(const JsonValue &value, GltfAnnex::Reference &reference)
{
    using Kind = GltfAnnex::Reference::Kind;
    const std::pair<Kind, const char *> kinds[] = {
        {Kind::Node, Words::Node}, {Kind::Material, Words::Material}, {Kind::Group, Words::Group}};
    JsonValue place;
    int count = 0;
    for (const auto &[kind, word] : kinds) {
        if (const JsonValue found = member(value, word); found.isPresent()) {
            reference.kind = kind;
            place = found;
            ++count;
        }
    }
    const JsonValue name = member(value, Words::Name);
    if (count != 1 || (name.isPresent() && !name.isString()))
        return fail(value, tr("one place of an object is expected, and its name as a text"));
    reference.name = name.isPresent() ? name.toText() : QString();
    const size_t end = reference.kind == Kind::Group ? m_groupCount : size_t(std::numeric_limits<int>::max());
    return readIndex(place, end, reference.index);
}

bool GltfAnnexReader::readReferences(const JsonValue &value, std::vector<GltfAnnex::Reference> &references)
{
    return !value.isPresent() || readArray(value, [&](const JsonValue &element) {
        references.emplace_back();
        return hasOnly(element, {Words::Node, Words::Material, Words::Name})
               && readReference(element, references.back());
    });
}

bool GltfAnnexReader::readMaterials(const JsonValue &value)
{
    m_groupCount = 0;
    return !value.isPresent()
           || readArray(value, [this](const JsonValue &element) { return readMaterial(element); });
}

bool GltfAnnexReader::readMaterial(const JsonValue &value)
{
    GltfAnnex::MaterialItem item;
    const JsonValue group = member(value, Words::Group);
    const JsonValue in = member(value, Words::In);
    quint32 above = 0;
    if (!hasOnly(value, {group.isPresent() ? Words::Group : Words::Material, Words::Name, Words::In})
        || (in.isPresent() && !readIndex(in, m_groupCount, above)))
        return false;
    item.group = in.isPresent() ? qint32(above) : -1;
    if (group.isPresent()) {
        item.kind = GltfAnnex::Reference::Group;
        item.index = m_groupCount++;
        item.name = group.isString() ? group.toText() : QString();
    } else if (!readReference(value, item)) {
        return false;
    }
    m_annex.materials.push_back(item);
    return !group.isPresent() || group.isString() || fail(group, tr("the name of a group is a text"));
}

bool GltfAnnexReader::readSceneplate(const JsonValue &value, GltfAnnex::Object &object)
{
    if (!value.isPresent())
        return true;
    const JsonValue image = member(value, Words::Image);
    const JsonValue placement = member(value, Words::Placement);
    const QString place = placement.isString() ? placement.toText() : QString();
    const bool isInFront = place == QLatin1String(Words::InFront.data());
    if (!hasOnly(value, {Words::Image, Words::Placement}))
        return false;
    if (!image.isString() || (!isInFront && place != QLatin1String(Words::Behind.data())))
        return fail(value, tr("a sceneplate has an image, and stands “behind” or “inFront”"));
    object.sceneplate = GltfAnnex::Sceneplate{image.toText(), isInFront
                                                                  ? kernel::SceneplatePlacement::InFront
                                                                  : kernel::SceneplatePlacement::Behind};
    return object.kind == GltfAnnex::Reference::Node || fail(value, tr("only nodes can be sceneplates"));
}

bool GltfAnnexReader::readOwn(const JsonValue &value, GltfAnnex::Object &object)
{
    if (!value.isPresent())
        return true;
    JsonTree tree;
    JsonReader().read(textOf(value), tree);
    SetFileReader reader(tree, SetFileLimits());
    object.own.emplace();
    return reader.readSet(*object.own) || fail(value, reader.error().clause());
}

bool GltfAnnexReader::readApart(const JsonValue &value, GltfAnnex::Object &object)
{
    return !value.isPresent() || readArray(value, [&](const JsonValue &key) {
        if (!key.isString())
            return fail(key, tr("a key is a text"));
        object.apart.insert(key.toText());
        return true;
    });
}

bool GltfAnnexReader::readRenamed(const JsonValue &value, GltfAnnex::Object &object)
{
    return !value.isPresent() || readArray(value, [&](const JsonValue &pair) {
        QStringList keys;
        for (const JsonValue key : pair.children())
            keys.append(key.isString() ? key.toText() : QString());
        if (!pair.isArray() || keys.size() != 2)
            return fail(pair, tr("a pair of keys is expected"));
        object.renamed.insert(keys.first(), keys.last());
        return true;
    });
}

bool GltfAnnexReader::readRun(const JsonValue &value)
{
    GltfAnnex::Run run;
    if (!hasOnly(value, {Words::Set, Words::Objects})
        || !readIndex(member(value, Words::Set), m_annex.sets.size(), run.set))
        return false;
    const bool isRead = readArray(member(value, Words::Objects), [&](const JsonValue &object) {
        run.objects.push_back(0);
        return readIndex(object, m_annex.objects.size(), run.objects.back());
    });
    m_annex.runs.push_back(std::move(run));
    return isRead;
}

bool GltfAnnexReader::readIndex(const JsonValue &value, size_t count, quint32 &index)
{
    bool ok = false;
    const int number = value.isPresent() ? value.toInt(&ok) : -1;
    if (!ok || number < 0 || size_t(number) >= count)
        return fail(value, tr("a place in a list is expected"));
    index = quint32(number);
    return true;
}

template <typename Read>
bool GltfAnnexReader::readArray(const JsonValue &array, const Read &read)
{
    if (!array.isArray())
        return fail(array, tr("an array is expected"));
    for (const JsonValue element : array.children()) {
        if (!read(element))
            return false;
    }
    return true;
}

/// Every member has one of these names, and comes once.
bool GltfAnnexReader::hasOnly(const JsonValue &object, const Names &names)
{
    if (!object.isObject() || !object.hiddenMembers().isEmpty())
        return fail(object, tr("an object without doubled members is expected"));
    for (const JsonValue member : object.children()) {
        const auto isName = [&member](const char *name) { return member.keyIs(QLatin1String(name)); };
        if (std::none_of(names.begin(), names.end(), isName))
            return fail(member, tr("it has a member that is not known"));
    }
    return true;
}

bool GltfAnnexReader::fail(const JsonValue &value, const QString &reason)
{
    m_error = value.isPresent() ? tr("%1 (at $.extras%2)").arg(reason, value.path().mid(1)) : reason;
    return false;
}

} // namespace interchange
