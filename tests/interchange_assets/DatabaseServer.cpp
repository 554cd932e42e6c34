#include "DatabaseServer.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <csignal>
#include <unistd.h>

namespace {

constexpr int patience = 60000;
const char userName[] = "tester";

bool isRoot()
{
    return geteuid() == 0;
}

} // namespace

DatabaseServer::DatabaseServer(const QString &password) : m_password(password)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

DatabaseServer::~DatabaseServer()
{
    kill();
}

QString DatabaseServer::programFolder()
{
    QDir all(QStringLiteral("/usr/lib/postgresql"));
    const QStringList versions = all.entryList(QDir::Dirs | QDir::NoDotAndDotDot,
                                               QDir::Name | QDir::Reversed);
    return versions.isEmpty() ? QString() : all.filePath(versions.constFirst() + QStringLiteral("/bin"));
}

QStringList DatabaseServer::asItsUser(const QStringList &words) const
{
    QStringList all{QStringLiteral("setpriv"), QStringLiteral("--pdeathsig"), QStringLiteral("QUIT")};
    if (isRoot()) {
        all << QStringLiteral("--reuid=postgres") << QStringLiteral("--regid=postgres")
            << QStringLiteral("--clear-groups");
    }
    return all + words;
}

QString DatabaseServer::prepare()
{
    if (!m_folder.isValid() || programFolder().isEmpty()) {
        return QStringLiteral("no PostgreSQL server program is installed; install the package postgresql");
    }
    if (isRoot()
        && QProcess::execute(QStringLiteral("chown"), {QStringLiteral("postgres"), m_folder.path()}) != 0) {
        return QStringLiteral("there is no user postgres to run the server as");
    }
    return makeCluster();
}

QString DatabaseServer::makeCluster()
{
    QFile file(m_folder.filePath(QStringLiteral("password")));
    if (!file.open(QIODevice::WriteOnly) || file.write(m_password.toUtf8() + '\n') < 0) {
        return QStringLiteral("the temporary folder of the server cannot be written to");
    }
    file.close();
    file.setPermissions(file.permissions() | QFile::ReadOther);
    QStringList words = asItsUser({programFolder() + QStringLiteral("/initdb"), QStringLiteral("-D"),
                                   m_folder.filePath(QStringLiteral("data")), QStringLiteral("-U"),
                                   QLatin1String(userName), QStringLiteral("-E"), QStringLiteral("UTF8"),
                                   QStringLiteral("--locale=C"), QStringLiteral("--no-sync"),
                                   QStringLiteral("--no-instructions")});
    words << (m_password.isEmpty() ? QStringLiteral("--auth=trust") : QStringLiteral("--auth=scram-sha-256"));
    if (!m_password.isEmpty()) {
        words << QStringLiteral("--pwfile=%1").arg(file.fileName());
    }
    QProcess making;
    making.setProcessChannelMode(QProcess::MergedChannels);
    making.setWorkingDirectory(m_folder.path());
    making.start(words.takeFirst(), words);
    m_isMade = making.waitForFinished(patience) && making.exitCode() == 0;
    return m_isMade ? QString() : QString::fromLocal8Bit(making.readAll());
}

QString DatabaseServer::start()
{
    if (!m_isMade) {
        const QString error = prepare();
        if (!error.isEmpty()) {
            return error;
        }
    }
    QStringList words = asItsUser(
        {programFolder() + QStringLiteral("/postgres"), QStringLiteral("-D"),
         m_folder.filePath(QStringLiteral("data")), QStringLiteral("-k"), m_folder.path(),
         QStringLiteral("-F"), QStringLiteral("-c"), QStringLiteral("listen_addresses="),
         QStringLiteral("-c"), QStringLiteral("shared_buffers=16MB"), QStringLiteral("-c"),
         QStringLiteral("autovacuum=off"),
         // No line an error: nobody reads them, and a full pipe would stop the server.
         QStringLiteral("-c"), QStringLiteral("log_min_messages=log")});
    m_process.setWorkingDirectory(m_folder.path());
    m_process.start(words.takeFirst(), words);
    QByteArray said;
    while (!said.contains("is ready to accept connections")) {
        if (!m_process.waitForReadyRead(patience)) {
            return QString::fromLocal8Bit(said);
        }
        said += m_process.readAll();
    }
    return {};
}

void DatabaseServer::kill()
{
    if (m_process.state() != QProcess::NotRunning) {
        ::kill(pid_t(m_process.processId()), SIGQUIT); // takes its children with it
        m_process.waitForFinished(patience);
    }
}

QString DatabaseServer::url() const
{
    const QString password = QString::fromLatin1(QUrl::toPercentEncoding(m_password));
    const QString user = QLatin1String(userName)
                         + (password.isEmpty() ? QString() : QLatin1Char(':') + password);
    return QStringLiteral("postgresql://%1@/postgres?host=%2").arg(user, m_folder.path());
}
