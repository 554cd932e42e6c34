#pragma once

#include <interchange/json/JsonSpan.h>

#include <QByteArray>
#include <QString>

#include <vector>

namespace interchange {

class JsonValue;

/// What a JSON value is. Whole numbers written without point and exponent are told from all other numbers,
/// because metadata keeps the two apart.
enum class JsonKind : quint8 {
    Null,
    Boolean,
    Integer, ///< a number without fraction and exponent, of any length
    Decimal, ///< a number with a fraction or an exponent
    String,
    Array,
    Object
};

/// One value of a JsonTree as it lies in memory: 24 bytes, children directly behind their container.
struct JsonCell
{
    quint32 offset = 0;    ///< first byte of the value
    quint32 length = 0;    ///< bytes of the value, quotes and brackets included
    quint32 keyOffset = 0; ///< first byte of the member's key, its quote included
    quint32 keyLength = 0; ///< bytes of the key with both quotes; 0 for what is no object member
    quint32 next = 0;      ///< index behind the last value inside this one: the next sibling, if there is one
    JsonKind kind = JsonKind::Null;
    bool valueEscaped = false; ///< the string holds a backslash and must be decoded
    bool keyEscaped = false;   ///< the same for the key
};

/// A parsed JSON text: the text itself and one cell a value, in the order of the text.
///
/// Nothing is decoded: numbers stay their text, strings are decoded when asked for, members keep their order,
/// and keys that come twice are all there. Made by JsonReader; values are looked at through JsonValue, which
/// points into the tree, so the tree must outlive them.
class JsonTree
{
public:
    /// The text that the spans count in. Shared, not copied.
    const QByteArray &text() const { return m_text; }

    /// False for a tree that was never filled or whose reading failed.
    bool isEmpty() const { return m_cells.empty(); }

    /// How many values the text holds, containers included.
    quint32 size() const { return static_cast<quint32>(m_cells.size()); }

    /// The outermost value; an absent value when the tree is empty.
    JsonValue root() const;

    const JsonCell &cell(quint32 index) const { return m_cells[index]; }

    /// Where the value with this index stands, as JSON path: `$.nodes[3].extras["part no"]`. Takes time in
    /// proportion to the values before it on every level; meant for messages.
    QString pathOf(quint32 index) const;

private:
    friend class JsonParser;

    QByteArray m_text;
    std::vector<JsonCell> m_cells;
};

} // namespace interchange
