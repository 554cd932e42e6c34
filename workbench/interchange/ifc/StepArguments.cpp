#include <interchange/ifc/StepArguments.h>

#include <algorithm>
#include <charconv>

namespace interchange {

namespace {

bool isWordPart(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

size_t lengthOf(std::string_view text, bool (*isPart)(char))
{
    return size_t(std::find_if_not(text.begin(), text.end(), isPart) - text.begin());
}

const StepValue &omitted()
{
    static const StepValue value;
    return value;
}

} // namespace

bool StepArguments::read(std::string_view text)
{
    m_values.clear();
    m_outer.clear();
    m_open.clear();
    m_rest = text;
    skipBlanks();
    bool isGood = peek() == '(' && open(StepKind::List, {});
    // What is wanted next: a value, or what stands between values.
    bool isValueWanted = true;
    while (isGood && !m_open.empty()) {
        skipBlanks();
        const bool isEmptyList = m_values.size() == size_t(m_open.back()) + 1;
        if (peek() == ')' && (!isValueWanted || isEmptyList)) {
            isGood = close();
            isValueWanted = false;
        } else if (isValueWanted) {
            const size_t depth = m_open.size();
            isGood = readValue();
            isValueWanted = m_open.size() > depth;
        } else {
            isGood = peek() == ',';
            m_rest.remove_prefix(isGood ? 1 : 0);
            isValueWanted = true;
        }
    }
    if (!isGood) {
        m_values.clear();
        m_outer.clear();
    }
    return isGood;
}

bool StepArguments::readValue()
{
    switch (const char c = peek()) {
    case '$':
        return add(StepKind::Omitted, m_rest.substr(0, 1));
    case '*':
        return add(StepKind::Derived, m_rest.substr(0, 1));
    case '(':
        return open(StepKind::List, {});
    case '\'':
        return readText(c, StepKind::Text);
    case '"':
        return readText(c, StepKind::Binary);
    case '#':
    case '.':
        return readWord();
    default:
        return isWordPart(c) && !isDigit(c) ? readWord() : readNumber();
    }
}

/// A quote inside is doubled.
bool StepArguments::readText(char quote, StepKind kind)
{
    size_t end = 1;
    for (;; end += 2) {
        end = m_rest.find(quote, end);
        if (end == std::string_view::npos)
            return false;
        if (end + 1 >= m_rest.size() || m_rest[end + 1] != quote)
            break;
    }
    m_values.push_back({kind, m_rest.substr(1, end - 1), quint32(m_values.size() + 1)});
    if (m_open.size() == 1)
        m_outer.push_back(quint32(m_values.size() - 1));
    m_rest.remove_prefix(end + 1);
    return true;
}

/// A reference, an enumeration, or a type with its value in brackets.
bool StepArguments::readWord()
{
    const char first = peek();
    const bool isMarked = first == '#' || first == '.';
    const std::string_view rest = m_rest.substr(isMarked ? 1 : 0);
    const std::string_view word = rest.substr(0, lengthOf(rest, first == '#' ? isDigit : isWordPart));
    if (word.empty())
        return false;
    if (first == '#') {
        m_rest.remove_prefix(1);
        return add(StepKind::Reference, word);
    }
    if (first == '.') {
        if (rest.size() == word.size() || rest[word.size()] != '.')
            return false;
        m_rest.remove_prefix(1);
        const bool isAdded = add(StepKind::Enumeration, word);
        m_rest.remove_prefix(1);
        return isAdded;
    }
    m_rest.remove_prefix(word.size());
    skipBlanks();
    return peek() == '(' && open(StepKind::Typed, word);
}

bool StepArguments::readNumber()
{
    const auto isPart = [](char c) {
        return isDigit(c) || c == '+' || c == '-' || c == '.' || c == 'E' || c == 'e';
    };
    const std::string_view number = m_rest.substr(0, lengthOf(m_rest, isPart));
    if (number.empty() || std::none_of(number.begin(), number.end(), isDigit))
        return false;
    const bool isReal = number.find_first_of(".Ee") != std::string_view::npos;
    return add(isReal ? StepKind::Real : StepKind::Integer, number);
}

bool StepArguments::open(StepKind kind, std::string_view text)
{
    if (m_open.size() > MaximalDepth)
        return false;
    if (m_open.size() == 1)
        m_outer.push_back(quint32(m_values.size()));
    m_open.push_back(quint32(m_values.size()));
    m_values.push_back({kind, text, 0});
    m_rest.remove_prefix(1);
    return true;
}

bool StepArguments::close()
{
    StepValue &value = m_values[m_open.back()];
    value.next = quint32(m_values.size());
    const quint32 child = m_open.back() + 1;
    m_open.pop_back();
    m_rest.remove_prefix(1);
    return value.kind != StepKind::Typed || (child < value.next && m_values[child].next == value.next);
}

/// Of a value whose text is the next thing to come.
bool StepArguments::add(StepKind kind, std::string_view text)
{
    if (m_open.size() == 1)
        m_outer.push_back(quint32(m_values.size()));
    m_values.push_back({kind, text, quint32(m_values.size() + 1)});
    m_rest.remove_prefix(text.size());
    return true;
}

void StepArguments::skipBlanks()
{
    for (;;) {
        const size_t start = m_rest.find_first_not_of(" \t\r\n");
        m_rest.remove_prefix(std::min(start, m_rest.size()));
        const size_t end = m_rest.substr(0, 2) == "/*" ? m_rest.find("*/", 2) : std::string_view::npos;
        if (end == std::string_view::npos)
            return;
        m_rest.remove_prefix(end + 2);
    }
}

const StepValue &StepArguments::at(int place) const
{
    return size_t(place) < m_outer.size() ? m_values[m_outer[size_t(place)]] : omitted();
}

std::vector<const StepValue *> StepArguments::children(const StepValue &value) const
{
    std::vector<const StepValue *> found;
    if (value.kind != StepKind::List && value.kind != StepKind::Typed)
        return found;
    for (quint32 i = placeOf(value) + 1; i < value.next; i = m_values[i].next)
        found.push_back(&m_values[i]);
    return found;
}

const StepValue &StepArguments::inner(const StepValue &value) const
{
    return value.kind == StepKind::Typed ? m_values[placeOf(value) + 1] : value;
}

std::vector<quint64> StepArguments::references(const StepValue &value) const
{
    std::vector<quint64> found;
    const StepValue &named = inner(value);
    if (named.kind == StepKind::Reference)
        found.push_back(reference(named));
    for (const StepValue *child : children(named)) {
        if (child->kind == StepKind::Reference)
            found.push_back(reference(*child));
    }
    return found;
}

/// Numbers that no record can have are those of no record.
quint64 StepArguments::reference(const StepValue &value)
{
    quint64 number = 0;
    std::from_chars(value.text.data(), value.text.data() + value.text.size(), number);
    return value.kind == StepKind::Reference ? number : 0;
}

} // namespace interchange
