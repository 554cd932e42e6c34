#include <nkQt4Ext/QNKViewBase.h>

#include "OpenEditor.h"

#include <nkQt4Ext/QNKItemDrag.h>

#include <QAbstractItemView>
#include <QItemSelectionModel>
#include <QMimeData>
#include <QVector>

namespace {
/// The living views, in the order of their making.
QVector<QAbstractItemView *> &views()
{
    static QVector<QAbstractItemView *> all;
    return all;
}

/// One index for each selected row that can be dragged.
QModelIndexList draggedRows(const QAbstractItemView *view)
{
    QModelIndexList rows;
    if (!view->selectionModel())
        return rows;
    const QItemSelection selection = view->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const QModelIndex index = range.model()->index(row, range.left(), range.parent());
            if (index.flags().testFlag(Qt::ItemIsDragEnabled))
                rows.append(index);
        }
    }
    return rows;
}
} // namespace

QNKViewBase::QNKViewBase(QAbstractItemView *view) : m_view(view)
{
    views().append(view);
}

QNKViewBase::~QNKViewBase()
{
    views().removeOne(m_view);
}

void QNKViewBase::commitOpenEditors()
{
    const QVector<QAbstractItemView *> all = views();
    for (QAbstractItemView *view : all) {
        if (!views().contains(view))
            continue; // an earlier commit has deleted it
        const OpenEditor editor = OpenEditor::of(view);
        if (!editor.isNull())
            editor.commit(view);
    }
}

void QNKViewBase::execDrag(Qt::DropActions supportedActions)
{
    const QModelIndexList rows = draggedRows(m_view);
    if (rows.isEmpty())
        return;
    auto *const drag = new QNKItemDrag(m_view, rows, m_dragPixmap); // deletes itself when it has ended
    if (drag->mimeData())
        drag->exec(supportedActions, Qt::CopyAction);
    else
        drag->deleteLater();
}
