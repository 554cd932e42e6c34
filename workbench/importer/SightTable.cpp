#include "SightTable.h"

#include "Sound.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

using namespace interchange;

namespace {

constexpr float Pi = 3.14159265F;
constexpr float Tiny = 1e-6F;

/// The numbers of the first things with each name.
template <typename Thing>
std::unordered_map<std::string, int> numbersByName(Thing **things, unsigned count)
{
    std::unordered_map<std::string, int> numbers;
    for (unsigned i = 0; i < count; ++i)
        if (things[i])
            numbers.emplace(Sound::text(things[i]->mName), int(i));
    return numbers;
}

/// Each to the first node with its name.
std::vector<int> placesOf(std::unordered_map<std::string, int> numbers, const SceneTree &tree)
{
    std::vector<int> places;
    for (const SceneTree::Item &item : tree.items()) {
        const auto found = numbers.find(std::string(Sound::text(item.node->mName)));
        places.push_back(found == numbers.end() ? -1 : found->second);
        if (found != numbers.end())
            numbers.erase(found);
    }
    return places;
}

bool isUseful(const aiVector3D &direction)
{
    return Sound::isFinite(direction) && direction.Length() > Tiny;
}

/// The space at this place that looks along the direction by its -z.
aiMatrix4x4 spaceOf(const aiVector3D &place, const aiVector3D &direction, const aiVector3D &up)
{
    const aiVector3D z = direction / -direction.Length();
    aiVector3D x = isUseful(up) ? up ^ z : aiVector3D();
    if (x.Length() < Tiny)
        x = (std::abs(z.y) < 0.9F ? aiVector3D(0, 1, 0) : aiVector3D(1, 0, 0)) ^ z;
    x.Normalize();
    const aiVector3D y = z ^ x;
    return {x.x, y.x, z.x, place.x, x.y, y.y, z.y, place.y, x.z, y.z, z.z, place.z, 0, 0, 0, 1};
}

/// Some loaders say the place twice: at the camera and at its node.
bool isPlaceOf(const aiNode &node, const aiVector3D &place)
{
    const aiMatrix4x4 &matrix = node.mTransformation;
    const aiVector3D ofNode(matrix.a4, matrix.b4, matrix.c4);
    return (ofNode - place).Length() <= 1e-3F * place.Length();
}

} // namespace

SightTable::SightTable(const aiScene &scene, const SceneTree &tree)
    : m_scene(scene),
      m_cameraOfItem(placesOf(numbersByName(scene.mCameras, scene.mNumCameras), tree)),
      m_lightOfItem(placesOf(numbersByName(scene.mLights, scene.mNumLights), tree))
{}

bool SightTable::turnOf(size_t item, const aiNode &node, aiMatrix4x4 &turn) const
{
    aiVector3D place, direction, up;
    if (m_cameraOfItem[item] >= 0) {
        const aiCamera &camera = *m_scene.mCameras[m_cameraOfItem[item]];
        place = camera.mPosition, direction = camera.mLookAt, up = camera.mUp;
    } else if (m_lightOfItem[item] >= 0) {
        const aiLight &light = *m_scene.mLights[m_lightOfItem[item]];
        place = light.mPosition, direction = light.mDirection, up = light.mUp;
    }
    if (!isUseful(direction))
        direction = aiVector3D(0, 0, -1);
    if (!Sound::isFinite(place) || isPlaceOf(node, place))
        place = aiVector3D();
    turn = spaceOf(place, direction, up);
    return !turn.IsIdentity();
}

void SightTable::aim(SceneTree &tree) const
{
    std::vector<SceneTree::Item> &items = tree.items();
    std::vector<bool> isTurned(items.size(), false);
    for (size_t i = 0; i < items.size(); ++i) {
        const bool hasSight = m_cameraOfItem[i] >= 0 || m_lightOfItem[i] >= 0;
        aiMatrix4x4 turn;
        const size_t parent = size_t(items[i].parent);
        // Below a parent that was turned it stays where it was.
        if (items[i].parent >= 0 && isTurned[parent]) {
            aiMatrix4x4 back;
            turnOf(parent, *items[parent].node, back);
            items[i].local = back.Inverse() * items[i].local;
        }
        isTurned[i] = hasSight && items[i].node->mNumMeshes == 0 && turnOf(i, *items[i].node, turn);
        if (isTurned[i])
            items[i].local = items[i].local * turn;
    }
}

void SightTable::sendCameras(FlatWriter &writer) const
{
    static const aiCamera usual;
    writer.word(m_scene.mNumCameras);
    for (unsigned i = 0; i < m_scene.mNumCameras; ++i)
        sendCamera(m_scene.mCameras[i] ? *m_scene.mCameras[i] : usual, writer);
}

/// The library keeps the whole horizontal angle of a perspective, and half of the width of what is none.
void SightTable::sendCamera(const aiCamera &camera, FlatWriter &writer)
{
    const bool isPerspective = !(camera.mOrthographicWidth > 0);
    const float aspect = Sound::within(camera.mAspect, 0.01F, 100, 0);
    const float ratio = aspect > 0 ? aspect : 1;
    const float across = Sound::within(camera.mHorizontalFOV, 0.001F, Pi - 0.001F, 0.8F);
    writer.byte(isPerspective ? 1 : 0);
    writer.single(2 * std::atan(std::tan(across / 2) / ratio));
    writer.single(Sound::within(2 * camera.mOrthographicWidth / ratio, Tiny, 1e9F, 2));
    writer.single(aspect);
    const float zNear = Sound::within(camera.mClipPlaneNear, Tiny, 1e9F, 0.1F);
    writer.single(zNear);
    writer.single(Sound::within(camera.mClipPlaneFar, zNear * 1.001F, 1e12F, zNear * 1000));
}

void SightTable::sendLights(FlatWriter &writer) const
{
    static const aiLight usual;
    writer.word(m_scene.mNumLights);
    for (unsigned i = 0; i < m_scene.mNumLights; ++i)
        sendLight(m_scene.mLights[i] ? *m_scene.mLights[i] : usual, writer);
}

/// The library multiplies the colour by the intensity. Kinds of light that have no direction count as points.
void SightTable::sendLight(const aiLight &light, FlatWriter &writer)
{
    const auto kind = light.mType == aiLightSource_DIRECTIONAL ? flat::Light::Directional
                      : light.mType == aiLightSource_SPOT      ? flat::Light::Spot
                                                               : flat::Light::Point;
    const aiColor3D &color = light.mColorDiffuse;
    const float brightest = std::max({color.r, color.g, color.b});
    const float intensity = Sound::within(brightest, Tiny, 1e9F, 1);
    writer.byte(uint8_t(kind));
    for (const float part : {color.r, color.g, color.b})
        writer.single(Sound::within(part / intensity, 0, 1, brightest > 0 ? 0 : 1));
    writer.single(intensity);
    writer.single(Sound::within(light.mAngleOuterCone / 2, 0.001F, Pi / 2, Pi / 4));
}
