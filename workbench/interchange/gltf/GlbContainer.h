#pragma once

#include <interchange/SceneError.h>

#include <QByteArray>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace interchange {

/// The frame of a binary glTF 2.0 file: a header of 12 bytes and chunks of which the first holds the JSON text.
///
/// Every length is compared with the bytes that are really there before anything is read by it, and only the
/// JSON text is read: the size of geometry and images does not matter.
class GlbContainer
{
    Q_DECLARE_TR_FUNCTIONS(GlbContainer)

public:
    /// "glTF", the first four bytes of every such file.
    static constexpr quint32 Magic = 0x46546C67;
    static constexpr int HeaderSize = 12;
    static constexpr int ChunkHeaderSize = 8;

    /// Whether a file that starts with these bytes says that it is a binary glTF.
    static bool isGlb(const QByteArray &firstBytes);

    /// The bytes in front of the JSON text of a new file: its header and that of the JSON chunk.
    /// @param jsonLength of the JSON text with its padding; @param restLength of all chunks behind it, with headers
    static QByteArray head(qint64 jsonLength, qint64 restLength);
    /// The blanks that a JSON text of this length needs behind it.
    static int paddingFor(qint64 jsonLength) { return int((4 - jsonLength % 4) % 4); }
    /// Bytes that a file can have at most: its length is told in 32 bits.
    static constexpr qint64 LargestFile = 0xffffffff;

    /// Reads header, chunk headers and JSON text from the start of `device`, which must be open and able to
    /// seek. False when something is wrong; error() then says what and at which byte, json() is empty.
    bool read(QIODevice &device);

    /// The JSON text without the zero bytes that some programs pad it with (blanks are right and stay).
    const QByteArray &json() const { return m_json; }
    /// First byte of the JSON text in the file: always behind the two headers, 20.
    qint64 jsonOffset() const { return HeaderSize + ChunkHeaderSize; }
    /// Bytes of the JSON chunk as its header says them, padding included.
    qint64 jsonChunkLength() const { return m_jsonChunkLength; }
    /// Bytes of the whole file.
    qint64 fileLength() const { return m_fileLength; }

    const SceneError &error() const { return m_error; }

private:
    struct Chunk
    {
        qint64 length;
        quint32 type;
    };

    bool readHeader(QIODevice &device);
    bool readJsonChunk(QIODevice &device);
    bool checkOtherChunks(QIODevice &device);
    bool readChunkHeader(QIODevice &device, Chunk &chunk);
    bool fail(qint64 offset, const QString &reason);

    QByteArray m_json;
    qint64 m_jsonChunkLength = 0;
    qint64 m_fileLength = 0;
    SceneError m_error;
};

} // namespace interchange
