#include <interchange/importer/ImporterProcess.h>

#include <kernel/services/Progress.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <signal.h>

namespace interchange {

namespace {

/// Milliseconds in which a person notices nothing.
constexpr int Slice = 40;
/// What is left of the bar for making the scene.
constexpr double ShareOfImporter = 0.8;

} // namespace

ImporterProcess::Outcome ImporterProcess::run(const QString &program, const QString &file,
                                              const Limits &limits, kernel::Progress &progress)
{
    start(program, file);
    if (!m_process.waitForStarted())
        return Outcome::NotStarted;
    const Outcome outcome = listen(limits, progress);
    stop();
    return outcome;
}

void ImporterProcess::start(const QString &program, const QString &file)
{
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(program, {file, QString::number(QCoreApplication::applicationPid())},
                    QIODevice::ReadOnly | QIODevice::Unbuffered);
}

ImporterProcess::Outcome ImporterProcess::listen(const Limits &limits, kernel::Progress &progress)
{
    m_answer.setLimit(limits.answerBytes);
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        const bool isOver = m_process.waitForFinished(Slice) || m_process.state() == QProcess::NotRunning;
        if (!m_answer.add(m_process.readAllStandardOutput()))
            return m_answer.isTooLong() ? Outcome::TooLarge : Outcome::Nonsense;
        if (!progress.advance(m_answer.share() * ShareOfImporter))
            return Outcome::Cancelled;
        if (isOver)
            return judgeEnd();
        if (clock.hasExpired(limits.milliseconds))
            return Outcome::TooSlow;
    }
}

ImporterProcess::Outcome ImporterProcess::judgeEnd() const
{
    // Qt tells the signal in place of a status.
    if (m_process.exitStatus() == QProcess::CrashExit)
        return m_process.exitCode() == SIGXCPU ? Outcome::TooSlow : Outcome::Crashed;
    if (m_process.exitCode() == importlimits::MemoryStatus)
        return Outcome::OutOfMemory;
    return m_answer.hasRecord() ? Outcome::Answered : Outcome::Nonsense;
}

void ImporterProcess::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
}

QByteArray ImporterProcess::takeRecord()
{
    const QByteArray record = m_answer.record();
    m_answer = AnswerStream();
    return record;
}

} // namespace interchange
