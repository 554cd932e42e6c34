#include <interchange/importer/AnswerStream.h>

#include <interchange/importer/FlatForm.h>
#include <interchange/importer/FlatReader.h>

#include <algorithm>

namespace interchange {

namespace {

constexpr int StartSize = 8;
constexpr int ProgressSize = 5;

} // namespace

bool AnswerStream::add(const QByteArray &bytes)
{
    m_received += bytes.size();
    if (isTooLong())
        return false;
    m_bytes.append(bytes);
    return m_hasRecord || (readStart() && readProgress());
}

/// True also where too little has come to tell.
bool AnswerStream::readStart()
{
    if (m_isStarted || m_bytes.size() < StartSize)
        return true;
    FlatReader reader(m_bytes);
    m_isStarted = reader.word() == flat::Magic && reader.word() == flat::Version;
    m_bytes.remove(0, StartSize);
    return m_isStarted;
}

bool AnswerStream::readProgress()
{
    if (!m_isStarted)
        return true;
    FlatReader reader(m_bytes);
    int done = 0;
    while (reader.remaining() >= ProgressSize && quint8(m_bytes.at(done)) == quint8(flat::Record::Progress)) {
        reader.byte();
        const double share = double(reader.finite());
        m_share = std::clamp(share, m_share, 1.0);
        done = reader.position();
    }
    m_bytes.remove(0, done);
    const quint8 kind = m_bytes.isEmpty() ? quint8(flat::Record::Progress) : quint8(m_bytes.at(0));
    m_hasRecord = kind == quint8(flat::Record::Failure) || kind == quint8(flat::Record::Scene);
    return reader.isSound() && (m_hasRecord || kind == quint8(flat::Record::Progress));
}

} // namespace interchange
