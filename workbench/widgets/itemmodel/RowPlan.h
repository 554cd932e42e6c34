#pragma once

#include "RowDiff.h"

#include <QVector>

#include <vector>

class QNKModelItem;

/// What the children of a row become, and the lists below those of them that stay.
struct RowPlan
{
    QNKModelItem *parent = nullptr; // the row that stands in the model
    QNKModelItem *fresh = nullptr;  // the object that takes its place; null where it stays
    QVector<QNKModelItem *> after;  // the rows to be, in order
    RowDiff diff;
    std::vector<RowPlan> below; // of rows that stay and whose children views know of
    bool losesExpander = false; // a row that stays has no children any more, and nobody counted them

    /// @param parent a row with all its children
    /// @param rows its children to be
    static RowPlan make(QNKModelItem *parent, const QVector<QNKModelItem *> &rows);

    /// Whether the lists have so little in common that one reset tells it better.
    bool isLittleCommon() const;
    /// Whether telling it row by row takes too many announcements, or too long.
    bool isTooMuch() const;
    /// Whether a row anywhere in the plan loses its expander without losing rows that were counted.
    bool anyLosesExpander() const;

private:
    static void makeChildren(QNKModelItem *row);
    void planBelow(QNKModelItem *old, QNKModelItem *replacement);
    int announcementCount() const;
    qint64 cost() const;
};
