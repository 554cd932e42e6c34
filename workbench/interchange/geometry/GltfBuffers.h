#pragma once

#include <interchange/json/JsonValue.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

#include <vector>

namespace interchange {

class SceneSource;

/// The buffers of a glTF file: the chunk behind the JSON text, files beside the scene's, and `data:` texts. A buffer
/// is read when it is first asked for.
///
/// Files are read from the scene's folder and the folders in it only: no absolute paths, no way out by ".." or by
/// links, no other addresses.
class GltfBuffers
{
    Q_DECLARE_TR_FUNCTIONS(GltfBuffers)

public:
    /// @param source outlives the buffers; @param buffers the file's `buffers`
    GltfBuffers(const SceneSource &source, const JsonValue &buffers);

    /// The bytes of a buffer; empty where it cannot be read, and `reason` then says why: a clause.
    const QByteArray &bytes(qint64 index, QString &reason);

private:
    struct Buffer
    {
        JsonValue value;
        bool isRead = false;
        QByteArray bytes;
        QString reason;
    };

    void read(qint64 index, Buffer &buffer) const;
    QByteArray readChunk(QString &reason) const;
    QByteArray readData(const QString &uri, QString &reason) const;
    QByteArray readFile(const QString &uri, qint64 length, QString &reason) const;
    QByteArray readBytes(qint64 offset, qint64 length) const;

    const SceneSource &m_source;
    std::vector<Buffer> m_buffers;
    const QByteArray m_none;
};

} // namespace interchange
