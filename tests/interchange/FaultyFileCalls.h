#pragma once

#include <kernel/services/FileCalls.h>

#include <QStringList>

#include <cerrno>
#include <csignal>

/// The system's calls, of which one goes wrong.
class FaultyFileCalls : public kernel::FileCalls
{
public:
    enum Fault {
        None,
        Error,         ///< the call fails with `code` and does nothing
        ShortThenOk,   ///< a write takes half; the rest works
        ShortThenFail, ///< a write takes half, and what follows fails with `code`
        Kill,          ///< the process ends in front of the call
        KillHalfway    ///< the process ends behind half of a write
    };

    FaultyFileCalls() { install(this); }
    ~FaultyFileCalls() override { install(nullptr); }

    /// The call that goes wrong, from 1; calls made so far.
    int at = 0;
    int made = 0;
    /// Their names, in order.
    QStringList names;
    Fault fault = None;
    int code = EIO;
    /// The first byte of what is read comes changed.
    bool readsGarbage = false;

    int open(const char *path, int flags, mode_t mode) override
    {
        return isFailing("open") ? -1 : FileCalls::open(path, flags, mode);
    }
    ssize_t read(int file, void *bytes, size_t size) override
    {
        if (isFailing("read"))
            return -1;
        const ssize_t count = FileCalls::read(file, bytes, size);
        if (readsGarbage && count > 0)
            static_cast<char *>(bytes)[count / 2] ^= 1;
        return count;
    }
    ssize_t write(int file, const void *bytes, size_t size) override
    {
        if (isFailing("write"))
            return -1;
        if (made != at || fault < ShortThenOk)
            return FileCalls::write(file, bytes, size);
        const ssize_t half = FileCalls::write(file, bytes, size / 2);
        if (fault == KillHalfway)
            ::raise(SIGKILL);
        if (fault == ShortThenFail) {
            fault = Error;
            ++at;
        }
        return half;
    }
    int stat(const char *path, struct stat *result) override
    {
        return isFailing("stat") ? -1 : FileCalls::stat(path, result);
    }
    int fstat(int file, struct stat *result) override
    {
        return isFailing("fstat") ? -1 : FileCalls::fstat(file, result);
    }
    int access(const char *path, int mode) override
    {
        return isFailing("access") ? -1 : FileCalls::access(path, mode);
    }
    int fchmod(int file, mode_t mode) override
    {
        return isFailing("fchmod") ? -1 : FileCalls::fchmod(file, mode);
    }
    int fchown(int file, uid_t user, gid_t group) override
    {
        return isFailing("fchown") ? -1 : FileCalls::fchown(file, user, group);
    }
    int fsync(int file) override { return isFailing("fsync") ? -1 : FileCalls::fsync(file); }
    int close(int file) override
    {
        // Also a close that fails gives the file back.
        const bool failing = isFailing("close");
        const int result = FileCalls::close(file);
        return failing ? fail() : result;
    }
    int rename(const char *from, const char *to) override
    {
        return isFailing("rename") ? -1 : FileCalls::rename(from, to);
    }
    int unlink(const char *path) override { return isFailing("unlink") ? -1 : FileCalls::unlink(path); }

private:
    int fail()
    {
        errno = code;
        return -1;
    }

    bool isFailing(const char *name)
    {
        ++made;
        names.append(QLatin1String(name));
        if (made != at)
            return false;
        if (fault == Kill)
            ::raise(SIGKILL);
        if (fault == Error)
            fail();
        return fault == Error;
    }
};
