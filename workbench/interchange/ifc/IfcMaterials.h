#pragma once

#include <interchange/foreign/ForeignScene.h>
#include <interchange/ifc/StepFile.h>

namespace interchange {

/// Adds the materials of an IFC file to the scene, by their names. A name that comes again is told apart by a number,
/// also as a key: it is all that a material has.
void addIfcMaterials(const StepFile &file, ForeignScene &scene);

} // namespace interchange
