#pragma once

#include "PropertyControl.h"

class QPushButton;

/// Shows a list as its joined text on a button, which opens the list editor.
class ListControl : public PropertyControl
{
    Q_OBJECT
public:
    ListControl(const QString &property, QWidget *parent);
    ~ListControl() override;

protected:
    void showValue(const QVariant &value) override;
    QVariant editedValue() const override;
    void beginEditing(const QString &typed) override;

private:
    void openList();
    void take(const QVariantList &values, bool commit);
    void showText();

    QPushButton *m_button;
    QVariantList m_list;
};
