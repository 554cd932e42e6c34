#pragma once

#include "nkKernelServicesExport.h"

#include <QObject>
#include <QString>
#include <QStringList>

/// The store of preference values, kept in the user's configuration folder.
class NK_KERNEL_SERVICES_EXPORT nkPreferencesService : public QObject
{
    Q_OBJECT
public:
    static nkPreferencesService &the();

    /// Stores a value. @param overwrite false: only where the key has no value yet
    virtual void setStringListValue(const QString &key, const QStringList &value, bool overwrite) = 0;
    virtual void setIntValue(const QString &key, int value, bool overwrite) = 0;
    /// The value; fallback where the key has none, or one of another kind.
    virtual QStringList getStringListValue(const QString &key, const QStringList &fallback = {}) const = 0;
    virtual int getIntValue(const QString &key, int fallback = 0) const = 0;
    virtual bool hasValue(const QString &key) const = 0;

Q_SIGNALS:
    /// A value differs from what it was.
    void valueChanged(const QString &key);
};
