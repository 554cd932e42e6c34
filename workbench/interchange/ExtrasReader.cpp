#include <interchange/ExtrasReader.h>

#include <interchange/ExtrasKey.h>
#include <interchange/JsonPath.h>

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

bool needsEscape(const QString &key)
{
    return key.contains(QLatin1Char('.')) || key.contains(QLatin1Char('\\'));
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
        readScalar(member);
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
    Scalar whole;
    for (const JsonValue element : array.children()) {
        const Scalar scalar = scalarOf(element);
        elements.append(scalar.value);
        whole.isNumber |= scalar.isNumber;
        whole.isBroken |= scalar.isBroken;
        if (scalar.isNumber)
            whole.type = element.isInteger() ? ExtrasType::Integer : ExtrasType::Float;
    }
    ExtrasEntry &entry = appendEntry(array);
    entry.type = ExtrasType::List;
    entry.value = elements;
    entry.isNumber = whole.isNumber;
    report(array, whole);
}

void ExtrasReader::readScalar(const JsonValue &member)
{
    const Scalar scalar = scalarOf(member);
    ExtrasEntry &entry = appendEntry(member);
    entry.type = scalar.type;
    entry.value = scalar.value;
    entry.isNumber = scalar.isNumber;
    report(member, scalar);
}

ExtrasEntry &ExtrasReader::appendEntry(const JsonValue &member)
{
    m_entries.emplace_back();
    ExtrasEntry &entry = m_entries.back();
    entry.memberOffset = member.memberSpan().offset;
    entry.valueSpan = member.span();
    entry.isPath = m_open.size() > 1;
    entry.key = entry.isPath ? ExtrasKey::appended(m_open.back().pathKey, keyOf(member)) : keyOf(member);
    return entry;
}

void ExtrasReader::report(const JsonValue &member, const Scalar &scalar)
{
    if (!scalar.isNumber && !scalar.isBroken)
        return m_report.addKept();
    const bool isLong = member.isInteger() || scalar.type == ExtrasType::Integer;
    const ImportReason number = isLong ? ImportReason::LongInteger : ImportReason::UnboundedNumber;
    m_report.addConverted(pathTo(member), scalar.isNumber ? number : ImportReason::BrokenText);
}

/// A key with points that stands directly in the extras can read like the path key of a nested member. Then, and
/// only then, such keys are escaped as path keys are, which makes all keys of the object different.
void ExtrasReader::makeKeysUnique(const IndexRange &range)
{
    ExtrasEntry *const first = m_entries.data() + range.first;
    ExtrasEntry *const last = first + range.count;
    const auto isPath = [](const ExtrasEntry &entry) { return entry.isPath; };
    const auto mayLookLikePath = [](const ExtrasEntry &entry) {
        return !entry.isPath && needsEscape(entry.key);
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

ExtrasReader::Scalar ExtrasReader::scalarOf(const JsonValue &value)
{
    Scalar scalar;
    if (value.isNumber())
        return numberOf(value);
    if (value.isNull()) {
        scalar.type = ExtrasType::Tag;
    } else if (value.isBoolean()) {
        scalar.type = ExtrasType::Boolean;
        scalar.value = value.toBool();
    } else {
        scalar.value = value.toText(&scalar.isBroken);
    }
    return scalar;
}

ExtrasReader::Scalar ExtrasReader::numberOf(const JsonValue &value)
{
    Scalar scalar;
    bool fits = false;
    if (value.isInteger()) {
        scalar.value = value.toInt(&fits);
        scalar.type = ExtrasType::Integer;
    } else {
        scalar.value = value.toDouble(&fits);
        scalar.type = ExtrasType::Float;
    }
    if (!fits) {
        scalar.value = value.toText();
        scalar.type = ExtrasType::String;
        scalar.isNumber = true;
    }
    return scalar;
}

} // namespace interchange
