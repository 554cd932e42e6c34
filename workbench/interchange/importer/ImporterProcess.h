#pragma once

#include <interchange/importer/AnswerStream.h>
#include <interchange/importer/ImportLimits.h>

#include <QProcess>
#include <QString>

namespace kernel {
class Progress;
} // namespace kernel

namespace interchange {

/// One run of the importer on one file, and what came of it. Waits in short slices and tells the progress, so that
/// the person can cancel; whatever happens, the process is gone afterwards.
class ImporterProcess
{
    Q_DISABLE_COPY(ImporterProcess)

public:
    struct Limits
    {
        qint64 milliseconds = importlimits::Seconds
                              * qint64(1000); ///< from the start to the end of the answer
        qint64 answerBytes = importlimits::AnswerBytes;
    };

    enum class Outcome {
        Answered,    ///< with one whole record or what may be one
        NotStarted,  ///< there is no such program, or it cannot be started
        Cancelled,   ///< by the person
        TooSlow,     ///< within the limits
        TooLarge,    ///< the answer
        OutOfMemory, ///< the importer, within its own limit
        Crashed,
        Nonsense ///< it began no answer, or ended without one
    };

    ImporterProcess() = default;

    /// @param program path of the importer @param file absolute path of the model
    Outcome run(const QString &program, const QString &file, const Limits &limits,
                kernel::Progress &progress);

    /// The record that was answered, with its kind; taken away from here.
    QByteArray takeRecord();

private:
    Outcome listen(const Limits &limits, kernel::Progress &progress);
    Outcome judgeEnd() const;
    void start(const QString &program, const QString &file);
    void stop();

    QProcess m_process;
    AnswerStream m_answer;
};

} // namespace interchange
