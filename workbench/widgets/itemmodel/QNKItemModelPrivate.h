#pragma once

#include "RowStore.h"

#include <nkQt4Ext/QNKItemModel.h>

#include <QHash>
#include <QPair>

#include <deque>
#include <functional>

class CellChanges;

/// What the model keeps, and the rules of who may change rows when.
///
/// Three things can run: an operation (any virtual function of a row: rows that leave the model meanwhile are
/// buried and deleted when the outermost one has returned), a reading (an operation that answers views and
/// proxies, which may be in the middle of a sort or a paint: rows are not changed under it but from the event
/// loop) and an announcement (a signal: other listeners have yet to hear it, so rows change after it).
struct QNKItemModel::Private
{
    using Cells = QVector<QPair<int, int>>; // column and role

    /// Keeps buried rows alive while it exists.
    class Operation
    {
    public:
        explicit Operation(Private *model) : m_model(model) { ++m_model->operations; }
        ~Operation();
        Q_DISABLE_COPY(Operation)

    private:
        Private *m_model;
    };

    class Reading
    {
    public:
        explicit Reading(Private *model) : m_operation(model), m_model(model) { ++m_model->readings; }
        ~Reading() { --m_model->readings; }
        Q_DISABLE_COPY(Reading)

    private:
        Operation m_operation;
        Private *m_model;
    };

    /// Around a signal. Changes of rows that were asked for meanwhile follow its end.
    class Announcement
    {
    public:
        explicit Announcement(Private *model) : m_model(model) { ++m_model->announcements; }
        ~Announcement();
        Q_DISABLE_COPY(Announcement)

    private:
        Private *m_model;
    };

    /// While it exists, the changes of one row's cells are noted instead of announced.
    class Collector
    {
    public:
        Collector(Private *model, const QNKModelItem *row);
        ~Collector();
        Q_DISABLE_COPY(Collector)

        void note(int column, int role);
        void note(const Cells &cells);
        /// Announces what was noted, unless the row went or was replaced (a reload has told it then).
        void announce();

        static constexpr quintptr NoRow = ~quintptr(0);

        const quintptr id;
        const QNKModelItem *row;
        int firstColumn = -1;
        int lastColumn = -1;
        QVector<int> roles;
        Collector *outer;

    private:
        Private *m_model;
    };

    explicit Private(QNKItemModel *model) : q(model) {}

    /// The row of an index, the root for the invalid one; null for a row that is gone or not of this model.
    QNKModelItem *rowOf(const QModelIndex &index) const;
    /// The same for an index that stands for a parent: only column 0 has children.
    QNKModelItem *parentRow(const QModelIndex &parent) const;
    QModelIndex indexOf(const QNKModelItem *row, int column = 0) const;
    /// Has the row make its children where it has made none. Nobody knew their number: nothing is announced.
    void makeChildren(QNKModelItem *row);
    bool hasChildren(QNKModelItem *row);
    bool isColumn(int column) const { return column >= 0 && column < titles.size(); }

    /// Whether rows may change, and cells be announced, now. @see defer
    bool canChangeRows() const { return readings == 0 && announcements == 0 && !reloading; }
    /// Runs action as soon as rows may change.
    void defer(std::function<void()> action);
    void runDeferred();
    void flushFromEventLoop();

    void requestReload();
    void deferReload();
    void runReload();
    void setRoot(QNKModelItem *newRoot);
    /// Makes rows the children of parent, which is the root or stands in the model; takes ownership.
    void changeChildren(QNKModelItem *parent, const QVector<QNKModelItem *> &rows);
    void deferChildren(QNKModelItem *parent, const QVector<QNKModelItem *> &rows);
    void capture(const QVector<QNKModelItem *> &rows);

    struct ChangedRow
    {
        quintptr id;
        Cells cells;
    };
    void reloadRows(const QVector<quintptr> &ids);
    Cells reloadRow(QNKModelItem *row);
    void announceRows(const QVector<ChangedRow> &changed);
    void announceChanges(const QNKModelItem *parent, const CellChanges &changes);
    /// The internal ids of the rows of indexes, each once, in the order of the rows in the tree.
    QVector<quintptr> rowIds(const QModelIndexList &indexes) const;

    void cellChanged(const QNKModelItem *row, int role, int column);
    void announceCells(const QModelIndex &first, const QModelIndex &last, const QVector<int> &roles);
    /// Has views ask anew which rows have children: no row that was counted came or went.
    void announceExpanders();
    /// The innermost collector of this row; null where there is none.
    Collector *collectorOf(quintptr internalId) const;

    QNKItemModel *q;
    std::unique_ptr<QNKModelItem> root;
    RowStore rows;
    QStringList titles;
    QHash<QPair<int, int>, QVariant> headerValues; // by section and role
    QString mimeType;
    Qt::DropActions dragActions = Qt::CopyAction;

    int operations = 0;
    int readings = 0;
    int announcements = 0;
    bool reloading = false;
    int chainedReloads = 0;   // reloads running that were asked for while another ran
    bool reloadWaits = false; // one is among the deferred
    bool flushQueued = false;
    bool capturing = false; // the root is reloading: its setChildren is caught
    bool hasCaptured = false;
    QVector<QNKModelItem *> captured;
    std::deque<std::function<void()>> deferred;
    Collector *collectors = nullptr; // innermost first
};
