#include "SnapshotCollector.h"

#include "kernel/document/Document.h"
#include "kernel/document/Store.h"

#include <algorithm>

namespace kernel {

namespace {

/// The entries of one step, and the steps between two looks at the clock: a few microseconds each.
constexpr int EntriesPerStep = 256;
constexpr int StepsPerLook = 16;

} // namespace

SnapshotCollector::SnapshotCollector(const Document &document, bool withObjectNames)
    : m_document(document), m_snapshot(std::make_shared<QuerySnapshot>())
{
    m_snapshot->hasObjectNames = withObjectNames;
}

const Store &SnapshotCollector::store() const
{
    return m_document.store();
}

bool SnapshotCollector::work(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    if (!m_begun) {
        m_begun = true;
        m_sharedSets = store().sharedSets().slots();
        wait(store().topLevelMaterials().slots());
        wait(store().topLevelNodes().slots());
    }
    do {
        for (int count = 0; count < StepsPerLook; ++count) {
            if (!step()) {
                return true;
            }
        }
    } while (milliseconds < 0 || clock.elapsed() < milliseconds);
    return false;
}

bool SnapshotCollector::step()
{
    if (m_nextEntry < m_entries.size()) {
        takeEntries();
    } else if (m_nextSharedSet < m_sharedSets.size()) {
        beginSet(m_sharedSets.at(m_nextSharedSet++));
    } else if (!m_waiting.isEmpty()) {
        visit(m_waiting.takeLast());
    } else {
        return false;
    }
    return true;
}

void SnapshotCollector::wait(const QVector<Slot> &objects)
{
    std::reverse_copy(objects.cbegin(), objects.cend(), std::back_inserter(m_waiting));
}

void SnapshotCollector::visit(Slot object)
{
    const ObjectRecord &record = store().object(object);
    wait(record.children.slots());
    if (!store().set(record.objectSet).entries.isEmpty()) {
        beginSet(record.objectSet);
    }
}

void SnapshotCollector::beginSet(Slot slot)
{
    QuerySnapshot::Set set;
    set.id = store().idOf(slot);
    set.name = store().setName(slot);
    m_entries = store().set(slot).entries.slots();
    m_nextEntry = 0;
    set.firstEntry = m_snapshot->entries.size();
    set.endEntry = set.firstEntry + quint32(m_entries.size());
    set.firstObject = quint32(m_snapshot->objectNames.size());
    if (m_snapshot->hasObjectNames) {
        takeObjects(slot);
    }
    set.endObject = quint32(m_snapshot->objectNames.size());
    m_snapshot->sets.push_back(std::move(set));
    takeEntries();
}

void SnapshotCollector::takeObjects(Slot set)
{
    const Slot owner = store().set(set).owner;
    const QVector<Slot> objects = owner == NoSlot ? store().linkedObjects(set) : QVector<Slot>{owner};
    for (const Slot object : objects) {
        m_snapshot->objectNames.push_back(store().object(object).name);
    }
}

void SnapshotCollector::takeEntries()
{
    const int end = std::min(m_entries.size(), m_nextEntry + EntriesPerStep);
    for (; m_nextEntry < end; ++m_nextEntry) {
        const EntryRecord &record = store().entry(m_entries.at(m_nextEntry));
        takeKey(record.key);
        m_snapshot->entries.append({record.value, record.key});
    }
}

void SnapshotCollector::takeKey(quint32 key)
{
    std::vector<QString> &keys = m_snapshot->keys;
    if (key >= keys.size()) {
        keys.resize(std::max<size_t>(key + 1, keys.size() * 2));
    }
    if (keys[key].isNull()) {
        keys[key] = store().keys().text(key);
    }
}

} // namespace kernel
