#pragma once

#include "nkKernelServicesGUIExport.h"

#include <QWidget>

class QRadioButton;

/// A radio button in the middle of a cell.
class NK_KERNEL_SERVICES_GUI_EXPORT nkRadioButtonWidget : public QWidget
{
    Q_OBJECT
public:
    /// @param button becomes a child
    explicit nkRadioButtonWidget(QRadioButton *button, QWidget *parent = nullptr);
    ~nkRadioButtonWidget() override;

    QRadioButton *button() const { return m_button; }

private:
    QRadioButton *m_button;
};
