#pragma once

#include "PropertyControl.h"

class QNKComboBox;

/// Chooses one of a few values. A choice counts at once.
class ChoiceControl : public PropertyControl
{
    Q_OBJECT
public:
    ChoiceControl(const QString &property, QWidget *parent);
    ~ChoiceControl() override;

    /// Makes a control with the items "false" and "true".
    static ChoiceControl *ofBooleans(const QString &property, QWidget *parent);
    /// Makes a control with the eight value types.
    static ChoiceControl *ofValueTypes(const QString &property, QWidget *parent);

    void addChoice(const QString &text, const QVariant &value);

protected:
    void showValue(const QVariant &value) override;
    QVariant editedValue() const override;
    void beginEditing(const QString &typed) override;

private:
    QNKComboBox *m_box;
};
