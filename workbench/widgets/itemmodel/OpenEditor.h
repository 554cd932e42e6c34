#pragma once

#include <QModelIndex>
#include <QPointer>
#include <QVector>
#include <QWidget>

class QAbstractItemView;

/// The editor that is open in a view, found from outside: Qt keeps it to itself.
struct OpenEditor
{
    /// Marks an editor as being committed while it exists: what the commit leads to must not commit it again.
    class CommitScope
    {
    public:
        explicit CommitScope(QWidget *editor);
        ~CommitScope();
        Q_DISABLE_COPY(CommitScope)

    private:
        QWidget *m_editor;
    };

    /// The editor of a cell; null where none is open. Widgets that stay (persistent editors, index widgets)
    /// are none.
    static OpenEditor of(const QAbstractItemView *view);
    /// The host's living views, in the order of their making.
    static const QVector<QAbstractItemView *> &views();
    static void addView(QAbstractItemView *view);
    static void removeView(QAbstractItemView *view);
    /// Commits and closes the editors that are open in any of the host's views.
    static void commitAll();
    /// Whether any is open, one being committed not counted.
    static bool isAnyOpen();

    bool isNull() const { return widget.isNull(); }
    bool isBeingCommitted() const;
    /// Writes what is in the editor to the model and closes it.
    void commit(QAbstractItemView *view) const;
    /// Closes the editor without writing.
    void cancel(QAbstractItemView *view) const;

    QPointer<QWidget> widget;
    QModelIndex index; // of the view's model
};
