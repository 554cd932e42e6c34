#pragma once

#include "SpinControl.h"

class QNKDoubleSpiner;

/// Edits a floating-point number.
class FloatControl : public SpinControl
{
    Q_OBJECT
public:
    FloatControl(const QString &property, QWidget *parent);
    ~FloatControl() override;

protected:
    void showValue(const QVariant &value) override;
    QVariant editedValue() const override;

private:
    QNKDoubleSpiner *m_box;
};
