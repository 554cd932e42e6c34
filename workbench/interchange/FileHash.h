#pragma once

#include <QtGlobal>

#include <string_view>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace interchange {

/// The hash of a stretch of a file, to notice that others have changed it. Fast, and no protection against those
/// who mean to deceive. Only good within one process.
class FileHash
{
public:
    /// The hash of nothing.
    FileHash() = default;
    /// The hash of these bytes.
    static FileHash of(std::string_view bytes);
    /// The hash of everything from the device's byte `from` to its end; where it cannot be read so far, the hash of
    /// less, which equals no other.
    static FileHash of(QIODevice &device, qint64 from = 0);

    qint64 size() const { return m_size; }
    bool operator==(const FileHash &other) const { return m_size == other.m_size && m_hash == other.m_hash; }
    bool operator!=(const FileHash &other) const { return !(*this == other); }

private:
    void add(std::string_view piece);

    qint64 m_size = 0;
    quint64 m_hash = 0;
};

} // namespace interchange
