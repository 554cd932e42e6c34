#pragma once

#include "kernel/services/AssetStore.h"

namespace interchange {

class AssetConnection;

/// The tables of an asset database and the steps that lead to them from every earlier layout.
///
///     asset_schema    one row: the number of the layout
///     assets          one row an asset: its name, its newest version, who has it checked out
///     asset_versions  one row a version: its content, who stored it and when
///
/// Times are texts in UTC, `2024-02-29T12:00:00.000Z`, equal in both databases.
class AssetSchema
{
public:
    /// The layout that this program reads and writes.
    static constexpr int Newest = 2;

    explicit AssetSchema(AssetConnection &connection) : m_connection(connection) {}

    /// Makes the tables where the database is empty and takes the missing steps where it is older: all of them or
    /// none, also when several programs do it at once. Refuses a newer one and a database of something else.
    /// @param target the layout to stop at; for tests of the steps
    kernel::AssetResult bringUpToDate(int target = Newest);
    /// Whether this program can work with the database, without changing anything in it.
    /// @param layout receives the one that it has; 0 where it is empty
    kernel::AssetResult look(int &layout);

private:
    bool readLayout(int &layout);
    kernel::AssetResult judge(int layout) const;
    bool takeSteps(int target);
    bool lock();

    AssetConnection &m_connection;
    /// Tables are there, and none of them is ours.
    bool m_isForeign = false;
};

} // namespace interchange
