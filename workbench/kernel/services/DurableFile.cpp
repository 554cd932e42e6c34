#include "DurableFile.h"

#include "DurableReplacement.h"

#include <QDir>
#include <QFileInfo>

namespace kernel {

namespace {

constexpr uint UsersAlone = 0600;

} // namespace

QString DurableFile::replace(const QString &path, const QByteArray &bytes)
{
    const QFileInfo present(path);
    const QString target = present.exists() ? present.canonicalFilePath() : present.absoluteFilePath();
    const QString folder = QFileInfo(target).absolutePath();
    if (!QDir().mkpath(folder)) {
        return QStringLiteral("The folder \"%1\" cannot be made").arg(folder);
    }
    DurableReplacement replacement(path, UsersAlone);
    const bool done = replacement.begin() && replacement.write(bytes.constData(), bytes.size())
                      && replacement.finishWriting() && replacement.commit();
    return done ? QString() : replacement.error();
}

} // namespace kernel
