#pragma once

#include "ProxyMapping.h"
#include "RowJudge.h"

#include <nkQt4Ext/QNKSortFilterProxyModel.h>

#include <QPersistentModelIndex>

/// The proxy's mapping, and what becomes of it when the source changes.
///
/// What changes few runs of rows is announced as rows that come and go; anything else, and whatever changes the
/// order, as a new layout. After every announcement the source may have changed again: then what is left to do
/// is done by one new layout, which looks at everything.
struct QNKSortFilterProxyModel::Private : RowJudge
{
    explicit Private(QNKSortFilterProxyModel *proxy) : q(proxy), mapping(*this) {}

    // What the mapping asks.
    bool accepts(int sourceRow, const QModelIndex &sourceParent) const override;
    bool isLess(const QModelIndex &left, const QModelIndex &right) const override;
    bool appendKey(const QModelIndex &sourceIndex, QByteArray &key) const override;

    /// The list of an index of this proxy's, built; null where the index is none of it.
    ProxyRows *rowsOf(const QModelIndex &proxyIndex) const;
    /// The children of an index of this proxy's, built; null where it cannot have any.
    ProxyRows *rowsBelow(const QModelIndex &proxyParent) const;
    /// Whether rowsBelow would answer any rows; puts nothing in order for that.
    bool hasRowsBelow(const QModelIndex &proxyParent) const;
    /// The parent that indexes of these rows have; invalid for the top.
    QModelIndex proxyParent(const ProxyRows &rows) const;
    QModelIndex indexOf(const ProxyRows &rows, int place, int column) const;

    /// Announces a new layout around a change of the mapping.
    template <typename Change>
    void layOut(Change doIt, LayoutChangeHint hint = NoLayoutChangeHint);
    /// Filters everything anew, in one new layout.
    void layOutAnew();
    /// Sorts everything anew, in one new layout.
    void sortAnew();
    void commitEditorsOfHidden() const;

    void connectSource();
    void disconnectSource();

    // The source's announcements.
    void onDataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles);
    void onHeaderDataChanged(Qt::Orientation orientation, int first, int last);
    void onRowsInserted(const QModelIndex &parent, int first, int last);
    void onRowsAboutToBeRemoved(const QModelIndex &parent, int first, int last);
    void onRowsRemoved(const QModelIndex &parent, int first, int last);
    void onAboutToBeLaidOut();
    void onLaidOut();
    void onAboutToBeReset();
    void onReset();
    void onSourceDestroyed();

    QNKSortFilterProxyModel *const q;
    /// Lists are made when somebody asks, who may only read.
    mutable ProxyMapping mapping;
    bool isDynamic = true;
    /// The mapping looks at a row and knows the rows above it.
    mutable bool knowsAbove = false;
    /// Counts the changes of the mapping that came from elsewhere.
    quint64 change = 0;

private:
    /// A cell of the source.
    struct Place
    {
        ProxyRows *rows;
        int row; ///< in the source
        int column;
    };
    /// The persistent indexes of this proxy before a new layout, and what they stand for.
    struct Saved
    {
        QModelIndexList proxyIndexes;
        /// Where the source keeps its indexes; their rows are null for indexes that stand for nothing.
        QVector<Place> places;
        /// The same where the source changes too: slow to make.
        QVector<QPersistentModelIndex> movingIndexes;
    };
    struct CellRange
    {
        int first, last; // rows
        int left, right; // columns
    };
    using Places = QPair<int, int>;

    void save();
    void saveMoving();
    void restore();
    QModelIndex indexOf(const Place &place) const;
    bool willShow(const QModelIndex &sourceIndex) const;
    bool willShowBelow(const QModelIndex &sourceIndex) const;
    ProxyRows *seenRows(const QModelIndex &sourceParent) const;

    // Each announces, and answers false where the source has changed again meanwhile: nothing of what was known
    // before is true then.

    bool refresh(const QModelIndex &sourceParent, ProxyRows &rows, int first, int last);
    bool changeShown(ProxyRows &rows, const QVector<int> &gone, const QVector<int> &come, bool inOrder);
    bool hideRuns(ProxyRows &rows, const QVector<Places> &runs);
    bool showRows(ProxyRows &rows, const QVector<int> &sourceRows);

    void reconsiderFrom(const QModelIndex &sourceIndex);
    void tellKept(const QModelIndex &sourceParent, const QVector<int> &kept, const CellRange &cells,
                  const QVector<int> &roles);
    void tellAll(const QModelIndex &sourceParent, const QVector<int> &roles);

    QVector<QMetaObject::Connection> m_connections;
    Saved m_saved;
    bool m_removesInLayout = false;
};

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
