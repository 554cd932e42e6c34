#include "QueryPattern.h"

#include "QueryRun.h"
#include "kernel/document/ValueConversion.h"

#include <algorithm>

namespace kernel {

namespace {

/// Steps that one expression may take from one place of a text. An expression that backtracks without end gets
/// there within milliseconds.
const QString StepLimit = QStringLiteral("(*LIMIT_MATCH=200000)");

bool isMadeOf(const QString &needle, const char *characters)
{
    const QLatin1String allowed(characters);
    return std::all_of(needle.cbegin(), needle.cend(), [allowed](QChar character) {
        return std::any_of(allowed.begin(), allowed.end(),
                           [character](char one) { return character.toCaseFolded() == QLatin1Char(one); });
    });
}

} // namespace

QueryPattern::QueryPattern(const QueryText &text, QueryRun &run)
    : m_run(run), m_isRegex(text.isRegex), m_needle(m_isRegex ? QString() : text.text, Qt::CaseInsensitive)
{
    m_possible.fill(true);
    if (m_isRegex) {
        m_expression = expression(text.text);
        m_expression.optimize();
    } else {
        findPossibleTypes(text.text);
    }
}

void QueryPattern::findPossibleTypes(const QString &needle)
{
    const auto isPartOf = [&needle](const char *word) {
        return QLatin1String(word).contains(needle, Qt::CaseInsensitive);
    };
    m_possible[nkMetadataTypes::Integer] = isMadeOf(needle, "-0123456789");
    m_possible[nkMetadataTypes::Float] = isMadeOf(needle, "+-.0123456789einfa");
    m_possible[nkMetadataTypes::Boolean] = isPartOf("true") || isPartOf("false");
    m_possible[nkMetadataTypes::Time] = isMadeOf(needle, "0123456789:.");
    m_possible[nkMetadataTypes::Date] = isMadeOf(needle, "0123456789-");
    m_possible[nkMetadataTypes::DateTime] = isMadeOf(needle, "0123456789-:.+tz");
}

QRegularExpression QueryPattern::expression(const QString &pattern)
{
    return QRegularExpression(StepLimit + pattern, QRegularExpression::CaseInsensitiveOption
                                                       | QRegularExpression::UseUnicodePropertiesOption);
}

int QueryPattern::errorOffset(const QRegularExpression &expression)
{
    return qMax(0, expression.patternErrorOffset() - StepLimit.size());
}

bool QueryPattern::isIn(const QString &text) const
{
    return m_isRegex ? isMatch(text) : m_needle.indexIn(text) >= 0;
}

bool QueryPattern::isMatch(const QString &text) const
{
    if (m_run.isRegexLate()) {
        m_run.failRegex();
        return false;
    }
    const QRegularExpressionMatch match = m_expression.match(text);
    // Beyond the limit of steps there is no answer.
    if (!match.isValid()) {
        m_run.failRegex();
    }
    return match.hasMatch();
}

bool QueryPattern::isIn(const EntryValue &value) const
{
    if (value.isTag()) {
        return false;
    }
    const nkMetadataTypes::ValueType type = value.type();
    if (!m_possible[size_t(type)]) {
        return false;
    }
    const QVariant variant = value.toVariant();
    // Most values are texts: looked at where they lie.
    return type == nkMetadataTypes::String ? isIn(*static_cast<const QString *>(variant.constData()))
                                           : isIn(valueText(variant));
}

} // namespace kernel
