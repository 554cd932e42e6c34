#include "SceneSession.h"

#include "BackupCopy.h"
#include "preferences/Options.h"

#include <interchange/foreign/ForeignOrigin.h>
#include <interchange/sidecar/SidecarFile.h>
#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using interchange::FileHash;
using interchange::SidecarFile;
using kernel::Document;

namespace {

FileHash hashOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? FileHash::of(file) : FileHash();
}

} // namespace

SceneSession::SceneSession(const QString &sample, QObject *parent)
    : QObject(parent), m_sample(sample), m_isToldModified(isModified())
{
    connect(&Document::the(), &Document::modifiedChanged, this, &SceneSession::tellModified);
}

SceneSession::~SceneSession() = default;

QString SceneSession::title() const
{
    return m_path.isEmpty() ? tr("Untitled") : QFileInfo(m_path).fileName();
}

bool SceneSession::isModified() const
{
    return m_isRecovered || Document::the().isModified();
}

bool SceneSession::isBinary() const
{
    return m_source && m_source->isBinary;
}

bool SceneSession::isForeign() const
{
    return m_source && m_source->foreign;
}

QString SceneSession::open(const QString &path)
{
    const SceneFile::Result result = SceneFile::open(path);
    if (!result.isOpen()) {
        return result.error;
    }
    take(result);
    setRecovered(false);
    const bool isSample = QFileInfo(result.source->filePath) == QFileInfo(m_sample);
    setPath(isSample ? QString() : result.source->filePath);
    Q_EMIT sceneReplaced();
    return QString();
}

QString SceneSession::recover(const QString &copy, const QString &file, bool isFileAsItWas)
{
    const SceneFile::Result result = openCopy(copy, file);
    if (!result.isOpen()) {
        return result.error;
    }
    take(result);
    // What the scene refers to lies beside its file, not beside the copy.
    auto source = std::make_shared<interchange::SceneSource>(*result.source);
    source->filePath = file;
    if (source->foreign) {
        auto origin = std::make_shared<interchange::ForeignOrigin>(*source->foreign);
        // What was read is nowhere beside the model yet.
        origin->unchanged = FileHash();
        if (isFileAsItWas) {
            origin->sidecar = SidecarFile::hashOf(SidecarFile::pathFor(file));
        }
        source->foreign = origin;
    }
    m_source = source;
    m_recoveredFile = isFileAsItWas && !source->foreign ? hashOf(file) : FileHash();
    setRecovered(true);
    setPath(file);
    Q_EMIT sceneReplaced();
    return QString();
}

/// A model that is never written is itself the best copy: what it refers to lies beside it, and to some readers its
/// name is part of it.
SceneFile::Result SceneSession::openCopy(const QString &copy, const QString &file)
{
    const QString sidecar = SidecarFile::pathFor(copy);
    const bool isModelThere = QFileInfo(sidecar).isFile() && QFileInfo(file).isFile()
                              && hashOf(file) == hashOf(copy);
    return isModelThere ? SceneFile::open(file, sidecar) : SceneFile::open(copy);
}

void SceneSession::take(const SceneFile::Result &result)
{
    m_source = result.source;
    m_report = result.report;
    m_hasScene = true;
}

SceneFile::Saved SceneSession::save(const QString &path, SceneFile::IfChanged ifChanged)
{
    // What was read is the copy, not the file: that it differs from the copy says nothing.
    if (m_isRecovered && path == m_path && isFileAsRead(path)) {
        ifChanged = SceneFile::IfChanged::Overwrite;
    }
    SceneFile::Saved saved;
    saved.error = backUp(path, ifChanged);
    if (!saved.error.isEmpty()) {
        return saved;
    }
    saved = SceneFile::save(path, m_source, ifChanged);
    if (saved.outcome == SceneFile::Saved::Done) {
        m_source = saved.source;
        Document::the().markSaved();
        setRecovered(false);
        setPath(saved.source->filePath);
    }
    return saved;
}

/// Whether a save finds the file as the scene was read from it.
bool SceneSession::isFileAsRead(const QString &path) const
{
    const FileHash read = m_isRecovered ? m_recoveredFile : m_source ? m_source->hash : FileHash();
    return read != FileHash() && hashOf(path) == read;
}

/// Only of what is going to be replaced: a backup that equals the file would have pushed the real one out.
QString SceneSession::backUp(const QString &path, SceneFile::IfChanged ifChanged) const
{
    const bool isReplaced = path != m_path || ifChanged == SceneFile::IfChanged::Overwrite
                            || (isModified() && isFileAsRead(path));
    // Files of other kinds than glTF are never written.
    if (Options::backup.value() == 0 || !isReplaced || isForeign() || !QFileInfo(path).isFile()) {
        return QString();
    }
    const QString error = BackupCopy::make(path);
    return error.isEmpty()
               ? QString()
               : tr("“%1” was not saved and is what it was: its backup copy cannot be written (%2); "
                    "make room for it, or switch backup copies off in the preferences.")
                     .arg(QDir::toNativeSeparators(path), error);
}

void SceneSession::clear()
{
    replace(true);
}

void SceneSession::close()
{
    replace(false);
}

void SceneSession::replace(bool hasScene)
{
    // Not Document::clear(): what was copied from the old scene can be pasted into the new one.
    kernel::DocumentLoader empty;
    if (!empty.commit()) {
        return;
    }
    m_source.reset();
    m_report = {};
    m_hasScene = hasScene;
    setRecovered(false);
    setPath(QString());
    Q_EMIT sceneReplaced();
}

void SceneSession::setRecovered(bool isRecovered)
{
    m_isRecovered = isRecovered;
    tellModified();
}

void SceneSession::tellModified()
{
    if (m_isToldModified != isModified()) {
        m_isToldModified = !m_isToldModified;
        Q_EMIT modifiedChanged(m_isToldModified);
    }
}

void SceneSession::setPath(const QString &path)
{
    m_path = path;
    Q_EMIT pathChanged(path);
}
