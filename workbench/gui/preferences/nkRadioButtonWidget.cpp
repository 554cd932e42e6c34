#include <nkKernelServicesGUI/nkRadioButtonWidget.h>

#include "CellButtonColours.h"

#include <QHBoxLayout>
#include <QRadioButton>

nkRadioButtonWidget::nkRadioButtonWidget(QRadioButton *button, QWidget *parent)
    : QWidget(parent), m_button(button)
{
    QHBoxLayout *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(button, 0, Qt::AlignCenter);
    setFocusProxy(button);
    new CellButtonColours(button);
}

nkRadioButtonWidget::~nkRadioButtonWidget() = default;
