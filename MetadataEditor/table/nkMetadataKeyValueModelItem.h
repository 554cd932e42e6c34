#pragma once

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkQt4Ext/QNKModelItem.h>

/// One row of the key/value table: one entry of one set.
///
/// The row keeps the ids of its two handles and nothing else; a handle is its id, and as objects the two
/// would cost a million rows 300 bytes each. Texts, colours and edit data are made when a cell is first asked
/// for and remembered until reload; icon, tool tip and the handles themselves are answered live.
class nkMetadataKeyValueModelItem : public QNKModelItem
{
public:
    /// The row of entry, which stands in set. Can be dragged, takes no drops, is marked editable.
    nkMetadataKeyValueModelItem(const nkdMetadataSet &set, const nkdMetadataEntry &entry);
    ~nkMetadataKeyValueModelItem() override;

    nkdMetadataSet set() const { return nkdMetadataSet(m_setId); }
    nkdMetadataEntry entry() const { return nkdMetadataEntry(m_entryId); }

    QVariant data(int role, int column) const override;
    /// A tag's value and type never; else whether the set is editable.
    bool getEditable(int column) const override;
    /// The entry's object id, an unsigned 64-bit number.
    QVariant getId() const override;
    /// Writes the edit to the host, inside one undo scope. This row may be gone when it returns.
    void userDataChanged(int role, int column) override;
    /// One nkMetadataEntryMime.
    void getMimeData(QDataStream &stream) const override;
    void reload() override;

protected:
    QVariant loadData(int role, int column) const override;

private:
    const quint64 m_setId;
    const quint64 m_entryId;
};
