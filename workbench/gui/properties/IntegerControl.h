#pragma once

#include "SpinControl.h"

class QNKSpiner;

/// Edits a whole number.
class IntegerControl : public SpinControl
{
    Q_OBJECT
public:
    IntegerControl(const QString &property, QWidget *parent);
    ~IntegerControl() override;

protected:
    void showValue(const QVariant &value) override;
    QVariant editedValue() const override;

private:
    QNKSpiner *m_box;
};
