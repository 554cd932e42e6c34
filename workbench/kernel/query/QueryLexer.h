#pragma once

#include "QueryError.h"
#include "QueryMessages.h"
#include "QueryTree.h"

#include <QString>

namespace kernel {

/// A piece of a query.
struct QueryToken
{
    enum class Kind { End, Error, Word, Quoted, Regex, Prefix, Comparison, Open, Close, And, Or, Not };

    Kind kind = Kind::End;
    /// From 0.
    int position = 0;
    /// As written, but of Quoted and Regex what stands between the marks, without escapes.
    QString text;
    /// Of Prefix.
    QueryTerm::Field field = QueryTerm::Field::Anywhere;
    /// Of Comparison.
    QueryTerm::Operator comparison = QueryTerm::Operator::Equal;

    bool isText() const { return kind == Kind::Word || kind == Kind::Quoted || kind == Kind::Regex; }
};

/// Cuts a query into pieces, one at a time, from the left to the right.
class QueryLexer
{
public:
    /// @param query must live as long as the lexer
    explicit QueryLexer(const QString &query) : m_query(query), m_messages(query) {}

    /// The next piece; End for ever behind the last one, Error where a text has no end.
    QueryToken next();
    /// The reason for an Error.
    const QueryError &error() const { return m_error; }

private:
    QChar at(int position) const { return position < m_query.size() ? m_query.at(position) : QChar(); }
    bool endsWord(int position) const;
    QueryToken sign();
    QueryToken comparison();
    QueryToken quoted();
    QueryToken regex();
    QueryToken word();
    QueryToken fail(const QueryError &error);

    const QString &m_query;
    const QueryMessages m_messages;
    QueryError m_error;
    int m_at = 0;
};

} // namespace kernel
