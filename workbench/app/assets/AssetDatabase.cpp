#include "AssetDatabase.h"

#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkPlatformService.h>
#include <nkKernelServices/nkPreferencesService.h>

#include <QDir>
#include <QFileInfo>
#include <QSysInfo>

using interchange::AssetAddress;
using interchange::SqlAssetStore;

namespace {

QString userName()
{
    const QString user = qEnvironmentVariable("USER", qEnvironmentVariable("LOGNAME"));
    return user.isEmpty() ? QFileInfo(QDir::homePath()).owner() : user;
}

/// What others read who find an asset checked out.
QString personName()
{
    return QStringLiteral("%1@%2").arg(userName(), QSysInfo::machineHostName());
}

AssetDatabase *theDatabase = nullptr;

} // namespace

AssetDatabase::AssetDatabase()
{
    theDatabase = this;
    connect(&nkPreferencesService::the(), &nkPreferencesService::valueChanged, this,
            [this](const QString &key) {
                if (key == preferenceKey()) {
                    choose();
                }
            });
    choose();
}

AssetDatabase::~AssetDatabase()
{
    kernel::AssetStore::install(nullptr);
    theDatabase = nullptr;
}

AssetDatabase *AssetDatabase::current()
{
    return theDatabase;
}

QString AssetDatabase::preferenceKey()
{
    return QStringLiteral("Assets Connection URL");
}

QString AssetDatabase::url()
{
    return nkPreferencesService::the().getStringListValue(preferenceKey()).value(0).trimmed();
}

void AssetDatabase::setUrl(const QString &url)
{
    nkPreferencesService::the().setStringListValue(preferenceKey(), {url}, true);
}

void AssetDatabase::choose()
{
    QString error;
    const AssetAddress address = url().isEmpty() ? ownAddress() : AssetAddress::ofUrl(url(), &error);
    if (!isSame(address)) {
        m_error = error;
        use(address);
    }
    if (address.hasPassword()) {
        forgetPassword();
    }
    if (!error.isEmpty()) {
        nkLogService::the().reportError(tr("Asset Manager"), error);
    }
}

AssetAddress AssetDatabase::ownAddress()
{
    return AssetAddress::ofFile(nkPlatformService::the().getUserDataDirectory()
                                + QLatin1String("assets.sqlite"));
}

AssetAddress AssetDatabase::addressOf(const QString &url, QString *error) const
{
    if (url.isEmpty()) {
        return ownAddress();
    }
    AssetAddress address = AssetAddress::ofUrl(url, error);
    if (isSame(address)) {
        address.setPassword(m_store->address().password());
    }
    return address;
}

bool AssetDatabase::isSame(const AssetAddress &address) const
{
    // What the preference says once its password was taken out is no other database.
    return m_store && address.isServer() && !address.hasPassword()
           && address.urlWithoutPassword() == m_store->address().urlWithoutPassword();
}

void AssetDatabase::use(const AssetAddress &address)
{
    if (m_store) {
        const kernel::AssetResult result = m_store->releaseAll();
        if (!result.isDone()) {
            nkLogService::the().reportWarning(tr("Asset Manager"), result.error);
        }
    }
    m_store = address.isValid() ? std::make_unique<SqlAssetStore>(address, personName()) : nullptr;
    kernel::AssetStore::install(m_store.get());
    Q_EMIT replaced();
}

void AssetDatabase::forgetPassword()
{
    nkLogService::the().reportInformation(
        tr("Asset Manager"),
        tr("The password of the asset database %1 was taken out of the preferences and is kept "
           "until the program ends; a password file keeps it for longer.")
            .arg(m_store->place()));
    setUrl(m_store->address().urlWithoutPassword());
}

void AssetDatabase::connectTo(const QString &url, const QString &password)
{
    QString error;
    AssetAddress address = AssetAddress::ofUrl(url, &error);
    if (password.isEmpty() || !address.isServer()) {
        setUrl(url);
        return;
    }
    // First the database, so that it is not tried without the password; the preference follows.
    address.setPassword(password);
    m_error.clear();
    use(address);
    setUrl(address.urlWithoutPassword());
}

bool AssetDatabase::test(const AssetAddress &address, QString *told)
{
    bool isEmpty = false;
    const kernel::AssetResult result =
        interchange::AssetConnection(address, SqlAssetStore::UsualPatience).test(isEmpty);
    const QString well = isEmpty ? tr("The asset database %1 can be used; nothing is kept in it yet.")
                                 : tr("The asset database %1 answers and can be used.");
    *told = result.isDone() ? well.arg(address.place()) : result.error;
    return result.isDone();
}

void AssetDatabase::setPassword(const QString &password)
{
    if (m_store) {
        m_store->setPassword(password);
        Q_EMIT replaced();
    }
}
