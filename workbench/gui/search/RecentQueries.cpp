#include "RecentQueries.h"

#include <nkKernelServices/nkPreferencesService.h>

RecentQueries::RecentQueries(int module)
    : m_key(QStringLiteral("AdvancedSearch/%1/RecentQueries").arg(module))
{}

QStringList RecentQueries::list() const
{
    return nkPreferencesService::the().getStringListValue(m_key).mid(0, MostQueries);
}

void RecentQueries::add(const QString &query)
{
    const QString plain = query.trimmed();
    if (plain.isEmpty() || plain.size() > LongestQuery) {
        return;
    }
    QStringList queries = list();
    queries.removeAll(plain);
    queries.prepend(plain);
    nkPreferencesService::the().setStringListValue(m_key, queries.mid(0, MostQueries), true);
}

void RecentQueries::clear()
{
    nkPreferencesService::the().setStringListValue(m_key, {}, true);
}
