#pragma once

#include "interchange/assets/SqlAssetStore.h"

#include <QObject>
#include <QString>

#include <memory>

/// Which asset database the workbench uses: the server that the preference names, else a file of the user's own. It
/// follows the preference and installs the store. Nothing is connected before somebody asks for assets.
///
/// A password in the preference is taken out of it at once and kept in memory alone, until the program ends.
class AssetDatabase : public QObject
{
    Q_OBJECT
public:
    AssetDatabase();
    ~AssetDatabase() override;

    /// The one of the workbench; null where there is none.
    static AssetDatabase *current();

    /// The key of the preference: a list with one connection URL, empty for the user's own file.
    static QString preferenceKey();
    /// The connection URL in the preference; empty for the user's own file.
    static QString url();
    /// Sets the preference, and so the database.
    static void setUrl(const QString &url);
    /// Sets the preference, and uses the database with this password, which is kept in memory alone.
    /// @param url without a password
    void connectTo(const QString &url, const QString &password);
    /// Where this URL leads; the user's own file for an empty one. With the password that is in use there now.
    /// @param error receives one sentence where the URL is none
    interchange::AssetAddress addressOf(const QString &url, QString *error) const;
    /// The user's own file.
    static interchange::AssetAddress ownAddress();
    /// Asks whether a database answers, without changing anything in it: may take seconds.
    /// @param told receives one sentence for people in either case
    static bool test(const interchange::AssetAddress &address, QString *told);
    /// Uses another password from now on.
    void setPassword(const QString &password);
    /// Why there is no store; empty where there is one.
    QString error() const { return m_error; }

Q_SIGNALS:
    /// Another database, or the same with another password, is used now.
    void replaced();

private:
    void choose();
    void use(const interchange::AssetAddress &address);
    void forgetPassword();
    bool isSame(const interchange::AssetAddress &address) const;

    std::unique_ptr<interchange::SqlAssetStore> m_store;
    QString m_error;
};
