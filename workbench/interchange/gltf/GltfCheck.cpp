#include <interchange/gltf/GltfCheck.h>

#include <cmath>
#include <limits>

namespace interchange {

namespace {

/// Whole numbers may be written as 3, 3.0 or 3e0: JSON has one kind of number.
bool toWhole(const JsonValue &value, qint32 &whole)
{
    bool ok = false;
    if (value.isInteger()) {
        whole = value.toInt(&ok);
        return ok;
    }
    const double number = value.toDouble(&ok);
    if (!ok || number != std::floor(number) || std::fabs(number) > std::numeric_limits<qint32>::max())
        return false;
    whole = static_cast<qint32>(number);
    return true;
}

} // namespace

bool GltfCheck::isArrayOfObjects(const JsonValue &value)
{
    if (!isArray(value))
        return false;
    for (const JsonValue element : value.children()) {
        if (!isObject(element))
            return false;
    }
    return true;
}

bool GltfCheck::isIndex(const JsonValue &value, quint32 count, QLatin1String things, qint32 &index)
{
    if (!value.isPresent())
        return true;
    if (!value.isNumber())
        return fail(value, tr("a number is expected, but there is %1").arg(nameOf(value.kind())));
    qint32 whole = -1;
    if (!toWhole(value, whole) || whole < 0)
        return fail(value, tr("a whole number from 0 is expected"));
    if (static_cast<quint32>(whole) >= count)
        return fail(value, tr("the number points at %1[%2], but the file has only %3 of them")
                               .arg(things, QString::number(whole), QString::number(count)));
    index = whole;
    return true;
}

bool GltfCheck::is(const JsonValue &value, JsonKind kind)
{
    if (!value.isPresent() || value.kind() == kind)
        return true;
    return fail(value, tr("%1 is expected, but there is %2").arg(nameOf(kind), nameOf(value.kind())));
}

bool GltfCheck::fail(const JsonValue &value, const QString &reason)
{
    if (!m_error.isSet())
        m_error = SceneError::atValue(value, reason);
    return false;
}

QString GltfCheck::nameOf(JsonKind kind)
{
    switch (kind) {
    case JsonKind::Null:
        return tr("null");
    case JsonKind::Boolean:
        return tr("true or false");
    case JsonKind::Integer:
    case JsonKind::Decimal:
        return tr("a number");
    case JsonKind::String:
        return tr("a text");
    case JsonKind::Array:
        return tr("an array");
    case JsonKind::Object:
        return tr("an object");
    }
    return QString();
}

} // namespace interchange
