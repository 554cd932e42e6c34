#pragma once

#include <interchange/json/JsonTree.h>
#include <interchange/sets/SetFileError.h>
#include <interchange/sets/SetFileLimits.h>
#include <interchange/sets/SetFileReader.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

namespace kernel {
class Progress;
} // namespace kernel

namespace interchange {

/// Reads one set file from disk and gives out its sets.
class SetFileLoader
{
    Q_DECLARE_TR_FUNCTIONS(SetFileLoader)

public:
    SetFileLoader(const SetFileLimits &limits, kernel::Progress &progress);

    /// How far the progress stands when this begins and when it ends; 0 and 1 unless told otherwise.
    void setShare(double from, double to);
    /// Reads the file's bytes. False with error() set, or without where the work was cancelled.
    bool readBytes(const QString &fileName);
    /// Reads the sets in the bytes; likewise. What the sink got before is to be thrown away then.
    bool readSets(const std::function<void(kernel::SetCopy &&set)> &sink);

    /// What the file holds, from readBytes to readSets.
    const QByteArray &bytes() const { return m_bytes; }
    const SetFileError &error() const { return m_error; }

private:
    bool advance(double share);
    bool fail(const QString &reason, const QString &advice);

    SetFileLimits m_limits;
    kernel::Progress &m_progress;
    double m_from = 0;
    double m_to = 1;
    QByteArray m_bytes;
    SetFileError m_error;
};

} // namespace interchange
