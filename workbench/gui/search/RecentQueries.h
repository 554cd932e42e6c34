#pragma once

#include <QStringList>

/// The queries that a module has searched for lately, the newest first; kept in nkPreferencesService.
class RecentQueries
{
public:
    static constexpr int MostQueries = 12;
    /// Longer queries are built by programs, not typed, and are not kept: characters.
    static constexpr int LongestQuery = 1000;

    explicit RecentQueries(int module);

    QStringList list() const;
    /// Puts a query first, once. Blanks around it do not count; an empty one is not kept.
    void add(const QString &query);
    void clear();

private:
    const QString m_key;
};
