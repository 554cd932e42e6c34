#include "QueryComparison.h"

#include "NaturalText.h"
#include "kernel/document/ValueConversion.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace kernel {

namespace {

using Operator = QueryTerm::Operator;

/// The text as an entry of this type would hold it; invalid where it cannot.
QVariant readAs(nkMetadataTypes::ValueType type, const QString &text)
{
    const std::optional<EntryValue> value = convertedValue(text, type);
    return value ? value->toVariant() : QVariant();
}

template <typename Value>
int orderOf(const Value &left, const Value &right)
{
    return left < right ? -1 : int(right < left);
}

/// Whether a value is a single, as editors of numbers make them. It is shown by the shortest text that gives the
/// same single back, and has to be found by that text.
bool isSingle(double value)
{
    return std::abs(value) <= double(std::numeric_limits<float>::max()) && double(float(value)) == value;
}

} // namespace

QueryComparison::QueryComparison(Operator comparison, const QString &text)
    : m_comparison(comparison),
      m_text(text),
      m_time(readAs(nkMetadataTypes::Time, text).toTime()),
      m_date(readAs(nkMetadataTypes::Date, text).toDate()),
      m_dateTime(readAs(nkMetadataTypes::DateTime, text).toDateTime()),
      m_isWholeDay(text.trimmed().size() == 10 && m_date.isValid())
{
    bool ok = false;
    const double number = QLocale::c().toDouble(text.trimmed(), &ok);
    // What lies beyond all doubles is read as infinite, and compares like that.
    if (ok || std::isinf(number)) {
        m_number = number;
    }
    const QVariant truth = readAs(nkMetadataTypes::Boolean, text);
    if (truth.isValid()) {
        m_truth = truth.toBool();
    }
}

bool QueryComparison::holds(const EntryValue &value) const
{
    return !value.isTag() && holds(m_comparison, value.toVariant());
}

bool QueryComparison::holds(Operator comparison, const QVariant &value) const
{
    if (comparison == Operator::Equal) {
        return isEqual(value);
    }
    if (comparison == Operator::NotEqual) {
        return !isEqual(value);
    }
    const bool orEqual = comparison == Operator::LessOrEqual || comparison == Operator::GreaterOrEqual;
    if (orEqual && isEqual(value)) {
        return true;
    }
    if (value.userType() == QMetaType::QVariantList) {
        const QVariantList list = value.toList();
        return std::any_of(list.cbegin(), list.cend(), [this, comparison](const QVariant &element) {
            return holds(comparison, element);
        });
    }
    const std::optional<int> place = order(value);
    const bool less = comparison == Operator::Less || comparison == Operator::LessOrEqual;
    return place && (less ? *place < 0 : *place > 0);
}

bool QueryComparison::isEqual(const QVariant &value) const
{
    if (order(value) == 0 || valueText(value).compare(m_text, Qt::CaseInsensitive) == 0) {
        return true;
    }
    if (value.userType() != QMetaType::QVariantList) {
        return false;
    }
    const QVariantList list = value.toList();
    return std::any_of(list.cbegin(), list.cend(),
                       [this](const QVariant &element) { return isEqual(element); });
}

std::optional<int> QueryComparison::order(const QVariant &value) const
{
    switch (value.userType()) {
    case QMetaType::QString:
        return compareNaturalText(value.toString(), m_text);
    case QMetaType::Bool:
        return m_truth ? std::optional<int>(orderOf(value.toBool(), *m_truth)) : std::nullopt;
    case QMetaType::QTime:
        return m_time.isValid() ? std::optional<int>(orderOf(value.toTime(), m_time)) : std::nullopt;
    case QMetaType::QDate:
        return m_date.isValid() ? std::optional<int>(orderOf(value.toDate(), m_date)) : std::nullopt;
    case QMetaType::QDateTime:
        return dateTimeOrder(value.toDateTime());
    case QMetaType::UnknownType:
    case QMetaType::QVariantList:
        return std::nullopt;
    default: {
        bool ok = false;
        const double number = value.toDouble(&ok);
        return ok ? numberOrder(number) : std::nullopt;
    }
    }
}

std::optional<int> QueryComparison::numberOrder(double value) const
{
    if (!m_number || std::isnan(value) || std::isnan(*m_number)) {
        return std::nullopt;
    }
    // Whole numbers up to 32 bits are exact, and are not to be blurred.
    const bool isWhole = value == std::floor(value);
    if (!isWhole && isSingle(value) && std::abs(*m_number) <= double(std::numeric_limits<float>::max())
        && float(*m_number) == float(value)) {
        return 0;
    }
    return orderOf(value, *m_number);
}

std::optional<int> QueryComparison::dateTimeOrder(const QDateTime &value) const
{
    if (m_isWholeDay) {
        return orderOf(value.date(), m_date);
    }
    return m_dateTime.isValid() ? std::optional<int>(orderOf(value, m_dateTime)) : std::nullopt;
}

} // namespace kernel
