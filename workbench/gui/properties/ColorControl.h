#pragma once

#include "PropertyControl.h"

#include <QColor>

class QPushButton;

/// Shows a colour on a button, which opens the colour dialog.
class ColorControl : public PropertyControl
{
    Q_OBJECT
public:
    ColorControl(const QString &property, QWidget *parent);
    ~ColorControl() override;

protected:
    void showValue(const QVariant &value) override;
    QVariant editedValue() const override;
    void beginEditing(const QString &typed) override;

private:
    void openDialog();
    void showColor();

    QPushButton *m_button;
    QColor m_color;
};
