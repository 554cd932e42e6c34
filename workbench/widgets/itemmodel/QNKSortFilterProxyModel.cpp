#include "QNKSortFilterProxyModelPrivate.h"

#include "LayoutPass.h"
#include "NaturalOrder.h"

#include <QItemSelection>
#include <QSize>

using Base = QAbstractProxyModel;

QNKSortFilterProxyModel::QNKSortFilterProxyModel(QObject *parent)
    : QSortFilterProxyModel(parent), d(std::make_unique<Private>(this))
{}

QNKSortFilterProxyModel::~QNKSortFilterProxyModel()
{
    d->disconnectSource();
}

bool QNKSortFilterProxyModel::lessThan(const QString &left, const QString &right) const
{
    return compareNaturally(left, right) < 0;
}

// Filtering and sorting ---------------------------------------------------------------------------------

void QNKSortFilterProxyModel::setRecursiveFilteringEnabled(bool enabled)
{
    if (enabled == d->mapping.isRecursive)
        return;
    d->mapping.isRecursive = enabled;
    refilter();
}

bool QNKSortFilterProxyModel::isRecursiveFilteringEnabled() const
{
    return d->mapping.isRecursive;
}

void QNKSortFilterProxyModel::setRecursiveAcceptEnabled(bool enabled)
{
    if (enabled == d->mapping.acceptsBelowRows)
        return;
    d->mapping.acceptsBelowRows = enabled;
    refilter();
}

bool QNKSortFilterProxyModel::isRecursiveAcceptEnabled() const
{
    return d->mapping.acceptsBelowRows;
}

void QNKSortFilterProxyModel::setDynamicSortFilter(bool enabled)
{
    if (enabled == d->isDynamic)
        return;
    d->isDynamic = enabled;
    if (enabled)
        invalidate(); // what was missed meanwhile
}

bool QNKSortFilterProxyModel::dynamicSortFilter() const
{
    return d->isDynamic;
}

void QNKSortFilterProxyModel::refilter()
{
    prepareFilter();
    d->commitEditorsOfHidden();
    ++d->change;
    d->layOutAnew();
}

void QNKSortFilterProxyModel::invalidate()
{
    d->mapping.forgetOrders();
    refilter();
}

void QNKSortFilterProxyModel::sort(int column, Qt::SortOrder order)
{
    RowOrder &present = d->mapping.order;
    if (d->isDynamic && column == present.column && order == present.direction)
        return;
    present.column = column;
    present.direction = order;
    d->sortAnew();
}

int QNKSortFilterProxyModel::sortColumn() const
{
    return d->mapping.order.column;
}

Qt::SortOrder QNKSortFilterProxyModel::sortOrder() const
{
    return d->mapping.order.direction;
}

bool QNKSortFilterProxyModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const QVariant a = left.data();
    const QVariant b = right.data();
    if (a.userType() == QMetaType::QString && b.userType() == QMetaType::QString)
        return lessThan(a.toString(), b.toString());
    return QSortFilterProxyModel::lessThan(left, right);
}

bool QNKSortFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    if (acceptsRow(sourceRow, sourceParent))
        return true;
    if (d->knowsAbove || !d->mapping.acceptsBelowRows)
        return false;
    for (QModelIndex above = sourceParent; above.isValid(); above = above.parent()) {
        if (acceptsRow(above.row(), above.parent()))
            return true;
    }
    return false;
}

bool QNKSortFilterProxyModel::acceptsRow(int, const QModelIndex &) const
{
    return true;
}

void QNKSortFilterProxyModel::prepareFilter() {}

bool QNKSortFilterProxyModel::appendSortKey(const QModelIndex &, QByteArray &) const
{
    return false;
}

void QNKSortFilterProxyModel::appendTextSortKey(const QString &text, QByteArray &key)
{
    appendNaturalKey(text, key);
}

void QNKSortFilterProxyModel::appendInvertedTextSortKey(const QString &text, QByteArray &key)
{
    const int from = key.size();
    appendNaturalKey(text, key);
    for (auto byte = key.begin() + from; byte != key.end(); ++byte)
        *byte = char(~*byte);
}

// Mapping -----------------------------------------------------------------------------------------------

void QNKSortFilterProxyModel::setSourceModel(QAbstractItemModel *source)
{
    beginResetModel();
    d->disconnectSource();
    Base::setSourceModel(source); // not the base's: it would follow the source too
    d->mapping.setSource(source);
    d->connectSource();
    endResetModel();
}

QModelIndex QNKSortFilterProxyModel::mapToSource(const QModelIndex &proxyIndex) const
{
    const ProxyRows *const rows = d->rowsOf(proxyIndex);
    return rows ? d->mapping.sourceIndex(*rows, rows->shown[proxyIndex.row()], proxyIndex.column())
                : QModelIndex();
}

