#pragma once

#include <QByteArray>

namespace interchange {

/// The beginning of the importer's answer, while it comes: what it says about progress, and where the record begins
/// that everything waits for.
class AnswerStream
{
public:
    /// Takes the next bytes. False where they are no answer, or more than an answer may have.
    bool add(const QByteArray &bytes);
    /// Bytes that an answer may have at most.
    void setLimit(qint64 bytes) { m_limit = bytes; }

    /// How far the importer says that it has come, 0 to 1.
    double share() const { return m_share; }
    bool isTooLong() const { return m_received > m_limit; }
    /// The last record with its kind, as far as it has come; everything where it has not begun.
    const QByteArray &record() const { return m_bytes; }
    /// The last record has begun.
    bool hasRecord() const { return m_hasRecord; }

private:
    bool readStart();
    bool readProgress();

    QByteArray m_bytes;
    qint64 m_received = 0;
    qint64 m_limit = 0;
    double m_share = 0;
    bool m_isStarted = false;
    bool m_hasRecord = false;
};

} // namespace interchange
