#pragma once

#include "QueryError.h"

namespace kernel {

/// The sentences about texts that are no queries. Positions are those of QueryError.
class QueryMessages
{
public:
    explicit QueryMessages(const QString &query) : m_query(query) {}

    QueryError empty() const;
    QueryError unclosedQuote(int position) const;
    QueryError unclosedRegex(int position) const;
    QueryError unclosedBracket(int position) const;
    QueryError strayBracket(int position) const;
    QueryError emptyBrackets(int position) const;
    /// A word, bracket or operator that nothing but a condition may follow.
    QueryError missingCondition(const QString &after, int position) const;
    /// "and" or "or" without a condition before it.
    QueryError missingBefore(const QString &word, int position) const;
    QueryError missingText(const QString &prefix, int position) const;
    QueryError missingKey(const QString &comparison, int position) const;
    QueryError missingValue(const QString &comparison, int position) const;
    QueryError unorderedRegex(const QString &comparison, int position) const;
    QueryError regexRunsOn(int position) const;
    QueryError unreadableRegex(const QString &reason, int offset, int position) const;
    QueryError longRegex(int limit, int position) const;
    QueryError unknownType(int position, const QString &known) const;
    QueryError tooDeep(int limit, int position) const;
    QueryError tooMany(int limit, int position) const;

private:
    /// The place with what stands there: character 7 ("= 3").
    QString place(int position) const;

    const QString &m_query;
};

} // namespace kernel
