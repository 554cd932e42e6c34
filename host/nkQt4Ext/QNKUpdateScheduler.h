#pragma once

#include "nkQt4ExtExport.h"

#include <QObject>
#include <QTimer>

/// Collects update bits and delivers them in one batch from the event loop, with zero delay after the first
/// request. A disabled scheduler keeps nothing.
class NK_QT4EXT_EXPORT QNKUpdateScheduler : public QObject
{
    Q_OBJECT
public:
    /// Enabled from birth.
    explicit QNKUpdateScheduler(QObject *parent = nullptr);
    ~QNKUpdateScheduler() override;

    bool isEnabled() const { return m_enabled; }
    /// Disabling forgets what was requested.
    void setEnabled(bool enabled);
    void enable() { setEnabled(true); }
    void disable() { setEnabled(false); }

    /// Records bits for the next delivery; ignored while disabled or blocked. 0 requests nothing.
    void requestUpdate(uint bits);
    /// While blocked, requests are ignored; what was requested before is still delivered.
    void blockRequests(bool block);

Q_SIGNALS:
    /// One delivery: the OR of all bits since the previous one. Requests made while it runs are delivered
    /// by the next.
    void updateScheduled(uint bits);
    /// The scheduler was disabled and is enabled now.
    void enabled();

private:
    void deliver();

    QTimer m_timer;
    uint m_bits = 0;
    bool m_enabled = true;
    bool m_blocked = false;
};
