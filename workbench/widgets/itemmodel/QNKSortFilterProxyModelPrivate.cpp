#include "QNKSortFilterProxyModelPrivate.h"

#include "OpenEditor.h"

#include <QAbstractItemView>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

/// More runs than these are announced as one new layout: every run costs its listeners a look at all rows.
constexpr int FewRuns = 32;

/// First and last of a run of places beside each other.
using Places = QPair<int, int>;

QVector<int> placesOf(const ProxyRows &rows, const QVector<int> &sourceRows)
{
    QVector<int> places;
    places.reserve(sourceRows.size());
    for (const int row : sourceRows) {
        if (rows.shows(row))
            places.append(rows.places[row]);
    }
    std::sort(places.begin(), places.end());
    return places;
}

/// @param places ascending
/// @return the runs from the top down
QVector<Places> runsOf(const QVector<int> &places)
{
    QVector<Places> runs;
    for (const int place : places) {
        if (runs.isEmpty() || runs.last().second + 1 != place)
            runs.append({place, place});
        else
            runs.last().second = place;
    }
    return runs;
}

} // namespace

bool QNKSortFilterProxyModel::Private::accepts(int sourceRow, const QModelIndex &sourceParent) const
{
    const QScopedValueRollback<bool> known(knowsAbove, true);
    return q->filterAcceptsRow(sourceRow, sourceParent);
}

bool QNKSortFilterProxyModel::Private::isLess(const QModelIndex &left, const QModelIndex &right) const
{
    return q->lessThan(left, right);
}

bool QNKSortFilterProxyModel::Private::appendKey(const QModelIndex &sourceIndex, QByteArray &key) const
{
    return q->appendSortKey(sourceIndex, key);
}

ProxyRows *QNKSortFilterProxyModel::Private::rowsOf(const QModelIndex &proxyIndex) const
{
    if (!proxyIndex.isValid() || proxyIndex.model() != q || !mapping.source())
        return nullptr;
    auto *const rows = static_cast<ProxyRows *>(proxyIndex.internalPointer());
    mapping.ensureBuilt(*rows);
    return proxyIndex.row() < rows->shown.size() ? rows : nullptr;
}

ProxyRows *QNKSortFilterProxyModel::Private::rowsBelow(const QModelIndex &proxyParent) const
{
    if (!proxyParent.isValid())
        return mapping.top();
    ProxyRows *const rows = proxyParent.column() == 0 ? rowsOf(proxyParent) : nullptr;
    if (!rows)
        return nullptr;
    const int sourceRow = rows->shown[proxyParent.row()];
    const bool isKnown = rows->below.find(sourceRow) != rows->below.end();
    // No list for each of a million rows without children.
    if (!isKnown && !mapping.source()->hasChildren(mapping.sourceIndex(*rows, sourceRow, 0)))
        return nullptr;
    return mapping.rowsBelow(*rows, sourceRow);
}

QModelIndex QNKSortFilterProxyModel::Private::proxyParent(const ProxyRows &rows) const
{
    if (!rows.above)
        return {};
    mapping.ensureBuilt(*rows.above);
    const int place = rows.above->places[rows.row];
    return place == ProxyRows::Hidden ? QModelIndex() : indexOf(*rows.above, place, 0);
}

QModelIndex QNKSortFilterProxyModel::Private::indexOf(const ProxyRows &rows, int place, int column) const
{
    return q->createIndex(place, column, const_cast<ProxyRows *>(&rows));
}

// Layouts -----------------------------------------------------------------------------------------------

void QNKSortFilterProxyModel::Private::save()
{
    m_saved.proxyIndexes = q->persistentIndexList();
    m_saved.sourceIndexes.clear();
    m_saved.sourceIndexes.reserve(m_saved.proxyIndexes.size());
    for (const QModelIndex &index : qAsConst(m_saved.proxyIndexes))
        m_saved.sourceIndexes.append(q->mapToSource(index));
}

void QNKSortFilterProxyModel::Private::restore()
{
    QModelIndexList now;
    now.reserve(m_saved.proxyIndexes.size());
    for (const QPersistentModelIndex &index : qAsConst(m_saved.sourceIndexes))
        now.append(q->mapFromSource(index));
    q->changePersistentIndexList(m_saved.proxyIndexes, now);
    m_saved = {};
}

template <typename Change>
void QNKSortFilterProxyModel::Private::layOut(Change doIt, LayoutChangeHint hint)
{
    if (!mapping.source()) {
        doIt();
        return;
    }
    Q_EMIT q->layoutAboutToBeChanged({}, hint);
    save();
    doIt();
    restore();
    Q_EMIT q->layoutChanged({}, hint);
}

void QNKSortFilterProxyModel::Private::layOutAnew()
{
    layOut([this] { mapping.forgetFilter(); });
}

