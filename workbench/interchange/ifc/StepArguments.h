#pragma once

#include <QtGlobal>

#include <string_view>
#include <vector>

namespace interchange {

enum class StepKind : quint8 {
    Omitted, ///< `$`
    Derived, ///< `*`
    Integer,
    Real,
    Text,        ///< text() is the inside of the quotes, still escaped
    Enumeration, ///< text() without the points
    Binary,      ///< text() is the inside of the quotes
    Reference,   ///< text() is the number of a record
    Typed,       ///< text() is the type; the only child is the value
    List
};

/// One value of a record. Values stand in one list, each followed by its children.
struct StepValue
{
    StepKind kind = StepKind::Omitted;
    std::string_view text; ///< a view into the file
    quint32 next = 0;      ///< the place behind it and its children
};

/// The values in the brackets of one record. Can be used again for the next one; keeps its room.
class StepArguments
{
public:
    /// Lists and typed values inside each other.
    static constexpr int MaximalDepth = 32;

    /// Reads the text from the opening bracket to the closing one. False where it is not what records hold; then
    /// there are no values.
    bool read(std::string_view text);

    /// The value at this place among the outermost ones; an omitted one behind their end.
    const StepValue &at(int place) const;
    /// The children of a value that is one of these here; none for what has none. Good until the next read().
    std::vector<const StepValue *> children(const StepValue &value) const;
    /// The value itself, or what stands in it where it is a typed one.
    const StepValue &inner(const StepValue &value) const;
    /// The numbers of records that the value names: it may be a reference, a list of them, or a typed list.
    std::vector<quint64> references(const StepValue &value) const;

    static quint64 reference(const StepValue &value);

private:
    bool readValue();
    bool readText(char quote, StepKind kind);
    bool readWord();
    bool readNumber();
    bool open(StepKind kind, std::string_view text);
    bool close();
    bool add(StepKind kind, std::string_view text);
    void skipBlanks();
    char peek() const { return m_rest.empty() ? '\0' : m_rest.front(); }
    quint32 placeOf(const StepValue &value) const { return quint32(&value - m_values.data()); }

    std::string_view m_rest;
    std::vector<StepValue> m_values;
    std::vector<quint32> m_outer; ///< the outermost values
    std::vector<quint32> m_open;  ///< what is being read
};

} // namespace interchange