QModelIndex QNKSortFilterProxyModel::mapFromSource(const QModelIndex &sourceIndex) const
{
    if (!sourceIndex.isValid() || sourceIndex.model() != sourceModel())
        return {};
    const ProxyRows *const rows = d->mapping.rows(sourceIndex.parent());
    if (!rows || sourceIndex.row() >= rows->places.size() || !rows->shows(sourceIndex.row()))
        return {};
    return d->indexOf(*rows, rows->places[sourceIndex.row()], sourceIndex.column());
}

namespace {

/// Maps a selection by runs of rows: not index by index.
template <typename MapRow, typename MapParent>
void mapRange(const QItemSelectionRange &range, QItemSelection &mapped, MapRow mapRow, MapParent index)
{
    int first = -1;
    int last = -1;
    const auto flush = [&] {
        if (first >= 0)
            mapped.append(QItemSelectionRange(index(first, range.left()), index(last, range.right())));
    };
    for (int row = range.top(); row <= range.bottom(); ++row) {
        const int now = mapRow(row);
        if (now < 0)
            continue;
        if (first < 0 || now != last + 1) {
            flush();
            first = now;
        }
        last = now;
    }
    flush();
}

} // namespace

QItemSelection QNKSortFilterProxyModel::mapSelectionToSource(const QItemSelection &proxySelection) const
{
    QItemSelection mapped;
    for (const QItemSelectionRange &range : proxySelection) {
        const ProxyRows *const rows = range.isValid() ? d->rowsOf(range.topLeft()) : nullptr;
        if (!rows || range.bottom() >= rows->shown.size())
            continue;
        const QModelIndex parent = d->mapping.sourceParent(*rows);
        mapRange(
            range, mapped, [&](int row) { return rows->shown[row]; },
            [&](int row, int column) { return sourceModel()->index(row, column, parent); });
    }
    return mapped;
}

QItemSelection QNKSortFilterProxyModel::mapSelectionFromSource(const QItemSelection &sourceSelection) const
{
    QItemSelection mapped;
    for (const QItemSelectionRange &range : sourceSelection) {
        const bool isMine = range.isValid() && range.model() == sourceModel();
        const ProxyRows *const rows = isMine ? d->mapping.rows(range.parent()) : nullptr;
        if (!rows || range.bottom() >= rows->places.size())
            continue;
        mapRange(
            range, mapped, [&](int row) { return rows->places[row]; },
            [&](int row, int column) { return d->indexOf(*rows, row, column); });
    }
    return mapped;
}

QModelIndex QNKSortFilterProxyModel::index(int row, int column, const QModelIndex &parent) const
{
    const ProxyRows *const rows = d->rowsBelow(parent);
    if (!rows || row < 0 || row >= rows->shown.size() || column < 0 || column >= columnCount(parent))
        return {};
    return d->indexOf(*rows, row, column);
}

QModelIndex QNKSortFilterProxyModel::parent(const QModelIndex &child) const
{
    // Asked more often than anything else, by selections of many ranges above all.
    const auto *const rows = static_cast<const ProxyRows *>(child.internalPointer());
    return child.isValid() && rows->above ? d->proxyParent(*rows) : QModelIndex();
}

QModelIndex QNKSortFilterProxyModel::sibling(int row, int column, const QModelIndex &index) const
{
    const ProxyRows *const rows = d->rowsOf(index);
    if (!rows || row < 0 || row >= rows->shown.size() || column < 0 || column >= columnCount(index.parent()))
        return {};
    return d->indexOf(*rows, row, column);
}

int QNKSortFilterProxyModel::rowCount(const QModelIndex &parent) const
{
    const ProxyRows *const rows = d->rowsBelow(parent);
    return rows ? rows->shown.size() : 0;
}

int QNKSortFilterProxyModel::columnCount(const QModelIndex &parent) const
{
    return sourceModel() ? sourceModel()->columnCount(mapToSource(parent)) : 0;
}

bool QNKSortFilterProxyModel::hasChildren(const QModelIndex &parent) const
{
    if (!sourceModel() || parent.column() > 0)
        return false;
    const QModelIndex sourceParent = mapToSource(parent);
    if (parent.isValid() != sourceParent.isValid() || !sourceModel()->hasChildren(sourceParent))
        return false;
    ProxyRows *const known = d->mapping.known(sourceParent);
    if (known && (known->isBuilt || known->isJudged))
        return d->mapping.hasAccepted(*known);
    // Where all below an accepted row is accepted, what is shown has shown children: no need to make them.
    const bool isSettled = parent.isValid() && d->mapping.acceptsBelowRows && d->mapping.isRecursive;
    return isSettled || sourceModel()->canFetchMore(sourceParent) || d->hasRowsBelow(parent);
}

