#pragma once

#include <nkKernelServices/nkObjectType.h>

#include <QMetaObject>

#include <functional>

class nkdObject;

namespace kernel {

/// The meta-object of the handle class that stands for objects of this type; nkdObject's for types that are
/// none.
const QMetaObject &kindOf(nkObjectType type);

/// Calls use with a handle of the right class for this type and id, which lives during the call.
void withHandle(nkObjectType type, quint64 id, const std::function<void(nkdObject &)> &use);

} // namespace kernel
