#include <nkKernelServicesGUI/nkMetadataStateItemFilter.h>

#include "RowSets.h"

#include <nkKernelServicesGUI/nkMetadataFilterModel.h>

#include <algorithm>

nkMetadataStateItemFilter::nkMetadataStateItemFilter(QObject *parent) : QNKIntegerFilter(parent) {}

nkMetadataStateItemFilter::~nkMetadataStateItemFilter() = default;

bool nkMetadataStateItemFilter::acceptsIntegers(const QModelIndex &sourceIndex) const
{
    const QList<int> states = integers();
    const QList<nkdMetadataSet> sets = RowSets::of(sourceIndex);
    return std::any_of(sets.cbegin(), sets.cend(), [&states](const nkdMetadataSet &set) {
        return nkMetadataFilterModel::matchesStates(set, states);
    });
}
