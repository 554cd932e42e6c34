#pragma once

#include <QByteArray>
#include <QModelIndex>

/// What a proxy's mapping asks about source rows: which are shown, and in which order.
class RowJudge
{
public:
    virtual ~RowJudge() = default;

    /// The row's own test; rows above and below it are the mapping's matter.
    virtual bool accepts(int sourceRow, const QModelIndex &sourceParent) const = 0;
    /// Whether the left cell stands before the right one.
    virtual bool isLess(const QModelIndex &left, const QModelIndex &right) const = 0;
    /// @return false where the cell has no key
    virtual bool appendKey(const QModelIndex &sourceIndex, QByteArray &key) const = 0;
};
