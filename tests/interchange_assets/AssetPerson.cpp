#include "AssetPerson.h"

namespace {
constexpr int patience = 30000;
}

AssetPerson::AssetPerson(const QString &program, const QString &place, const QString &name)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(program, {place, name});
    answer();
}

AssetPerson::~AssetPerson()
{
    m_process.closeWriteChannel();
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(patience)) {
        kill();
    }
}

void AssetPerson::tell(const QString &line)
{
    m_process.write(line.toUtf8() + '\n');
    m_process.waitForBytesWritten(patience);
}

QString AssetPerson::answer()
{
    while (!m_process.canReadLine() && m_process.waitForReadyRead(patience)) {}
    return QString::fromUtf8(m_process.readLine()).trimmed();
}

void AssetPerson::kill()
{
    m_process.kill();
    m_process.waitForFinished(patience);
}
