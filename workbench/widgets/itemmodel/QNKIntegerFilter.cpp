#include <nkQt4Ext/QNKIntegerFilter.h>

QNKIntegerFilter::QNKIntegerFilter(QObject *parent) : QNKItemFilter(parent) {}

QNKIntegerFilter::~QNKIntegerFilter() = default;

void QNKIntegerFilter::setIntegers(const QList<int> &integers)
{
    if (integers == m_integers)
        return;
    m_integers = integers;
    if (isEnabled()) // else everything was and stays accepted
        Q_EMIT filterChanged();
}

bool QNKIntegerFilter::accepts(const QModelIndex &sourceIndex) const
{
    return m_integers.isEmpty() || acceptsIntegers(sourceIndex);
}