/// What is being typed into a row that the filter is about to hide is not lost.
void QNKSortFilterProxyModel::Private::commitEditorsOfHidden() const
{
    const QVector<QAbstractItemView *> views = OpenEditor::views();
    for (QAbstractItemView *view : views) {
        const OpenEditor editor = OpenEditor::of(view);
        if (editor.isNull() || editor.isBeingCommitted())
            continue;
        QModelIndex index = editor.index;
        auto above = qobject_cast<const QAbstractProxyModel *>(view->model());
        while (above && above != q) {
            index = above->mapToSource(index);
            above = qobject_cast<const QAbstractProxyModel *>(above->sourceModel());
        }
        if (above && !willShow(q->mapToSource(index)))
            editor.commit(view);
    }
}

/// Whether the filter as it is now, which may not be what is shown, accepts a row.
bool QNKSortFilterProxyModel::Private::willShow(const QModelIndex &sourceIndex) const
{
    for (QModelIndex row = sourceIndex; row.isValid(); row = row.parent()) {
        if (!q->filterAcceptsRow(row.row(), row.parent()) && !willShowBelow(row))
            return false;
    }
    return true;
}

bool QNKSortFilterProxyModel::Private::willShowBelow(const QModelIndex &sourceIndex) const
{
    if (!mapping.isRecursive)
        return false;
    const QModelIndex parent = sourceIndex.sibling(sourceIndex.row(), 0);
    const int rows = mapping.source()->rowCount(parent);
    for (int row = 0; row < rows; ++row) {
        if (q->filterAcceptsRow(row, parent) || willShowBelow(mapping.source()->index(row, 0, parent)))
            return true;
    }
    return false;
}

void QNKSortFilterProxyModel::Private::sortAnew()
{
    ++change;
    layOut([this] { mapping.sortAnew(); }, VerticalSortHint);
}

// The source's announcements ----------------------------------------------------------------------------

void QNKSortFilterProxyModel::Private::connectSource()
{
    QAbstractItemModel *const source = mapping.source();
    if (!source)
        return;
    using Model = QAbstractItemModel;
    const auto on = [this, source](auto signal, auto slot) {
        m_connections.append(QObject::connect(source, signal, q, slot));
    };
    on(&Model::dataChanged, [this](const QModelIndex &first, const QModelIndex &last,
                                   const QVector<int> &roles) { onDataChanged(first, last, roles); });
    on(&Model::headerDataChanged, [this](Qt::Orientation orientation, int first, int last) {
        onHeaderDataChanged(orientation, first, last);
    });
    on(&Model::rowsInserted,
       [this](const QModelIndex &parent, int first, int last) { onRowsInserted(parent, first, last); });
    on(&Model::rowsAboutToBeRemoved, [this](const QModelIndex &parent, int first, int last) {
        onRowsAboutToBeRemoved(parent, first, last);
    });
    on(&Model::rowsRemoved,
       [this](const QModelIndex &parent, int first, int last) { onRowsRemoved(parent, first, last); });
    on(&Model::rowsAboutToBeMoved, [this] { onAboutToBeLaidOut(); });
    on(&Model::rowsMoved, [this] { onLaidOut(); });
    on(&Model::layoutAboutToBeChanged, [this] { onAboutToBeLaidOut(); });
    on(&Model::layoutChanged, [this] { onLaidOut(); });
    // Columns come and go with whole models here: nothing is to be kept.
    on(&Model::columnsAboutToBeInserted, [this] { onAboutToBeReset(); });
    on(&Model::columnsInserted, [this] { onReset(); });
    on(&Model::columnsAboutToBeRemoved, [this] { onAboutToBeReset(); });
    on(&Model::columnsRemoved, [this] { onReset(); });
    on(&Model::columnsAboutToBeMoved, [this] { onAboutToBeReset(); });
    on(&Model::columnsMoved, [this] { onReset(); });
    on(&Model::modelAboutToBeReset, [this] { onAboutToBeReset(); });
    on(&Model::modelReset, [this] { onReset(); });
    on(&QObject::destroyed, [this] { onSourceDestroyed(); });
}

void QNKSortFilterProxyModel::Private::disconnectSource()
{
    for (const QMetaObject::Connection &connection : qAsConst(m_connections))
        QObject::disconnect(connection);
    m_connections.clear();
    m_saved = {};
    m_removesInLayout = false;
}

void QNKSortFilterProxyModel::Private::onAboutToBeReset()
{
    ++change;
    q->beginResetModel();
}

void QNKSortFilterProxyModel::Private::onReset()
{
    mapping.clear();
    q->endResetModel();
}

