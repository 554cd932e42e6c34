#pragma once

#include <interchange/ImportReport.h>
#include <interchange/foreign/ForeignScene.h>
#include <interchange/ifc/StepArguments.h>

#include <optional>

namespace interchange {

/// Makes entries of the values of IFC's properties and quantities.
class IfcValue
{
public:
    /// A value read, and what became of it where it is not exactly what the file says.
    struct Read
    {
        nkMetadataTypes::ValueType type = nkMetadataTypes::String;
        QVariant value; ///< in the type's stored form; invalid for a tag
        bool isTag = false;
        std::optional<ImportReason> converted;
    };

    /// @param arguments that hold the values
    explicit IfcValue(const StepArguments &arguments) : m_arguments(arguments) {}

    /// One value with its type; an omitted one is a tag.
    Read single(const StepValue &value) const;
    /// The values of a list; an omitted one is a tag.
    Read list(const StepValue &values) const;
    /// From and to, with a gap where there is no bound.
    Read bounds(const StepValue &from, const StepValue &to) const;
    /// A measure, always a Float.
    Read measure(const StepValue &value) const;
    /// A number of things: an Integer where it is whole.
    Read count(const StepValue &value) const;

private:
    Read plain(const StepValue &value, std::string_view type) const;
    Read listOf(const StepValue &values) const;
    QVariant element(const StepValue &value, std::optional<ImportReason> &converted) const;
    static Read integer(std::string_view digits);
    static Read real(std::string_view digits);
    static Read truth(std::string_view name);

    const StepArguments &m_arguments;
};

} // namespace interchange
