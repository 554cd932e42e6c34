#include "table/nkMetadataKeyValueHeader.h"

#include "table/nkMetadataKeyValueColumns.h"

#include <nkQt4Ext/nkPlatform.h>

#include <QResizeEvent>

#include <algorithm>

using namespace nkMetadataKeyValue;

namespace {

/// Of a section at 96 dots an inch, in pixels.
constexpr int MinimumSectionSize = 36;

/// Rows that ResizeToContents looks at; all of them would cost seconds in long tables.
constexpr int MeasuredRows = 100;

} // namespace

nkMetadataKeyValueHeader::nkMetadataKeyValueHeader(QNKTreeView *view, QWidget *parent)
    : nkHeaderView<QNKTreeView>(view, parent),
      m_sharingColumns{AssignmentColumn, KeyColumn, ValueColumn},
      m_selfSizingColumns{IconColumn, TypeColumn}
{
    setMinimumSectionSize(smallestSectionSize());
}

nkMetadataKeyValueHeader::~nkMetadataKeyValueHeader() = default;

int nkMetadataKeyValueHeader::smallestSectionSize() const
{
    return int(MinimumSectionSize * nkPlatform::getDpiScaleX());
}

void nkMetadataKeyValueHeader::initialise()
{
    setSectionsMovable(true);
    setFirstSectionMovable(true);
    setSectionsClickable(true);
    setStretchLastSection(true);
    setResizeContentsPrecision(MeasuredRows);
    if (view()) {
        view()->setColumnHidden(AssignmentColumn, true);
    }
    moveSection(visualIndex(TypeColumn), 2);
    for (int column : m_selfSizingColumns) {
        setSectionResizeMode(column, QHeaderView::ResizeToContents);
    }
    for (int column : m_sharingColumns) {
        setSectionResizeMode(column, QHeaderView::Interactive);
    }
    setShowToolButton(true);
}

void nkMetadataKeyValueHeader::setColumnVisibility(int idxPos, bool bToggle)
{
    Q_EMIT columnVisibilityChanged(idxPos, bToggle);
    if (view()) {
        view()->setColumnHidden(idxPos, !bToggle);
    }
    updateMaximumSectionSize(width());
}

bool nkMetadataKeyValueHeader::isColumnVisible(int idxPos) const
{
    return view() && !view()->isColumnHidden(idxPos);
}

QAbstractItemModel *nkMetadataKeyValueHeader::getModel() const
{
    return view() ? view()->model() : nullptr;
}

void nkMetadataKeyValueHeader::resizeEvent(QResizeEvent *event)
{
    nkHeaderView<QNKTreeView>::resizeEvent(event);
    updateMaximumSectionSize(event->size().width());
}

void nkMetadataKeyValueHeader::updateMaximumSectionSize(int headerWidth)
{
    int taken = 0;
    for (int column : m_selfSizingColumns) {
        taken += isColumnVisible(column) ? sectionSize(column) : 0;
    }
    const auto sharing = std::count_if(m_sharingColumns.begin(), m_sharingColumns.end(),
                                       [this](int column) { return isColumnVisible(column); });
    const int share = (headerWidth - taken) / std::max(int(sharing), 1) - 1;
    setMaximumSectionSize(std::max(minimumSectionSize(), share));
}
