#pragma once

#include <interchange/gltf/ExtrasKey.h>
#include <interchange/json/JsonSpan.h>

#include <QString>
#include <QVariant>

namespace interchange {

/// What an entry read from extras is.
enum class ExtrasType : quint8 {
    String,  ///< `QString`
    Integer, ///< `int`
    Float,   ///< `double`
    Boolean, ///< `bool`
    List,    ///< `QVariantList`, see ExtrasEntry::value
    Tag      ///< a key without a value
};

/// One entry read from the extras of a node or a material, and where it stands in the JSON text.
struct ExtrasEntry
{
    /// The key as people see it: the member's own key, or a path key (see ExtrasKey) when `isPath` is set.
    /// Unique within its object.
    QString key;

    /// The value in the type's form; invalid for a tag.
    ///
    /// Elements of a list are `QString`, `int`, `double`, `bool`, or an invalid value for `null`. Numbers that
    /// fit neither `int` nor `double` are text here as they are outside of lists.
    QVariant value;

    /// First byte of the member: its key's quote. The member ends where the value ends.
    quint32 memberOffset = 0;
    JsonSpan valueSpan;
    ExtrasType type = ExtrasType::String;

    /// The value is a number in the file that no Integer and no Float can hold exactly enough: an integer
    /// beyond 32 bits, 1e400. Its text is the number's; as long as it stays a number it is written as one.
    /// On a list: at least one element is such a number.
    bool isNumber = false;

    /// The key is a path key: it stands for as many steps as ExtrasKey::split answers.
    bool isPath = false;

    /// The keys that lead to the value from the extras on; at least one.
    QStringList path() const { return isPath ? ExtrasKey::split(key) : QStringList(key); }
    JsonSpan memberSpan() const { return {memberOffset, valueSpan.end() - memberOffset}; }
};

/// A run of consecutive elements in one of the vectors of a GltfScene.
struct IndexRange
{
    quint32 first = 0;
    quint32 count = 0;

    quint32 end() const { return first + count; }
};

} // namespace interchange

Q_DECLARE_TYPEINFO(interchange::ExtrasEntry, Q_MOVABLE_TYPE);
