#include <nkKernelServicesGUI/nkMetadataSetItemFilter.h>

#include "RowSets.h"

#include <algorithm>

nkMetadataSetItemFilter::nkMetadataSetItemFilter(QObject *parent) : QNKItemFilter(parent)
{
    setEnabled(false);
}

nkMetadataSetItemFilter::~nkMetadataSetItemFilter() = default;

void nkMetadataSetItemFilter::setMetadataSets(const QList<nkdMetadataSet> &sets)
{
    QSet<quint64> ids;
    ids.reserve(sets.size());
    for (const nkdMetadataSet &set : sets) {
        ids.insert(set.getObjectId());
    }
    if (ids == m_setIds) {
        return;
    }
    m_setIds = ids;
    // A filter that is switched off answers the same as before.
    if (isEnabled()) {
        Q_EMIT filterChanged();
    }
}

bool nkMetadataSetItemFilter::accepts(const QModelIndex &sourceIndex) const
{
    if (m_setIds.isEmpty()) {
        return false;
    }
    const QList<nkdMetadataSet> sets = RowSets::of(sourceIndex);
    return std::any_of(sets.cbegin(), sets.cend(),
                       [this](const nkdMetadataSet &set) { return m_setIds.contains(set.getObjectId()); });
}
