#pragma once

#include "SlotTable.h"

#include <QHash>

#include <vector>

class QNKModelItem;

/// Which row stands behind which slot. A slot stays with its row id as long as the model lives, also while
/// the row is gone; so an index that holds a slot finds the row that has its id now, whatever object that is.
///
/// The table from ids to slots costs time and memory, so it holds only the ids of rows that went until
/// somebody has to find a row by its id. Slots of rows without an id of their own are used again; their
/// generation goes into the internal id, so that an old index does not find the new row.
class RowStore
{
public:
    RowStore() = default;
    ~RowStore();
    Q_DISABLE_COPY(RowStore)

    /// Gives rows and everything below them their slots. Asks for ids only where one may be known.
    void install(const QVector<QNKModelItem *> &rows);
    /// Takes row and everything below it out and remembers their slots by id.
    void uninstall(QNKModelItem *row);
    /// Passes the slot of old to fresh, which has the same id.
    void replace(QNKModelItem *old, QNKModelItem *fresh);

    /// The row behind an index's internal id; null where it is gone.
    QNKModelItem *row(quintptr internalId) const;
    /// What an index of an installed row holds.
    quintptr internalId(const QNKModelItem *row) const;
    /// Whether any row stands below another one.
    bool hasNestedRows() const { return m_nested > 0; }
    /// The row with this id; null where there is none.
    QNKModelItem *find(const RowId &id);

    /// Keeps a row that left the model until emptyGraveyard(): one of its operations may still run.
    void bury(QNKModelItem *row);
    void emptyGraveyard();

private:
    void installOne(QNKModelItem *row);
    static bool isNested(const QNKModelItem *row);
    int freshSlot();
    void release(int slot);
    void indexIds();

    std::vector<QNKModelItem *> m_rows; // by slot; null: the row is gone
    std::vector<QNKModelItem *> m_buried;
    std::vector<int> m_free;
    QHash<int, quint32> m_generations;
    SlotTable m_slotsById;
    int m_nested = 0;          // installed rows that stand below another one
    bool m_idsIndexed = false; // whether m_slotsById holds all ids, or those of rows that went only
};
