#pragma once

#include "nkKernelServicesGUIExport.h"

#include <QString>

class QWidget;
class nkBaseControl;

/// Makes controls for properties that the property editor's own controls do not suit.
class NK_KERNEL_SERVICES_GUI_EXPORT nkControlFactory
{
public:
    virtual ~nkControlFactory();
    /// A control owned by parent; null where this factory has none for the property.
    virtual nkBaseControl *createControl(const QString &property, int valueType, QWidget *parent) = 0;
};
