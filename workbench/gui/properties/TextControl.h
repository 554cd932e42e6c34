#pragma once

#include "PropertyControl.h"

class QNKStringCompleterLineEdit;

/// Edits a text with the completing line edit. Values that are no text are shown as one.
class TextControl : public PropertyControl
{
    Q_OBJECT
public:
    TextControl(const QString &property, QWidget *parent);
    ~TextControl() override;

protected:
    void showValue(const QVariant &value) override;
    QVariant editedValue() const override;
    void beginEditing(const QString &typed) override;

private:
    QNKStringCompleterLineEdit *m_edit;
};
