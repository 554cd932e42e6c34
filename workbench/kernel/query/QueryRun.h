#pragma once

#include <QDeadlineTimer>

#include <atomic>

namespace kernel {

/// One evaluation of a query as seen from inside: whether to go on. Used by one thread; the flag may be set by
/// another.
class QueryRun
{
public:
    /// How long regular expressions may look at one scene: milliseconds.
    static constexpr int RegexTime = 10000;

    /// @param cancelled must live as long as the run
    explicit QueryRun(const std::atomic<bool> &cancelled, int regexTime = RegexTime)
        : m_cancelled(cancelled), m_regexEnd(regexTime)
    {}

    bool isStopped() const { return m_regexFailed || m_cancelled.load(std::memory_order_relaxed); }
    bool isCancelled() const { return m_cancelled.load(std::memory_order_relaxed); }
    /// A regular expression took too many steps or too long; what was found is not to be relied on.
    bool hasRegexFailed() const { return m_regexFailed; }
    void failRegex() { m_regexFailed = true; }
    bool isRegexLate() const { return m_regexEnd.hasExpired(); }

private:
    const std::atomic<bool> &m_cancelled;
    const QDeadlineTimer m_regexEnd;
    bool m_regexFailed = false;
};

} // namespace kernel
