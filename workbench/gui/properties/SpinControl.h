#pragma once

#include "PropertyControl.h"

class QAbstractSpinBox;

/// Edits with one of the spin boxes (numbers, times and dates). Typed text counts when it is committed, a
/// step at once.
class SpinControl : public PropertyControl
{
    Q_OBJECT
public:
    SpinControl(const QString &property, QWidget *parent);
    ~SpinControl() override;

protected:
    /// Takes the spin box as the editor; its subclass connects the value's change to onChanged.
    void setSpinBox(QAbstractSpinBox *box);
    void onChanged();
    void beginEditing(const QString &typed) override;

private:
    QAbstractSpinBox *m_box = nullptr;
};
