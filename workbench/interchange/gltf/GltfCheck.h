#pragma once

#include <interchange/SceneError.h>
#include <interchange/json/JsonValue.h>

#include <QCoreApplication>

#include <array>

namespace interchange {

/// Questions to the values of a scene file whose answer "no" makes the file unreadable; keeps the first such answer
/// as the error. Members that are not there pass every check: glTF leaves nearly everything out at will.
class GltfCheck
{
    Q_DECLARE_TR_FUNCTIONS(GltfCheck)

public:
    bool isObject(const JsonValue &value) { return is(value, JsonKind::Object); }
    bool isArray(const JsonValue &value) { return is(value, JsonKind::Array); }
    bool isText(const JsonValue &value) { return is(value, JsonKind::String); }
    /// An array whose elements are all objects.
    bool isArrayOfObjects(const JsonValue &value);

    /// A whole number from 0 to `count` - 1, which `index` then is (left alone for an absent value). `count` is
    /// how many things there are to point at, `things` what the file calls them.
    bool isIndex(const JsonValue &value, quint32 count, QLatin1String things, qint32 &index);

    /// Notes an error at this value; false, for the caller to pass on.
    bool fail(const JsonValue &value, const QString &reason);

    const SceneError &error() const { return m_error; }

private:
    bool is(const JsonValue &value, JsonKind kind);
    static QString nameOf(JsonKind kind);

    SceneError m_error;
};

/// The members of `object` with these keys, absent where there is none; of equal keys the last. One walk.
template <size_t Count>
std::array<JsonValue, Count> knownMembers(const JsonValue &object,
                                          const std::array<QLatin1String, Count> &keys)
{
    std::array<JsonValue, Count> found;
    for (const JsonValue member : object.children()) {
        for (size_t i = 0; i < Count; ++i) {
            if (member.keyIs(keys[i]))
                found[i] = member;
        }
    }
    return found;
}

} // namespace interchange
