#pragma once

#include "nkKernelServicesExport.h"

#include <QObject>
#include <QString>

/// The platform the host runs on.
class NK_KERNEL_SERVICES_EXPORT nkPlatformService : public QObject
{
    Q_OBJECT
public:
    static nkPlatformService &the();

    /// The per-user data directory, with "/" at the end; it exists.
    virtual QString getUserDataDirectory() const = 0;
    /// The title of plain information boxes: the application's name.
    virtual QString getInformationTitle() const = 0;
};
