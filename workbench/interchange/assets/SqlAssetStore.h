#pragma once

#include "AssetConnection.h"

#include "kernel/services/AssetStore.h"

#include <QVariant>

#include <functional>

namespace interchange {

/// Assets in a database through Qt SQL: SQLite or PostgreSQL, with the same tables and the same statements. Connects
/// when it is first asked for something. Every change is one transaction; who may change what is decided by
/// the database, in the statement that changes it.
class SqlAssetStore final : public kernel::AssetStore
{
    Q_OBJECT
public:
    /// How long a lock of somebody else is waited for, in milliseconds.
    static constexpr int UsualPatience = 3000;

    /// @param person how others read who has an asset; the store's session is one of its own
    SqlAssetStore(const AssetAddress &address, const QString &person, int patience = UsualPatience);
    ~SqlAssetStore() override;

    const AssetAddress &address() const { return m_connection.address(); }
    /// For the next time that it connects; kept in memory alone.
    void setPassword(const QString &password) { m_connection.setPassword(password); }

    QString place() const override;
    kernel::AssetResult publish(const QString &name, const QByteArray &content, QString &id) override;
    kernel::AssetResult list(const QString &words, int most, QVector<kernel::AssetInfo> &assets) override;
    kernel::AssetResult info(const QString &id, kernel::AssetInfo &asset) override;
    kernel::AssetResult versions(const QString &id, QVector<kernel::AssetVersion> &versions) override;
    kernel::AssetResult read(const QString &id, int version, kernel::AssetVersion &content) override;
    kernel::AssetResult checkOut(const QString &id, int version) override;
    kernel::AssetResult save(const QString &id, const QString &name, const QByteArray &content,
                             int &version) override;
    kernel::AssetResult release(const QString &id, bool ofOthers) override;
    kernel::AssetResult releaseAll() override;

private:
    using Work = std::function<kernel::AssetResult()>;

    kernel::AssetResult asOneChange(const Work &work);
    bool addVersion(const QString &id, int version, const QString &name, const QByteArray &content);
    kernel::AssetResult readInfos(const char *sql, const QVariantList &values,
                                  QVector<kernel::AssetInfo> &assets);
    bool isSavedAlready(const QString &id, int version, const QByteArray &content);
    kernel::AssetResult refusal(const QString &id, int version);
    kernel::AssetResult missing() const;

    AssetConnection m_connection;
    const QString m_person;
    const QString m_session;
    bool m_hasCheckedOut = false;
};

} // namespace interchange
