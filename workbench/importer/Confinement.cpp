#include "Confinement.h"

#include <interchange/importer/ImportLimits.h>

#include <new>

#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace interchange;

namespace {

void bound(__rlimit_resource resource, rlim_t limit, rlim_t grace = 0)
{
    const rlimit limits{limit, limit + grace};
    if (setrlimit(resource, &limits) != 0)
        _exit(2);
}

void endWithParent(int parent)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // It may have ended before that was asked for.
    if (parent > 0 && getppid() != parent)
        _exit(2);
}

/// Without this a loader would take the exception for damage of the file, or not take it at all.
[[noreturn]] void endOutOfMemory()
{
    _exit(importlimits::MemoryStatus);
}

} // namespace

void Confinement::begin(int parent)
{
    if (parent > 0)
        endWithParent(parent);
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        _exit(2);
    bound(RLIMIT_CORE, 0);
    bound(RLIMIT_FSIZE, 0);
    bound(RLIMIT_NOFILE, importlimits::OpenFiles);
    // In between comes a signal of its own, which tells the parent why.
    bound(RLIMIT_CPU, importlimits::Seconds, 1);
#ifndef __SANITIZE_ADDRESS__ // which reserves terabytes of address space
    bound(RLIMIT_AS, importlimits::Memory);
#endif
    std::set_new_handler(endOutOfMemory);
}
