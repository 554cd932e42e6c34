#include <interchange/SceneSource.h>

#include <algorithm>

namespace interchange {

namespace {

/// Ids are given out in ascending order, so this nearly always appends.
template <typename Origin>
void insert(std::vector<Origin> &origins, const Origin &origin)
{
    const auto less = [](const Origin &a, const Origin &b) { return a.id < b.id; };
    if (origins.empty() || origins.back().id < origin.id)
        origins.push_back(origin);
    else
        origins.insert(std::upper_bound(origins.begin(), origins.end(), origin, less), origin);
}

template <typename Origin>
const Origin *find(const std::vector<Origin> &origins, quint64 id)
{
    const auto less = [](const Origin &origin, quint64 wanted) { return origin.id < wanted; };
    const auto found = std::lower_bound(origins.begin(), origins.end(), id, less);
    return found != origins.end() && found->id == id ? &*found : nullptr;
}

} // namespace

void SceneSource::reserve(size_t objectCount, size_t entryCount)
{
    m_objects.reserve(objectCount);
    m_entries.reserve(entryCount);
}

void SceneSource::add(const ObjectOrigin &origin)
{
    insert(m_objects, origin);
}

void SceneSource::add(const EntryOrigin &origin)
{
    insert(m_entries, origin);
}

const SceneSource::ObjectOrigin *SceneSource::object(quint64 id) const
{
    return find(m_objects, id);
}

const SceneSource::EntryOrigin *SceneSource::entry(quint64 id) const
{
    return find(m_entries, id);
}

} // namespace interchange
