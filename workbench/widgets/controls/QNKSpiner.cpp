#include "nkQt4Ext/QNKSpiner.h"

#include <QWheelEvent>

#include <limits>

QNKSpiner::QNKSpiner(QWidget *parent) : QSpinBox(parent)
{
    setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Integer value"));
}

QNKSpiner::~QNKSpiner() = default;

void QNKSpiner::stepBy(int steps)
{
    // Qt adds in int and tests the range afterwards, so a step across the limits of int would come out at
    // the other end.
    interpretText();
    const qint64 target = value() + qint64(steps) * singleStep();
    if (target >= minimum() && target <= maximum()) {
        QSpinBox::stepBy(steps);
        return;
    }
    const qint64 low = wrapping() ? maximum() : minimum();
    const qint64 high = wrapping() ? minimum() : maximum();
    setValue(int(target < minimum() ? low : high));
    selectAll();
}

QString QNKSpiner::textFromValue(int value) const
{
    // Qt leaves the group separators in the least int, of whose digits it counts too few.
    QString text = QSpinBox::textFromValue(value);
    return isGroupSeparatorShown() ? text : text.remove(locale().groupSeparator());
}

void QNKSpiner::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QSpinBox::wheelEvent(event);
    else
        event->ignore();
}
