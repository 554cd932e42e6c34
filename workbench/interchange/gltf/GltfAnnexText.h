#pragma once

#include <interchange/gltf/GltfAnnex.h>

#include <QByteArray>

namespace interchange {

/// The annex as JSON text, in the layout of docs/formats.md: the same annex always gives the same bytes. Lines are
/// broken between sets and entries.
QByteArray textOfAnnex(const GltfAnnex &annex);

} // namespace interchange
