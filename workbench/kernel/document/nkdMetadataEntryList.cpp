#include <nkKernelServices/nkdMetadataEntryList.h>

#include "Document.h"
#include "EntryOperations.h"
#include "EntryReading.h"
#include "HandleLists.h"
#include "Store.h"

using namespace kernel;

namespace {

const SetRecord *findSet(quint64 setId)
{
    return Document::the().store().findSet(setId);
}

} // namespace

int nkdMetadataEntryList::size() const
{
    const SetRecord *set = findSet(m_setId);
    return set ? set->entries.size() : 0;
}

nkdMetadataEntry nkdMetadataEntryList::at(int index) const
{
    const SetRecord *set = findSet(m_setId);
    if (!set || index < 0 || index >= set->entries.size()) {
        return nkdMetadataEntry();
    }
    return nkdMetadataEntry(Document::the().store().idOf(set->entries.at(index)));
}

nkdMetadataEntry nkdMetadataEntryList::find(const QString &key) const
{
    const Store &store = Document::the().store();
    const Slot set = store.setSlot(m_setId);
    return set == NoSlot ? nkdMetadataEntry() : nkdMetadataEntry(store.idOf(store.findKey(set, key)));
}

bool nkdMetadataEntryList::remove(const nkdMetadataEntry &entry)
{
    return EntryOperations::remove(m_setId, entry.getObjectId());
}

void nkdMetadataEntryList::append(const QList<nkdMetadataEntry> &entries)
{
    const Store &store = Document::the().store();
    const Slot set = store.setSlot(m_setId);
    if (set != NoSlot) {
        EntryOperations::append({set}, copiesOf(Document::the(), entries),
                                QT_TRANSLATE_NOOP("Document", "Add Entries"));
    }
}

void nkdMetadataEntryList::clear()
{
    EntryOperations::clear(m_setId);
}

QList<nkdMetadataEntry> nkdMetadataEntryList::data() const
{
    QList<nkdMetadataEntry> entries;
    const Store &store = Document::the().store();
    if (const SetRecord *set = findSet(m_setId)) {
        entries.reserve(set->entries.size());
        for (const Slot entry : set->entries.slots()) {
            entries.append(nkdMetadataEntry(store.idOf(entry)));
        }
    }
    return entries;
}
