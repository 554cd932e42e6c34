#pragma once

#include "QueryTree.h"

#include <QRegularExpression>
#include <QString>
#include <QStringMatcher>

#include <array>

namespace kernel {

class EntryValue;
class QueryRun;

/// Looks for the text or regular expression of a condition in texts and values, case-insensitively. For one
/// thread.
class QueryPattern
{
public:
    /// @param run hears of expressions that take too long; must live as long as the pattern
    QueryPattern(const QueryText &text, QueryRun &run);

    /// A text is found anywhere; an empty one in every text.
    bool isIn(const QString &text) const;
    /// Looks at the value as kernel::valueText() writes it. False for a tag: it has no value.
    bool isIn(const EntryValue &value) const;

    /// The expression of a pattern, with a limit of steps; invalid where it cannot be read.
    static QRegularExpression expression(const QString &pattern);
    /// Where an invalid expression() went wrong, in the pattern that it was made of.
    static int errorOffset(const QRegularExpression &expression);

private:
    bool isMatch(const QString &text) const;
    void findPossibleTypes(const QString &needle);

    QueryRun &m_run;
    const bool m_isRegex;
    QStringMatcher m_needle;
    QRegularExpression m_expression;
    /// By value type: whether the needle can stand in its texts at all. Spares writing out most numbers.
    std::array<bool, 8> m_possible;
};

} // namespace kernel
