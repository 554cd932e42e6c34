#pragma once

#include "QueryError.h"
#include "QueryLexer.h"
#include "QueryTree.h"

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QString>

#include <optional>

namespace kernel {

/// Reads queries. Every text is answered: by a query or by the first thing that is wrong with it.
///
/// not binds closer than and, and closer than or; conditions that stand side by side are joined by and.
class NK_KERNEL_SERVICES_EXPORT QueryParser
{
public:
    /// Deepest nesting of brackets and "not".
    static constexpr int DeepestNesting = 100;
    static constexpr int MostConditions = 1000;
    static constexpr int LongestRegex = 10000;

    /// @param query must live as long as the parser
    explicit QueryParser(const QString &query);

    /// To be called once. Nothing where the text is no query; error() says why.
    std::optional<QueryNode> parse();
    const QueryError &error() const { return m_error; }

private:
    using Parsed = std::optional<QueryNode>;

    void advance();
    bool startsCondition() const;
    Parsed fail(const QueryError &error);
    Parsed failHere();
    Parsed alternatives();
    Parsed conjunction();
    Parsed unary();
    Parsed negation();
    Parsed bracketed();
    Parsed prefixed();
    Parsed textOrComparison();
    Parsed comparison(const QueryToken &key);
    Parsed made(QueryTerm term);
    Parsed typeTerm(const QueryToken &name);
    bool isReadable(const QueryToken &text);

    const QString &m_query;
    QueryLexer m_lexer;
    const QueryMessages m_messages;
    QueryToken m_token;
    QueryToken m_previous;
    QueryError m_error;
    bool m_failed = false;
    int m_depth = 0;
    int m_conditions = 0;
};

} // namespace kernel
