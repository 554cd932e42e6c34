#include "QueryMessages.h"

#include <QCoreApplication>

namespace kernel {

namespace {

/// How much of the query a sentence quotes.
constexpr int QuotedLength = 24;

QString tr(const char *text)
{
    return QCoreApplication::translate("Query", text);
}

} // namespace

QString QueryMessages::place(int position) const
{
    const QString number = QString::number(position + 1);
    if (position >= m_query.size()) {
        return tr("the end (character %1)").arg(number);
    }
    QString rest = m_query.mid(position, QuotedLength).simplified();
    if (m_query.size() - position > QuotedLength) {
        rest += QChar(0x2026);
    }
    return tr("character %1 (%2)").arg(number, rest);
}

QueryError QueryMessages::empty() const
{
    return {0, tr("The query is empty: type a word to search for.")};
}

QueryError QueryMessages::unclosedQuote(int position) const
{
    return {position,
            tr("The quoted text at %1 has no end: add a quote (\") where it ends.").arg(place(position))};
}

QueryError QueryMessages::unclosedRegex(int position) const
{
    return {position,
            tr("The regular expression at %1 has no end: add a slash (/) where it ends, or put the text in "
               "quotes.")
                .arg(place(position))};
}

QueryError QueryMessages::unclosedBracket(int position) const
{
    return {position, tr("The bracket at %1 is not closed: add \")\".").arg(place(position))};
}

QueryError QueryMessages::strayBracket(int position) const
{
    return {position, tr("The bracket at %1 closes nothing: remove it or add \"(\".").arg(place(position))};
}

QueryError QueryMessages::emptyBrackets(int position) const
{
    return {position, tr("The brackets at %1 are empty: write a condition into them.").arg(place(position))};
}

QueryError QueryMessages::missingCondition(const QString &after, int position) const
{
    return {
        position,
        tr("A condition is missing after \"%1\" at %2: add one, or put \"%1\" in quotes to search for it.")
            .arg(after, place(position))};
}

QueryError QueryMessages::missingBefore(const QString &word, int position) const
{
    return {
        position,
        tr("A condition is missing before \"%1\" at %2: add one, or put \"%1\" in quotes to search for it.")
            .arg(word, place(position))};
}

QueryError QueryMessages::missingText(const QString &prefix, int position) const
{
    return {position, tr("A text is missing after \"%1\" at %2: add one, for example %1name.")
                          .arg(prefix, place(position))};
}

QueryError QueryMessages::missingKey(const QString &comparison, int position) const
{
    return {position, tr("The comparison at %1 has no key before it: write KEY %2 VALUE.")
                          .arg(place(position), comparison)};
}

QueryError QueryMessages::missingValue(const QString &comparison, int position) const
{
    return {
        position,
        tr("A value is missing after \"%2\" at %1: write KEY %2 VALUE, with words such as \"and\" in quotes.")
            .arg(place(position), comparison)};
}

QueryError QueryMessages::unorderedRegex(const QString &comparison, int position) const
{
    return {position, tr("A regular expression at %1 cannot stand behind \"%2\": use = or !=.")
                          .arg(place(position), comparison)};
}

QueryError QueryMessages::regexRunsOn(int position) const
{
    return {position,
            tr("A blank is missing behind the regular expression at %1: add one, or put the whole text in "
               "quotes.")
                .arg(place(position))};
}

QueryError QueryMessages::unreadableRegex(const QString &reason, int offset, int position) const
{
    return {position, tr("The regular expression at %1 cannot be read: %2 at its character %3.")
                          .arg(place(position), reason, QString::number(offset + 1))};
}

QueryError QueryMessages::longRegex(int limit, int position) const
{
    return {position, tr("The regular expression at %1 is longer than %2 characters: shorten it.")
                          .arg(place(position), QString::number(limit))};
}

QueryError QueryMessages::unknownType(int position, const QString &known) const
{
    return {position, tr("No type is called like the text at %1: use %2.").arg(place(position), known)};
}

QueryError QueryMessages::tooDeep(int limit, int position) const
{
    return {position, tr("Brackets and \"not\" nest deeper than %2 levels at %1: use fewer of them.")
                          .arg(place(position), QString::number(limit))};
}

QueryError QueryMessages::tooMany(int limit, int position) const
{
    return {position, tr("The query has more than %2 conditions at %1: use fewer of them.")
                          .arg(place(position), QString::number(limit))};
}

} // namespace kernel
