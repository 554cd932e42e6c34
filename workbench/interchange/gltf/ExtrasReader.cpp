#include <interchange/gltf/ExtrasReader.h>

#include <interchange/gltf/ExtrasKey.h>
#include <interchange/json/JsonPath.h>

#include <algorithm>

namespace interchange {

namespace {

/// Why an array cannot be a list; nothing when it can.
bool isNoList(const JsonValue &array, ImportReason &reason)
{
    for (const JsonValue element : array.children()) {
        if (element.isArray() || element.isObject()) {
            reason = element.isArray() ? ImportReason::NestedArray : ImportReason::ObjectInArray;
            return true;
        }
    }
    return false;
}

bool changesWhenEscaped(const QString &key)
{
    return ExtrasKey::escaped(key) != key;
}

bool hasTwins(const ExtrasEntry *first, const ExtrasEntry *last)
{
    QSet<QString> known;
    for (const ExtrasEntry *entry = first; entry != last; ++entry) {
        if (known.contains(entry->key))
            return true;
        known.insert(entry->key);
    }
    return false;
}

} // namespace

ExtrasReader::ExtrasReader(std::vector<ExtrasEntry> &entries, ImportReport &report)
    : m_entries(entries), m_report(report)
{}

IndexRange ExtrasReader::read(const JsonValue &extras, const Owner &owner)
{
    IndexRange range{static_cast<quint32>(m_entries.size()), 0};
    m_owner = owner;
    m_open.clear();
    m_hidden.clear();
    if (extras.isObject())
        walk(extras);
    else if (extras.isPresent())
        m_report.addUntouched(pathTo(JsonValue()), ImportReason::ExtrasNoObject);
    range.count = static_cast<quint32>(m_entries.size()) - range.first;
    makeKeysUnique(range);
    return range;
}

/// One pass over all values inside the extras in the order of the text; no recursion, however deep they nest.
void ExtrasReader::walk(const JsonValue &extras)
{
    const JsonTree *const tree = extras.tree();
    const quint32 end = tree->cell(extras.index()).next;
    open(extras);
    for (quint32 index = extras.index() + 1; index < end;) {
        while (index >= tree->cell(m_open.back().object.index()).next)
            m_open.pop_back();
        index = readMember(JsonValue(tree, index));
    }
}

/// Answers the index to go on with: the first value inside an object, else the one behind the member.
quint32 ExtrasReader::readMember(const JsonValue &member)
{
    const quint32 next = member.tree()->cell(member.index()).next;
    if (!m_hidden.isEmpty() && m_hidden.contains(member.index())) {
        m_report.addUntouched(pathTo(member), ImportReason::HiddenByLaterKey);
    } else if (member.isArray()) {
        readArray(member);
    } else if (!member.isObject()) {
        addEntry(member, contentOf(member));
    } else if (!member.hasChildren()) {
        m_report.addUntouched(pathTo(member), ImportReason::EmptyObject);
    } else {
        open(member);
        return member.index() + 1;
    }
    return next;
}

void ExtrasReader::open(const JsonValue &object)
{
    QString pathKey;
    if (m_open.size() == 1)
        pathKey = ExtrasKey::escaped(object.key());
    else if (m_open.size() > 1)
        pathKey = ExtrasKey::appended(m_open.back().pathKey, object.key());
    m_open.push_back({object, pathKey});
    const QVector<JsonValue> hidden = object.hiddenMembers();
    for (const JsonValue &member : hidden)
        m_hidden.insert(member.index());
}

void ExtrasReader::readArray(const JsonValue &array)
{
    ImportReason reason{};
    if (isNoList(array, reason)) {
        m_report.addUntouched(pathTo(array), reason);
        return;
    }
    QVariantList elements;
    Content whole;
    whole.type = ExtrasType::List;
    for (const JsonValue element : array.children()) {
        const Content content = contentOf(element);
        elements.append(content.value);
        whole.isNumber |= content.isNumber;
        if (content.isConverted) {
            whole.isConverted = true;
            whole.reason = content.reason;
        }
    }
    whole.value = elements;
    addEntry(array, whole);
}

void ExtrasReader::addEntry(const JsonValue &member, const Content &content)
{
    m_entries.emplace_back();
    ExtrasEntry &entry = m_entries.back();
    entry.memberOffset = member.memberSpan().offset;
    entry.valueSpan = member.span();
    nameEntry(entry, member);
    entry.type = content.type;
    entry.value = content.value;
    entry.isNumber = content.isNumber;
    if (content.isConverted)
        m_report.addConverted(pathTo(member), content.reason);
    else
        m_report.addKept();
}

void ExtrasReader::nameEntry(ExtrasEntry &entry, const JsonValue &member)
{
    const QString key = keyOf(member);
    const bool isNested = m_open.size() > 1;
    entry.isPath = isNested || key.isEmpty();
    if (isNested)
        entry.key = ExtrasKey::appended(m_open.back().pathKey, key);
    else
        entry.key = key.isEmpty() ? ExtrasKey::joined({key}) : key;
}

/// A key with points that stands directly in the extras can read like the path key of a nested member. Then, and
/// only then, such keys are escaped as path keys are, which makes all keys of the object different.
void ExtrasReader::makeKeysUnique(const IndexRange &range)
{
    ExtrasEntry *const first = m_entries.data() + range.first;
    ExtrasEntry *const last = first + range.count;
    const auto isPath = [](const ExtrasEntry &entry) { return entry.isPath; };
    const auto mayLookLikePath = [](const ExtrasEntry &entry) {
        return !entry.isPath && changesWhenEscaped(entry.key);
    };
    if (std::none_of(first, last, isPath) || std::none_of(first, last, mayLookLikePath)
        || !hasTwins(first, last))
        return;
    for (ExtrasEntry *entry = first; entry != last; ++entry) {
        if (mayLookLikePath(*entry)) {
            entry->key = ExtrasKey::escaped(entry->key);
            entry->isPath = true;
        }
    }
}

QString ExtrasReader::keyOf(const JsonValue &member)
{
    const auto known = m_keys.find(member.rawKey());
    if (known != m_keys.end())
        return known->second;
    const QString key = member.key();
    m_keys.emplace(member.rawKey(), key);
    return key;
}

/// The JSON path of a member of the innermost open object; of the extras themselves for an absent one. Put together
/// from what is known here, because JsonTree::pathOf counts its way through all nodes.
QString ExtrasReader::pathTo(const JsonValue &member) const
{
    JsonPath path;
    path.append(QString(m_owner.collection)).append(m_owner.index).append(QStringLiteral("extras"));
    for (size_t level = 1; level < m_open.size(); ++level)
        path.append(m_open[level].object.key());
    if (member.isPresent())
        path.append(member.key());
    return path.text();
}

ExtrasReader::Content ExtrasReader::contentOf(const JsonValue &value)
{
    if (value.isNumber())
        return numberOf(value);
    if (value.isString())
        return textOf(value);
    Content content;
    content.type = value.isNull() ? ExtrasType::Tag : ExtrasType::Boolean;
    if (value.isBoolean())
        content.value = value.toBool();
    return content;
}

ExtrasReader::Content ExtrasReader::numberOf(const JsonValue &value)
{
    Content content;
    bool fits = false;
    content.type = value.isInteger() ? ExtrasType::Integer : ExtrasType::Float;
    content.value = value.isInteger() ? QVariant(value.toInt(&fits)) : QVariant(value.toDouble(&fits));
    if (fits)
        return content;
    content.value = value.toText();
    content.type = ExtrasType::String;
    content.isNumber = true;
    content.isConverted = true;
    content.reason = value.isInteger() ? ImportReason::LongInteger : ImportReason::UnboundedNumber;
    return content;
}

ExtrasReader::Content ExtrasReader::textOf(const JsonValue &value)
{
    Content content;
    content.value = value.toText(&content.isConverted);
    content.reason = ImportReason::BrokenText;
    return content;
}

} // namespace interchange
