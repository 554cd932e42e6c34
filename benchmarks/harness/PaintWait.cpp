#include "PaintWait.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QWidget>

PaintWait::PaintWait(QWidget *widget)
{
    widget->installEventFilter(this);
}

bool PaintWait::wait()
{
    const qint64 longest = 60 * 1000;
    QElapsedTimer timer;
    timer.start();
    // The filter sees the event before the widget paints; a paint event is handled whole within processEvents().
    while (!m_painted && timer.elapsed() < longest)
        QCoreApplication::processEvents();
    const bool painted = m_painted;
    m_painted = false;
    return painted;
}

bool PaintWait::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint)
        m_painted = true;
    return QObject::eventFilter(watched, event);
}
