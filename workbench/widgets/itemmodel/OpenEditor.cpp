#include "OpenEditor.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>

namespace {

QVector<QAbstractItemView *> &livingViews()
{
    static QVector<QAbstractItemView *> all;
    return all;
}

QVector<QWidget *> &committedEditors()
{
    static QVector<QWidget *> all;
    return all;
}

/// Lends the name of a view's state, which only views may ask for.
class StateOfView : public QAbstractItemView
{
public:
    static bool isEditing(const QAbstractItemView *view)
    {
        return (view->*&StateOfView::state)() == EditingState;
    }
};

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

OpenEditor::CommitScope::CommitScope(QWidget *editor) : m_editor(editor)
{
    committedEditors().append(editor);
}

OpenEditor::CommitScope::~CommitScope()
{
    committedEditors().removeOne(m_editor);
}

OpenEditor OpenEditor::of(const QAbstractItemView *view)
{
    if (!StateOfView::isEditing(view)) // widgets that stay in cells do not count as editing
        return {};
    const QObjectList children = view->viewport()->children();
    for (QObject *child : children) {
        auto *const widget = qobject_cast<QWidget *>(child);
        const QModelIndex index = widget ? indexOf(view, widget) : QModelIndex();
        if (index.isValid())
            return {widget, index};
    }
    return {};
}

const QVector<QAbstractItemView *> &OpenEditor::views()
{
    return livingViews();
}

void OpenEditor::addView(QAbstractItemView *view)
{
    livingViews().append(view);
}

void OpenEditor::removeView(QAbstractItemView *view)
{
    livingViews().removeOne(view);
}

void OpenEditor::commitAll()
{
    const QVector<QAbstractItemView *> all = views();
    for (QAbstractItemView *view : all) {
        if (!views().contains(view))
            continue; // an earlier commit has deleted it
        const OpenEditor editor = of(view);
        if (!editor.isNull() && !editor.isBeingCommitted())
            editor.commit(view);
    }
}

bool OpenEditor::isAnyOpen()
{
    for (const QAbstractItemView *view : views()) {
        const OpenEditor editor = of(view);
        if (!editor.isNull() && !editor.isBeingCommitted())
            return true;
    }
    return false;
}

bool OpenEditor::isBeingCommitted() const
{
    return committedEditors().contains(widget.data());
}

void OpenEditor::commit(QAbstractItemView *view) const
{
    if (!widget)
        return;
    const QPointer<QAbstractItemView> alive(view);
    {
        const CommitScope scope(widget);
        QMetaObject::invokeMethod(view, "commitData", Qt::DirectConnection, Q_ARG(QWidget *, widget.data()));
    }
    if (alive && widget && of(view).widget == widget) // the commit may have asked something, and led anywhere
        close(view, widget, QAbstractItemDelegate::NoHint);
}

void OpenEditor::cancel(QAbstractItemView *view) const
{
    if (widget)
        close(view, widget, QAbstractItemDelegate::RevertModelCache);
}
