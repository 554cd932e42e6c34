#pragma once

#include "nkQt4ExtExport.h"

#include <QPixmap>

class QAbstractItemView;

/// What the host's views share: drags that show a pixmap, and the one function that commits open editors.
/// Inherited beside the Qt view class.
class NK_QT4EXT_EXPORT QNKViewBase
{
    Q_DISABLE_COPY(QNKViewBase)
public:
    /// The pixmap under the mouse while rows are dragged; null: Qt's own.
    void setDragPixmap(const QPixmap &pixmap) { m_dragPixmap = pixmap; }
    QPixmap dragPixmap() const { return m_dragPixmap; }

    /// Commits and closes the editor that is open in any of the host's views. Called before a selection
    /// moves, before save, undo, redo and close. Does nothing where none is open.
    static void commitOpenEditors();

protected:
    /// @param view this object as a view; not owned
    explicit QNKViewBase(QAbstractItemView *view);
    virtual ~QNKViewBase();

    /// Runs a drag of the selected rows with the model's mime data; returns when it has ended.
    void execDrag(Qt::DropActions supportedActions);

private:
    QAbstractItemView *m_view;
    QPixmap m_dragPixmap;
};
