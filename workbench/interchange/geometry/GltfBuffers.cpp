#include <interchange/geometry/GltfBuffers.h>

#include <interchange/SceneSource.h>
#include <interchange/geometry/GltfMember.h>
#include <interchange/gltf/GlbContainer.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QtEndian>

#include <unistd.h>

namespace interchange {

namespace {

constexpr quint32 BinaryChunk = 0x004E4942; // "BIN\0"
// What one QByteArray can hold.
constexpr qint64 LargestBuffer = 0x7fffffe0;

/// Whether a relative reference stays in the folder that it starts from, as far as its text says.
bool staysBelow(const QString &path)
{
    if (path.isEmpty() || path.startsWith(QLatin1Char('/')) || path.contains(QLatin1Char('\\'))
        || path.contains(QLatin1Char(':')) || path.contains(QChar(0)))
        return false;
    return !path.split(QLatin1Char('/')).contains(QLatin1String(".."));
}

} // namespace

GltfBuffers::GltfBuffers(const SceneSource &source, const JsonValue &buffers) : m_source(source)
{
    for (const JsonValue &buffer : GltfMember::elements(buffers))
        m_buffers.push_back({buffer, false, {}, {}});
}

const QByteArray &GltfBuffers::bytes(qint64 index, QString &reason)
{
    if (index < 0 || index >= qint64(m_buffers.size())) {
        reason = tr("there is no buffer %1").arg(index);
        return m_none;
    }
    Buffer &buffer = m_buffers[size_t(index)];
    if (!buffer.isRead) {
        buffer.isRead = true;
        read(index, buffer);
    }
    reason = buffer.reason;
    return buffer.bytes;
}

void GltfBuffers::read(qint64 index, Buffer &buffer) const
{
    const JsonValue uri = buffer.value.find(QLatin1String("uri"));
    const qint64 length = GltfMember::wholeNumber(buffer.value, QLatin1String("byteLength"), 0).value_or(0);
    if (length > LargestBuffer) {
        buffer.reason = tr("buffer %1 has more than 2 GiB").arg(index);
        return;
    }
    if (uri.isString()) {
        const QString text = uri.toText();
        buffer.bytes = text.startsWith(QLatin1String("data:")) ? readData(text, buffer.reason)
                                                               : readFile(text, length, buffer.reason);
    } else if (index == 0 && m_source.isBinary) {
        buffer.bytes = readChunk(buffer.reason);
    } else {
        buffer.reason = tr("buffer %1 does not say where its bytes are").arg(index);
    }
    // What stands behind the length that the buffer says is padding.
    buffer.bytes.truncate(int(length));
}

QByteArray GltfBuffers::readData(const QString &uri, QString &reason) const
{
    const int comma = uri.indexOf(QLatin1Char(','));
    if (comma < 0 || !uri.leftRef(comma).endsWith(QLatin1String(";base64"))) {
        reason = tr("the bytes that stand in the scene's text are not in base64");
        return {};
    }
    const auto decoded = QByteArray::fromBase64Encoding(uri.midRef(comma + 1).toLatin1(),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        reason = tr("the bytes that stand in the scene's text are damaged");
    return decoded ? *decoded : QByteArray();
}

QByteArray GltfBuffers::readFile(const QString &uri, qint64 length, QString &reason) const
{
    const QString path = QUrl::fromPercentEncoding(uri.toUtf8());
    const QDir folder = QFileInfo(m_source.filePath).absoluteDir();
    if (m_source.filePath.isEmpty() || !staysBelow(path)) {
        reason = tr("“%1” is not below the scene's folder").arg(uri);
        return {};
    }
    const QFileInfo info(folder.filePath(path));
    if (!info.isFile()) {
        reason = tr("there is no file “%1” beside the scene").arg(path);
        return {};
    }
    // Links are followed and may lead out.
    if (!info.canonicalFilePath().startsWith(QDir(folder.canonicalPath()).filePath(QString()))) {
        reason = tr("“%1” is not below the scene's folder").arg(uri);
        return {};
    }
    QFile file(info.canonicalFilePath());
    if (!file.open(QIODevice::ReadOnly)) {
        reason = tr("“%1” cannot be read (%2)").arg(path, file.errorString());
        return {};
    }
    return file.read(length);
}

QByteArray GltfBuffers::readChunk(QString &reason) const
{
    const QByteArray header = readBytes(m_source.restOffset, GlbContainer::ChunkHeaderSize);
    if (header.size() < GlbContainer::ChunkHeaderSize
        || qFromLittleEndian<quint32>(header.constData() + 4) != BinaryChunk) {
        reason = tr("the file has no chunk of geometry");
        return {};
    }
    const qint64 length = qFromLittleEndian<quint32>(header.constData());
    if (length > LargestBuffer) {
        reason = tr("the chunk of geometry has more than 2 GiB");
        return {};
    }
    return readBytes(m_source.restOffset + GlbContainer::ChunkHeaderSize, length);
}

/// From the file as it was opened, whatever stands under its name by now, and without moving the place at which
/// others read it.
QByteArray GltfBuffers::readBytes(qint64 offset, qint64 length) const
{
    const int handle = m_source.original ? m_source.original->handle() : -1;
    if (handle < 0 || offset < 0)
        return {};
    // A length that the file does not have must not become memory.
    const qint64 there = qMin(length, qMax<qint64>(0, m_source.original->size() - offset));
    QByteArray bytes(int(there), Qt::Uninitialized);
    qint64 done = 0;
    while (done < there) {
        const ssize_t read = ::pread(handle, bytes.data() + done, size_t(there - done), off_t(offset + done));
        if (read <= 0)
            break;
        done += read;
    }
    bytes.truncate(int(done));
    return bytes;
}

} // namespace interchange
