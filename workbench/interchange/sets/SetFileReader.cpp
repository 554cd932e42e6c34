#include <interchange/sets/SetFileReader.h>

#include <interchange/sets/ObjectMembers.h>
#include <interchange/sets/SetFileNames.h>

#include <algorithm>
#include <iterator>

namespace interchange {

namespace {

QLatin1String latin1(std::string_view text)
{
    return QLatin1String(text.data(), int(text.size()));
}

int typeNamed(std::string_view name)
{
    const auto found = std::find(std::begin(SetFileNames::Types), std::end(SetFileNames::Types), name);
    return found == std::end(SetFileNames::Types) ? -1 : int(found - std::begin(SetFileNames::Types));
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace

SetFileReader::SetFileReader(const JsonTree &tree, const SetFileLimits &limits)
    : m_tree(tree), m_limits(limits), m_values(limits)
{}

bool SetFileReader::isOfFormat(std::string_view format) const
{
    const JsonValue name = m_tree.root().find(QLatin1String("format"));
    return name.isString() && name.toText() == latin1(format);
}

bool SetFileReader::checkVersion(std::string_view format)
{
    const JsonValue root = m_tree.root();
    if (!root.isObject())
        return fail(root, tr("it is no file of metadata sets: an object in braces is expected"));
    if (!isOfFormat(format)) {
        const JsonValue name = root.find(QLatin1String("format"));
        return fail(name.isPresent() ? name : root,
                    tr("it is no file of metadata sets: the “format” is not “%1”").arg(latin1(format)));
    }
    const JsonValue version = root.find(QLatin1String("version"));
    if (!version.isPresent())
        return fail(root, tr("the “version” is missing"));
    bool ok = false;
    if (version.toInt(&ok) != SetFileNames::Version || !ok)
        return fail(
            version,
            tr("its version is not %1, the only one that this program reads").arg(SetFileNames::Version));
    return true;
}

bool SetFileReader::readHead(std::string_view format, const char *list, JsonValue &array)
{
    ObjectMembers members({{"format", true}, {"version", true}, {list, true}});
    if (!checkVersion(format) || !members.read(m_tree.root(), m_error))
        return false;
    array = members.value(2);
    return array.isArray() || fail(array, tr("an array in brackets is expected"));
}

bool SetFileReader::readSets(const Sink &sink)
{
    JsonValue array;
    if (!readHead(SetFileNames::SetsFormat, "sets", array))
        return false;
    const double size = m_tree.text().size();
    for (const JsonValue json : array.children()) {
        kernel::SetCopy set;
        if (!readSetValue(json, set) || !sink(std::move(set), json.span().end() / size))
            return false;
    }
    return true;
}

bool SetFileReader::readSet(kernel::SetCopy &set)
{
    const JsonValue root = m_tree.root();
    if (!root.find(QLatin1String("format")).isPresent())
        return readSetValue(root, set);
    int count = 0;
    const auto keepFirst = [&](kernel::SetCopy &&read, double) {
        set = std::move(read);
        return ++count == 1;
    };
    return (readSets(keepFirst) && count == 1) || m_error.isSet()
           || fail(root, tr("it does not hold exactly one set"));
}

bool SetFileReader::readEntries(std::vector<kernel::EntryCopy> &entries)
{
    JsonValue array;
    m_areKeysUnique = false;
    return readHead(SetFileNames::EntriesFormat, "entries", array) && readEntryArray(array, entries);
}

bool SetFileReader::readSetValue(const JsonValue &json, kernel::SetCopy &set)
{
    ObjectMembers members({{"name", true}, {"color", true}, {"locked", false}, {"entries", true}});
    if (!members.read(json, m_error))
        return false;
    const JsonValue &locked = members.value(2);
    if (!members.value(0).isString())
        return fail(members.value(0), tr("the name of a set is a text in quotes"));
    if (locked.isPresent() && !locked.isBoolean())
        return fail(locked, tr("“locked” is true or false"));
    set.name = SetValueReader::text(members.value(0));
    set.locked = locked.isPresent() && locked.toBool();
    return readColor(members.value(1), set.color) && readEntryArray(members.value(3), set.entries);
}

bool SetFileReader::readColor(const JsonValue &json, QColor &color)
{
    const std::string_view text = json.raw();
    const bool isColor = json.isString() && text.size() == 9 && text[1] == '#'
                         && std::all_of(text.begin() + 2, text.end() - 1, isHexDigit);
    if (!isColor)
        return fail(json, tr("a colour is a text such as “#7f8c9b”"));
    color.setNamedColor(latin1(text.substr(1, 7)));
    return true;
}

bool SetFileReader::readEntryArray(const JsonValue &array, std::vector<kernel::EntryCopy> &entries)
{
    if (!array.isArray())
        return fail(array, tr("the entries of a set are an array in brackets"));
    m_keys.beginSet();
    entries.reserve(array.count());
    for (const JsonValue json : array.children()) {
        if (++m_entryCount > m_limits.entries)
            return fail(json, tr("there are more than %1 entries in the file").arg(m_limits.entries));
        entries.emplace_back();
        if (!readEntry(json, entries.back()))
            return false;
    }
    return true;
}

bool SetFileReader::readEntry(const JsonValue &json, kernel::EntryCopy &entry)
{
    ObjectMembers members({{"key", true}, {"type", true}, {"value", false}});
    if (!members.read(json, m_error))
        return false;
    const int type = typeNamed(members.text(1));
    if (type < 0)
        return fail(members.value(1), tr("no type of entries has this name"));
    const JsonValue &value = members.value(2);
    const bool isTag = type == nkMetadataTypes::Tag;
    if (isTag == value.isPresent())
        return fail(isTag ? value : json,
                    isTag ? tr("a tag has no value") : tr("the member “value” is missing"));
    if (!readKey(members.value(0), entry.key))
        return false;
    if (!isTag && !m_values.read(type, value, entry.value)) {
        m_error = m_values.error();
        return false;
    }
    return true;
}

bool SetFileReader::readKey(const JsonValue &json, QString &key)
{
    const std::string_view raw = json.raw();
    if (!json.isString() || raw.size() <= 2)
        return fail(json, tr("a key is a text in quotes that is not empty"));
    if (!m_areKeysUnique)
        m_keys.beginSet();
    const bool isEscaped = m_tree.cell(json.index()).valueEscaped;
    const QString *known = isEscaped ? m_keys.addDecoded(SetValueReader::text(json))
                                     : m_keys.add(raw.substr(1, raw.size() - 2));
    if (!known)
        return fail(json, tr("another entry of the set has this key"));
    key = *known;
    return true;
}

bool SetFileReader::fail(const JsonValue &json, const QString &reason)
{
    m_error = SetFileError::atValue(json, reason);
    return false;
}

} // namespace interchange
