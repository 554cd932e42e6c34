#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QtGlobal>

#include <sys/stat.h>
#include <sys/types.h>

namespace kernel {

/// The system calls that durable saving consists of, each as the system has it: results, errno and all. Tests
/// install another object to have a call fail, fall short or be the last one of the process.
class NK_KERNEL_SERVICES_EXPORT FileCalls
{
    Q_DISABLE_COPY(FileCalls)
public:
    FileCalls() = default;
    virtual ~FileCalls();

    /// The installed calls, else the system's.
    static FileCalls &the();
    /// Installs other calls, which stay the caller's; null goes back to the system's.
    static void install(FileCalls *calls);

    virtual int open(const char *path, int flags, mode_t mode);
    virtual ssize_t read(int file, void *bytes, size_t size);
    virtual ssize_t write(int file, const void *bytes, size_t size);
    virtual int stat(const char *path, struct stat *result);
    virtual int fstat(int file, struct stat *result);
    virtual int access(const char *path, int mode);
    virtual int fchmod(int file, mode_t mode);
    virtual int fchown(int file, uid_t user, gid_t group);
    virtual int fsync(int file);
    virtual int close(int file);
    virtual int rename(const char *from, const char *to);
    virtual int unlink(const char *path);
};

} // namespace kernel
