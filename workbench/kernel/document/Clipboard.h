#pragma once

#include "EntryValue.h"

#include <QColor>
#include <QList>
#include <QString>

#include <vector>

namespace kernel {

class Store;

/// What an entry is, apart from where it stands.
struct EntryCopy
{
    QString key;
    EntryValue value;
};

/// What a set is, apart from its assignments and asset.
struct SetCopy
{
    QString name;
    QColor color;
    std::vector<EntryCopy> entries;
    /// Copies within the scene are not locked; sets in files may be.
    bool locked = false;
};

/// The copy of a living set as it is now, not locked.
SetCopy copyOfSet(const Store &store, quint32 set);

/// The set clipboard and the entry clipboard: contents, not handles. Copied entries have ids of their own, in
/// no scene, under which they can be read.
class Clipboard
{
public:
    const std::vector<SetCopy> &sets() const { return m_sets; }
    void setSets(std::vector<SetCopy> sets) { m_sets = std::move(sets); }

    const std::vector<EntryCopy> &entries() const { return m_entries; }
    /// Gives the entries new ids.
    void setEntries(std::vector<EntryCopy> entries);
    QList<quint64> entryIds() const;
    /// The copied entry with this id; null where there is none, or not any more.
    const EntryCopy *entry(quint64 id) const;

    void clear();

private:
    std::vector<SetCopy> m_sets;
    std::vector<EntryCopy> m_entries;
    quint64 m_firstEntryId = 0;
};

} // namespace kernel
