#include "OpenFile.h"

#include "FileCalls.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>

namespace kernel {

namespace {

constexpr qint64 ReadAtOnce = 4 << 20;

} // namespace

QString OpenFile::systemError()
{
    return qt_error_string(errno);
}

OpenFile::~OpenFile()
{
    close();
}

bool OpenFile::fail()
{
    m_error = systemError();
    return false;
}

bool OpenFile::open(const QString &path, int flags, uint mode)
{
    m_handle = FileCalls::the().open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, mode);
    return m_handle >= 0 || fail();
}

bool OpenFile::openToRead(const QString &path)
{
    // Without waiting: opening a pipe that nobody writes to would not return.
    if (!open(path, O_RDONLY | O_NONBLOCK)) {
        return false;
    }
    struct stat state = {};
    if (FileCalls::the().fstat(m_handle, &state) != 0) {
        return fail();
    }
    if (!S_ISREG(state.st_mode)) {
        m_error = QCoreApplication::translate("OpenFile", "it is no regular file");
        return false;
    }
    return true;
}

bool OpenFile::write(const char *bytes, qint64 size)
{
    while (size > 0) {
        const ssize_t written = FileCalls::the().write(m_handle, bytes, size_t(size));
        if (written < 0 && errno != EINTR) {
            return fail();
        }
        const qint64 step = std::max<qint64>(written, 0);
        bytes += step;
        size -= step;
    }
    return true;
}

bool OpenFile::readAll(QByteArray &content, qint64 largest, const std::function<bool(qint64, qint64)> &goOn)
{
    struct stat state = {};
    if (FileCalls::the().fstat(m_handle, &state) != 0) {
        return fail();
    }
    content.resize(int(std::min<qint64>(state.st_size, largest) + 1));
    qint64 size = 0;
    for (;;) {
        const qint64 wanted = std::min(ReadAtOnce, content.size() - size);
        const ssize_t count = FileCalls::the().read(m_handle, content.data() + size, size_t(wanted));
        if (count < 0 && errno != EINTR) {
            return fail();
        }
        size += std::max<qint64>(count, 0);
        if (size > largest || state.st_size > largest) {
            m_isTooLarge = true;
            return false;
        }
        if (count == 0) {
            break;
        }
        if (goOn && !goOn(size, state.st_size)) {
            m_error.clear();
            return false;
        }
        if (size == content.size()) {
            // The file has grown since it was asked for its size.
            content.resize(int(std::min(size + ReadAtOnce, largest + 1)));
        }
    }
    content.truncate(int(size));
    return true;
}

bool OpenFile::sync()
{
    return FileCalls::the().fsync(m_handle) == 0 || fail();
}

bool OpenFile::close()
{
    if (m_handle < 0) {
        return true;
    }
    const int handle = m_handle;
    m_handle = -1;
    return FileCalls::the().close(handle) == 0 || fail();
}

} // namespace kernel
