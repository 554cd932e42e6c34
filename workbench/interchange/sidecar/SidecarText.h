#pragma once

#include <interchange/sidecar/Sidecar.h>

#include <QByteArray>

namespace interchange {

/// The sidecar as JSON text, in the layout of docs/formats.md: the same sidecar always gives the same bytes. Empty
/// where that would be more than 1 GiB.
QByteArray textOfSidecar(const Sidecar &sidecar);

} // namespace interchange
