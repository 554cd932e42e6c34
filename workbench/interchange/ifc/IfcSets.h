#pragma once

#include <interchange/foreign/ForeignScene.h>
#include <interchange/ifc/IfcProperties.h>
#include <interchange/ifc/IfcTree.h>
#include <interchange/ifc/StepArguments.h>
#include <interchange/ifc/StepFile.h>

#include <map>
#include <unordered_map>
#include <utility>
#include <vector>

namespace interchange {

/// The property sets of an IFC file, as shared sets with the nodes they are assigned to. Sets with the same name and
/// the same entries are one. Sets of types are assigned to the objects of that type, as "NAME (type)", where the
/// object has no equal set itself. Quantities become entries of the objects' own sets, as "SET.QUANTITY".
class IfcSets
{
public:
    /// The most assignments of sets, and of quantities, that a scene may have.
    static constexpr qint64 MostAssignments = 8000000;

    /// All outlive this.
    IfcSets(const StepFile &file, const IfcTree &tree, ForeignScene &scene);

    /// Fills the scene's sets and the entries of its nodes.
    void build();
    /// The file names more sets, properties or objects than a scene can have; what was built is worth nothing.
    bool isOverfull() const { return m_assignments > MostAssignments || m_properties.isOverfull(); }

private:
    using Numbers = IfcProperties::Numbers;
    using Nodes = std::vector<quint32>;

    struct Set
    {
        QString name;
        Numbers entries;
        Nodes nodes;
        qint32 ofType = -1; ///< the set of types with the same entries
    };

    void assignOwn();
    void assignOfTypes();
    void assign(quint64 definition, const Nodes &nodes);
    void assignOfType(quint64 definition, const Nodes &nodes);
    Nodes nodesOf(const StepValue &value) const;
    qint32 setOf(quint64 definition);
    qint32 add(const QString &name, const Numbers &entries);
    qint32 setOfType(qint32 set);
    void addQuantities(quint64 definition, const Nodes &nodes);
    void noteUnassigned();
    void emitSets();
    void emitOwn();
    IndexRange emitEntries(const Numbers &numbers);

    const StepFile &m_file;
    const IfcTree &m_tree;
    ForeignScene &m_scene;
    StepArguments m_arguments;
    IfcProperties m_properties;
    std::vector<Set> m_sets;
    std::map<std::pair<QString, Numbers>, qint32> m_byContent;
    std::unordered_map<quint64, qint32> m_byRecord; ///< the set of a record, -1 where it is none
    std::unordered_map<quint64, Numbers> m_quantities;
    std::vector<std::pair<quint32, quint32>> m_own; ///< node and entry
    qint64 m_assignments = 0;
};

} // namespace interchange
