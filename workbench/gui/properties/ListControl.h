#pragma once

#include "PropertyControl.h"

#include <QPointer>

class QNKVariantListWidget;
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
    /// Closes the list editor and takes its list.
    void completeEditing() override;

private:
    void openList();
    void take(const QVariantList &values, bool commit);
    void showText();

    QPushButton *m_button;
    QPointer<QNKVariantListWidget> m_popup;
    QVariantList m_list;
};
