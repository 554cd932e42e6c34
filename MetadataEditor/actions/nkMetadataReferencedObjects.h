#pragma once

#include <nkKernelServices/nkMaterialEntryId.h>
#include <nkKernelServices/nkdNode.h>

#include <QList>
#include <QSet>

/// The scene objects that a metadata selection refers to, each once, sorted for the editors that show them.
/// Cameras, lights and sceneplates are nodes of the scene graph too and stand in both lists; material groups
/// stand with the materials, where their editor shows them.
class nkMetadataReferencedObjects
{
public:
    /// A set refers to the objects it is assigned to, a scene object to itself.
    explicit nkMetadataReferencedObjects(const QList<nkdObject> &selection);

    /// Selects in the editor of this kind (nkMetadataEditorKind), or in all of them; an editor without
    /// objects receives its empty list.
    void selectIn(int kind) const;

    QList<nkdNode> nodes() const { return m_nodes; }
    QList<nkMaterialEntryId> materials() const { return m_materials; }
    QList<nkdNode> lights() const { return m_lights; }
    QList<nkdNode> cameras() const { return m_cameras; }
    QList<nkdNode> sceneplates() const { return m_sceneplates; }

private:
    void add(const nkdObject &object);
    void sortIn(const nkdObject &object);

    QSet<quint64> m_known;
    QList<nkdNode> m_nodes;
    QList<nkMaterialEntryId> m_materials;
    QList<nkdNode> m_lights;
    QList<nkdNode> m_cameras;
    QList<nkdNode> m_sceneplates;
};
