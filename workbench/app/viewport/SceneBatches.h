#pragma once

#include "SceneItem.h"

#include "interchange/geometry/SceneGeometry.h"

#include <QtGlobal>

/// A corner as the graphics card has it.
struct DrawVertex
{
    float x = 0, y = 0, z = 0;
    qint8 nx = 0, ny = 0, nz = 0, unused = 0;
    quint8 red = 0, green = 0, blue = 0, alpha = 255;
};

/// The triangles of all items in a few long lists, so that a scene of thousands of objects is drawn in few calls.
///
/// Meshes are moved to where their nodes stand once, here. Those that would take too much memory so, because many
/// nodes show the same large one, are kept in their own space and drawn once a node.
class SceneBatches
{
public:
    /// Vertices that are made of meshes shown by more than one node; larger ones are drawn once a node.
    static constexpr size_t MostSharedVertices = 4U * 1000 * 1000;
    /// Vertices in all; what comes after is left out.
    static constexpr size_t MostVertices = 60U * 1000 * 1000;
    static constexpr size_t MostIndices = 300U * 1000 * 1000;

    /// A part of a list of indices.
    struct Run
    {
        quint32 first = 0;
        quint32 count = 0;
    };
    /// A mesh that is drawn once a node.
    struct Instance
    {
        quint32 item = 0;
        QMatrix4x4 world;
        Run opaque, translucent; ///< in shared()
    };

    SceneBatches() = default;
    SceneBatches(const interchange::SceneGeometry &geometry, const std::vector<SceneItem> &items);

    const std::vector<DrawVertex> &vertices() const { return m_vertices; }
    /// What is drawn first, in one call.
    const std::vector<quint32> &opaque() const { return m_opaque; }
    /// What is seen through, in one call after that.
    const std::vector<quint32> &translucent() const { return m_translucent; }
    /// The indices that instances refer to.
    const std::vector<quint32> &shared() const { return m_shared; }
    const std::vector<Instance> &instances() const { return m_instances; }
    /// The indices of all of those items that are marked and no instances, one behind the other.
    std::vector<quint32> trianglesOf(const std::vector<bool> &marked) const;
    /// False where something was left out, because it is too much.
    bool isComplete() const { return m_isComplete; }

private:
    using Mesh = interchange::SceneGeometry::Mesh;
    using Part = interchange::SceneGeometry::Part;
    using Items = std::vector<quint32>;

    void addMesh(const Mesh &mesh, const Items &shownBy, const std::vector<SceneItem> &items);
    void addInstances(const Mesh &mesh, const Items &shownBy, const std::vector<SceneItem> &items);
    bool isTooMuch(const Mesh &mesh, size_t times);
    /// @return where the part's indices stand in `indices`
    Run addPart(const Part &part, const QMatrix4x4 &world, std::vector<quint32> &indices);
    void addFlat(const Part &part, const QMatrix4x4 &world, std::vector<quint32> &indices);
    void addSmooth(const Part &part, const QMatrix4x4 &world, std::vector<quint32> &indices);
    DrawVertex colored(const Part &part) const;
    bool isTranslucent(const Part &part) const;

    const std::vector<interchange::SceneGeometry::Material> *m_materials = nullptr;
    std::vector<DrawVertex> m_vertices;
    std::vector<quint32> m_opaque;
    std::vector<quint32> m_translucent;
    std::vector<quint32> m_shared;
    std::vector<std::vector<Run>> m_opaqueRuns; ///< by item
    std::vector<std::vector<Run>> m_translucentRuns;
    std::vector<Instance> m_instances;
    size_t m_sharedVertices = 0;
    bool m_isComplete = true;
};
