#include <nkQt4Ext/QNKUpdateScheduler.h>

QNKUpdateScheduler::QNKUpdateScheduler(QObject *parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &QNKUpdateScheduler::deliver);
}

QNKUpdateScheduler::~QNKUpdateScheduler() = default;

void QNKUpdateScheduler::setEnabled(bool enable)
{
    if (enable == m_enabled)
        return;
    m_enabled = enable;
    if (enable) {
        Q_EMIT enabled();
    } else {
        m_bits = 0;
        m_timer.stop();
    }
}

void QNKUpdateScheduler::requestUpdate(uint bits)
{
    if (!m_enabled || m_blocked || bits == 0)
        return;
    m_bits |= bits;
    if (!m_timer.isActive())
        m_timer.start();
}

void QNKUpdateScheduler::blockRequests(bool block)
{
    m_blocked = block;
}

void QNKUpdateScheduler::deliver()
{
    const uint bits = m_bits;
    m_bits = 0; // before the signal: what is requested while it runs belongs to the next delivery
    if (bits != 0)
        Q_EMIT updateScheduled(bits);
}
