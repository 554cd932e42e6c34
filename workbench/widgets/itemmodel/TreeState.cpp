#include "TreeState.h"

#include <QHash>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QTreeView>

#include <algorithm>

namespace {

/// How many rows on either side of the current one are remembered as its heirs. Where even those all went,
/// the row at the same position takes over.
constexpr int HeirsOnEachSide = 200;

/// Rows of one parent, collected one by one and turned into ranges.
class RangeBuilder
{
public:
    void add(const QModelIndex &index)
    {
        const QModelIndex parent = index.parent();
        if (!m_rows || parent != m_parent) {
            m_parent = parent;
            m_rows = &m_rowsByParent[parent];
        }
        m_sorted = m_sorted && (m_rows->isEmpty() || m_rows->last() < index.row());
        m_rows->append(index.row());
    }

    void appendTo(QItemSelection &selection, const QAbstractItemModel *model, int left, int right)
    {
        for (auto rows = m_rowsByParent.begin(); rows != m_rowsByParent.end(); ++rows) {
            if (!m_sorted)
                std::sort(rows->begin(), rows->end());
            for (int i = 0; i < rows->size();) {
                const int first = i++;
                while (i < rows->size() && rows->at(i) <= rows->at(i - 1) + 1)
                    ++i;
                selection.append(QItemSelectionRange(model->index(rows->at(first), left, rows.key()),
                                                     model->index(rows->at(i - 1), right, rows.key())));
            }
        }
    }

private:
    QHash<QModelIndex, QVector<int>> m_rowsByParent;
    QVector<int> *m_rows = nullptr;
    QModelIndex m_parent;
    bool m_sorted = true;
};

} // namespace

TreeState::TreeState(const QTreeView *view, const RowPlace &place, QSet<Slot> &expanded)
{
    m_parents = place.parents();
    for (Slot slot : qAsConst(m_parents)) {
        const QModelIndex index = place.index(slot);
        if (!index.isValid())
            continue;
        if (view->isExpanded(index))
            expanded.insert(slot);
        else
            expanded.remove(slot);
    }
    takeSelection(view, place);
    takeCurrent(view, place);
    takeScroll(view, place);
}

void TreeState::takeSelection(const QTreeView *view, const RowPlace &place)
{
    const QItemSelection selection = view->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        if (!range.isValid())
            continue;
        Range taken{range.left(), range.right(), {}};
        taken.rows.reserve(range.height());
        const QModelIndex parent = range.parent();
        for (int row = range.top(); row <= range.bottom(); ++row)
            taken.rows.append(place.slot(range.model()->index(row, range.left(), parent)));
        m_selection.append(taken);
    }
}

void TreeState::takeCurrent(const QTreeView *view, const RowPlace &place)
{
    const QModelIndex current = view->currentIndex();
    m_current = place.slot(current);
    if (m_current == RowPlace::None)
        return;
    m_currentColumn = current.column();
    m_currentRow = current.row();
    const QModelIndex parent = current.parent();
    m_currentParent = place.slot(parent);
    const int rows = view->model()->rowCount(parent);
    const int last = qMin(rows - 1, m_currentRow + HeirsOnEachSide);
    for (int row = m_currentRow + 1; row <= last; ++row)
        m_besideCurrent.append(place.slot(current.sibling(row, m_currentColumn)));
    const int first = qMax(0, m_currentRow - HeirsOnEachSide);
    for (int row = m_currentRow - 1; row >= first; --row)
        m_besideCurrent.append(place.slot(current.sibling(row, m_currentColumn)));
}

void TreeState::takeScroll(const QTreeView *view, const RowPlace &place)
{
    m_horizontal = view->horizontalScrollBar()->value();
    m_vertical = view->verticalScrollBar()->value();
    const int x = view->isRightToLeft() ? view->viewport()->width() - 1 : 0;
    QModelIndex index = view->indexAt({x, 0});
    m_shownColumn = index.column();
    while (index.isValid()) {
        const int top = view->visualRect(index).top();
        if (top >= view->viewport()->height())
            break;
        m_shown.append({place.slot(index), top});
        index = view->indexBelow(index);
    }
}

void TreeState::expand(QTreeView *view, const RowPlace &place, const QVector<Slot> &parents,
                       const QSet<Slot> &expanded)
{
    for (Slot slot : parents) {
        const QModelIndex index = expanded.contains(slot) ? place.index(slot) : QModelIndex();
        if (index.isValid() && !view->isExpanded(index))
            view->setExpanded(index, true);
    }
}

QItemSelection TreeState::selection(const RowPlace &place, bool &isComplete) const
{
    QItemSelection selection;
    isComplete = true;
    QHash<QPair<int, int>, RangeBuilder> byColumns;
    const QAbstractItemModel *model = nullptr;
    for (const Range &range : m_selection) {
        RangeBuilder &builder = byColumns[{range.left, range.right}];
        for (Slot slot : range.rows) {
            const QModelIndex index = place.index(slot, range.left);
            if (index.isValid()) {
                model = index.model();
                builder.add(index);
            } else {
                isComplete = false;
            }
        }
    }
    for (auto builder = byColumns.begin(); model && builder != byColumns.end(); ++builder)
        builder->appendTo(selection, model, builder.key().first, builder.key().second);
    return selection;
}

QModelIndex TreeState::current(const RowPlace &place) const
{
    return place.index(m_current, m_currentColumn);
}

QModelIndex TreeState::besideCurrent(const RowPlace &place) const
{
    for (Slot slot : m_besideCurrent) {
        const QModelIndex index = place.index(slot, m_currentColumn);
        if (index.isValid())
            return index;
    }
    const QModelIndex parent = place.index(m_currentParent);
    const QAbstractItemModel *top = place.top();
    if (m_currentParent != RowPlace::None && !parent.isValid())
        return {};
    const int rows = top->rowCount(parent);
    if (rows > 0)
        return top->index(qMin(m_currentRow, rows - 1), m_currentColumn, parent);
    return parent.sibling(parent.row(), m_currentColumn);
}

void TreeState::scroll(QTreeView *view, const RowPlace &place, bool byRow) const
{
    const auto isBack = [&](const Shown &shown) {
        return scrollTo(view, place.index(shown.row, m_shownColumn), shown.top);
    };
    if (!byRow || std::none_of(m_shown.begin(), m_shown.end(), isBack))
        view->verticalScrollBar()->setValue(m_vertical);
    view->horizontalScrollBar()->setValue(m_horizontal);
}

/// Scrolls a row to a place in the viewport. @return false where the row is not shown
bool TreeState::scrollTo(QTreeView *view, const QModelIndex &index, int top) const
{
    const QRect rect = index.isValid() ? view->visualRect(index) : QRect(); // carries pending layouts out
    if (rect.isEmpty())
        return false;
    const bool byPixel = view->verticalScrollMode() == QAbstractItemView::ScrollPerPixel;
    const int step = byPixel ? 1 : rect.height();
    view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() + (rect.top() - top) / step);
    return true;
}
