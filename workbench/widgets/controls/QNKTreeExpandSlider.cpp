#include "nkQt4Ext/QNKTreeExpandSlider.h"

#include <QTreeView>
#include <QWheelEvent>

QNKTreeExpandSlider::QNKTreeExpandSlider(QTreeView *view, QWidget *parent)
    : QSlider(Qt::Horizontal, parent), m_view(view)
{
    setRange(0, 1);
    setSingleStep(1);
    setPageStep(1);
    setFocusPolicy(Qt::StrongFocus);
    setToolTip(tr("Expand or collapse the list"));
    setAccessibleName(tr("Expansion depth"));
    connect(this, &QSlider::valueChanged, this, &QNKTreeExpandSlider::expandTo);
}

QNKTreeExpandSlider::~QNKTreeExpandSlider() = default;

void QNKTreeExpandSlider::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QSlider::wheelEvent(event);
    else
        event->ignore();
}

void QNKTreeExpandSlider::expandTo(int depth)
{
    if (!m_view)
        return;
    if (depth <= 0)
        m_view->collapseAll();
    else
        m_view->expandToDepth(depth - 1);
}
