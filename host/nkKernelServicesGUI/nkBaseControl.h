#pragma once

#include "nkKernelServicesGUIExport.h"

#include <QWidget>

/// One property's line in a property editor: a label and an editor.
class NK_KERNEL_SERVICES_GUI_EXPORT nkBaseControl : public QWidget
{
    Q_OBJECT
public:
    /// @param property the property's name, as nkdObject::supportsProperty knows it
    explicit nkBaseControl(const QString &property, QWidget *parent = nullptr);
    ~nkBaseControl() override;

    QString getProperty() const { return m_property; }
    /// Shows a value, or that the objects' values differ. Writes nothing.
    virtual void setValue(const QVariant &value, bool differing) = 0;

Q_SIGNALS:
    /// A person committed a new value.
    void valueEdited(const QVariant &value);

private:
    QString m_property;
};
