#pragma once

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkQt4Ext/QNKModelItem.h>

#include <QList>
#include <QSet>

/// The invisible root of the key/value table: the sets that are shown, and their entries as rows.
///
/// Sets stand in the order they were added, entries in the host's order inside each set. A change of the sets
/// shows when the model is reloaded.
class nkMetadataKeyValueRootModelItem : public QNKModelItem
{
public:
    nkMetadataKeyValueRootModelItem();
    explicit nkMetadataKeyValueRootModelItem(const QList<nkdMetadataSet> &sets);
    ~nkMetadataKeyValueRootModelItem() override;

    /// The shown sets, in order.
    QList<nkdMetadataSet> sets() const { return m_sets; }
    /// Replaces the shown sets; nothing happens where the list shares its data with the present one. A set
    /// that stands in the list more than once makes rows once.
    void setSets(const QList<nkdMetadataSet> &sets);
    /// Appends those of the sets that are not shown yet, in order.
    void addSets(const QList<nkdMetadataSet> &sets);

    QVariant getClassName() const override;
    /// Makes one row an entry of the shown sets, all handed over at once.
    void reload() override;

private:
    QList<nkdMetadataSet> m_sets;
    /// The ids of m_sets, so that adding set after set does not search the list each time.
    QSet<quint64> m_ids;
};
