#include <interchange/SceneError.h>

#include <interchange/json/JsonPath.h>
#include <interchange/json/JsonValue.h>

namespace interchange {

SceneError SceneError::ofFile(const QString &reason, const QString &advice)
{
    SceneError error;
    error.m_reason = reason;
    error.m_advice = advice;
    return error;
}

SceneError SceneError::atByte(qint64 offset, const QString &reason)
{
    SceneError error = ofFile(reason, tr("the file is damaged: copy or export it again"));
    error.m_offset = offset;
    return error;
}

SceneError SceneError::atJson(const JsonError &json)
{
    SceneError error = atByte(json.offset, json.reason);
    error.m_line = json.place.line;
    error.m_column = json.place.column;
    error.m_path = json.path;
    return error;
}

SceneError SceneError::atValue(const JsonValue &value, const QString &reason)
{
    const quint32 offset = value.span().offset;
    const JsonPlace place = JsonPlace::of(value.tree()->text(), offset);
    SceneError error = ofFile(reason, tr("export the file again or correct this place in a text editor"));
    error.m_offset = offset;
    error.m_line = place.line;
    error.m_column = place.column;
    error.m_path = value.path();
    return error;
}

void SceneError::shift(qint64 jsonOffset)
{
    if (m_offset >= 0)
        m_offset += jsonOffset;
}

QString SceneError::message(const QString &fileName) const
{
    const QString place = placeText();
    const QString what = place.isEmpty() ? m_reason : tr("%1 (%2)").arg(m_reason, place);
    return tr("“%1” cannot be opened: %2; %3.").arg(fileName, what, m_advice);
}

QString SceneError::placeText() const
{
    if (m_offset < 0)
        return QString();
    if (m_line == 0)
        return tr("at byte %1").arg(m_offset);
    return tr("line %1, column %2, byte %3, at %4")
        .arg(QString::number(m_line), QString::number(m_column), QString::number(m_offset),
             JsonPath::shortened(m_path));
}

} // namespace interchange
