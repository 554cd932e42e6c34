#include <interchange/sidecar/SidecarFile.h>

#include <interchange/sets/SetFileLimits.h>
#include <interchange/sidecar/SidecarReader.h>

#include <QFile>
#include <QFileInfo>

namespace interchange {

QString SidecarFile::pathFor(const QString &model)
{
    return model + QStringLiteral(".metadata.json");
}

FileHash SidecarFile::hashOf(const QString &path)
{
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? FileHash::of(file) : FileHash();
}

SidecarFile::State SidecarFile::read(Sidecar &sidecar, const std::function<bool(double)> &goOn)
{
    QFile file(m_path);
    const QFileInfo info(m_path);
    if (!info.exists() && !info.isSymLink())
        return State::Absent;
    if (!info.isFile())
        m_trouble = tr("it is no file");
    else if (!file.open(QIODevice::ReadOnly))
        m_trouble = tr("it cannot be read: %1").arg(file.errorString());
    else if (file.size() > SetFileLimits().bytes)
        m_trouble = tr("it has more than 1 GiB, the most that such a file may have");
    if (!m_trouble.isEmpty())
        return State::Foreign;
    const QByteArray bytes = file.readAll();
    m_hash = FileHash::of({bytes.constData(), size_t(bytes.size())});
    SidecarReader reader;
    if (reader.read(bytes, sidecar, goOn))
        return State::Known;
    m_trouble = reader.error().clause();
    return reader.error().isSet() ? State::Foreign : State::Cancelled;
}

} // namespace interchange
