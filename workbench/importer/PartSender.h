#pragma once

#include "Troubles.h"

#include <interchange/importer/FlatWriter.h>

#include <assimp/scene.h>

#include <vector>

/// Answers one mesh of the library, which has one material: its triangles, and nothing of its points and lines.
class PartSender
{
public:
    explicit PartSender(const aiMesh &mesh) : m_mesh(mesh) {}

    bool hasTriangles() const;
    /// Numbers that are none become 0; where a normal has no direction, all are left out; triangles without corners
    /// are left out. @param materials how many the scene has
    void send(interchange::FlatWriter &writer, unsigned materials, Troubles &troubles);

private:
    void gather();
    bool isWhole(const aiFace &triangle) const;
    uint32_t numberOf(unsigned vertex);
    bool sendPositions(interchange::FlatWriter &writer) const;
    bool hasSoundNormals() const;
    void sendNormals(interchange::FlatWriter &writer) const;

    const aiMesh &m_mesh;
    std::vector<unsigned> m_used;    ///< vertices of the mesh, in the order in which triangles need them
    std::vector<uint32_t> m_numbers; ///< places in it, by vertex
    std::vector<uint32_t> m_corners;
    bool m_isBroken = false;
};
