#pragma once

#include <interchange/json/JsonValue.h>
#include <interchange/sets/SetFileError.h>

#include <QCoreApplication>

#include <initializer_list>
#include <string_view>

namespace interchange {

/// The members of one JSON object whose names are fixed: each at most once, and no others.
class ObjectMembers
{
    Q_DECLARE_TR_FUNCTIONS(ObjectMembers)

public:
    struct Name
    {
        const char *text; ///< ASCII
        bool isNeeded;
    };

    /// At most six.
    ObjectMembers(std::initializer_list<Name> names);

    /// Finds them. False where `object` is no object, a member is missing, unknown or comes twice.
    bool read(const JsonValue &object, SetFileError &error);

    /// The member by its place among the names; absent where it was not there.
    const JsonValue &value(int name) const { return m_values[name]; }
    /// The inside of a string member that holds plain ASCII, else something that is no name of anything.
    std::string_view text(int name) const;

private:
    int placeOf(const JsonValue &member) const;
    bool readMember(const JsonValue &member, SetFileError &error);

    static constexpr int Most = 6;
    Name m_names[Most];
    JsonValue m_values[Most];
    int m_count = 0;
};

} // namespace interchange
