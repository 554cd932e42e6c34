#include <interchange/sets/ObjectMembers.h>

#include <algorithm>

namespace interchange {

ObjectMembers::ObjectMembers(std::initializer_list<Name> names)
{
    for (const Name &name : names)
        m_names[m_count++] = name;
}

bool ObjectMembers::read(const JsonValue &object, SetFileError &error)
{
    if (!object.isObject()) {
        error = SetFileError::atValue(object, tr("an object in braces is expected"));
        return false;
    }
    std::fill_n(m_values, m_count, JsonValue());
    for (const JsonValue member : object.children()) {
        if (!readMember(member, error))
            return false;
    }
    for (int i = 0; i < m_count; ++i) {
        if (m_names[i].isNeeded && !m_values[i].isPresent()) {
            error = SetFileError::atValue(
                object, tr("the member “%1” is missing").arg(QLatin1String(m_names[i].text)));
            return false;
        }
    }
    return true;
}

int ObjectMembers::placeOf(const JsonValue &member) const
{
    for (int i = 0; i < m_count; ++i) {
        if (member.keyIs(QLatin1String(m_names[i].text)))
            return i;
    }
    return -1;
}

bool ObjectMembers::readMember(const JsonValue &member, SetFileError &error)
{
    const int place = placeOf(member);
    if (place < 0) {
        error = SetFileError::atMember(member, tr("no member of this name is known here"));
        return false;
    }
    if (m_values[place].isPresent()) {
        error = SetFileError::atValue(
            member, tr("the member “%1” stands here twice").arg(QLatin1String(m_names[place].text)));
        return false;
    }
    m_values[place] = member;
    return true;
}

std::string_view ObjectMembers::text(int name) const
{
    const JsonValue &value = m_values[name];
    if (!value.isString())
        return {};
    const std::string_view raw = value.raw();
    return raw.substr(1, raw.size() - 2);
}

} // namespace interchange
