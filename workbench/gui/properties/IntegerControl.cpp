#include "IntegerControl.h"

#include <nkQt4Ext/QNKSpiner.h>

#include <QSignalBlocker>

IntegerControl::IntegerControl(const QString &property, QWidget *parent)
    : SpinControl(property, parent), m_box(new QNKSpiner(this))
{
    setSpinBox(m_box);
    connect(m_box, QOverload<int>::of(&QSpinBox::valueChanged), this, &IntegerControl::onChanged);
}

IntegerControl::~IntegerControl() = default;

void IntegerControl::showValue(const QVariant &value)
{
    const QSignalBlocker silence(m_box);
    m_box->setValue(value.toInt());
}

QVariant IntegerControl::editedValue() const
{
    m_box->interpretText();
    return m_box->value();
}
