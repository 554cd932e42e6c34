#pragma once

namespace interchange {

class ImportReport;
class JsonValue;

/// Names the extras that become no entries because nothing in the scene carries them: those of the asset, and those
/// of everything that stands in a list of its own, meshes and scenes for instance.
/// @param root the outermost object of a glTF text
void reportOtherExtras(const JsonValue &root, ImportReport &report);

} // namespace interchange
