#include "FileDrops.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

FileDrops::FileDrops(QWidget *window) : QObject(window)
{
    window->setAcceptDrops(true);
    window->installEventFilter(this);
}

/// The one local file of the data; empty where it is none or several: only one scene can be open.
QString FileDrops::fileOf(const QMimeData *data)
{
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 && urls.first().isLocalFile() ? urls.first().toLocalFile() : QString();
}

bool FileDrops::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) {
        return QObject::eventFilter(watched, event);
    }
    auto *drop = static_cast<QDropEvent *>(event);
    const QString file = fileOf(drop->mimeData());
    // A question that is open, or work that is not done, comes first.
    if (file.isEmpty() || QApplication::activeModalWidget()) {
        drop->ignore();
        return true;
    }
    // The file stays where it is, whatever the other program would like.
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop) {
        // The other program waits for the end of the drop; questions have to come after it.
        QMetaObject::invokeMethod(
            this, [this, file] { Q_EMIT dropped(file); }, Qt::QueuedConnection);
    }
    return true;
}
