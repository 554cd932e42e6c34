#include "SaveTarget.h"

#include "FileCalls.h"
#include "OpenFile.h"

#include <QFile>

#include <cerrno>
#include <unistd.h>

namespace kernel {

namespace {

constexpr mode_t AnyWriteBit = 0222;

} // namespace

SaveTarget::SaveTarget(const QString &path)
{
    struct stat present = {};
    const QByteArray name = QFile::encodeName(path);
    if (FileCalls::the().stat(name.constData(), &present) != 0) {
        if (errno != ENOENT) {
            refuse(OpenFile::systemError(), systemAdvice());
        }
    } else if (!S_ISREG(present.st_mode)) {
        refuse(tr("there is something of this name that is no regular file"), tr("choose another name"));
    } else if ((present.st_mode & AnyWriteBit) == 0 || FileCalls::the().access(name.constData(), W_OK) != 0) {
        refuse(tr("the file is read-only"), tr("choose another name or allow writing to it"));
    }
}

QString SaveTarget::systemAdvice()
{
    return tr(
        "check that its folder is there and may be written to, and that the disk has room, then save again");
}

void SaveTarget::refuse(const QString &reason, const QString &advice)
{
    m_reason = reason;
    m_advice = advice;
}

} // namespace kernel
