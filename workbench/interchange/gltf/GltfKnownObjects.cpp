#include <interchange/gltf/GltfKnownObjects.h>

namespace interchange {

void GltfKnownObjects::add(const Origin &origin)
{
    std::vector<Place> &places = m_places[size_t(origin.list)];
    if (places.size() <= origin.index)
        places.resize(std::max(size_t(origin.index) + 1, m_source.objects().size()));
    places[origin.index].origin = &origin;
}

bool GltfKnownObjects::find(SceneSource::List list, quint32 index, const JsonValue &value)
{
    std::vector<Place> &places = m_places[size_t(list)];
    if (index >= places.size() || !places[index].origin)
        return false;
    const JsonSpan &old = places[index].origin->span;
    places[index].isFound = value.raw()
                            == std::string_view(m_source.json.constData() + old.offset, old.length);
    return places[index].isFound;
}

bool GltfKnownObjects::has(const Origin &origin) const
{
    const std::vector<Place> &places = m_places[size_t(origin.list)];
    return origin.index < places.size() && places[origin.index].isFound;
}

} // namespace interchange
