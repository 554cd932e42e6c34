#pragma once

#include <QModelIndex>
#include <QPointer>
#include <QWidget>

class QAbstractItemView;

/// The editor that is open in a view, found from outside: Qt keeps it to itself.
struct OpenEditor
{
    /// The editor of a cell; null where none is open. Widgets that stay (persistent editors, index widgets)
    /// are none.
    static OpenEditor of(const QAbstractItemView *view);

    bool isNull() const { return widget.isNull(); }
    /// Writes what is in the editor to the model and closes it.
    void commit(QAbstractItemView *view) const;
    /// Closes the editor without writing.
    void cancel(QAbstractItemView *view) const;

    QPointer<QWidget> widget;
    QModelIndex index; // of the view's model
};
