#pragma once

#include <nkKernelServices/nkMetadataTypes.h>

#include <QString>

#include <vector>

namespace kernel {

/// What a query compares with or looks for: a text, or the pattern of a regular expression.
struct QueryText
{
    QString text;
    bool isRegex = false;
};

/// One condition of a query. A set meets it or not, whatever the others say.
struct QueryTerm
{
    /// Where the text is looked for; Comparison: key OPERATOR text.
    enum class Field { Anywhere, Key, Value, Set, Type, Object, Comparison };
    enum class Operator { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

    Field field = Field::Anywhere;
    QueryText text;
    /// Of a comparison.
    QString key;
    Operator comparison = Operator::Equal;
    /// Of a Type condition; Tag asks for tags.
    nkMetadataTypes::ValueType type = nkMetadataTypes::String;
};

/// A query that has been read: conditions joined by and, or and not. Never deeper than QueryParser allows.
struct QueryNode
{
    enum class Kind { Term, And, Or, Not };

    Kind kind = Kind::Term;
    QueryTerm term;
    /// Two or more of And and Or, one of Not.
    std::vector<QueryNode> children;

    bool asksFor(QueryTerm::Field field) const
    {
        for (const QueryNode &child : children) {
            if (child.asksFor(field)) {
                return true;
            }
        }
        return kind == Kind::Term && term.field == field;
    }
};

} // namespace kernel
