#pragma once

#include <QtGlobal>

namespace interchange {

/// A stretch of a JSON text: where it starts and how long it is, in bytes, counted from the first byte of
/// the text (a byte order mark counts). An empty span stands for "not there": no JSON value is empty.
struct JsonSpan
{
    quint32 offset = 0;
    quint32 length = 0;

    quint32 end() const { return offset + length; }
    bool isEmpty() const { return length == 0; }
    bool operator==(const JsonSpan &other) const { return offset == other.offset && length == other.length; }
    bool operator!=(const JsonSpan &other) const { return !(*this == other); }
};

} // namespace interchange

Q_DECLARE_TYPEINFO(interchange::JsonSpan, Q_PRIMITIVE_TYPE);
