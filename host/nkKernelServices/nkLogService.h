#pragma once

#include "nkKernelServicesExport.h"

#include <QObject>
#include <QString>

/// Where failures are told.
class NK_KERNEL_SERVICES_EXPORT nkLogService : public QObject
{
    Q_OBJECT
public:
    static nkLogService &the();

    /// Reports a failure to the user and the log. Both texts are plain.
    virtual void reportError(const QString &title, const QString &text) = 0;
    /// Writes a line to the log alone.
    virtual void reportWarning(const QString &title, const QString &text) = 0;
    virtual void reportInformation(const QString &title, const QString &text) = 0;

Q_SIGNALS:
    /// Whatever was reported, in order. @param level 0 information, 1 warning, 2 error
    void reported(int level, const QString &title, const QString &text);
};