void QNKSortFilterProxyModel::Private::onSourceDestroyed()
{
    ++change;
    q->beginResetModel();
    m_connections.clear();
    mapping.setSource(nullptr);
    q->endResetModel();
}

void QNKSortFilterProxyModel::Private::onAboutToBeLaidOut()
{
    ++change;
    Q_EMIT q->layoutAboutToBeChanged();
    save();
}

/// Rows may stand anywhere now.
void QNKSortFilterProxyModel::Private::onLaidOut()
{
    mapping.clear();
    restore();
    Q_EMIT q->layoutChanged();
}

void QNKSortFilterProxyModel::Private::onHeaderDataChanged(Qt::Orientation orientation, int first, int last)
{
    if (orientation == Qt::Horizontal)
        Q_EMIT q->headerDataChanged(orientation, first, last);
    else if (q->rowCount() > 0)
        Q_EMIT q->headerDataChanged(orientation, 0, q->rowCount() - 1);
}

/// The rows of a parent, where somebody can have seen them; null elsewhere.
ProxyRows *QNKSortFilterProxyModel::Private::seenRows(const QModelIndex &sourceParent) const
{
    ProxyRows *const rows = mapping.known(sourceParent);
    return rows && rows->isBuilt && ProxyMapping::isShown(*rows) ? rows : nullptr;
}

void QNKSortFilterProxyModel::Private::onDataChanged(const QModelIndex &topLeft,
                                                     const QModelIndex &bottomRight,
                                                     const QVector<int> &roles)
{
    if (!topLeft.isValid() || !bottomRight.isValid())
        return;
    ++change;
    const QPersistentModelIndex parent = topLeft.parent();
    ProxyRows *const rows = seenRows(parent);
    if (!rows) {
        if (ProxyRows *const unseen = mapping.known(parent))
            unseen->isOrdered = false;
        mapping.forgetUnseen(parent);
        if (isDynamic)
            reconsiderFrom(parent);
        return;
    }
    const CellRange cells{topLeft.row(), bottomRight.row(), topLeft.column(), bottomRight.column()};
    QVector<int> kept;
    for (int row = cells.first; row <= cells.last; ++row) {
        if (rows->shows(row))
            kept.append(row);
    }
    if (isDynamic && !refresh(parent, *rows, cells.first, cells.last))
        tellAll(parent, roles);
    else
        tellKept(parent, kept, cells, roles);
}

/// Filters and sorts rows whose data changed.
bool QNKSortFilterProxyModel::Private::refresh(const QModelIndex &sourceParent, ProxyRows &rows, int first,
                                               int last)
{
    const quint64 before = change;
    const bool inOrder = mapping.checkOrder(rows, first, last);
    for (int row = first; row <= last && !rows.below.empty(); ++row) {
        if (mapping.isWithinChanged(rows, row)) {
            layOutAnew();
            return change == before;
        }
    }
    QVector<int> gone;
    QVector<int> come;
    for (int row = first; row <= last; ++row) {
        if (mapping.accepts(rows, row) != rows.shows(row))
            (rows.shows(row) ? gone : come).append(row);
    }
    if (!changeShown(rows, gone, come, inOrder))
        return false;
    if (!gone.isEmpty() || !come.isEmpty())
        reconsiderFrom(sourceParent);
    return change == before;
}

bool QNKSortFilterProxyModel::Private::changeShown(ProxyRows &rows, const QVector<int> &gone,
                                                   const QVector<int> &come, bool inOrder)
{
    const QVector<Places> goneRuns = runsOf(placesOf(rows, gone));
    const bool isFew = goneRuns.size() <= FewRuns && come.size() <= rows.places.size()
                       && ProxyMapping::runsToShow(rows, come).size() <= FewRuns;
    if (inOrder && isFew) {
        const bool isTrue = hideRuns(rows, goneRuns) && showRows(rows, come);
        if (!isTrue)
            layOutAnew();
        return isTrue;
    }
    const quint64 before = change;
    layOut([&] {
        for (const int row : gone)
            rows.places[row] = ProxyRows::Hidden;
        for (const int row : come)
            rows.places[row] = 0;
        mapping.arrange(rows);
    });
    return change == before;
}

bool QNKSortFilterProxyModel::Private::hideRuns(ProxyRows &rows, const QVector<Places> &runs)
{
    const quint64 before = change;
    for (auto run = runs.crbegin(); run != runs.crend() && change == before; ++run) {
        q->beginRemoveRows(proxyParent(rows), run->first, run->second);
        ProxyMapping::hide(rows, run->first, run->second);
        q->endRemoveRows();
    }
    return change == before;
}

