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

    /// The key of the preference: a list with one connection URL, empty for the user's own file.
    static QString preferenceKey();
    /// The connection URL in the preference; empty for the user's own file.
    static QString url();
    /// Sets the preference, and so the database.
    static void setUrl(const QString &url);
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
