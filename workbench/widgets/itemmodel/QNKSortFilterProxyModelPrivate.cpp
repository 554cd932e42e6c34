#include "QNKSortFilterProxyModelPrivate.h"

#include "OpenEditor.h"

#include <QAbstractItemView>
#include <QScopedValueRollback>

#include <utility>

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

bool QNKSortFilterProxyModel::Private::hasRowsBelow(const QModelIndex &proxyParent) const
{
    if (!proxyParent.isValid() || proxyParent.column() != 0)
        return rowsBelow(proxyParent) && !mapping.top()->shown.isEmpty();
    ProxyRows *const rows = rowsOf(proxyParent);
    return rows && mapping.hasAccepted(ProxyMapping::listBelow(*rows, rows->shown[proxyParent.row()]));
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
    m_saved = {};
    m_saved.proxyIndexes = q->persistentIndexList();
    m_saved.places.reserve(m_saved.proxyIndexes.size());
    for (const QModelIndex &index : qAsConst(m_saved.proxyIndexes)) {
        ProxyRows *const rows = rowsOf(index);
        m_saved.places.append({rows, rows ? rows->shown[index.row()] : -1, index.column()});
    }
}

/// Before a change of the source in which its indexes may move.
void QNKSortFilterProxyModel::Private::saveMoving()
{
    m_saved = {};
    m_saved.proxyIndexes = q->persistentIndexList();
    m_saved.movingIndexes.reserve(m_saved.proxyIndexes.size());
    for (const QModelIndex &index : qAsConst(m_saved.proxyIndexes))
        m_saved.movingIndexes.append(q->mapToSource(index));
}

/// Where a cell of the source stands now; invalid where it is hidden.
QModelIndex QNKSortFilterProxyModel::Private::indexOf(const Place &place) const
{
    if (!place.rows)
        return {};
    for (const ProxyRows *at = place.rows; at->above; at = at->above) {
        mapping.ensureBuilt(*at->above);
        if (!at->above->shows(at->row))
            return {};
    }
    mapping.ensureBuilt(*place.rows);
    const int row = place.rows->places[place.row];
    return row == ProxyRows::Hidden ? QModelIndex() : indexOf(*place.rows, row, place.column);
}

void QNKSortFilterProxyModel::Private::restore()
{
    const Saved saved = std::exchange(m_saved, {});
    QModelIndexList now;
    now.reserve(saved.proxyIndexes.size());
    for (const Place &place : saved.places)
        now.append(indexOf(place));
    for (const QPersistentModelIndex &index : saved.movingIndexes)
        now.append(q->mapFromSource(index));
    q->changePersistentIndexList(saved.proxyIndexes, now);
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
    saveMoving();
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
