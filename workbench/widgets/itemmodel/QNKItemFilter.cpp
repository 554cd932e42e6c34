#include <nkQt4Ext/QNKItemFilter.h>

QNKItemFilter::QNKItemFilter(QObject *parent) : QObject(parent) {}

QNKItemFilter::~QNKItemFilter() = default;

void QNKItemFilter::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    Q_EMIT filterChanged();
}
