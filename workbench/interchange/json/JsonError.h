#pragma once

#include <QByteArray>
#include <QString>

namespace interchange {

/// A place in a JSON text as a person counts: lines and columns from 1, columns in characters (code points).
/// A line ends with "\n", "\r\n" or a "\r" alone. A byte order mark is no column.
struct JsonPlace
{
    int line = 1;
    int column = 1;

    /// The place of the byte at `offset`; offsets behind the end count as the end.
    static JsonPlace of(const QByteArray &text, quint32 offset);
};

/// Why a JSON text cannot be read.
enum class JsonErrorCode {
    None,
    Empty,          ///< nothing but white space
    Truncated,      ///< the text ends inside a value
    UnexpectedText, ///< a character that cannot stand at its place
    BadNumber,
    BadString, ///< a control character or an unknown escape
    BadUtf8,
    TooDeep,      ///< more containers inside each other than allowed
    TooMany,      ///< more values than allowed
    TrailingText, ///< something behind the outermost value
    Cancelled     ///< nothing is wrong: the reader was told to end
};

/// The first thing wrong in a JSON text: code, place and a reason for people ("a comma or “]” is expected").
struct JsonError
{
    JsonErrorCode code = JsonErrorCode::None;
    quint32 offset = 0; ///< byte of the text
    JsonPlace place;
    QString path;   ///< the innermost value that was being read: `$.nodes[3].name`
    QString reason; ///< a clause without a capital and a full stop, translated

    bool isSet() const { return code != JsonErrorCode::None; }
};

} // namespace interchange
