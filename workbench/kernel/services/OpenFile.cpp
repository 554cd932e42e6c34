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
    m_isTooLarge = state.st_size > largest;
    if (m_isTooLarge) {
        return false;
    }
    // One byte more than there should be shows at once whether the file has grown.
    content.resize(int(state.st_size) + 1);
    qint64 size = 0;
    for (qint64 step = 1; step > 0; size += step) {
        if (size == content.size()) {
            content.resize(int(std::min(size + ReadAtOnce, largest + 1)));
        }
        step = readPiece(content.data() + size, std::min(ReadAtOnce, content.size() - size));
        m_isTooLarge = size + step > largest;
        if (step < 0 || m_isTooLarge || (goOn && !goOn(size + step, state.st_size))) {
            return false;
        }
    }
    content.truncate(int(size));
    return true;
}

/// @return the bytes read, 0 at the end, -1 on failure
qint64 OpenFile::readPiece(char *bytes, qint64 size)
{
    ssize_t count = 0;
    do {
        count = FileCalls::the().read(m_handle, bytes, size_t(size));
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        fail();
    }
    return count;
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
