#include "FileCalls.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace kernel {

namespace {

FileCalls *installed = nullptr;

} // namespace

FileCalls::~FileCalls() = default;

FileCalls &FileCalls::the()
{
    static FileCalls system;
    return installed ? *installed : system;
}

void FileCalls::install(FileCalls *calls)
{
    installed = calls;
}

int FileCalls::open(const char *path, int flags, mode_t mode)
{
    return ::open(path, flags, mode);
}

ssize_t FileCalls::read(int file, void *bytes, size_t size)
{
    return ::read(file, bytes, size);
}

ssize_t FileCalls::write(int file, const void *bytes, size_t size)
{
    return ::write(file, bytes, size);
}

int FileCalls::stat(const char *path, struct stat *result)
{
    return ::stat(path, result);
}

int FileCalls::fstat(int file, struct stat *result)
{
    return ::fstat(file, result);
}

int FileCalls::access(const char *path, int mode)
{
    return ::access(path, mode);
}

int FileCalls::fchmod(int file, mode_t mode)
{
    return ::fchmod(file, mode);
}

int FileCalls::fchown(int file, uid_t user, gid_t group)
{
    return ::fchown(file, user, group);
}

int FileCalls::fsync(int file)
{
    return ::fsync(file);
}

int FileCalls::close(int file)
{
    return ::close(file);
}

int FileCalls::rename(const char *from, const char *to)
{
    return ::rename(from, to);
}

int FileCalls::unlink(const char *path)
{
    return ::unlink(path);
}

} // namespace kernel
