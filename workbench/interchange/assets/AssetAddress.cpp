#include "AssetAddress.h"

#include <QDir>
#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

namespace interchange {

namespace {

bool isScheme(const QString &url)
{
    return url.startsWith(QLatin1String("postgresql://"), Qt::CaseInsensitive);
}

QString urlWithout(QUrl url, const QString &option)
{
    url.setPassword(QString());
    QUrlQuery query(url);
    query.removeAllQueryItems(option);
    url.setQuery(query.isEmpty() ? QString() : query.query(QUrl::FullyEncoded));
    return url.toString(QUrl::FullyEncoded);
}

} // namespace

AssetAddress AssetAddress::ofFile(const QString &path)
{
    AssetAddress address;
    address.m_kind = Kind::File;
    address.m_path = path;
    return address;
}

AssetAddress AssetAddress::ofUrl(const QString &text, QString *error)
{
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    if (!isScheme(text.trimmed()) || !url.isValid()) {
        *error = tr("The connection URL of the asset database is not understood; it has to look like "
                    "postgresql://user@host:5432/database.");
        return {};
    }
    AssetAddress address;
    address.m_kind = Kind::Server;
    address.m_url = urlWithout(url, QStringLiteral("password"));
    address.m_host = url.host(QUrl::FullyDecoded);
    address.m_port = url.port();
    address.m_user = url.userName(QUrl::FullyDecoded);
    address.m_password = url.password(QUrl::FullyDecoded);
    address.m_database = url.path(QUrl::FullyDecoded).mid(1);
    const auto options = QUrlQuery(url).queryItems(QUrl::FullyDecoded);
    for (const auto &option : options) {
        address.takeOption({option.first, option.second}, error);
    }
    return error->isEmpty() ? address : AssetAddress();
}

void AssetAddress::takeOption(const std::pair<QString, QString> &option, QString *error)
{
    const auto &[name, value] = option;
    if (name == QLatin1String("host")) {
        m_host = value;
    } else if (name == QLatin1String("port")) {
        m_port = value.toInt();
    } else if (name == QLatin1String("user")) {
        m_user = value;
    } else if (name == QLatin1String("dbname")) {
        m_database = value;
    } else if (name == QLatin1String("password")) {
        m_password = value;
    } else {
        addConnectOption(name, value, error);
    }
}

void AssetAddress::addConnectOption(const QString &name, const QString &value, QString *error)
{
    static const QStringList known{QStringLiteral("sslmode"), QStringLiteral("sslrootcert"),
                                   QStringLiteral("sslcert"), QStringLiteral("sslkey")};
    // The driver of Qt parts its options at semicolons, whatever quotes say.
    if (!known.contains(name) || value.contains(QLatin1Char(';'))) {
        *error =
            tr("The connection URL of the asset database has an option that is not understood; known are "
               "host, port, user, dbname, password and %1.")
                .arg(known.join(QLatin1String(", ")));
        return;
    }
    QString quoted = value;
    quoted.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('\''), QLatin1String("\\'"));
    m_options += QStringLiteral(" %1='%2'").arg(name, quoted);
}

QString AssetAddress::place() const
{
    if (m_kind == Kind::File) {
        return QDir::toNativeSeparators(m_path);
    }
    const QString host = m_host.isEmpty() ? tr("this computer") : m_host;
    return m_database.isEmpty() ? host : tr("%1 on %2", "database on host").arg(m_database, host);
}

QString AssetAddress::urlWithoutPassword() const
{
    return m_url;
}

QString AssetAddress::withoutPassword(QString text) const
{
    const QString hidden = QStringLiteral("...");
    if (!m_password.isEmpty()) {
        text.replace(m_password, hidden);
        text.replace(QString::fromLatin1(QUrl::toPercentEncoding(m_password)), hidden);
    }
    return text;
}

} // namespace interchange
