#include <interchange/gltf/GlbContainer.h>

#include <QIODevice>
#include <QtEndian>

namespace interchange {

namespace {

constexpr quint32 SupportedVersion = 2;
constexpr quint32 JsonChunk = 0x4E4F534A; // "JSON"
// What one QByteArray can hold; a JSON text of this size is no scene anybody could look at.
constexpr qint64 LargestJson = 0x7fffffe0;

quint32 wordAt(const QByteArray &bytes, int offset)
{
    return qFromLittleEndian<quint32>(bytes.constData() + offset);
}

} // namespace

bool GlbContainer::isGlb(const QByteArray &firstBytes)
{
    return firstBytes.size() >= 4 && wordAt(firstBytes, 0) == Magic;
}

QByteArray GlbContainer::head(qint64 jsonLength, qint64 restLength)
{
    QByteArray bytes(HeaderSize + ChunkHeaderSize, '\0');
    const qint64 length = bytes.size() + jsonLength + restLength;
    const quint32 words[] = {Magic, SupportedVersion, quint32(length), quint32(jsonLength), JsonChunk};
    char *at = bytes.data();
    for (const quint32 word : words) {
        qToLittleEndian(word, at);
        at += sizeof word;
    }
    return bytes;
}

bool GlbContainer::read(QIODevice &device)
{
    m_json.clear();
    m_jsonChunkLength = 0;
    m_error = SceneError();
    m_fileLength = device.size();
    const bool good = readHeader(device) && readJsonChunk(device) && checkOtherChunks(device);
    if (!good)
        m_json.clear();
    return good;
}

bool GlbContainer::readHeader(QIODevice &device)
{
    device.seek(0);
    const QByteArray header = device.read(HeaderSize);
    if (header.size() < HeaderSize)
        return fail(header.size(), tr("the file ends inside the header of a binary glTF"));
    if (!isGlb(header))
        return fail(0, tr("the file does not begin as a binary glTF does"));
    if (const quint32 version = wordAt(header, 4); version != SupportedVersion)
        return fail(
            4, tr("the file is a binary glTF of version %1, and only version 2 can be read").arg(version));
    const qint64 length = wordAt(header, 8);
    if (length != m_fileLength)
        return fail(8,
                    tr("the header says the file has %1 bytes, but it has %2").arg(length).arg(m_fileLength));
    return true;
}

bool GlbContainer::readJsonChunk(QIODevice &device)
{
    if (m_fileLength == HeaderSize)
        return fail(HeaderSize, tr("the file ends behind its header and holds no scene"));
    Chunk chunk{};
    if (!readChunkHeader(device, chunk))
        return false;
    if (chunk.type != JsonChunk)
        return fail(HeaderSize + 4, tr("the first chunk of the file is not the JSON text of a scene"));
    if (chunk.length > LargestJson)
        return fail(HeaderSize, tr("the JSON text has more than 2 GiB"));
    m_jsonChunkLength = chunk.length;
    m_json = device.read(chunk.length);
    if (m_json.size() != chunk.length)
        return fail(device.pos(), tr("the JSON text cannot be read to its end"));
    while (m_json.endsWith('\0'))
        m_json.chop(1);
    return true;
}

/// Chunks behind the JSON text are not looked into, but their lengths must fill the file to its last byte.
bool GlbContainer::checkOtherChunks(QIODevice &device)
{
    while (device.pos() < m_fileLength) {
        Chunk chunk{};
        if (!readChunkHeader(device, chunk))
            return false;
        device.seek(device.pos() + chunk.length);
    }
    return true;
}

bool GlbContainer::readChunkHeader(QIODevice &device, Chunk &chunk)
{
    const qint64 offset = device.pos();
    const QByteArray header = device.read(ChunkHeaderSize);
    if (header.size() < ChunkHeaderSize)
        return fail(offset + header.size(), tr("the file ends inside the header of a chunk"));
    chunk = {wordAt(header, 0), wordAt(header, 4)};
    const qint64 rest = m_fileLength - offset - ChunkHeaderSize;
    if (chunk.length > rest)
        return fail(offset, tr("a chunk says it has %1 bytes, but %2 are left").arg(chunk.length).arg(rest));
    if (chunk.length % 4 != 0)
        return fail(offset, tr("a chunk has %1 bytes, which is no multiple of 4").arg(chunk.length));
    return true;
}

bool GlbContainer::fail(qint64 offset, const QString &reason)
{
    m_error = SceneError::atByte(offset, reason);
    return false;
}

} // namespace interchange
