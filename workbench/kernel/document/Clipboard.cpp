#include "Clipboard.h"

#include "Store.h"

namespace kernel {

SetCopy copyOfSet(const Store &store, quint32 set)
{
    const SetRecord &record = store.set(set);
    SetCopy copy{store.setName(set), record.color, {}, false};
    copy.entries.reserve(size_t(record.entries.size()));
    for (const Slot entry : record.entries.slots()) {
        copy.entries.push_back({store.key(entry), store.entry(entry).value});
    }
    return copy;
}

void Clipboard::setEntries(std::vector<EntryCopy> entries)
{
    m_entries = std::move(entries);
    m_firstEntryId = IdSource::take(quint32(m_entries.size()));
}

QList<quint64> Clipboard::entryIds() const
{
    QList<quint64> ids;
    ids.reserve(int(m_entries.size()));
    for (size_t index = 0; index < m_entries.size(); ++index) {
        ids.append(m_firstEntryId + index);
    }
    return ids;
}

const EntryCopy *Clipboard::entry(quint64 id) const
{
    const bool isHere = id >= m_firstEntryId && id - m_firstEntryId < m_entries.size();
    return isHere ? &m_entries[size_t(id - m_firstEntryId)] : nullptr;
}

void Clipboard::clear()
{
    m_sets.clear();
    m_entries.clear();
}

} // namespace kernel
