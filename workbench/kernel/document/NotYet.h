#pragma once

#include <QString>

namespace kernel {

/// Says in the log that something was asked for that this version does not do; nothing else happens.
void reportNotYet(const QString &title, const QString &text);

} // namespace kernel
