#include <interchange/sidecar/SidecarMaker.h>

namespace interchange {

using kernel::Slot;

SidecarMaker::SidecarMaker(const SceneSource &source, const ForeignOrigin &origin)
    : m_source(source), m_origin(origin), m_document(kernel::Document::the()), m_store(m_document.store())
{}

Sidecar SidecarMaker::make()
{
    addSets();
    m_sidecar.objects.reserve(m_source.objects().size() + m_origin.gone.size());
    auto object = m_origin.objects.begin();
    for (const SceneSource::ObjectOrigin &origin : m_source.objects())
        addObject(origin, (object++)->key);
    addRuns();
    addGone();
    return std::move(m_sidecar);
}

void SidecarMaker::addSets()
{
    for (const Slot set : m_store.sharedSets().slots()) {
        const kernel::AssetLink &asset = m_store.set(set).asset;
        const auto place = quint32(m_sidecar.sets.size());
        if (asset.state != kernel::AssetState::None)
            m_sidecar.assets.push_back({place, asset.state, asset.assetId, asset.version});
        m_sidecar.sets.push_back(copyOf(set));
        m_sets.insert(m_store.idOf(set), place);
    }
}

void SidecarMaker::addObject(const SceneSource::ObjectOrigin &origin, const QString &key)
{
    const kernel::ObjectRecord &record = m_store.object(m_store.objectSlot(origin.id));
    const kernel::SetRecord &set = m_store.set(record.objectSet);
    Sidecar::Object object;
    object.isMaterial = origin.list == SceneSource::List::Materials;
    object.key = key;
    object.name = origin.name;
    object.isLocked = record.locked;
    if (record.name != origin.name)
        object.renamed = record.name;
    if (!set.entries.isEmpty() || set.locked || set.color != kernel::Store::newSetColor()) {
        object.own = copyOf(record.objectSet);
        object.own->name.clear();
    }
    m_objects.insert(origin.id, quint32(m_sidecar.objects.size()));
    m_sidecar.objects.push_back(std::move(object));
}

void SidecarMaker::addRuns()
{
    quint64 last = 0;
    const auto assignments = m_document.assignments();
    for (const auto &assignment : assignments) {
        if (assignment.setId != last)
            m_sidecar.runs.push_back({m_sets.value(assignment.setId), {}});
        last = assignment.setId;
        m_sidecar.runs.back().objects.push_back(m_objects.value(assignment.objectId));
    }
}

/// Behind all that live, each with runs of its own.
void SidecarMaker::addGone()
{
    for (const ForeignOrigin::Gone &gone : m_origin.gone) {
        const auto place = quint32(m_sidecar.objects.size());
        m_sidecar.objects.push_back(gone.object);
        for (const quint64 id : gone.setIds) {
            const auto set = m_sets.constFind(id);
            if (set != m_sets.constEnd())
                m_sidecar.runs.push_back({*set, {place}});
        }
    }
}

kernel::SetCopy SidecarMaker::copyOf(Slot set) const
{
    const kernel::SetRecord &record = m_store.set(set);
    kernel::SetCopy copy{m_store.setName(set), record.color, {}, record.locked};
    copy.entries.reserve(size_t(record.entries.size()));
    for (const Slot entry : record.entries.slots())
        copy.entries.push_back({m_store.key(entry), m_store.entry(entry).value});
    return copy;
}

} // namespace interchange
