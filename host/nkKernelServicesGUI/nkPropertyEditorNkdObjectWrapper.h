#pragma once

#include "nkKernelServicesGUIExport.h"

#include <nkKernelServices/nkdObject.h>

#include <QStringList>
#include <QVariant>

/// An object of the host as the property editor sees it: named properties, read and written.
class NK_KERNEL_SERVICES_GUI_EXPORT nkPropertyEditorNkdObjectWrapper
{
public:
    nkPropertyEditorNkdObjectWrapper() = default;
    explicit nkPropertyEditorNkdObjectWrapper(const nkdObject &object) : m_object(object) {}

    nkdObject getObject() const { return m_object; }
    /// The properties to show, in order; for an entry "key", "value", "valueType". Empty for null.
    QStringList getProperties() const;
    QVariant getProperty(const QString &name) const;
    /// Writes, in the caller's undo scope; the host refuses what it refuses.
    void setProperty(const QString &name, const QVariant &value) const;

private:
    nkdObject m_object;
};
