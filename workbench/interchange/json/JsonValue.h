#pragma once

#include <interchange/json/JsonTree.h>

#include <QLatin1String>
#include <QVector>

#include <string_view>

namespace interchange {

class JsonChildren;

/// A look at one value of a JsonTree: two words, cheap to copy, valid as long as the tree lives.
///
/// An absent value (default-constructed, or a member that is not there) answers isPresent() false; of the other
/// questions only `is…()`, find() and children() may be asked then, and they answer "no" and "none".
class JsonValue
{
public:
    JsonValue() = default;
    JsonValue(const JsonTree *tree, quint32 index) : m_tree(tree), m_index(index) {}

    bool isPresent() const { return m_tree != nullptr; }
    JsonKind kind() const { return cell().kind; }
    bool isNull() const { return is(JsonKind::Null); }
    bool isBoolean() const { return is(JsonKind::Boolean); }
    bool isInteger() const { return is(JsonKind::Integer); }
    bool isNumber() const { return is(JsonKind::Integer) || is(JsonKind::Decimal); }
    bool isString() const { return is(JsonKind::String); }
    bool isArray() const { return is(JsonKind::Array); }
    bool isObject() const { return is(JsonKind::Object); }
    /// An object member, so that it has a key.
    bool isMember() const { return isPresent() && cell().keyLength > 0; }

    /// Position in the tree, in the order of the text; identifies the value within its tree.
    quint32 index() const { return m_index; }
    const JsonTree *tree() const { return m_tree; }

    /// The value in the text, quotes and brackets included.
    JsonSpan span() const { return {cell().offset, cell().length}; }
    /// The key in the text with its quotes; empty for what is no member.
    JsonSpan keySpan() const { return {cell().keyOffset, cell().keyLength}; }
    /// From the key's quote to the end of the value; the value alone for what is no member.
    JsonSpan memberSpan() const;
    /// `$.nodes[3].name`; see JsonTree::pathOf.
    QString path() const { return m_tree->pathOf(m_index); }

    /// The value's own bytes. A view into the text: it must not outlive the tree.
    std::string_view raw() const { return bytes(cell().offset, cell().length); }
    /// The bytes of the key between its quotes, still escaped; empty for what is no member. A view as raw() is.
    std::string_view rawKey() const
    {
        return isMember() ? bytes(cell().keyOffset + 1, cell().keyLength - 2) : std::string_view();
    }
    /// True when the key must be decoded to be compared.
    bool keyHasEscapes() const { return cell().keyEscaped; }

    /// The decoded key; empty for what is no member.
    QString key() const;
    /// True when the decoded key is this text, which must be ASCII without quotes, backslashes and controls.
    bool keyIs(QLatin1String text) const;

    /// The decoded text of a string, of other values their bytes as text. Halves of surrogate pairs that stand
    /// alone (`"\ud800"`) come as U+FFFD; `replaced`, when given, then becomes true and is left alone otherwise.
    QString toText(bool *replaced = nullptr) const;
    /// True for the literal `true`; false for everything else.
    bool toBool() const;
    /// The number when it is an Integer of 32 bits, signed; otherwise 0 with `ok` false.
    int toInt(bool *ok) const;
    /// The number as double; 0 with `ok` false for what is no number, for numbers beyond the range of a double
    /// (1e400) and for numbers that are not zero but would become zero (1e-400).
    double toDouble(bool *ok) const;

    /// The members of an object or the elements of an array, in the order of the text; none for the rest.
    JsonChildren children() const;
    /// True for an object or array that holds something.
    bool hasChildren() const { return isPresent() && cell().next > m_index + 1; }
    /// How many members or elements. Walks over them.
    quint32 count() const;
    /// The member with this key, absent when there is none or this is no object. A key that comes more than
    /// once answers its last member, as JSON readers commonly do.
    JsonValue find(QLatin1String key) const;
    /// The members of an object that a later member with the same decoded key hides, in the order of the text.
    QVector<JsonValue> hiddenMembers() const;

private:
    const JsonCell &cell() const { return m_tree->cell(m_index); }
    std::string_view bytes(quint32 offset, quint32 length) const
    {
        return {m_tree->text().constData() + offset, length};
    }
    bool is(JsonKind kind) const { return m_tree && cell().kind == kind; }

    const JsonTree *m_tree = nullptr;
    quint32 m_index = 0;
};

/// The children of one container, for range-based loops.
class JsonChildren
{
public:
    class Iterator
    {
    public:
        Iterator(const JsonTree *tree, quint32 index) : m_tree(tree), m_index(index) {}
        JsonValue operator*() const { return JsonValue(m_tree, m_index); }
        Iterator &operator++()
        {
            m_index = m_tree->cell(m_index).next;
            return *this;
        }
        bool operator!=(const Iterator &other) const { return m_index != other.m_index; }

    private:
        const JsonTree *m_tree;
        quint32 m_index;
    };

    JsonChildren() = default;
    JsonChildren(const JsonTree *tree, quint32 first, quint32 end) : m_tree(tree), m_first(first), m_end(end)
    {}
    Iterator begin() const { return {m_tree, m_first}; }
    Iterator end() const { return {m_tree, m_end}; }

private:
    const JsonTree *m_tree = nullptr;
    quint32 m_first = 0;
    quint32 m_end = 0;
};

} // namespace interchange

Q_DECLARE_TYPEINFO(interchange::JsonValue, Q_MOVABLE_TYPE);
