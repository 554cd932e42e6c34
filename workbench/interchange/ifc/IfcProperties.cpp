#include <interchange/ifc/IfcProperties.h>

#include <interchange/ifc/StepText.h>

#include <kernel/document/EntryValue.h>
#include <kernel/document/ValueConversion.h>

#include <QHash>

namespace interchange {

namespace {

/// Properties that are made of properties; deeper ones are left alone, as are those made of themselves.
constexpr int DeepestProperty = 8;
/// Reading so much of a property costs about as much as reading one that is short.
constexpr int BytesOfWork = 256;
/// What stands in others is read anew each time, and few files have such.
constexpr int InnerWork = 32;

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

size_t hashOf(const ForeignScene::Entry &entry)
{
    const QVariant &value = entry.value;
    const bool isText = entry.type == nkMetadataTypes::String;
    const uint content = isText                                 ? qHash(value.toString())
                         : entry.type == nkMetadataTypes::Float ? qHash(value.toDouble())
                         : entry.type == nkMetadataTypes::List  ? qHash(kernel::valueText(value))
                                                                : uint(value.toInt());
    return (size_t(qHash(entry.key)) << 32u) ^ content ^ (size_t(entry.type) << 56u);
}

bool isEqual(const ForeignScene::Entry &a, const ForeignScene::Entry &b)
{
    return a.isTag == b.isTag && a.type == b.type && a.key == b.key && kernel::isSameValue(a.value, b.value);
}

} // namespace

IfcProperties::IfcProperties(const StepFile &file, ImportReport &report) : m_file(file), m_report(report) {}

/// Depth first, with a stack of its own.
IfcProperties::Numbers IfcProperties::entriesOf(const std::vector<quint64> &properties, const QString &prefix)
{
    Found found;
    std::vector<Step> waiting;
    for (auto at = properties.rbegin(); at != properties.rend(); ++at)
        waiting.push_back({*at, prefix, 1});
    while (!waiting.empty() && m_work <= MostWork) {
        const Step step = waiting.back();
        waiting.pop_back();
        addTo(found, step, waiting);
    }
    return uniqueOf(found);
}

/// The first of each key. That the same entry comes again is not worth a word.
IfcProperties::Numbers IfcProperties::uniqueOf(const Found &found)
{
    QHash<QString, quint32> keys;
    Numbers unique;
    for (const auto &[number, property] : found) {
        const QString &key = m_entries[number].key;
        const auto known = keys.constFind(key);
        if (known != keys.constEnd()) {
            if (*known != number)
                note(property, key, ImportReason::DoubledProperty);
            continue;
        }
        keys.insert(key, number);
        unique.push_back(number);
    }
    return unique;
}

void IfcProperties::addTo(Found &found, const Step &step, std::vector<Step> &waiting)
{
    m_work += step.depth == 1 ? 1 : InnerWork;
    const auto known = step.prefix.isEmpty() ? m_known.find(step.property) : m_known.end();
    if (known != m_known.end()) {
        found.emplace_back(known->second, step.property);
        return;
    }
    const qint64 place = m_file.find(step.property);
    if (place < 0)
        return note(step.property, QString(), ImportReason::MissingRecord);
    const StepFile::Record &record = m_file.records()[size_t(place)];
    m_work += qint64(m_file.arguments(record).size()) / BytesOfWork;
    if (!m_arguments.read(m_file.arguments(record)))
        return note(step.property, QString(), ImportReason::BrokenRecord);
    const std::string_view type = m_file.type(record);
    const QString key = step.prefix + stepText(m_arguments.at(0).text);
    if (type == "IFCCOMPLEXPROPERTY" && step.depth < DeepestProperty) {
        const std::vector<quint64> inner = m_arguments.references(m_arguments.at(3));
        for (auto at = inner.rbegin(); at != inner.rend(); ++at)
            waiting.push_back({*at, key + QLatin1Char('.'), step.depth + 1});
        return;
    }
    IfcValue::Read read;
    if (key.isEmpty() || !readKnown(type, read))
        return note(step.property, key, ImportReason::UnreadableProperty);
    if (read.converted)
        m_report.addConverted(path(step.property, key), *read.converted);
    else
        m_report.addKept();
    found.emplace_back(interned({key, read.type, read.value, read.isTag}), step.property);
    if (step.prefix.isEmpty())
        m_known.emplace(step.property, found.back().first);
}

/// False for tables, references and what else is more than a value.
bool IfcProperties::readKnown(std::string_view type, IfcValue::Read &read) const
{
    const IfcValue value(m_arguments);
    if (type == "IFCPROPERTYSINGLEVALUE")
        read = value.single(m_arguments.at(2));
    else if (type == "IFCPROPERTYENUMERATEDVALUE" || type == "IFCPROPERTYLISTVALUE")
        read = value.list(m_arguments.at(2));
    else if (type == "IFCPROPERTYBOUNDEDVALUE")
        read = value.bounds(m_arguments.at(3), m_arguments.at(2));
    else if (type == "IFCQUANTITYCOUNT")
        read = value.count(m_arguments.at(3));
    else if (startsWith(type, "IFCQUANTITY"))
        read = value.measure(m_arguments.at(3));
    else
        return false;
    return true;
}

quint32 IfcProperties::interned(ForeignScene::Entry entry)
{
    const size_t hash = hashOf(entry);
    const auto range = m_byHash.equal_range(hash);
    for (auto at = range.first; at != range.second; ++at) {
        if (isEqual(m_entries[at->second], entry))
            return at->second;
    }
    const auto number = quint32(m_entries.size());
    m_entries.push_back(std::move(entry));
    m_byHash.emplace(hash, number);
    return number;
}

void IfcProperties::note(quint64 property, const QString &name, ImportReason reason)
{
    m_report.addUntouched(path(property, name), reason);
}

QString IfcProperties::path(quint64 property, const QString &name)
{
    return name.isEmpty() ? QStringLiteral("#%1").arg(property) : QStringLiteral("#%1 ").arg(property) + name;
}

} // namespace interchange
