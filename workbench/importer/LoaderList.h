#pragma once

namespace Assimp {
class Importer;
} // namespace Assimp

/// The closed list of loaders: those that read nothing but kinds of importkinds::Models.
namespace LoaderList {

/// Takes all other loaders of the library out: those with readers of our own, those that open archives of whole
/// games, and those that later versions of the library may bring.
void close(Assimp::Importer &importer);

/// Whether a file with this name is of a kind that may be opened at all, as a model or beside one. Loaders that put
/// scenes together from several files use all loaders of the library for them; this keeps them to the list.
bool isKnown(const char *path, bool companionsToo);

/// Whether a file with this name holds text that its loader takes for UTF-8.
bool isText(const char *path);

} // namespace LoaderList
