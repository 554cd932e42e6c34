#include <interchange/sets/SetFileLoader.h>

#include <interchange/json/JsonReader.h>

#include <kernel/services/OpenFile.h>
#include <kernel/services/Progress.h>

#include <utility>

namespace interchange {

namespace {

// What reading the bytes, telling the values apart and understanding them cost, measured on large files.
constexpr double BytesRead = 0.2;
constexpr double ValuesKnown = 0.6;

constexpr qint64 Mebi = 1 << 20;

} // namespace

SetFileLoader::SetFileLoader(const SetFileLimits &limits, kernel::Progress &progress)
    : m_limits(limits), m_progress(progress)
{}

void SetFileLoader::setShare(double from, double to)
{
    m_from = from;
    m_to = to;
}

bool SetFileLoader::advance(double share)
{
    return m_progress.advance(m_from + (m_to - m_from) * share);
}

bool SetFileLoader::readBytes(const QString &fileName)
{
    kernel::OpenFile file;
    const auto goOn = [this](qint64 read, qint64 of) {
        return advance(of > 0 ? BytesRead * double(read) / double(of) : 0);
    };
    if (file.openToRead(fileName) && file.readAll(m_bytes, m_limits.bytes, goOn))
        return true;
    if (file.isTooLarge())
        return fail(
            tr("it has more than %1 MiB, the most that such a file may have").arg(m_limits.bytes / Mebi),
            tr("save the sets in several files"));
    if (m_progress.isCancelled())
        return false;
    return fail(tr("it cannot be read (%1)").arg(file.error()), tr("check its name, and who may read it"));
}

bool SetFileLoader::readSets(const std::function<void(kernel::SetCopy &&)> &sink)
{
    if (m_bytes.isEmpty())
        return fail(tr("the file is empty"), tr("copy it or save it again"));
    JsonTree tree;
    JsonReader reader(JsonLimits{m_limits.jsonDepth(), m_limits.values});
    reader.setGoOn([this](double share) { return advance(BytesRead + (ValuesKnown - BytesRead) * share); });
    const bool isJson = reader.read(std::exchange(m_bytes, QByteArray()), tree);
    if (!isJson && !m_progress.isCancelled())
        m_error = SetFileError::atJson(reader.error());
    if (!isJson || !advance(ValuesKnown))
        return false;
    SetFileReader sets(tree, m_limits);
    const bool isRead = sets.readSets([&](kernel::SetCopy &&set, double share) {
        sink(std::move(set));
        return advance(ValuesKnown + (1 - ValuesKnown) * share);
    });
    m_error = sets.error();
    return isRead;
}

bool SetFileLoader::fail(const QString &reason, const QString &advice)
{
    m_error = SetFileError::ofFile(reason, advice);
    return false;
}

} // namespace interchange
