#include "table/nkMetadataKeyValueRootModelItem.h"

#include "table/nkMetadataKeyValueModelItem.h"

namespace {

QSet<quint64> idsOf(const QList<nkdMetadataSet> &sets)
{
    QSet<quint64> ids;
    ids.reserve(sets.size());
    for (const nkdMetadataSet &set : sets) {
        ids.insert(set.getObjectId());
    }
    return ids;
}

/// The sets without the second and later places of those that stand in the list more than once: two rows of
/// one entry would share their identity.
QList<nkdMetadataSet> eachOnce(const QList<nkdMetadataSet> &sets, int distinct)
{
    if (sets.size() == distinct) {
        return sets;
    }
    QList<nkdMetadataSet> once;
    QSet<quint64> seen;
    for (const nkdMetadataSet &set : sets) {
        if (!seen.contains(set.getObjectId())) {
            seen.insert(set.getObjectId());
            once.append(set);
        }
    }
    return once;
}

int countEntries(const QList<nkdMetadataSet> &sets)
{
    int count = 0;
    for (const nkdMetadataSet &set : sets) {
        count += set.getEntries().size();
    }
    return count;
}

void appendRows(QList<QNKModelItem *> &rows, const nkdMetadataSet &set)
{
    const nkdMetadataEntryList entries = set.getEntries();
    const bool isEditable = set.isEditable();
    const int count = entries.size();
    for (int i = 0; i < count; ++i) {
        auto *row = new nkMetadataKeyValueModelItem(set, entries.at(i));
        row->setEditable(isEditable);
        rows.append(row);
    }
}

} // namespace

nkMetadataKeyValueRootModelItem::nkMetadataKeyValueRootModelItem() = default;

nkMetadataKeyValueRootModelItem::nkMetadataKeyValueRootModelItem(const QList<nkdMetadataSet> &sets)
    : m_sets(sets), m_ids(idsOf(sets))
{}

nkMetadataKeyValueRootModelItem::~nkMetadataKeyValueRootModelItem() = default;

void nkMetadataKeyValueRootModelItem::setSets(const QList<nkdMetadataSet> &sets)
{
    if (m_sets.isSharedWith(sets)) {
        return;
    }
    m_sets = sets;
    m_ids = idsOf(sets);
}

void nkMetadataKeyValueRootModelItem::addSets(const QList<nkdMetadataSet> &sets)
{
    for (const nkdMetadataSet &set : sets) {
        if (!m_ids.contains(set.getObjectId())) {
            m_ids.insert(set.getObjectId());
            m_sets.append(set);
        }
    }
}

QVariant nkMetadataKeyValueRootModelItem::getClassName() const
{
    return QStringLiteral("nkMetadataKeyValueRootModelItem");
}

void nkMetadataKeyValueRootModelItem::reload()
{
    const QList<nkdMetadataSet> sets = eachOnce(m_sets, m_ids.size());
    QList<QNKModelItem *> rows;
    rows.reserve(countEntries(sets));
    for (const nkdMetadataSet &set : sets) {
        appendRows(rows, set);
    }
    setChildren(rows);
}
