#include <interchange/ifc/IfcTypes.h>

#include <algorithm>
#include <array>
#include <unordered_map>

namespace interchange {

namespace {

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Named things that are neither in the scene nor about its objects.
bool isOther(std::string_view type)
{
    constexpr std::array<std::string_view, 5> starts{"IFCREL", "IFCPROPERTY", "IFCQUANTITY", "IFCMATERIAL",
                                                     "IFCPHYSICAL"};
    constexpr std::array<std::string_view, 5> ends{"TYPE", "STYLE", "PROPERTIES", "TEMPLATE", "PROPERTY"};
    return !startsWith(type, "IFC")
           || std::any_of(starts.begin(), starts.end(), [&](auto start) { return startsWith(type, start); })
           || std::any_of(ends.begin(), ends.end(), [&](auto end) { return endsWith(type, end); });
}

/// 22 digits of base 64.
bool isGlobalId(std::string_view text)
{
    const auto isDigit = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'
               || c == '$';
    };
    return text.size() == 22 && std::all_of(text.begin(), text.end(), isDigit);
}

bool isTextOrNone(const StepValue &value)
{
    return value.kind == StepKind::Text || value.kind == StepKind::Omitted;
}

} // namespace

IfcRole ifcRole(std::string_view type)
{
    static const std::unordered_map<std::string_view, IfcRole> known{
        {"IFCRELAGGREGATES", IfcRole::Aggregates},
        {"IFCRELNESTS", IfcRole::Nests},
        {"IFCRELCONTAINEDINSPATIALSTRUCTURE", IfcRole::Contains},
        {"IFCRELVOIDSELEMENT", IfcRole::Voids},
        {"IFCRELDEFINESBYPROPERTIES", IfcRole::DefinesByProperties},
        {"IFCRELDEFINESBYTYPE", IfcRole::DefinesByType},
        {"IFCPROPERTYSET", IfcRole::PropertySet},
        {"IFCELEMENTQUANTITY", IfcRole::QuantitySet},
        {"IFCMATERIAL", IfcRole::Material},
    };
    const auto found = known.find(type);
    if (found != known.end())
        return found->second;
    return isOther(type) ? IfcRole::Other : IfcRole::Object;
}

bool isIfcObject(const StepArguments &arguments)
{
    const StepValue &id = arguments.at(0);
    const StepValue &owner = arguments.at(1);
    const bool isRooted = owner.kind == StepKind::Reference
                          || (owner.kind == StepKind::Omitted && isGlobalId(id.text));
    return id.kind == StepKind::Text && !id.text.empty() && isRooted && isTextOrNone(arguments.at(2))
           && isTextOrNone(arguments.at(3));
}

QString ifcTypeName(std::string_view type, quint64 id)
{
    type.remove_prefix(startsWith(type, "IFC") ? 3 : 0);
    QString name = QString::fromLatin1(type.data(), int(type.size())).toLower();
    if (!name.isEmpty())
        name[0] = name.at(0).toUpper();
    return QStringLiteral("%1 %2").arg(name).arg(id);
}

} // namespace interchange
