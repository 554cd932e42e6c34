#pragma once

#include <interchange/importer/ImporterReader.h>
#include <kernel/services/Progress.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

/// Reads files by the real importer, and what several tests of this folder share.
namespace ImporterFixture {

/// What came of reading a file.
struct Reading
{
    bool isRead = false;
    interchange::ForeignScene scene;
    QString error;   ///< the reason alone
    QString message; ///< as the person sees it
};

inline Reading read(const QString &path, interchange::ImporterReader &reader)
{
    Reading reading;
    kernel::Progress progress(QStringLiteral("Opening"));
    reading.isRead = reader.read(path, reading.scene, progress);
    reading.error = reader.error().reason();
    reading.message = reader.error().message(QFileInfo(path).fileName());
    return reading;
}

inline interchange::ImporterProcess::Limits limitsOf(qint64 milliseconds)
{
    interchange::ImporterProcess::Limits limits;
    limits.milliseconds = milliseconds;
    return limits;
}

/// Reads a file by the importer that was built.
inline Reading read(const QString &path)
{
    interchange::ImporterReader reader;
    reader.setProgram(QStringLiteral(NK_IMPORTER));
    reader.setLimits(limitsOf(60000));
    return read(path, reader);
}

/// A folder with files that a test writes.
class Folder
{
public:
    QString path(const QString &name) const { return QDir(m_folder.path()).filePath(name); }
    QString write(const QString &name, const QByteArray &content) const
    {
        QDir(m_folder.path()).mkpath(QFileInfo(name).path());
        QFile file(path(name));
        if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
            qFatal("%s cannot be written", qPrintable(file.fileName()));
        return file.fileName();
    }

private:
    QTemporaryDir m_folder;
};

/// A triangle as an .obj file; these lines in front of it.
inline QByteArray triangleObj(const QByteArray &lines = QByteArray())
{
    return lines + "o Triangle\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
}

inline int indexOf(const interchange::ForeignScene &scene, const QString &name)
{
    for (size_t i = 0; i < scene.nodes.size(); ++i)
        if (scene.nodes[i].name == name)
            return int(i);
    return -1;
}

} // namespace ImporterFixture
