#pragma once

#include "RowPlace.h"

#include <QItemSelection>
#include <QSet>

class QTreeView;

/// Where a person stands in a tree view, by row: taken before a change that would lose it, put back after.
class TreeState
{
public:
    using Slot = RowPlace::Slot;

    /// @param expanded the rows known to be expanded; brought up to date for all rows that are shown. Rows
    /// that a filter hides keep what they were.
    TreeState(const QTreeView *view, const RowPlace &place, QSet<Slot> &expanded);

    /// Puts expanded rows back; what else is put back needs the rows they show.
    /// @param parents those that may be expanded, each after the one above it
    static void expand(QTreeView *view, const RowPlace &place, const QVector<Slot> &parents,
                       const QSet<Slot> &expanded);
    /// RowPlace::parents() as it was: a look at every row of the source.
    const QVector<Slot> &parents() const { return m_parents; }
    /// The selection as far as its rows are still shown.
    /// @param isComplete set to whether all of them are
    QItemSelection selection(const RowPlace &place, bool &isComplete) const;
    bool hadCurrent() const { return m_current != RowPlace::None; }
    /// The current cell where its row is still shown, else invalid.
    QModelIndex current(const RowPlace &place) const;
    /// Where the current row was: the row after it that is still shown, else the row before it.
    QModelIndex besideCurrent(const RowPlace &place) const;
    /// Scrolls so that the topmost row that is still shown stands where it stood.
    /// @param byRow false: only the scroll bars' values are put back
    void scroll(QTreeView *view, const RowPlace &place, bool byRow) const;

private:
    struct Range
    {
        int left;
        int right;
        QVector<Slot> rows;
    };
    struct Shown
    {
        Slot row;
        int top; // in the viewport
    };

    void takeSelection(const QTreeView *view, const RowPlace &place);
    void takeCurrent(const QTreeView *view, const RowPlace &place);
    void takeScroll(const QTreeView *view, const RowPlace &place);
    bool scrollTo(QTreeView *view, const QModelIndex &index, int top) const;

    QVector<Slot> m_parents;
    QVector<Range> m_selection;
    Slot m_current = RowPlace::None;
    int m_currentColumn = 0;
    int m_currentRow = 0;
    Slot m_currentParent = RowPlace::None;
    QVector<Slot> m_besideCurrent; // in the order of preference
    QVector<Shown> m_shown;        // from the top of the viewport down
    int m_shownColumn = 0;
    int m_horizontal = 0;
    int m_vertical = 0;
};
