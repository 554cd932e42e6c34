#include <interchange/FileHash.h>

#include <QByteArray>
#include <QIODevice>

#include <functional>

namespace interchange {

namespace {

// All pieces but the last have this size, so that a content has one hash however it was read.
constexpr qint64 PieceSize = 1 << 20;
constexpr quint64 Multiplier = 0x9e3779b97f4a7c15u;

} // namespace

void FileHash::add(std::string_view piece)
{
    m_hash = (m_hash ^ std::hash<std::string_view>()(piece)) * Multiplier;
    m_hash ^= m_hash >> 29;
    m_size += qint64(piece.size());
}

FileHash FileHash::of(std::string_view bytes)
{
    FileHash hash;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), size_t(PieceSize))))
        hash.add(bytes.substr(0, size_t(PieceSize)));
    return hash;
}

FileHash FileHash::of(QIODevice &device, qint64 from)
{
    FileHash hash;
    QByteArray piece(int(PieceSize), Qt::Uninitialized);
    if (!device.seek(from))
        return hash;
    for (;;) {
        const qint64 size = device.read(piece.data(), PieceSize);
        if (size < 0)
            hash.m_size = -1;
        if (size <= 0)
            return hash;
        hash.add({piece.constData(), size_t(size)});
    }
}

} // namespace interchange
