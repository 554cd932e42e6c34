#include <interchange/ifc/IfcTree.h>

#include <interchange/ifc/IfcTypes.h>
#include <interchange/ifc/StepText.h>

namespace interchange {

IfcTree::IfcTree(const StepFile &file, ForeignScene &scene) : m_file(file), m_scene(scene) {}

void IfcTree::build()
{
    findObjects();
    // What an object is made of comes before what it contains.
    for (const IfcRole role : {IfcRole::Aggregates, IfcRole::Nests, IfcRole::Contains, IfcRole::Voids})
        link(role);
    addAll();
}

void IfcTree::findObjects()
{
    const auto &records = m_file.records();
    m_objectOf.assign(records.size(), -1);
    for (size_t i = 0; i < records.size(); ++i) {
        const bool isObject = ifcRole(m_file.type(records[i])) == IfcRole::Object
                              && m_arguments.read(m_file.arguments(records[i])) && isIfcObject(m_arguments);
        if (!isObject)
            continue;
        m_objectOf[i] = qint32(m_objects.size());
        m_objects.emplace_back();
        m_objects.back().record = quint32(i);
    }
}

/// All relations of one kind, in the order of the file.
void IfcTree::link(IfcRole role)
{
    for (const StepFile::Record &record : m_file.records()) {
        if (ifcRole(m_file.type(record)) != role || !m_arguments.read(m_file.arguments(record)))
            continue;
        const bool isParentLast = role == IfcRole::Contains;
        const StepValue &parent = m_arguments.at(isParentLast ? 5 : 4);
        link(StepArguments::reference(parent), m_arguments.references(m_arguments.at(isParentLast ? 4 : 5)));
    }
}

/// Where several relations place an object, the first one counts.
void IfcTree::link(quint64 parent, const std::vector<quint64> &children)
{
    const qint32 above = objectOf(parent);
    for (const quint64 child : children) {
        const qint32 object = objectOf(child);
        const QString path = QStringLiteral("#%1").arg(child);
        if (above < 0 || object < 0) {
            // Relations also speak of what is no object here, types for instance.
            if (m_file.find(above < 0 ? parent : child) < 0)
                m_scene.report.addNote(path, ImportReason::MissingRecord);
        } else if (m_objects[size_t(object)].parent < 0 && object != above) {
            m_objects[size_t(object)].parent = above;
            m_objects[size_t(above)].children.push_back(quint32(object));
        } else {
            m_scene.report.addNote(path, ImportReason::SecondPlace);
        }
    }
}

/// Parents first. Objects in a ring have no root: the first of them becomes one.
void IfcTree::addAll()
{
    std::vector<quint32> roots;
    for (size_t i = 0; i < m_objects.size(); ++i) {
        if (m_objects[i].parent < 0)
            roots.push_back(quint32(i));
    }
    for (size_t i = 0; i < roots.size(); ++i)
        addBelow(roots[i], roots);
    for (size_t i = 0; i < m_objects.size(); ++i) {
        if (m_objects[i].node >= 0)
            continue;
        const quint64 id = m_file.records()[m_objects[i].record].id;
        m_scene.report.addNote(QStringLiteral("#%1").arg(id), ImportReason::LoopInTree);
        roots.assign(1, quint32(i));
        for (size_t root = 0; root < roots.size(); ++root)
            addBelow(roots[root], roots);
    }
}

/// Depth first, with a stack of its own. What stands too deep is added to the roots.
void IfcTree::addBelow(quint32 root, std::vector<quint32> &roots)
{
    struct Waiting
    {
        quint32 object;
        qint32 parent;
        int depth;
    };
    std::vector<Waiting> waiting{{root, -1, 1}};
    while (!waiting.empty()) {
        const Waiting next = waiting.back();
        waiting.pop_back();
        if (m_objects[next.object].node >= 0)
            continue;
        if (next.depth > MaximalDepth) {
            const quint64 id = m_file.records()[m_objects[next.object].record].id;
            m_scene.report.addNote(QStringLiteral("#%1").arg(id), ImportReason::TooDeepInTree);
            roots.push_back(next.object);
            continue;
        }
        add(next.object, next.parent);
        const auto &children = m_objects[next.object].children;
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            waiting.push_back({*child, m_objects[next.object].node, next.depth + 1});
    }
}

void IfcTree::add(quint32 object, qint32 parent)
{
    const StepFile::Record &record = m_file.records()[m_objects[object].record];
    m_arguments.read(m_file.arguments(record));
    const QString id = stepText(m_arguments.at(0).text);
    ForeignScene::Node node;
    node.name = stepText(m_arguments.at(2).kind == StepKind::Text ? m_arguments.at(2).text
                                                                  : std::string_view());
    if (node.name.isEmpty())
        node.name = ifcTypeName(m_file.type(record), record.id);
    node.key = uniqueKey(id, QStringLiteral("#%1").arg(record.id));
    node.parent = parent;
    m_objects[object].node = qint32(m_scene.nodes.size());
    m_scene.nodes.push_back(node);
}

QString IfcTree::uniqueKey(const QString &id, const QString &path)
{
    if (m_keys.contains(id))
        m_scene.report.addNote(path, ImportReason::DoubledIdentifier);
    QString key = id;
    while (m_keys.contains(key))
        key = QStringLiteral("%1 (%2)").arg(id, QString::number(++m_doubled[id] + 1));
    m_keys.insert(key);
    return key;
}

qint32 IfcTree::objectOf(quint64 id) const
{
    const qint64 place = m_file.find(id);
    return place < 0 ? -1 : m_objectOf[size_t(place)];
}

qint32 IfcTree::node(quint64 id) const
{
    const qint32 object = objectOf(id);
    return object < 0 ? -1 : m_objects[size_t(object)].node;
}

} // namespace interchange
