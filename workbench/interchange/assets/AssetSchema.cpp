#include "AssetSchema.h"

#include "AssetConnection.h"
#include "AssetTrouble.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>

#include <vector>

using kernel::AssetResult;

namespace interchange {

namespace {

/// The statements that lead from one layout to the next. Never changed once they were published: databases out there
/// have taken them.
const std::vector<std::vector<const char *>> &steps()
{
    static const std::vector<std::vector<const char *>> all{
        {"CREATE TABLE asset_schema (layout INTEGER NOT NULL)",
         "INSERT INTO asset_schema (layout) VALUES (0)",
         // search_name is the name without case: the databases fold only some letters by themselves.
         "CREATE TABLE assets (id VARCHAR(36) NOT NULL PRIMARY KEY, name TEXT NOT NULL, search_name TEXT NOT "
         "NULL, "
         "newest INTEGER NOT NULL)",
         "CREATE TABLE asset_versions (asset VARCHAR(36) NOT NULL REFERENCES assets (id), version INTEGER "
         "NOT NULL, "
         "name TEXT NOT NULL, author TEXT NOT NULL, changed VARCHAR(24) NOT NULL, content TEXT NOT NULL, "
         "PRIMARY KEY (asset, version))"},
        // One holder at a time: the session that may store, and its person's name for the others.
        {"ALTER TABLE assets ADD COLUMN holder TEXT NOT NULL DEFAULT ''",
         "ALTER TABLE assets ADD COLUMN session VARCHAR(36) NOT NULL DEFAULT ''"},
    };
    return all;
}

} // namespace

AssetResult AssetSchema::look(int &layout)
{
    return readLayout(layout) ? judge(layout) : m_connection.trouble();
}

AssetResult AssetSchema::bringUpToDate(int target)
{
    int layout = 0;
    const AssetResult verdict = look(layout);
    if (!verdict.isDone() || layout >= target) {
        return verdict;
    }
    if (!m_connection.begin()) {
        return m_connection.trouble();
    }
    if (takeSteps(target) && m_connection.commit()) {
        return {};
    }
    m_connection.rollback();
    return m_connection.trouble();
}

AssetResult AssetSchema::judge(int layout) const
{
    const AssetAddress &address = m_connection.address();
    if (m_isForeign) {
        return AssetResult::failed(AssetTrouble::foreign(address));
    }
    return layout > Newest ? AssetResult::failed(AssetTrouble::newer(address, layout, Newest))
                           : AssetResult();
}

/// @param layout receives 0 where the database is empty
bool AssetSchema::readLayout(int &layout)
{
    // A file that is no database at all says so only when it is read.
    if (!m_connection.address().isServer() && !m_connection.run("SELECT count(*) FROM sqlite_master")) {
        return false;
    }
    const QStringList tables = m_connection.database().tables();
    const bool isOurs = tables.contains(QLatin1String("asset_schema"));
    m_isForeign = !isOurs && !tables.isEmpty();
    layout = 0;
    if (!isOurs) {
        return true;
    }
    QSqlQuery query = m_connection.query();
    if (!m_connection.run(query, "SELECT layout FROM asset_schema")) {
        return false;
    }
    m_isForeign = !query.next();
    layout = m_isForeign ? 0 : query.value(0).toInt();
    return true;
}

bool AssetSchema::takeSteps(int target)
{
    int layout = 0;
    // Read again: somebody else may have been faster.
    if (!lock() || !readLayout(layout)) {
        return false;
    }
    while (layout < target) {
        for (const char *statement : steps().at(size_t(layout))) {
            if (!m_connection.run(statement)) {
                return false;
            }
        }
        ++layout;
        if (!m_connection.run("UPDATE asset_schema SET layout = ?", {layout})) {
            return false;
        }
    }
    return true;
}

/// PostgreSQL lets two programs make the same tables at once, and one of them fail; the lock goes with the
/// transaction. SQLite has locked the whole file already.
bool AssetSchema::lock()
{
    return !m_connection.address().isServer() || m_connection.run("SELECT pg_advisory_xact_lock(7261834095)");
}

} // namespace interchange
