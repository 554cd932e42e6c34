#include "EntryReading.h"

#include "Document.h"
#include "Store.h"

namespace kernel {

EntryReading::EntryReading(const Document &document, quint64 id)
{
    const Store &store = document.store();
    const Slot slot = store.entrySlot(id);
    if (slot != NoSlot) {
        m_key = &store.key(slot);
        m_value = &store.entry(slot).value;
    } else if (const EntryCopy *copied = document.clipboard().entry(id)) {
        m_key = &copied->key;
        m_value = &copied->value;
    }
}

std::vector<EntryCopy> copiesOf(const Document &document, const QList<nkdMetadataEntry> &entries)
{
    std::vector<EntryCopy> copies;
    copies.reserve(size_t(entries.size()));
    for (const nkdMetadataEntry &entry : entries) {
        const EntryReading reading(document, entry.getObjectId());
        if (reading.isReadable()) {
            copies.push_back(reading.copy());
        }
    }
    return copies;
}

} // namespace kernel
