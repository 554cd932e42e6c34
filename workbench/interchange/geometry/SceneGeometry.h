#pragma once

#include <QColor>
#include <QMatrix4x4>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace interchange {

/// What of a scene file can be drawn. Plain data: whoever reads a file fills it, and the viewport draws it; the
/// document knows nothing of it. Lengths are the file's own (metres in glTF), y points up, angles are radians.
struct SceneGeometry
{
    /// Triangles with one material.
    struct Part
    {
        std::vector<float> positions;  ///< x y z by vertex
        std::vector<float> normals;    ///< as many as positions, of unit length; empty: flat shading
        std::vector<uint32_t> indices; ///< three a triangle, each below the number of vertices
        qint32 material = -1;          ///< index in the file's materials; -1: none
    };

    /// What a node shows: one or more parts.
    struct Mesh
    {
        std::vector<Part> parts;
    };

    struct Material
    {
        QColor color = Qt::lightGray; ///< base colour, linear components as in the file; alpha counts
        bool isDoubleSided = false;
    };

    struct Camera
    {
        bool isPerspective = true;
        float verticalAngle = 0.8F; ///< perspective: the whole angle
        float height = 2;           ///< orthographic: the whole height
        float aspect = 0;           ///< width by height; 0: the viewport's
        float zNear = 0.1F;
        float zFar = 100;
    };

    struct Light
    {
        enum class Type : quint8 { Directional, Point, Spot };
        Type type = Type::Point;
        QColor color = Qt::white;
        float intensity = 1;
        float outerAngle = 0.7853982F; ///< spot: half of the cone's angle
    };

    /// A node, under the index that it has in the file (SceneSource::ObjectOrigin::index).
    struct Node
    {
        QMatrix4x4 local;   ///< from the node's space to its parent's
        qint32 parent = -1; ///< in nodes
        qint32 mesh = -1;   ///< in meshes
        qint32 camera = -1; ///< in cameras; looks along -z
        qint32 light = -1;  ///< in lights; shines along -z
    };

    std::vector<Node> nodes;
    std::vector<Mesh> meshes;
    std::vector<Material> materials;
    std::vector<Camera> cameras;
    std::vector<Light> lights;
    /// Sentences about what could not be read for drawing (a buffer that is missing, a codec that is not known).
    /// Never a reason to refuse a scene.
    QStringList troubles;
};

} // namespace interchange
