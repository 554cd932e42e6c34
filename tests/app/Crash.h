#pragma once

#include <QTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace Crash {

/// Lets a process of its own do this and die as in a crash.
template <typename Work>
inline void after(const Work &work)
{
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        work();
        ::raise(SIGKILL);
        _exit(1);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
}

} // namespace Crash
