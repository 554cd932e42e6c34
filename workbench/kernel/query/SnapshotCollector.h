#pragma once

#include "QuerySnapshot.h"
#include "kernel/document/SlotList.h"

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QElapsedTimer>
#include <QVector>

#include <memory>

namespace kernel {

class Document;
class Store;

/// Takes a snapshot of the open scene, a slice of time at once. To be thrown away as soon as the scene changes
/// between two slices. GUI thread only.
class NK_KERNEL_SERVICES_EXPORT SnapshotCollector
{
public:
    /// @param withObjectNames whether the names of the sets' objects are needed, too
    SnapshotCollector(const Document &document, bool withObjectNames);

    /// Goes on for about this long.
    /// @param milliseconds negative: until it is done
    /// @return true when the snapshot is complete
    bool work(int milliseconds);
    /// The complete snapshot; the collector is spent.
    std::shared_ptr<const QuerySnapshot> take() { return std::move(m_snapshot); }

private:
    const Store &store() const;
    /// One step: some entries, a set or an object. False where nothing is left.
    bool step();
    void takeEntries();
    void beginSet(Slot set);
    void takeObjects(Slot set);
    void visit(Slot object);
    void takeKey(quint32 key);
    void wait(const QVector<Slot> &objects);

    const Document &m_document;
    std::shared_ptr<QuerySnapshot> m_snapshot;
    QVector<Slot> m_sharedSets;
    int m_nextSharedSet = 0;
    /// The objects that are still to be visited, the next one last.
    QVector<Slot> m_waiting;
    /// Of the set that is being taken.
    QVector<Slot> m_entries;
    int m_nextEntry = 0;
    bool m_begun = false;
};

} // namespace kernel
