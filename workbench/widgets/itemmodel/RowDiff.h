#pragma once

#include <QPair>
#include <QVector>

class QNKModelItem;

/// How one list of rows becomes another: which rows are the same by id, which ranges go, which come.
struct RowDiff
{
    using Ranges = QVector<QPair<int, int>>; // first and last position, ascending

    /// @param before rows of the model
    /// @param after rows to be; rows of before may be among them
    static RowDiff between(const QVector<QNKModelItem *> &before, const QVector<QNKModelItem *> &after);
    /// The same change with no row in common.
    void makeDisjoint(int before, int after);

    bool changesRows() const { return reordered || !removed.isEmpty() || !inserted.isEmpty(); }

    QVector<int> origin; // by new position: the old position, -1 for a row that comes
    Ranges removed;      // old positions
    Ranges inserted;     // new positions
    int common = 0;
    int beforeCount = 0;
    bool reordered = false; // rows that stay change their order
};
