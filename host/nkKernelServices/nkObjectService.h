#pragma once

#include "nkKernelServicesExport.h"
#include "nkdObject.h"

#include <QObject>

/// News of single objects.
class NK_KERNEL_SERVICES_EXPORT nkObjectService : public QObject
{
    Q_OBJECT
public:
    static nkObjectService &the();

Q_SIGNALS:
    /// A property of an object that existed before the undo scope changed: once per object and property in a
    /// scope (the scope's first change at once, the others when it closes), never for a creation, also on
    /// undo and redo.
    /// @param property "name", "color", "locked", "key", "value" or "valueType"
    void propertyChanged(const nkdObject &object, const QString &property);
};
