#include "AnswerPipe.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

AnswerPipe::AnswerPipe() : m_descriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
{
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    if (m_descriptor < 0 || nowhere < 0)
        _exit(2);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere, standard);
    if (nowhere > STDERR_FILENO)
        close(nowhere);
}

void AnswerPipe::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            _exit(2);
        if (written > 0)
            bytes.remove_prefix(size_t(written));
    }
}