bool QNKSortFilterProxyModel::Private::showRows(ProxyRows &rows, const QVector<int> &sourceRows)
{
    const quint64 before = change;
    const QVector<ProxyMapping::Run> runs = ProxyMapping::runsToShow(rows, sourceRows);
    for (auto run = runs.crbegin(); run != runs.crend() && change == before; ++run) {
        q->beginInsertRows(proxyParent(rows), run->first, run->first + run->second.size() - 1);
        ProxyMapping::show(rows, *run);
        q->endInsertRows();
    }
    return change == before;
}

/// Rows below changed: whether their parent is shown, and its parent, may have changed with them.
void QNKSortFilterProxyModel::Private::reconsiderFrom(const QModelIndex &sourceIndex)
{
    if (!mapping.isRecursive)
        return;
    for (QPersistentModelIndex at = sourceIndex; at.isValid(); at = at.parent()) {
        ProxyRows *const rows = seenRows(at.parent());
        if (!rows)
            continue;
        const bool isAccepted = mapping.accepts(*rows, at.row());
        if (isAccepted == rows->shows(at.row()))
            return;
        const int place = rows->places[at.row()];
        const bool isTrue = isAccepted ? showRows(*rows, {at.row()}) : hideRuns(*rows, {{place, place}});
        if (!isTrue)
            return layOutAnew();
    }
}

/// Tells the data of rows that stayed.
void QNKSortFilterProxyModel::Private::tellKept(const QModelIndex &sourceParent, const QVector<int> &kept,
                                                const CellRange &cells, const QVector<int> &roles)
{
    ProxyRows *const rows = mapping.rows(sourceParent);
    QVector<Places> runs = rows ? runsOf(placesOf(*rows, kept)) : QVector<Places>();
    if (runs.size() > FewRuns)
        runs = {{runs.first().first, runs.last().second}};
    const quint64 before = change;
    for (const Places &run : qAsConst(runs)) {
        Q_EMIT q->dataChanged(indexOf(*rows, run.first, cells.left), indexOf(*rows, run.second, cells.right),
                              roles);
        if (change != before)
            return tellAll(sourceParent, roles);
    }
}

/// The rows have changed again meanwhile: which of them the data was of is not known any more.
void QNKSortFilterProxyModel::Private::tellAll(const QModelIndex &sourceParent, const QVector<int> &roles)
{
    const ProxyRows *const rows = mapping.rows(sourceParent);
    if (rows && !rows->shown.isEmpty()) {
        const int columns = q->columnCount(proxyParent(*rows));
        Q_EMIT q->dataChanged(indexOf(*rows, 0, 0), indexOf(*rows, rows->shown.size() - 1, columns - 1),
                              roles);
    }
}

void QNKSortFilterProxyModel::Private::onRowsInserted(const QModelIndex &parent, int first, int last)
{
    ++change;
    ProxyRows *rows = mapping.known(parent);
    if (!mapping.isParentShown(parent)) {
        if (rows)
            mapping.insertSourceRows(*rows, first, last - first + 1);
        mapping.forgetUnseen(parent);
        reconsiderFrom(parent);
        return;
    }
    QVector<int> come;
    bool inOrder = true;
    if (rows && rows->isBuilt) {
        inOrder = mapping.insertSourceRows(*rows, first, last - first + 1);
        for (int row = first; row <= last; ++row) {
            if (mapping.accepts(*rows, row))
                come.append(row);
        }
    } else {
        // Nobody has asked for these rows yet, and whoever listens is told of all of them.
        rows = mapping.rows(parent);
        come = rows->shown;
        mapping.hideAll(*rows);
    }
    if (changeShown(*rows, {}, come, inOrder))
        reconsiderFrom(parent);
}

void QNKSortFilterProxyModel::Private::onRowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    ++change;
    ProxyRows *const rows = seenRows(parent);
    if (!rows)
        return;
    QVector<int> gone;
    for (int row = first; row <= last; ++row) {
        if (rows->shows(row))
            gone.append(row);
    }
    const QVector<Places> runs = runsOf(placesOf(*rows, gone));
    m_removesInLayout = runs.size() > FewRuns;
    if (!m_removesInLayout) {
        hideRuns(*rows, runs);
        return;
    }
    Q_EMIT q->layoutAboutToBeChanged();
    save();
}

void QNKSortFilterProxyModel::Private::onRowsRemoved(const QModelIndex &parent, int first, int last)
{
    ++change;
    ProxyRows *const rows = mapping.known(parent);
    const bool inOrder = !rows || mapping.removeSourceRows(*rows, first, last - first + 1);
    if (m_removesInLayout) {
        m_removesInLayout = false;
        mapping.arrange(*rows);
        restore();
        Q_EMIT q->layoutChanged();
    } else if (!inOrder && seenRows(parent)) {
        layOut([&] { mapping.arrange(*rows); });
    }
    mapping.forgetUnseen(parent);
    reconsiderFrom(parent);
}
