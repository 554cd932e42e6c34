#include <interchange/sets/SetFileError.h>

#include <interchange/json/JsonPath.h>
#include <interchange/json/JsonValue.h>

namespace interchange {

SetFileError SetFileError::ofFile(const QString &reason, const QString &advice)
{
    SetFileError error;
    error.m_reason = reason;
    error.m_advice = advice;
    return error;
}

SetFileError SetFileError::atJson(const JsonError &json)
{
    SetFileError error = ofFile(json.reason, tr("the file is damaged: copy it or save it again"));
    error.m_path = json.path;
    error.m_place = json.place;
    return error;
}

SetFileError SetFileError::atValue(const JsonValue &value, const QString &reason)
{
    SetFileError error = ofFile(reason, tr("correct this place in a text editor or save the file again"));
    error.m_path = value.path();
    error.m_place = JsonPlace::of(value.tree()->text(), value.span().offset);
    return error;
}

SetFileError SetFileError::atMember(const JsonValue &member, const QString &reason)
{
    SetFileError error = atValue(member, reason);
    error.m_place = JsonPlace::of(member.tree()->text(), member.memberSpan().offset);
    return error;
}

QString SetFileError::clause() const
{
    if (m_path.isEmpty())
        return m_reason;
    const QString place = tr("line %1, column %2, at %3")
                              .arg(QString::number(m_place.line), QString::number(m_place.column),
                                   JsonPath::shortened(m_path));
    return tr("%1 (%2)").arg(m_reason, place);
}

QString SetFileError::message(const QString &intent) const
{
    return tr("%1: %2; %3.").arg(intent, clause(), m_advice);
}

} // namespace interchange
