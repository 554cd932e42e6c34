#include "FloatControl.h"

#include <nkQt4Ext/QNKDoubleSpiner.h>

#include <QSignalBlocker>

FloatControl::FloatControl(const QString &property, QWidget *parent)
    : SpinControl(property, parent), m_box(new QNKDoubleSpiner(this))
{
    setSpinBox(m_box);
    connect(m_box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &FloatControl::onChanged);
}

FloatControl::~FloatControl() = default;

void FloatControl::showValue(const QVariant &value)
{
    const QSignalBlocker silence(m_box);
    m_box->setValue(value.toDouble());
}

QVariant FloatControl::editedValue() const
{
    m_box->interpretText();
    return m_box->value();
}
