#include "QueryParser.h"

#include "QueryPattern.h"

#include <QMetaEnum>

#include <utility>

namespace kernel {

namespace {

using Kind = QueryToken::Kind;
using Field = QueryTerm::Field;
using T = nkMetadataTypes;

QueryNode joined(QueryNode::Kind kind, std::vector<QueryNode> children)
{
    if (children.size() == 1) {
        return std::move(children.front());
    }
    QueryNode node;
    node.kind = kind;
    node.children = std::move(children);
    return node;
}

/// The type of this name, in any case; nothing where there is none.
std::optional<T::ValueType> typeNamed(const QString &name)
{
    if (name.compare(QLatin1String("Date and Time"), Qt::CaseInsensitive) == 0) {
        return T::DateTime;
    }
    const QMetaEnum types = QMetaEnum::fromType<T::ValueType>();
    for (int index = 0; index < types.keyCount(); ++index) {
        if (name.compare(QLatin1String(types.key(index)), Qt::CaseInsensitive) == 0) {
            return T::ValueType(types.value(index));
        }
    }
    return std::nullopt;
}

QString knownTypes()
{
    return QStringLiteral("String, Integer, Float, Boolean, Time, Date, \"Date and Time\", List, Tag");
}

} // namespace

QueryParser::QueryParser(const QString &query) : m_query(query), m_lexer(query), m_messages(query)
{
    advance();
}

std::optional<QueryNode> QueryParser::parse()
{
    if (m_token.kind == Kind::End) {
        return fail(m_messages.empty());
    }
    Parsed query = alternatives();
    if (query && m_token.kind != Kind::End) {
        return failHere();
    }
    return query;
}

void QueryParser::advance()
{
    m_previous = std::exchange(m_token, m_lexer.next());
}

QueryParser::Parsed QueryParser::fail(const QueryError &error)
{
    if (!m_failed) {
        m_failed = true;
        m_error = error;
    }
    return std::nullopt;
}

/// What stands here cannot stand here.
QueryParser::Parsed QueryParser::failHere()
{
    switch (m_token.kind) {
    case Kind::Error:
        return fail(m_lexer.error());
    case Kind::Comparison:
        return fail(m_messages.missingKey(m_token.text, m_token.position));
    case Kind::Close:
        if (m_previous.kind == Kind::Open) {
            return fail(m_messages.emptyBrackets(m_previous.position));
        }
        if (m_depth == 0 && m_previous.kind != Kind::And && m_previous.kind != Kind::Or
            && m_previous.kind != Kind::Not) {
            return fail(m_messages.strayBracket(m_token.position));
        }
        break;
    case Kind::And:
    case Kind::Or:
        return fail(m_messages.missingBefore(m_token.text, m_token.position));
    default:
        break;
    }
    return fail(m_messages.missingCondition(m_previous.text, m_previous.position));
}

bool QueryParser::startsCondition() const
{
    return m_token.isText() || m_token.kind == Kind::Prefix || m_token.kind == Kind::Open
           || m_token.kind == Kind::Not;
}

QueryParser::Parsed QueryParser::alternatives()
{
    std::vector<QueryNode> children;
    do {
        if (!children.empty()) {
            advance();
        }
        Parsed child = conjunction();
        if (!child) {
            return std::nullopt;
        }
        children.push_back(std::move(*child));
    } while (m_token.kind == Kind::Or);
    return joined(QueryNode::Kind::Or, std::move(children));
}

QueryParser::Parsed QueryParser::conjunction()
{
    std::vector<QueryNode> children;
    do {
        if (m_token.kind == Kind::And && !children.empty()) {
            advance();
        }
        Parsed child = unary();
        if (!child) {
            return std::nullopt;
        }
        children.push_back(std::move(*child));
    } while (m_token.kind == Kind::And || startsCondition());
    return joined(QueryNode::Kind::And, std::move(children));
}

QueryParser::Parsed QueryParser::unary()
{
    if (m_token.isText()) {
        return textOrComparison();
    }
    switch (m_token.kind) {
    case Kind::Prefix:
        return prefixed();
    case Kind::Open:
    case Kind::Not: {
        if (m_depth == DeepestNesting) {
            return fail(m_messages.tooDeep(DeepestNesting, m_token.position));
        }
        ++m_depth;
        Parsed inner = m_token.kind == Kind::Open ? bracketed() : negation();
        --m_depth;
        return inner;
    }
    default:
        return failHere();
    }
}

QueryParser::Parsed QueryParser::negation()
{
    advance();
    Parsed operand = unary();
    if (!operand) {
        return std::nullopt;
    }
    QueryNode node;
    node.kind = QueryNode::Kind::Not;
    node.children.push_back(std::move(*operand));
    return node;
}

QueryParser::Parsed QueryParser::bracketed()
{
    const int opened = m_token.position;
    advance();
    if (m_token.kind == Kind::End) {
        return fail(m_messages.unclosedBracket(opened));
    }
    Parsed inner = alternatives();
    if (!inner) {
        return std::nullopt;
    }
    if (m_token.kind == Kind::End) {
        return fail(m_messages.unclosedBracket(opened));
    }
    if (m_token.kind != Kind::Close) {
        return failHere();
    }
    advance();
    return inner;
}

QueryParser::Parsed QueryParser::prefixed()
{
    const QueryToken prefix = m_token;
    advance();
    if (m_token.kind == Kind::Error) {
        return failHere();
    }
    const QueryToken text = m_token;
    // Behind a prefix "and", "or" and "not" are words like others.
    const bool isKeyword = text.kind == Kind::And || text.kind == Kind::Or || text.kind == Kind::Not;
    if (!text.isText() && !isKeyword) {
        return fail(m_messages.missingText(prefix.text, prefix.position));
    }
    if (prefix.field == Field::Type) {
        return typeTerm(text);
    }
    if (!isReadable(text)) {
        return std::nullopt;
    }
    advance();
    QueryTerm term;
    term.field = prefix.field;
    term.text = {text.text, text.kind == Kind::Regex};
    return made(term);
}

QueryParser::Parsed QueryParser::typeTerm(const QueryToken &name)
{
    const auto type = name.kind == Kind::Regex ? std::nullopt : typeNamed(name.text);
    if (!type) {
        return fail(m_messages.unknownType(name.position, knownTypes()));
    }
    advance();
    QueryTerm term;
    term.field = Field::Type;
    term.type = *type;
    return made(term);
}

QueryParser::Parsed QueryParser::textOrComparison()
{
    const QueryToken text = m_token;
    if (!isReadable(text)) {
        return std::nullopt;
    }
    advance();
    if (m_token.kind == Kind::Comparison && text.kind != Kind::Regex) {
        return comparison(text);
    }
    QueryTerm term;
    term.text = {text.text, text.kind == Kind::Regex};
    return made(term);
}

QueryParser::Parsed QueryParser::comparison(const QueryToken &key)
{
    const QueryToken sign = m_token;
    advance();
    if (m_token.kind == Kind::Error) {
        return failHere();
    }
    if (!m_token.isText()) {
        return fail(m_messages.missingValue(sign.text, sign.position));
    }
    const bool isOrdered = sign.comparison != QueryTerm::Operator::Equal
                           && sign.comparison != QueryTerm::Operator::NotEqual;
    if (m_token.kind == Kind::Regex && isOrdered) {
        return fail(m_messages.unorderedRegex(sign.text, m_token.position));
    }
    if (!isReadable(m_token)) {
        return std::nullopt;
    }
    QueryTerm term;
    term.field = Field::Comparison;
    term.key = key.text;
    term.comparison = sign.comparison;
    term.text = {m_token.text, m_token.kind == Kind::Regex};
    advance();
    return made(term);
}

QueryParser::Parsed QueryParser::made(QueryTerm term)
{
    if (++m_conditions > MostConditions) {
        return fail(m_messages.tooMany(MostConditions, m_previous.position));
    }
    QueryNode node;
    node.term = std::move(term);
    return node;
}

/// Whether a text can be matched: all but bad regular expressions can.
bool QueryParser::isReadable(const QueryToken &text)
{
    if (text.kind != Kind::Regex) {
        return true;
    }
    if (text.text.size() > LongestRegex) {
        fail(m_messages.longRegex(LongestRegex, text.position));
        return false;
    }
    const QRegularExpression expression = QueryPattern::expression(text.text);
    if (!expression.isValid()) {
        const int offset = QueryPattern::errorOffset(expression);
        fail(m_messages.unreadableRegex(expression.errorString(), offset, text.position));
        return false;
    }
    return true;
}

} // namespace kernel
