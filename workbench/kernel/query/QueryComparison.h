#pragma once

#include "QueryTree.h"

#include <QDate>
#include <QDateTime>
#include <QTime>
#include <QVariant>

#include <optional>

namespace kernel {

class EntryValue;

/// The right side of KEY OPERATOR VALUE: compares values with a text, each by its own type.
///
/// Numbers compare as numbers, false is less than true, dates and times are read from ISO 8601 text (a date alone
/// compares with the day of a date-time), texts compare in natural order. A value also equals the text that
/// stands for it, in any case. A value that cannot be compared with the text is neither less nor greater nor
/// equal. A list is compared by its elements: one that fits is enough.
class QueryComparison
{
public:
    QueryComparison(QueryTerm::Operator comparison, const QString &text);

    /// Whether VALUE OPERATOR TEXT is true. False for a tag: it has no value. != is true exactly where = is not.
    bool holds(const EntryValue &value) const;

private:
    bool holds(QueryTerm::Operator comparison, const QVariant &value) const;
    bool isEqual(const QVariant &value) const;
    std::optional<int> order(const QVariant &value) const;
    std::optional<int> numberOrder(double value) const;
    std::optional<int> dateTimeOrder(const QDateTime &value) const;

    const QueryTerm::Operator m_comparison;
    const QString m_text;
    std::optional<double> m_number;
    std::optional<bool> m_truth;
    QTime m_time;
    QDate m_date;
    QDateTime m_dateTime;
    bool m_isWholeDay = false;
};

} // namespace kernel
