#pragma once

#include "PropertyControl.h"

#include <QColor>
#include <QPointer>

class QNKColorDialog;
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
    /// Closes the dialog without its colour: one counts only when it was chosen.
    void completeEditing() override;

private:
    void openDialog();
    void showColor();

    QPushButton *m_button;
    QPointer<QNKColorDialog> m_dialog;
    QColor m_color;
};
