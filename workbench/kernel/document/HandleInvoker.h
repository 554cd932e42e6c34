#pragma once

#include <QMetaMethod>
#include <QVariant>
#include <QVariantList>

class nkdObject;

namespace kernel {

/// Calls invokable operations of a handle by name: what nkdObject::invokeMethod does.
class HandleInvoker
{
public:
    explicit HandleInvoker(nkdObject &handle) : m_handle(handle) {}

    QVariant invoke(const QByteArray &name, const QVariantList &arguments) const;

private:
    QMetaMethod findMethod(const QByteArray &name, const QVariantList &arguments) const;

    nkdObject &m_handle;
};

} // namespace kernel
