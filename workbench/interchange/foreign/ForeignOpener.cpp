#include <interchange/foreign/ForeignOpener.h>

#include <interchange/foreign/ForeignImporter.h>
#include <interchange/sidecar/SidecarMaker.h>
#include <interchange/sidecar/SidecarText.h>

#include <kernel/services/Progress.h>

#include <QDir>
#include <QFileInfo>

namespace interchange {

ForeignOpener::ForeignOpener(const QString &path, ForeignReader &reader, const QString &sidecar)
    : m_reader(reader),
      m_sidecarPath(sidecar.isEmpty() ? SidecarFile::pathFor(path) : sidecar),
      m_source(std::make_shared<SceneSource>()),
      m_origin(std::make_shared<ForeignOrigin>())
{
    m_source->filePath = path;
    m_source->foreign = m_origin;
}

SceneFile::Result ForeignOpener::open(kernel::Progress &progress)
{
    SceneFile::Result result;
    if (read(progress)) {
        const Sidecar *saved = m_state == SidecarFile::State::Known ? &m_sidecar : nullptr;
        if (!ForeignImporter(m_scene, saved, *m_source, *m_origin).import())
            m_error = SceneError::ofFile(tr("a change to the present scene is not finished"),
                                         tr("finish it and open the file again"));
    } else {
        result.isCancelled = !m_error.isSet();
    }
    if (result.isCancelled)
        return result;
    if (m_error.isSet()) {
        result.error = m_error.message(QDir::toNativeSeparators(m_source->filePath));
        return result;
    }
    noteUnchanged();
    result.report = m_scene.report;
    result.source = m_source;
    return result;
}

bool ForeignOpener::read(kernel::Progress &progress)
{
    // Before it is read: what changes meanwhile is noticed.
    m_origin->model = SidecarFile::hashOf(m_source->filePath);
    if (!m_reader.read(m_source->filePath, m_scene, progress)) {
        m_error = m_reader.error();
        return false;
    }
    return readSidecar(progress);
}

/// A sidecar that cannot be read is no reason not to look at the model.
bool ForeignOpener::readSidecar(kernel::Progress &progress)
{
    SidecarFile file(m_sidecarPath);
    m_state = file.read(m_sidecar, [&progress](double) { return progress.advance(1); });
    m_origin->sidecar = file.hash();
    m_origin->trouble = file.trouble();
    if (m_state == SidecarFile::State::Foreign)
        m_scene.report.addRefused(QFileInfo(m_sidecarPath).fileName(), ImportReason::ForeignSidecar,
                                  file.trouble());
    return m_state != SidecarFile::State::Cancelled;
}

void ForeignOpener::noteUnchanged()
{
    const QByteArray text = textOfSidecar(SidecarMaker(*m_source, *m_origin).make());
    m_origin->unchanged = FileHash::of({text.constData(), size_t(text.size())});
}

} // namespace interchange
