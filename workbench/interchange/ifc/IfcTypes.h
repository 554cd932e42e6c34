#pragma once

#include <interchange/ifc/StepArguments.h>

#include <QString>

#include <string_view>

namespace interchange {

/// What the records of an IFC file are to those who read metadata.
enum class IfcRole : quint8 {
    Other,
    Object, ///< may be an occurrence; see isIfcObject
    Aggregates,
    Nests,
    Contains,
    Voids,
    DefinesByProperties,
    DefinesByType,
    PropertySet,
    QuantitySet,
    Material
};

/// The role of a record of this type. Types that are not known are objects until more is known of them: there are
/// hundreds, and new ones in each release.
IfcRole ifcRole(std::string_view type);

/// Whether a record of role Object is one: it has an identifier, an owner or an identifier as they look, a name.
bool isIfcObject(const StepArguments &arguments);

/// What an object without a name is called: "IFCWALL", 12 is "Wall 12".
QString ifcTypeName(std::string_view type, quint64 id);

} // namespace interchange
