#include "RowStore.h"

#include <nkQt4Ext/QNKModelItem.h>

namespace {
constexpr int GenerationShift = 32;

int slotOf(quintptr internalId)
{
    return int(quint32(quint64(internalId)));
}
} // namespace

RowStore::~RowStore()
{
    emptyGraveyard();
}

void RowStore::install(const QVector<QNKModelItem *> &rows)
{
    const size_t needed = m_rows.size() + size_t(rows.size());
    if (needed > m_rows.capacity())
        m_rows.reserve(qMax(needed, m_rows.capacity() * 2));
    for (QNKModelItem *row : rows) {
        installOne(row);
        if (!row->m_children.isEmpty())
            install(row->m_children);
    }
}

void RowStore::installOne(QNKModelItem *row)
{
    RowId id;
    int slot = -1;
    if (m_idsIndexed || !m_slotsById.isEmpty()) {
        id = RowId(row->getId());
        slot = m_slotsById.slot(id);
    }
    const bool duplicate = slot >= 0 && m_rows[size_t(slot)];
    if (slot < 0 || duplicate)
        slot = freshSlot();
    if (m_idsIndexed && !duplicate)
        m_slotsById.insert(id, slot);
    m_rows[size_t(slot)] = row;
    row->m_slot = slot;
    m_nested += int(isNested(row));
}

bool RowStore::isNested(const QNKModelItem *row)
{
    return row->m_parent && row->m_parent->m_parent;
}

int RowStore::freshSlot()
{
    if (!m_free.empty()) {
        const int slot = m_free.back();
        m_free.pop_back();
        return slot;
    }
    m_rows.push_back(nullptr);
    return int(m_rows.size()) - 1;
}

void RowStore::uninstall(QNKModelItem *row)
{
    for (QNKModelItem *child : qAsConst(row->m_children))
        uninstall(child);
    const int slot = row->m_slot;
    if (slot < 0)
        return;
    m_rows[size_t(slot)] = nullptr;
    row->m_slot = -1;
    m_nested -= int(isNested(row));
    if (m_slotsById.insert(RowId(row->getId()), slot) != slot)
        release(slot);
}

/// Makes the slot of a row without an id of its own usable again.
void RowStore::release(int slot)
{
    ++m_generations[slot];
    m_free.push_back(slot);
}

void RowStore::replace(QNKModelItem *old, QNKModelItem *fresh)
{
    fresh->m_slot = old->m_slot;
    old->m_slot = -1;
    m_rows[size_t(fresh->m_slot)] = fresh;
}

QNKModelItem *RowStore::row(quintptr internalId) const
{
    const size_t slot = size_t(slotOf(internalId));
    if (slot >= m_rows.size())
        return nullptr;
    QNKModelItem *found = m_rows[slot];
    if (found && !m_generations.isEmpty() && this->internalId(found) != internalId)
        return nullptr;
    return found;
}

quintptr RowStore::internalId(const QNKModelItem *row) const
{
    if (m_generations.isEmpty())
        return quintptr(row->m_slot);
    const quint64 generation = m_generations.value(row->m_slot, 0);
    return quintptr(generation << GenerationShift | quint64(row->m_slot));
}

QNKModelItem *RowStore::find(const RowId &id)
{
    if (id.isNull())
        return nullptr;
    if (!m_idsIndexed)
        indexIds();
    const int slot = m_slotsById.slot(id);
    return slot < 0 ? nullptr : m_rows[size_t(slot)];
}

void RowStore::indexIds()
{
    m_slotsById.reserve(int(m_rows.size()));
    for (size_t slot = 0; slot < m_rows.size(); ++slot) {
        if (m_rows[slot])
            m_slotsById.insert(RowId(m_rows[slot]->getId()), int(slot));
    }
    m_idsIndexed = true;
}

void RowStore::bury(QNKModelItem *row)
{
    row->m_parent = nullptr;
    row->m_row = -1;
    m_buried.push_back(row);
}

void RowStore::emptyGraveyard()
{
    while (!m_buried.empty()) { // a row's destructor may lead to further burials
        const std::vector<QNKModelItem *> rows = std::move(m_buried);
        m_buried.clear();
        qDeleteAll(rows);
    }
}
