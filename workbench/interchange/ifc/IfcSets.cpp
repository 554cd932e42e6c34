#include <interchange/ifc/IfcSets.h>

#include <interchange/ifc/IfcTypes.h>
#include <interchange/ifc/StepText.h>

#include <QHash>

#include <algorithm>

namespace interchange {

namespace {

/// In the names of sets that come from types. Not translated: it is part of the scene, not of its display.
const QString TypeMark = QStringLiteral(" (type)");

/// Reading so much of a type costs about as much as an assignment.
constexpr int BytesOfWork = 256;

void makeAscending(std::vector<quint32> &nodes)
{
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
}

QString textOf(const StepValue &value)
{
    return value.kind == StepKind::Text ? stepText(value.text) : QString();
}

QString pathOf(quint64 id)
{
    return QStringLiteral("#%1").arg(id);
}

} // namespace

IfcSets::IfcSets(const StepFile &file, const IfcTree &tree, ForeignScene &scene)
    : m_file(file), m_tree(tree), m_scene(scene), m_properties(file, scene.report)
{}

void IfcSets::build()
{
    assignOwn();
    for (Set &set : m_sets)
        makeAscending(set.nodes);
    assignOfTypes();
    if (isOverfull())
        return;
    noteUnassigned();
    emitSets();
    emitOwn();
}

/// What the objects say of themselves.
void IfcSets::assignOwn()
{
    for (const StepFile::Record &record : m_file.records()) {
        if (ifcRole(m_file.type(record)) != IfcRole::DefinesByProperties || isOverfull()
            || !m_arguments.read(m_file.arguments(record)))
            continue;
        const Nodes nodes = nodesOf(m_arguments.at(4));
        for (const quint64 definition : m_arguments.references(m_arguments.at(5)))
            assign(definition, nodes);
    }
}

void IfcSets::assign(quint64 definition, const Nodes &nodes)
{
    m_assignments += qint64(nodes.size());
    if (nodes.empty() || m_assignments > MostAssignments)
        return;
    const qint64 place = m_file.find(definition);
    if (place >= 0 && ifcRole(m_file.type(m_file.records()[size_t(place)])) == IfcRole::QuantitySet)
        return addQuantities(definition, nodes);
    const qint32 set = setOf(definition);
    if (set < 0)
        return;
    Nodes &assigned = m_sets[size_t(set)].nodes;
    assigned.insert(assigned.end(), nodes.begin(), nodes.end());
}

/// What their types say of them.
void IfcSets::assignOfTypes()
{
    for (const StepFile::Record &record : m_file.records()) {
        if (ifcRole(m_file.type(record)) != IfcRole::DefinesByType || isOverfull()
            || !m_arguments.read(m_file.arguments(record)))
            continue;
        const Nodes nodes = nodesOf(m_arguments.at(4));
        const qint64 type = m_file.find(StepArguments::reference(m_arguments.at(5)));
        if (nodes.empty() || type < 0)
            continue;
        const std::string_view arguments = m_file.arguments(m_file.records()[size_t(type)]);
        m_assignments += qint64(arguments.size()) / BytesOfWork;
        if (!m_arguments.read(arguments))
            continue;
        for (const quint64 definition : m_arguments.references(m_arguments.at(5)))
            assignOfType(definition, nodes);
    }
    for (Set &set : m_sets)
        makeAscending(set.nodes);
}

void IfcSets::assignOfType(quint64 definition, const Nodes &nodes)
{
    m_assignments += qint64(nodes.size()) + 1;
    const qint32 set = nodes.empty() || m_assignments > MostAssignments ? -1 : setOf(definition);
    if (set < 0)
        return;
    const qint32 ofType = setOfType(set);
    const Nodes &having = m_sets[size_t(set)].nodes;
    for (const quint32 node : nodes) {
        if (!std::binary_search(having.begin(), having.end(), node))
            m_sets[size_t(ofType)].nodes.push_back(node);
    }
}

IfcSets::Nodes IfcSets::nodesOf(const StepValue &value) const
{
    Nodes nodes;
    for (const quint64 id : m_arguments.references(value)) {
        const qint32 node = m_tree.node(id);
        if (node >= 0)
            nodes.push_back(quint32(node));
        else if (m_file.find(id) < 0)
            m_scene.report.addNote(pathOf(id), ImportReason::MissingRecord);
    }
    makeAscending(nodes);
    return nodes;
}

qint32 IfcSets::setOf(quint64 definition)
{
    const auto known = m_byRecord.find(definition);
    if (known != m_byRecord.end())
        return known->second;
    qint32 &set = m_byRecord[definition];
    set = -1;
    StepArguments arguments;
    const qint64 place = m_file.find(definition);
    if (place < 0) {
        m_scene.report.addNote(pathOf(definition), ImportReason::MissingRecord);
        return set;
    }
    const StepFile::Record &record = m_file.records()[size_t(place)];
    const bool isSet = ifcRole(m_file.type(record)) == IfcRole::PropertySet;
    if (isSet && arguments.read(m_file.arguments(record)))
        set = add(textOf(arguments.at(2)), m_properties.entriesOf(arguments.references(arguments.at(4))));
    else
        m_scene.report.addUntouched(pathOf(definition),
                                    isSet ? ImportReason::BrokenRecord : ImportReason::UnreadableProperty);
    return set;
}

qint32 IfcSets::add(const QString &name, const Numbers &entries)
{
    const auto added = m_byContent.emplace(std::make_pair(name, entries), qint32(m_sets.size()));
    if (added.second)
        m_sets.push_back({name.isEmpty() ? QStringLiteral("PropertySet") : name, entries, {}, -1});
    return added.first->second;
}

/// Stands apart from the set of the objects with the same entries.
qint32 IfcSets::setOfType(qint32 set)
{
    if (m_sets[size_t(set)].ofType < 0) {
        m_sets[size_t(set)].ofType = qint32(m_sets.size());
        Set ofType = m_sets[size_t(set)];
        ofType.name += TypeMark;
        ofType.nodes.clear();
        m_sets.push_back(std::move(ofType));
    }
    return m_sets[size_t(set)].ofType;
}

void IfcSets::addQuantities(quint64 definition, const Nodes &nodes)
{
    auto known = m_quantities.find(definition);
    if (known == m_quantities.end()) {
        StepArguments arguments;
        const StepFile::Record &record = m_file.records()[size_t(m_file.find(definition))];
        arguments.read(m_file.arguments(record));
        const QString name = textOf(arguments.at(2));
        const QString prefix = name.isEmpty() ? name : name + QLatin1Char('.');
        known = m_quantities
                    .emplace(definition,
                             m_properties.entriesOf(arguments.references(arguments.at(5)), prefix))
                    .first;
    }
    m_assignments += qint64(nodes.size() * known->second.size());
    if (m_assignments > MostAssignments)
        return;
    for (const quint32 node : nodes) {
        for (const quint32 entry : known->second)
            m_own.emplace_back(node, entry);
    }
}

/// Sets that no object has are not made: they would only be in the way.
void IfcSets::noteUnassigned()
{
    for (const StepFile::Record &record : m_file.records()) {
        if (ifcRole(m_file.type(record)) == IfcRole::PropertySet && m_byRecord.count(record.id) == 0)
            m_scene.report.addUntouched(pathOf(record.id), ImportReason::UnassignedSet);
    }
}

void IfcSets::emitSets()
{
    for (Set &set : m_sets) {
        if (!set.nodes.empty())
            m_scene.sets.push_back({set.name, emitEntries(set.entries), std::move(set.nodes)});
    }
}

void IfcSets::emitOwn()
{
    const auto byNode = [](const auto &a, const auto &b) { return a.first < b.first; };
    std::stable_sort(m_own.begin(), m_own.end(), byNode);
    for (auto at = m_own.begin(); at != m_own.end();) {
        const quint32 node = at->first;
        Numbers numbers;
        QHash<QString, quint32> keys;
        for (; at != m_own.end() && at->first == node; ++at) {
            const QString &key = m_properties.entry(at->second).key;
            const auto known = keys.constFind(key);
            if (known == keys.constEnd()) {
                keys.insert(key, at->second);
                numbers.push_back(at->second);
            } else if (*known != at->second) {
                m_scene.report.addUntouched(m_scene.nodes[node].key + QLatin1Char(' ') + key,
                                            ImportReason::DoubledProperty);
            }
        }
        m_scene.nodes[node].entries = emitEntries(numbers);
    }
}

IndexRange IfcSets::emitEntries(const Numbers &numbers)
{
    const IndexRange range{quint32(m_scene.entries.size()), quint32(numbers.size())};
    for (const quint32 number : numbers)
        m_scene.entries.push_back(m_properties.entry(number));
    return range;
}

} // namespace interchange
