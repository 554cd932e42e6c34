#include "PartSender.h"

#include "Sound.h"

#include <algorithm>
#include <cmath>

using namespace interchange;

namespace {

// Shorter ones lose their direction in the arithmetic of singles.
constexpr float ShortestNormal = 1e-6F;
constexpr float LongestNormal = 1e6F;
constexpr uint32_t Unused = 0xffffffff;

void sendVector(const aiVector3D &vector, FlatWriter &writer)
{
    writer.single(vector.x);
    writer.single(vector.y);
    writer.single(vector.z);
}

} // namespace

bool PartSender::hasTriangles() const
{
    const aiFace *faces = m_mesh.mFaces;
    return m_mesh.mVertices && faces && std::any_of(faces, faces + m_mesh.mNumFaces, [](const aiFace &face) {
               return face.mNumIndices == 3;
           });
}

void PartSender::send(FlatWriter &writer, unsigned materials, Troubles &troubles)
{
    gather();
    writer.index(m_mesh.mMaterialIndex < materials ? int(m_mesh.mMaterialIndex) : -1);
    writer.word(uint32_t(m_used.size()));
    const bool hasNormals = hasSoundNormals();
    writer.byte(hasNormals ? 1 : 0);
    if (!sendPositions(writer))
        troubles.add(flat::Trouble::AbsurdNumbers, Sound::text(m_mesh.mName));
    if (hasNormals)
        sendNormals(writer);
    writer.word(uint32_t(m_corners.size()));
    for (const uint32_t corner : m_corners)
        writer.word(corner);
    if (m_isBroken)
        troubles.add(flat::Trouble::BrokenTriangles, Sound::text(m_mesh.mName));
}

void PartSender::gather()
{
    m_numbers.assign(m_mesh.mNumVertices, Unused);
    m_corners.reserve(size_t(m_mesh.mNumFaces) * 3);
    for (unsigned i = 0; i < m_mesh.mNumFaces; ++i) {
        const aiFace &face = m_mesh.mFaces[i];
        if (face.mNumIndices != 3)
            continue;
        if (!isWhole(face)) {
            m_isBroken = true;
            continue;
        }
        for (int corner = 0; corner < 3; ++corner)
            m_corners.push_back(numberOf(face.mIndices[corner]));
    }
}

bool PartSender::isWhole(const aiFace &triangle) const
{
    const unsigned *begin = triangle.mIndices;
    return std::all_of(begin, begin + 3, [this](unsigned vertex) { return vertex < m_mesh.mNumVertices; });
}

uint32_t PartSender::numberOf(unsigned vertex)
{
    if (m_numbers[vertex] == Unused) {
        m_numbers[vertex] = uint32_t(m_used.size());
        m_used.push_back(vertex);
    }
    return m_numbers[vertex];
}

bool PartSender::sendPositions(FlatWriter &writer) const
{
    bool isSound = true;
    for (const unsigned vertex : m_used) {
        const bool isFinite = Sound::isFinite(m_mesh.mVertices[vertex]);
        sendVector(isFinite ? m_mesh.mVertices[vertex] : aiVector3D(), writer);
        isSound = isSound && isFinite;
    }
    return isSound;
}

bool PartSender::hasSoundNormals() const
{
    return m_mesh.mNormals && std::all_of(m_used.begin(), m_used.end(), [this](unsigned vertex) {
               const float length = m_mesh.mNormals[vertex].Length();
               return length >= ShortestNormal && length <= LongestNormal;
           });
}

void PartSender::sendNormals(FlatWriter &writer) const
{
    for (const unsigned vertex : m_used) {
        const aiVector3D &normal = m_mesh.mNormals[vertex];
        sendVector(normal / normal.Length(), writer);
    }
}
