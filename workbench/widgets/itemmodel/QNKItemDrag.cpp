#include <nkQt4Ext/QNKItemDrag.h>

#include <QAbstractItemModel>
#include <QMimeData>
#include <QPixmap>
#include <QWidget>

QNKItemDrag::QNKItemDrag(QWidget *source, const QModelIndexList &indexes, const QPixmap &pixmap)
    : QDrag(source)
{
    if (!indexes.isEmpty() && indexes.first().isValid())
        setMimeData(indexes.first().model()->mimeData(indexes));
    if (!pixmap.isNull())
        setPixmap(pixmap);
}

QNKItemDrag::~QNKItemDrag() = default;
