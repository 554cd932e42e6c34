#include <nkQt4Ext/QNKViewBase.h>

#include "OpenEditor.h"

#include <nkQt4Ext/QNKItemDrag.h>

#include <QAbstractItemView>
#include <QItemSelectionModel>
#include <QMimeData>

namespace {

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
    OpenEditor::addView(view);
}

QNKViewBase::~QNKViewBase()
{
    OpenEditor::removeView(m_view);
}

void QNKViewBase::commitOpenEditors()
{
    OpenEditor::commitAll();
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
