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

} // namespace

AssetDatabase::AssetDatabase()
{
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
    const QString wanted = url();
    QString error;
    const AssetAddress address = wanted.isEmpty()
                                     ? AssetAddress::ofFile(nkPlatformService::the().getUserDataDirectory()
                                                            + QLatin1String("assets.sqlite"))
                                     : AssetAddress::ofUrl(wanted, &error);
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

void AssetDatabase::setPassword(const QString &password)
{
    if (m_store) {
        m_store->setPassword(password);
        Q_EMIT replaced();
    }
}
