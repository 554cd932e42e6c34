#include "QueryLexer.h"

#include <array>

namespace kernel {

namespace {

using Kind = QueryToken::Kind;
using Field = QueryTerm::Field;
using Operator = QueryTerm::Operator;

struct PrefixName
{
    QLatin1String name;
    Field field;
};

const std::array<PrefixName, 5> Prefixes = {{{QLatin1String("key"), Field::Key},
                                             {QLatin1String("value"), Field::Value},
                                             {QLatin1String("set"), Field::Set},
                                             {QLatin1String("type"), Field::Type},
                                             {QLatin1String("object"), Field::Object}}};

const PrefixName *prefixOf(const QString &word)
{
    for (const PrefixName &prefix : Prefixes) {
        if (word.compare(prefix.name, Qt::CaseInsensitive) == 0) {
            return &prefix;
        }
    }
    return nullptr;
}

Kind kindOfWord(const QString &word)
{
    const auto is = [&word](const char *keyword) {
        return word.compare(QLatin1String(keyword), Qt::CaseInsensitive) == 0;
    };
    return is("and") ? Kind::And : is("or") ? Kind::Or : is("not") ? Kind::Not : Kind::Word;
}

Operator operatorOf(QChar sign, bool withEqual)
{
    switch (sign.unicode()) {
    case '<':
        return withEqual ? Operator::LessOrEqual : Operator::Less;
    case '>':
        return withEqual ? Operator::GreaterOrEqual : Operator::Greater;
    case '!':
        return Operator::NotEqual;
    default:
        return Operator::Equal;
    }
}

} // namespace

QueryToken QueryLexer::next()
{
    while (m_at < m_query.size() && m_query.at(m_at).isSpace()) {
        ++m_at;
    }
    if (m_at == m_query.size()) {
        QueryToken end;
        end.position = m_at;
        return end;
    }
    switch (at(m_at).unicode()) {
    case '(':
    case ')':
        return sign();
    case '"':
        return quoted();
    case '/':
        return regex();
    case '=':
    case '<':
    case '>':
        return comparison();
    default:
        return at(m_at) == QLatin1Char('!') && at(m_at + 1) == QLatin1Char('=') ? comparison() : word();
    }
}

QueryToken QueryLexer::fail(const QueryError &error)
{
    m_error = error;
    m_at = m_query.size();
    QueryToken token;
    token.kind = Kind::Error;
    token.position = error.position;
    return token;
}

QueryToken QueryLexer::sign()
{
    QueryToken token;
    token.position = m_at;
    token.text = at(m_at);
    token.kind = at(m_at) == QLatin1Char('(') ? Kind::Open : Kind::Close;
    ++m_at;
    return token;
}

QueryToken QueryLexer::comparison()
{
    QueryToken token;
    token.kind = Kind::Comparison;
    token.position = m_at;
    const bool withEqual = at(m_at) != QLatin1Char('=') && at(m_at + 1) == QLatin1Char('=');
    token.comparison = operatorOf(at(m_at), withEqual);
    token.text = m_query.mid(m_at, withEqual ? 2 : 1);
    m_at += token.text.size();
    return token;
}

/// A backslash takes what follows it as it is.
QueryToken QueryLexer::quoted()
{
    QueryToken token;
    token.kind = Kind::Quoted;
    token.position = m_at;
    for (int place = m_at + 1; place < m_query.size(); ++place) {
        if (at(place) == QLatin1Char('"')) {
            m_at = place + 1;
            return token;
        }
        if (at(place) == QLatin1Char('\\') && ++place == m_query.size()) {
            break;
        }
        token.text += at(place);
    }
    return fail(m_messages.unclosedQuote(m_at));
}

/// Backslashes belong to the expression, but for those before slashes.
QueryToken QueryLexer::regex()
{
    QueryToken token;
    token.kind = Kind::Regex;
    token.position = m_at;
    for (int place = m_at + 1; place < m_query.size(); ++place) {
        if (at(place) == QLatin1Char('/')) {
            if (!endsWord(place + 1)) {
                return fail(m_messages.regexRunsOn(m_at));
            }
            m_at = place + 1;
            return token;
        }
        if (at(place) == QLatin1Char('\\') && place + 1 < m_query.size()) {
            ++place;
            token.text += at(place) == QLatin1Char('/') ? QString() : QString(QLatin1Char('\\'));
        }
        token.text += at(place);
    }
    return fail(m_messages.unclosedRegex(m_at));
}

bool QueryLexer::endsWord(int position) const
{
    const QChar sign = at(position);
    return position >= m_query.size() || sign.isSpace() || sign == QLatin1Char('(')
           || sign == QLatin1Char(')') || sign == QLatin1Char('"') || sign == QLatin1Char('=')
           || sign == QLatin1Char('<') || sign == QLatin1Char('>')
           || (sign == QLatin1Char('!') && at(position + 1) == QLatin1Char('='));
}

QueryToken QueryLexer::word()
{
    QueryToken token;
    token.position = m_at;
    bool colonSeen = false;
    while (!endsWord(m_at)) {
        if (at(m_at) == QLatin1Char(':') && !colonSeen) {
            colonSeen = true;
            if (const PrefixName *prefix = prefixOf(m_query.mid(token.position, m_at - token.position))) {
                token.kind = Kind::Prefix;
                token.field = prefix->field;
                token.text = prefix->name + QLatin1Char(':');
                ++m_at;
                return token;
            }
        }
        ++m_at;
    }
    token.text = m_query.mid(token.position, m_at - token.position);
    token.kind = kindOfWord(token.text);
    return token;
}

} // namespace kernel
