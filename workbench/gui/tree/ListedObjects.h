#pragma once

#include <nkKernelServicesGUI/TreeMode.h>

#include <functional>

class nkdObject;

/// Which objects of the scene a list of metadata shows.
namespace ListedObjects {

using Visitor = std::function<void(const nkdObject &)>;

/// Tells visit every object of the list, each once: in Sets the shared sets in order of creation, in the
/// kinds the objects that carry sets or entries of their own in the scene's order, in LastSelection the
/// selected objects in selection order. The scene must not change meanwhile.
void forEach(TreeMode mode, const Visitor &visit);

} // namespace ListedObjects
