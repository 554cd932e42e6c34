#pragma once

#include <QModelIndex>
#include <QVector>

class QAbstractItemModel;
class RowJudge;

/// The order of source rows: by a column, or as in the source. Rows that are equal there stand in the order of
/// the source, whichever way it is sorted.
class RowOrder
{
public:
    int column = -1;
    Qt::SortOrder direction = Qt::AscendingOrder;

    /// Whether rows are sorted at all: the source has the column.
    bool sorts(const QAbstractItemModel *source) const;

    /// Whether one row stands before another; asks the judge.
    bool isBefore(const RowJudge &judge, const QAbstractItemModel *source, const QModelIndex &sourceParent,
                  int left, int right) const;
    /// Sorts rows of one parent, by their keys where every one has a key.
    void sort(const RowJudge &judge, const QAbstractItemModel *source, const QModelIndex &sourceParent,
              QVector<int> &rows) const;
};
