#pragma once

#include <interchange/ImportReport.h>
#include <interchange/foreign/ForeignScene.h>
#include <interchange/ifc/IfcTypes.h>
#include <interchange/ifc/StepArguments.h>
#include <interchange/ifc/StepFile.h>

#include <QHash>
#include <QSet>

#include <vector>

namespace interchange {

/// The objects of an IFC file and what stands below what: the project with its sites, buildings and storeys, what is
/// contained in them, and openings below what they are in. Objects without such a place stand at the top level.
class IfcTree
{
public:
    /// Levels below each other; what would stand deeper stands at the top level.
    static constexpr int MaximalDepth = 512;

    /// All outlive this.
    IfcTree(const StepFile &file, ForeignScene &scene);

    /// Fills the scene's nodes, parents first.
    void build();
    /// The node of a record; -1 where it is none.
    qint32 node(quint64 id) const;

private:
    struct Object
    {
        quint32 record;
        qint32 parent = -1; ///< in m_objects
        qint32 node = -1;
        std::vector<quint32> children;
    };

    void findObjects();
    void link(IfcRole role);
    void link(quint64 parent, const std::vector<quint64> &children);
    void addAll();
    void addBelow(quint32 root, std::vector<quint32> &roots);
    void add(quint32 object, qint32 parent);
    QString uniqueKey(const QString &id, const QString &path);
    qint32 objectOf(quint64 id) const;

    const StepFile &m_file;
    ForeignScene &m_scene;
    StepArguments m_arguments;
    std::vector<Object> m_objects;
    std::vector<qint32> m_objectOf; ///< by the record's place; -1 where it is none
    QSet<QString> m_keys;
    QHash<QString, int> m_doubled; ///< the last number that made an identifier unique
};

} // namespace interchange
