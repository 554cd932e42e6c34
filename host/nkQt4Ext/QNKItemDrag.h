#pragma once

#include "nkQt4ExtExport.h"

#include <QDrag>
#include <QModelIndexList>

/// A drag of rows of a view, with the model's mime data.
class NK_QT4EXT_EXPORT QNKItemDrag : public QDrag
{
    Q_OBJECT
public:
    /// @param source the view; @param indexes of its model; @param pixmap null for none
    QNKItemDrag(QWidget *source, const QModelIndexList &indexes, const QPixmap &pixmap);
    ~QNKItemDrag() override;
};
