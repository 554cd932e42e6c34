#include "OpenEditor.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>

namespace {
/// The cell a child of the viewport edits. An editor lies over its cell, and nearly always on the current one.
QModelIndex indexOf(const QAbstractItemView *view, const QWidget *widget)
{
    const QModelIndex current = view->currentIndex();
    if (current.isValid() && view->indexWidget(current) == widget)
        return current;
    if (widget->isWindow())
        return {};
    const QModelIndex under = view->indexAt(widget->geometry().center());
    return under.isValid() && view->indexWidget(under) == widget ? under : QModelIndex();
}

void close(QAbstractItemView *view, QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    QMetaObject::invokeMethod(view, "closeEditor", Qt::DirectConnection, Q_ARG(QWidget *, editor),
                              Q_ARG(QAbstractItemDelegate::EndEditHint, hint));
}
} // namespace

OpenEditor OpenEditor::of(const QAbstractItemView *view)
{
    const QObjectList children = view->viewport()->children();
    for (QObject *child : children) {
        auto *const widget = qobject_cast<QWidget *>(child);
        const QModelIndex index = widget ? indexOf(view, widget) : QModelIndex();
        if (index.isValid() && !view->isPersistentEditorOpen(index))
            return {widget, index};
    }
    return {};
}

void OpenEditor::commit(QAbstractItemView *view) const
{
    const QPointer<QAbstractItemView> alive(view);
    if (widget)
        QMetaObject::invokeMethod(view, "commitData", Qt::DirectConnection, Q_ARG(QWidget *, widget.data()));
    if (alive && widget) // committing may have asked something, and led anywhere
        close(view, widget, QAbstractItemDelegate::NoHint);
}

void OpenEditor::cancel(QAbstractItemView *view) const
{
    if (widget)
        close(view, widget, QAbstractItemDelegate::RevertModelCache);
}
