#pragma once

#include "ProxyRows.h"
#include "RowOrder.h"

#include <QPair>

class RowJudge;

/// The rows of a source model as a sort-filter proxy shows them: one ProxyRows for each list of children that
/// somebody asked for, made when it is asked for. Knows nothing of announcements.
///
/// Lists that nobody can see, because a row above is hidden, are only kept while they are true: a change below
/// them has them built anew.
class ProxyMapping
{
public:
    /// Hidden rows that are shown together: the place, and the source rows in order.
    using Run = QPair<int, QVector<int>>;

    explicit ProxyMapping(const RowJudge &judge);
    ~ProxyMapping();

    bool isRecursive = false;      ///< a row is shown where one below it is accepted
    bool acceptsBelowRows = false; ///< rows below an accepted row are accepted
    RowOrder order;

    QAbstractItemModel *source() const { return m_source; }
    /// Also forgets everything.
    void setSource(QAbstractItemModel *source);
    void clear();
    /// Has every list filtered anew when it is asked for; orders stay.
    void forgetFilter();
    void forgetOrders();
    /// Has every list sorted anew, now; what is shown stays.
    void sortAnew();

    /// The children of a source row, built; null where a row cannot have any (a column but the first), is not
    /// shown, or there is no source.
    ProxyRows *rows(const QModelIndex &sourceParent);
    ProxyRows *top();
    /// The children of a row of a list, built.
    ProxyRows *rowsBelow(ProxyRows &rows, int sourceRow);
    /// The same as it is, built or not; made where nobody asked for it yet.
    static ProxyRows &listBelow(ProxyRows &rows, int sourceRow);
    void ensureBuilt(ProxyRows &rows);
    /// What is known of the children of a source row, built or not; null where nothing is.
    ProxyRows *known(const QModelIndex &sourceParent) const;

    /// Whether the parent of these rows is shown, all the way up.
    static bool isShown(const ProxyRows &rows);
    bool isParentShown(const QModelIndex &sourceParent) const;
    QModelIndex sourceParent(const ProxyRows &rows) const;
    QModelIndex sourceIndex(const ProxyRows &rows, int sourceRow, int column) const;

    /// Whether any of the rows is accepted. Puts nothing in order.
    bool hasAccepted(ProxyRows &rows);
    /// Whether a row is to be shown now.
    bool accepts(ProxyRows &rows, int sourceRow);
    /// Whether the rows below one, as they were built, were accepted for its sake and are not now, or the other
    /// way round.
    bool isWithinChanged(const ProxyRows &rows, int sourceRow) const;

    /// Whether no row of the list has children in the source. Looks at every row the first time.
    bool areLeaves(ProxyRows &rows) const;

    // Of built rows each answers whether what is shown stands in order still; where not, arrange puts it right.

    /// Takes in new source rows, hidden as yet.
    bool insertSourceRows(ProxyRows &rows, int first, int count);
    /// Takes out source rows, shown or not.
    bool removeSourceRows(ProxyRows &rows, int first, int count);
    /// Takes in that the data of rows changed.
    bool checkOrder(ProxyRows &rows, int first, int last);

    /// Shows the rows that are shown in their order.
    void arrange(ProxyRows &rows);

    /// The runs in which hidden rows are shown, from the top down, at places as they are before the first.
    static QVector<Run> runsToShow(const ProxyRows &rows, const QVector<int> &sourceRows);
    static void show(ProxyRows &rows, const Run &run);
    /// @param first,last places
    static void hide(ProxyRows &rows, int first, int last);
    static void hideAll(ProxyRows &rows);

    /// Forgets what a change below a source row may have made untrue in lists that nobody sees.
    void forgetUnseen(const QModelIndex &sourceParent);

private:
    bool accepts(ProxyRows &rows, int sourceRow, const QModelIndex &parent);
    bool acceptsBelow(ProxyRows &rows, int sourceRow, const QModelIndex &parent);
    bool isWithin(const ProxyRows &rows, int sourceRow) const;
    void forgetUntrueBelow(ProxyRows &rows);
    void build(ProxyRows &rows);
    void judge(ProxyRows &rows);
    bool isAnyParent(const ProxyRows &rows, int first, int last) const;
    void checkLeaves(ProxyRows &rows, int first, int last) const;
    void makeOrder(ProxyRows &rows) const;
    bool isInOrder(const ProxyRows &rows, int upper, int lower) const;
    void putInOrder(ProxyRows &rows, int row) const;
    bool sortRows(ProxyRows &rows) const;
    bool removeFromOrder(ProxyRows &rows, int first, int count) const;
    bool checkOrderOf(ProxyRows &rows, int row) const;
    static int orderPlace(const ProxyRows &rows, int sourceRow);
    static void renumber(ProxyRows &rows, int first);
    template <typename Visit>
    static void visit(ProxyRows &rows, Visit visitor);

    const RowJudge &m_judge;
    QAbstractItemModel *m_source = nullptr;
    std::unique_ptr<ProxyRows> m_top;
};
