#pragma once

#include "CellChanges.h"
#include "QNKItemModelPrivate.h"
#include "RowPlan.h"

/// Carries one change of rows out and announces it: rows that stay keep their slots and are told by the cells
/// that differ, the others by insertions and removals, or everything by one reset where little is common.
///
/// Removals come first, then the new objects of rows that stay with what differs in them, then their order,
/// then insertions: a sorting proxy finds the place of a new row among rows it knows as they are.
class RowChange
{
public:
    explicit RowChange(QNKItemModel::Private *model) : d(model) {}

    /// @param parent the root or a row of the model
    /// @param rows its children to be; taken over. The children of rows that stay are replaced too.
    void carryOut(QNKModelItem *parent, const QVector<QNKModelItem *> &rows);
    /// Makes rows the children of parent without a word: nobody counted its children, or a reset tells it.
    void install(QNKModelItem *parent, const QVector<QNKModelItem *> &rows);

private:
    void reset(RowPlan &plan);
    void restoreBelow(RowPlan &plan);
    void simplify(RowPlan &plan);
    static void adopt(QNKModelItem *parent, const QVector<QNKModelItem *> &rows);
    static void number(const QVector<QNKModelItem *> &rows, int from);

    void removeRows(RowPlan &plan);
    void removeRange(QNKModelItem *parent, int first, int last);
    void replaceRows(RowPlan &plan);
    void replaceRow(QNKModelItem *parent, QNKModelItem *old, QNKModelItem *fresh);
    static void passChildren(RowPlan &plan);
    void noteDifferences(CellChanges &changes, const QNKModelItem *old, const QNKModelItem *fresh);
    void reorderRows(RowPlan &plan);
    void reorder(const RowPlan &plan);
    void updatePersistentIndexes(const QNKModelItem *parent);
    void insertRows(RowPlan &plan);
    void insertRange(RowPlan &plan, int first, int last);

    QNKItemModel::Private *d;
};
