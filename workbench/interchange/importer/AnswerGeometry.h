#pragma once

#include <interchange/geometry/SceneGeometry.h>
#include <interchange/importer/FlatReader.h>

namespace interchange {

/// Reads meshes, cameras and lights out of an answer and trusts none of its numbers: what would lead beyond a list, is
/// infinite or out of its range makes the answer unsound.
class AnswerGeometry
{
public:
    AnswerGeometry(FlatReader &reader, SceneGeometry &geometry) : m_reader(reader), m_geometry(geometry) {}

    /// After the materials are there.
    void readMeshes();
    void readCameras();
    void readLights();

private:
    void readPart(SceneGeometry::Mesh &mesh);
    void readNormals(SceneGeometry::Part &part, quint32 vertices);
    SceneGeometry::Camera readCamera();
    SceneGeometry::Light readLight();
    float within(float smallest, float largest);

    FlatReader &m_reader;
    SceneGeometry &m_geometry;
    quint32 m_parts = 0;
    quint32 m_vertices = 0;
    quint32 m_indices = 0;
};

} // namespace interchange
