#pragma once

namespace kernel {

/// Makes the handle classes and enumerations known to Qt by name, for signals, invokable operations and
/// variants. Here and not in plug-ins, which may be unloaded.
void registerMetaTypes();

} // namespace kernel
