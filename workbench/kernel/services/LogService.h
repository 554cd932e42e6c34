#pragma once

#include "LogLine.h"
#include <nkKernelServices/nkLogService.h>

#include <QVector>

#include <deque>

namespace kernel {

/// The log of the process: keeps its newest lines for a log panel and mirrors every line to the Qt logging
/// category "workbench". Always at information level: a failure that the user was told of is no fault of the
/// program, and must not end one that was told to stop at warnings.
class NK_KERNEL_SERVICES_EXPORT LogService final : public nkLogService
{
    Q_OBJECT
public:
    enum Level : int { Information = 0, Warning = 1, Error = 2 };

    /// How many lines are kept; the oldest go first.
    static constexpr int capacity = 10000;

    void reportError(const QString &title, const QString &text) override;
    void reportWarning(const QString &title, const QString &text) override;
    void reportInformation(const QString &title, const QString &text) override;

    /// The kept lines, oldest first.
    QVector<LogLine> lines() const;
    /// How many lines were ever written.
    quint64 lineCount() const { return m_lineCount; }
    /// Those kept lines that were written when lineCount() was already that high, oldest first.
    QVector<LogLine> linesSince(quint64 lineCount) const;
    void clear();

private:
    void report(Level level, const QString &title, const QString &text);

    std::deque<LogLine> m_lines;
    quint64 m_lineCount = 0;
};

} // namespace kernel
