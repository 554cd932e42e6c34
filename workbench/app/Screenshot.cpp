#include "Screenshot.h"

#include <QEvent>
#include <QPixmap>
#include <QTimer>
#include <QWidget>

namespace {

// Turns of the event loop between the first paint and the picture: deliveries of changes are queued with
// zero delay, and each can queue one more (a reload, then the layout of the view, then its paint).
constexpr int turnsToSettle = 8;

} // namespace

Screenshot::Screenshot(QWidget *window, const QString &path, QObject *parent)
    : QObject(parent), m_window(window), m_path(path), m_turnsLeft(turnsToSettle)
{
    window->installEventFilter(this);
    window->update();
}

Screenshot::~Screenshot() = default;

bool Screenshot::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint && !m_painted) {
        m_painted = true;
        watched->removeEventFilter(this);
        QTimer::singleShot(0, this, &Screenshot::settle);
    }
    return QObject::eventFilter(watched, event);
}

void Screenshot::settle()
{
    if (--m_turnsLeft > 0) {
        QTimer::singleShot(0, this, &Screenshot::settle);
    } else {
        save();
    }
}

void Screenshot::save()
{
    if (!m_window) {
        Q_EMIT finished(tr("The window was closed before its picture was taken."));
    } else if (!m_window->grab().save(m_path, "PNG")) {
        Q_EMIT finished(
            tr("The picture %1 cannot be written; choose a folder that you may write to.").arg(m_path));
    } else {
        Q_EMIT finished(QString());
    }
}
