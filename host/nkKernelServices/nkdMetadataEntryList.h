#pragma once

#include "nkdMetadataEntry.h"

#include <QList>

/// The entries of one set, in the set's order: a live view. It holds the set's id and no entries; reads show
/// the set as it is now, and remove, append and clear write through, undoably, one change each.
class NK_KERNEL_SERVICES_EXPORT nkdMetadataEntryList
{
public:
    /// Walks the view by position. Valid while the set's entries do not change.
    class const_iterator
    {
    public:
        const_iterator(const nkdMetadataEntryList *list, int index) : m_list(list), m_index(index) {}
        nkdMetadataEntry operator*() const { return m_list->at(m_index); }
        const_iterator &operator++()
        {
            ++m_index;
            return *this;
        }
        bool operator==(const const_iterator &other) const { return m_index == other.m_index; }
        bool operator!=(const const_iterator &other) const { return m_index != other.m_index; }

    private:
        const nkdMetadataEntryList *m_list;
        int m_index;
    };

    /// The view of nothing: size 0, ignores writes.
    nkdMetadataEntryList() = default;
    /// The view of the set with this id.
    explicit nkdMetadataEntryList(quint64 setId) : m_setId(setId) {}

    int size() const;
    bool isEmpty() const { return size() == 0; }
    /// The entry at index; null outside 0..size()-1. O(1).
    nkdMetadataEntry at(int index) const;
    nkdMetadataEntry operator[](int index) const { return at(index); }
    const_iterator begin() const { return const_iterator(this, 0); }
    const_iterator end() const { return const_iterator(this, size()); }

    /// The entry with this key (case-sensitive), tags included; null if absent.
    nkdMetadataEntry find(const QString &key) const;
    /// Removes entry from the set, also where the set is locked. metadataChanged(2).
    /// @return true when it was one of this set's entries
    bool remove(const nkdMetadataEntry &entry);
    /// Appends copies of entries, with new ids and keys made unique, in order. Refused while the set is not
    /// editable; null and dead entries are skipped. metadataChanged(2).
    void append(const QList<nkdMetadataEntry> &entries);
    /// Removes every entry, also where the set is locked: one change. metadataChanged(2).
    void clear();

    /// A copy of the handles as they stand now.
    QList<nkdMetadataEntry> data() const;
    operator QList<nkdMetadataEntry>() const { return data(); }

private:
    quint64 m_setId = 0;
};
