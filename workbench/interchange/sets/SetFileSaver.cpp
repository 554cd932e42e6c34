#include <interchange/sets/SetFileSaver.h>

#include <interchange/sets/SetFileLoader.h>
#include <interchange/sets/SetFileWriter.h>

#include <kernel/services/Progress.h>
#include <kernel/services/SaveTarget.h>

#include <functional>
#include <string_view>

namespace interchange {

namespace {

constexpr int PieceSize = 1 << 20;
constexpr qint64 Mebi = 1 << 20;
// Writing and reading back cost about the same.
constexpr double Written = 0.5;

size_t hashOf(const char *bytes, int size)
{
    return std::hash<std::string_view>()({bytes, size_t(size)});
}

} // namespace

SetFileSaver::SetFileSaver(const QString &fileName, const SetFileLimits &limits, kernel::Progress &progress)
    : m_fileName(fileName), m_limits(limits), m_progress(progress), m_file(fileName)
{}

kernel::SetCodecResult SetFileSaver::save(int count, const kernel::SetCodec::Feed &feed)
{
    using Result = kernel::SetCodecResult;
    if (checkTarget() && writeAll(count, feed) && verify(count) && finish())
        return {Result::Done, QString()};
    if (m_error.isEmpty())
        return {Result::Cancelled, QString()};
    return {Result::Failed, m_error};
}

bool SetFileSaver::checkTarget()
{
    const kernel::SaveTarget target(m_fileName);
    return target.isWritable() || fail(target.reason(), target.advice());
}

bool SetFileSaver::writeAll(int count, const kernel::SetCodec::Feed &feed)
{
    if (!m_file.begin())
        return failSystem(m_file.error());
    SetFileWriter writer(m_text);
    writer.beginSets();
    for (int position = 0; position < count; ++position) {
        if (!addSet(position, feed, writer) || !m_progress.advance(Written * position / count))
            return false;
    }
    writer.endSets();
    if (!flush())
        return false;
    return m_file.finishWriting() || failSystem(m_file.error());
}

bool SetFileSaver::addSet(int position, const kernel::SetCodec::Feed &feed, SetFileWriter &writer)
{
    kernel::SetCopy set;
    if (!feed(position, set))
        return fail(tr("a set has vanished meanwhile"), tr("save again"));
    m_entries += qint64(set.entries.size());
    if (m_entries > m_limits.entries)
        return fail(
            tr("the sets have more than %1 entries, the most that one file may hold").arg(m_limits.entries),
            tr("save them in several files"));
    writer.addSet(set);
    return m_text.size() < PieceSize || flush();
}

bool SetFileSaver::flush()
{
    m_size += m_text.size();
    if (m_size > m_limits.bytes || m_text.isOverfull())
        return fail(tr("it would have more than %1 MiB, the most that such a file may have")
                        .arg(m_limits.bytes / Mebi),
                    tr("save the sets in several files"));
    m_pieces.push_back({m_text.size(), hashOf(m_text.data(), m_text.size())});
    if (!m_file.write(m_text.data(), m_text.size()))
        return failSystem(m_file.error());
    m_text.clear();
    return true;
}

/// Reads the temporary file as any reader would.
bool SetFileSaver::verify(int count)
{
    SetFileLoader loader(m_limits, m_progress);
    loader.setShare(Written, 1);
    int sets = 0;
    qint64 entries = 0;
    if (loader.readBytes(m_file.temporaryPath())) {
        if (!hasWrittenBytes(loader.bytes()))
            return failSystem(tr("the disk holds something else than was written"));
        loader.readSets([&](kernel::SetCopy &&set) {
            ++sets;
            entries += qint64(set.entries.size());
        });
    }
    if (loader.error().isSet())
        return failSystem(tr("what was written cannot be read back: %1").arg(loader.error().clause()));
    if (m_progress.isCancelled())
        return false;
    return (sets == count && entries == m_entries)
           || failSystem(tr("the disk holds something else than was written"));
}

bool SetFileSaver::hasWrittenBytes(const QByteArray &bytes) const
{
    qint64 at = 0;
    for (const Piece &piece : m_pieces) {
        if (at + piece.size > bytes.size() || hashOf(bytes.constData() + at, piece.size) != piece.hash)
            return false;
        at += piece.size;
    }
    return at == bytes.size();
}

bool SetFileSaver::finish()
{
    if (m_file.commit())
        return true;
    if (!m_file.isInPlace())
        return failSystem(m_file.error());
    m_error =
        tr("“%1” was saved, but the system could not make sure that it lasts (%2): it may be the old file "
           "again after a power cut; save again.")
            .arg(m_fileName, m_file.error());
    return false;
}

bool SetFileSaver::failSystem(const QString &reason)
{
    return fail(reason, kernel::SaveTarget::systemAdvice());
}

bool SetFileSaver::fail(const QString &reason, const QString &advice)
{
    m_error = tr("“%1” was not saved and is what it was: %2; %3.").arg(m_fileName, reason, advice);
    return false;
}

} // namespace interchange
