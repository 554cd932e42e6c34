#pragma once

#include <interchange/sets/SetFileLimits.h>
#include <interchange/sets/TextBuffer.h>

#include <kernel/document/SetCodec.h>
#include <kernel/services/DurableReplacement.h>

#include <QCoreApplication>
#include <QString>

#include <vector>

namespace interchange {

/// Writes one set file, piece by piece, and has it take the place of the old one only when all of it was read
/// back from the disk and understood.
class SetFileSaver
{
    Q_DECLARE_TR_FUNCTIONS(SetFileSaver)

public:
    SetFileSaver(const QString &fileName, const SetFileLimits &limits, kernel::Progress &progress);

    /// See kernel::SetCodec::write.
    kernel::SetCodecResult save(int count, const kernel::SetCodec::Feed &feed);

private:
    /// A piece of the file as it was handed to the system.
    struct Piece
    {
        int size;
        size_t hash;
    };

    bool checkTarget();
    bool writeAll(int count, const kernel::SetCodec::Feed &feed);
    bool addSet(int position, const kernel::SetCodec::Feed &feed, class SetFileWriter &writer);
    bool flush();
    bool verify(int count);
    bool hasWrittenBytes(const QByteArray &bytes) const;
    bool finish();
    bool fail(const QString &reason, const QString &advice);
    bool failSystem(const QString &reason);

    QString m_fileName;
    SetFileLimits m_limits;
    kernel::Progress &m_progress;
    kernel::DurableReplacement m_file;
    TextBuffer m_text;
    std::vector<Piece> m_pieces;
    qint64 m_size = 0;
    qint64 m_entries = 0;
    QString m_error;
};

} // namespace interchange