// Data: the source's, nothing else ------------------------------------------------------------------------

QVariant QNKSortFilterProxyModel::data(const QModelIndex &index, int role) const
{
    return mapToSource(index).data(role);
}

bool QNKSortFilterProxyModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const QModelIndex sourceIndex = mapToSource(index);
    return sourceIndex.isValid() && sourceModel()->setData(sourceIndex, value, role);
}

QVariant QNKSortFilterProxyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!sourceModel())
        return {};
    if (orientation == Qt::Horizontal)
        return sourceModel()->headerData(section, orientation, role);
    const ProxyRows *const rows = d->mapping.top();
    if (section < 0 || section >= rows->shown.size())
        return {};
    return sourceModel()->headerData(rows->shown[section], orientation, role);
}

bool QNKSortFilterProxyModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant &value,
                                            int role)
{
    if (!sourceModel())
        return false;
    if (orientation == Qt::Horizontal)
        return sourceModel()->setHeaderData(section, orientation, value, role);
    const ProxyRows *const rows = d->mapping.top();
    return section >= 0 && section < rows->shown.size()
           && sourceModel()->setHeaderData(rows->shown[section], orientation, value, role);
}

Qt::ItemFlags QNKSortFilterProxyModel::flags(const QModelIndex &index) const
{
    if (!sourceModel())
        return Qt::NoItemFlags;
    if (index.isValid() && LayoutPass::isRunning()) {
        ProxyRows *const rows = d->rowsOf(index);
        const Qt::ItemFlags row = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
        return rows && d->mapping.areLeaves(*rows) ? row | Qt::ItemNeverHasChildren : row;
    }
    const QModelIndex sourceIndex = mapToSource(index);
    return index.isValid() && !sourceIndex.isValid() ? Qt::NoItemFlags : sourceModel()->flags(sourceIndex);
}

QModelIndex QNKSortFilterProxyModel::buddy(const QModelIndex &index) const
{
    return Base::buddy(index);
}

QModelIndexList QNKSortFilterProxyModel::match(const QModelIndex &start, int role, const QVariant &value,
                                               int hits, Qt::MatchFlags flags) const
{
    return QAbstractItemModel::match(start, role, value, hits, flags); // in the order that is shown
}

QSize QNKSortFilterProxyModel::span(const QModelIndex &index) const
{
    return Base::span(index);
}

bool QNKSortFilterProxyModel::canFetchMore(const QModelIndex &parent) const
{
    return sourceModel() && Base::canFetchMore(parent);
}

void QNKSortFilterProxyModel::fetchMore(const QModelIndex &parent)
{
    if (sourceModel())
        Base::fetchMore(parent);
}

QMimeData *QNKSortFilterProxyModel::mimeData(const QModelIndexList &indexes) const
{
    return Base::mimeData(indexes);
}

bool QNKSortFilterProxyModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                           const QModelIndex &parent)
{
    return Base::dropMimeData(data, action, row, column, parent);
}

QStringList QNKSortFilterProxyModel::mimeTypes() const
{
    return Base::mimeTypes();
}

Qt::DropActions QNKSortFilterProxyModel::supportedDropActions() const
{
    return Base::supportedDropActions();
}

bool QNKSortFilterProxyModel::insertRows(int row, int count, const QModelIndex &parent)
{
    const ProxyRows *const rows = d->rowsBelow(parent);
    if (!rows || row < 0 || row > rows->shown.size())
        return false;
    const int sourceRow = row < rows->shown.size() ? rows->shown[row] : rows->places.size();
    return sourceModel()->insertRows(sourceRow, count, mapToSource(parent));
}

bool QNKSortFilterProxyModel::insertColumns(int column, int count, const QModelIndex &parent)
{
    return sourceModel() && sourceModel()->insertColumns(column, count, mapToSource(parent));
}

bool QNKSortFilterProxyModel::removeRows(int row, int count, const QModelIndex &parent)
{
    const ProxyRows *const rows = d->rowsBelow(parent);
    if (!rows || row < 0 || count <= 0 || row + count > rows->shown.size())
        return false;
    QVector<QPersistentModelIndex> doomed;
    for (int place = row; place < row + count; ++place)
        doomed.append(mapToSource(d->indexOf(*rows, place, 0)));
    bool isRemoved = true;
    for (const QPersistentModelIndex &index : qAsConst(doomed))
        isRemoved = index.isValid() && sourceModel()->removeRows(index.row(), 1, index.parent()) && isRemoved;
    return isRemoved;
}

bool QNKSortFilterProxyModel::removeColumns(int column, int count, const QModelIndex &parent)
{
    return sourceModel() && sourceModel()->removeColumns(column, count, mapToSource(parent));
}
