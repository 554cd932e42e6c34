#pragma once

#include <interchange/SceneError.h>
#include <interchange/foreign/ForeignScene.h>

#include <QByteArray>
#include <QString>

namespace kernel {
class Progress;
} // namespace kernel

namespace interchange {

/// Reads one kind of scene file that is not glTF. Has no part in the document: whoever asked makes that of the
/// scene, and keeps the metadata in a sidecar. One reader reads one file.
class ForeignReader
{
    Q_DISABLE_COPY(ForeignReader)

public:
    ForeignReader() = default;
    virtual ~ForeignReader() = default;

    /// Whether this reader is the one for a file.
    /// @param suffix of the file's name, lower case, without the point
    /// @param firstBytes up to 4,096 of them
    virtual bool isFor(const QString &suffix, const QByteArray &firstBytes) const = 0;

    /// Reads the whole file. False with error(), or where the person cancelled; the scene is to be thrown away then.
    /// @param path absolute, of a file that exists and could be opened
    virtual bool read(const QString &path, ForeignScene &scene, kernel::Progress &progress) = 0;

    const SceneError &error() const { return m_error; }

protected:
    SceneError m_error;
};

} // namespace interchange
