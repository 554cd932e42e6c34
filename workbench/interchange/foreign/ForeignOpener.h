#pragma once

#include <interchange/SceneFile.h>
#include <interchange/foreign/ForeignOrigin.h>
#include <interchange/foreign/ForeignReader.h>
#include <interchange/sidecar/SidecarFile.h>

#include <QCoreApplication>

namespace interchange {

/// Opens a scene of another kind than glTF with the metadata that stands beside it.
class ForeignOpener
{
    Q_DECLARE_TR_FUNCTIONS(ForeignOpener)

public:
    /// @param path absolute
    /// @param reader for this file; outlives the opener
    /// @param sidecar the file with the metadata where that is another one than what stands beside the scene
    ForeignOpener(const QString &path, ForeignReader &reader, const QString &sidecar = QString());

    /// In place of the present scene; where that fails, the present one stays. To be called once.
    SceneFile::Result open(kernel::Progress &progress);

private:
    bool read(kernel::Progress &progress);
    bool readSidecar(kernel::Progress &progress);
    void noteUnchanged();

    ForeignReader &m_reader;
    const QString m_sidecarPath;
    std::shared_ptr<SceneSource> m_source;
    std::shared_ptr<ForeignOrigin> m_origin;
    ForeignScene m_scene;
    Sidecar m_sidecar;
    SidecarFile::State m_state = SidecarFile::State::Absent;
    SceneError m_error;
};

} // namespace interchange
