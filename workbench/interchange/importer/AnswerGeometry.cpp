#include <interchange/importer/AnswerGeometry.h>

#include <interchange/importer/FlatForm.h>
#include <interchange/importer/ImportLimits.h>

#include <cmath>

namespace interchange {

namespace {

constexpr quint32 SmallestMesh = 4;
constexpr quint32 SmallestPart = 13;
constexpr quint32 VertexSize = 12;
constexpr quint32 CameraSize = 21;
constexpr quint32 LightSize = 21;
constexpr float HalfTurn = 3.1415927F;
constexpr float Longest = 1e12F;
constexpr float UnitTolerance = 1e-3F;

bool isUnit(const float *vector)
{
    const float square = vector[0] * vector[0] + vector[1] * vector[1] + vector[2] * vector[2];
    return std::abs(square - 1) < UnitTolerance;
}

} // namespace

void AnswerGeometry::readMeshes()
{
    const quint32 count = m_reader.count(importlimits::Nodes, SmallestMesh);
    for (quint32 i = 0; i < count && m_reader.isSound(); ++i) {
        SceneGeometry::Mesh mesh;
        const quint32 parts = m_reader.count(importlimits::Parts - m_parts, SmallestPart);
        m_parts += parts;
        for (quint32 part = 0; part < parts && m_reader.isSound(); ++part)
            readPart(mesh);
        m_geometry.meshes.push_back(std::move(mesh));
    }
}

void AnswerGeometry::readPart(SceneGeometry::Mesh &mesh)
{
    SceneGeometry::Part part;
    part.material = m_reader.index(quint32(m_geometry.materials.size()));
    const quint32 vertices = m_reader.count(importlimits::Vertices - m_vertices, VertexSize);
    m_vertices += vertices;
    const bool hasNormals = m_reader.flag();
    if (quint64(vertices) * VertexSize > quint64(m_reader.remaining()))
        return m_reader.fail();
    m_reader.finites(part.positions, 3 * vertices);
    if (hasNormals)
        readNormals(part, vertices);
    const quint32 indices = m_reader.count(importlimits::Indices - m_indices, sizeof(quint32));
    m_indices += indices;
    if (indices % 3 != 0)
        m_reader.fail();
    m_reader.indices(part.indices, m_reader.isSound() ? indices : 0, vertices);
    mesh.parts.push_back(std::move(part));
}

void AnswerGeometry::readNormals(SceneGeometry::Part &part, quint32 vertices)
{
    if (quint64(vertices) * VertexSize > quint64(m_reader.remaining()))
        return m_reader.fail();
    m_reader.finites(part.normals, 3 * vertices);
    for (size_t i = 0; i + 2 < part.normals.size() && m_reader.isSound(); i += 3)
        if (!isUnit(&part.normals[i]))
            m_reader.fail();
}

void AnswerGeometry::readCameras()
{
    const quint32 count = m_reader.count(importlimits::Cameras, CameraSize);
    for (quint32 i = 0; i < count && m_reader.isSound(); ++i)
        m_geometry.cameras.push_back(readCamera());
}

SceneGeometry::Camera AnswerGeometry::readCamera()
{
    SceneGeometry::Camera camera;
    camera.isPerspective = m_reader.flag();
    camera.verticalAngle = within(0, HalfTurn);
    camera.height = within(0, Longest);
    camera.aspect = within(0, Longest);
    camera.zNear = within(0, Longest);
    camera.zFar = within(camera.zNear, Longest);
    return camera;
}

void AnswerGeometry::readLights()
{
    const quint32 count = m_reader.count(importlimits::Lights, LightSize);
    for (quint32 i = 0; i < count && m_reader.isSound(); ++i)
        m_geometry.lights.push_back(readLight());
}

SceneGeometry::Light AnswerGeometry::readLight()
{
    SceneGeometry::Light light;
    switch (flat::Light(m_reader.choice(quint8(flat::Light::Spot)))) {
    case flat::Light::Directional:
        light.type = SceneGeometry::Light::Type::Directional;
        break;
    case flat::Light::Point:
        light.type = SceneGeometry::Light::Type::Point;
        break;
    case flat::Light::Spot:
        light.type = SceneGeometry::Light::Type::Spot;
        break;
    }
    const float red = within(0, 1), green = within(0, 1), blue = within(0, 1);
    light.color = QColor::fromRgbF(double(red), double(green), double(blue));
    light.intensity = within(0, Longest);
    light.outerAngle = within(0, HalfTurn);
    return light;
}

float AnswerGeometry::within(float smallest, float largest)
{
    const float value = m_reader.finite();
    if (value >= smallest && value <= largest)
        return value;
    m_reader.fail();
    return smallest;
}

} // namespace interchange
