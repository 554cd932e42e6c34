#include <interchange/SceneSaver.h>

#include <interchange/gltf/GlbContainer.h>
#include <interchange/gltf/GltfWriter.h>
#include <interchange/json/JsonReader.h>

#include <kernel/services/SaveTarget.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <cstring>
#include <limits>

namespace interchange {

namespace {

constexpr int CopyAtOnce = 1 << 20;

bool isGlbName(const QString &path)
{
    return path.endsWith(QLatin1String(".glb"), Qt::CaseInsensitive);
}

bool isSameFile(const QString &path, const QString &other)
{
    return !other.isEmpty() && (path == other || QFileInfo(path) == QFileInfo(other));
}

/// Whether the rest of the file is this, without having all of it in memory at once.
bool holds(QFile &file, const QByteArray &content)
{
    QByteArray piece(CopyAtOnce, Qt::Uninitialized);
    qint64 at = 0;
    for (;;) {
        const qint64 size = file.read(piece.data(), piece.size());
        if (size <= 0)
            return size == 0 && at == content.size();
        if (at + size > content.size()
            || std::memcmp(piece.constData(), content.constData() + at, size_t(size)) != 0)
            return false;
        at += size;
    }
}

FileHash hashOfFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? FileHash::of(file) : FileHash();
}

} // namespace

SceneSaver::SceneSaver(const QString &path, const SceneSource &source)
    : m_path(path),
      m_source(source),
      m_isSameFile(isSameFile(path, source.filePath)),
      m_progress(tr("Saving “%1”").arg(QFileInfo(path).fileName())),
      m_file(path)
{}

SceneFile::Saved SceneSaver::save(SceneFile::IfChanged ifChanged)
{
    m_ifChanged = ifChanged;
    const bool isWritten = checkKind() && checkTarget() && !isChangedElsewhere() && makeText()
                           && checkOriginal() && replace();
    if (isWritten) {
        noteFile();
        m_result.outcome = SceneFile::Saved::Done;
        m_result.source = m_written;
        m_result.leftBehind = filesLeftBehind();
        if (m_result.error.isEmpty() && !m_note.isEmpty())
            m_result.error = tr("“%1” was saved, but %2.").arg(QDir::toNativeSeparators(m_path), m_note);
    } else if (m_result.error.isEmpty()) {
        m_result.outcome = m_progress.isCancelled() ? SceneFile::Saved::Cancelled
                                                    : SceneFile::Saved::ChangedElsewhere;
    }
    return m_result;
}

bool SceneSaver::checkKind()
{
    m_isBinary = m_isSameFile ? m_source.isBinary : isGlbName(m_path) || m_source.isBinary;
    if (m_source.isBinary && m_path.endsWith(QLatin1String(".gltf"), Qt::CaseInsensitive) && !m_isSameFile)
        return fail(tr("the scene is binary, and its geometry has no place in a text file"),
                    tr("choose a name that ends in “.glb”"));
    return true;
}

bool SceneSaver::checkTarget()
{
    const kernel::SaveTarget target(m_path);
    return target.isWritable() || fail(target.reason(), target.advice());
}

/// A file that is gone can be written again; nobody's work is lost.
bool SceneSaver::isChangedElsewhere() const
{
    return m_isSameFile && m_ifChanged == SceneFile::IfChanged::Refuse && QFileInfo::exists(m_path)
           && hashOfFile(m_path) != m_source.hash;
}

bool SceneSaver::makeText()
{
    GltfWriter writer(m_source, QFileInfo(m_path).path(), m_progress);
    if (!writer.write())
        return writer.reason().isEmpty() ? false : fail(writer.reason(), writer.advice());
    m_json = writer.json();
    m_written = writer.takeSource();
    m_note = writer.note();
    return true;
}

bool SceneSaver::checkOriginal()
{
    if (!m_source.original || FileHash::of(*m_source.original, m_source.restOffset) == m_source.restHash)
        return true;
    return fail(tr("its geometry has been changed by another program since it was opened"),
                tr("keep the sets in a file of their own and open the scene again"));
}

bool SceneSaver::replace()
{
    const bool isUnchanged = m_isSameFile && m_json == m_source.json && hashOfFile(m_path) == m_source.hash;
    if (isUnchanged) {
        m_restOffset = m_source.restOffset;
        return true;
    }
    if (!m_file.begin() || !write() || !m_file.finishWriting())
        return failSystem(m_file.error());
    // Others had all the time of the writing to change the file.
    return readBack() && m_progress.advance(1) && !isChangedElsewhere() && finish();
}

bool SceneSaver::write()
{
    return m_isBinary ? writeBinary() : m_file.write(m_json.constData(), m_json.size());
}

bool SceneSaver::writeBinary()
{
    if (m_source.original && m_json == m_source.json) {
        m_restOffset = m_source.restOffset;
        return copyFrom(0);
    }
    QByteArray chunk = m_json;
    while (chunk.endsWith(' '))
        chunk.chop(1);
    chunk.append(QByteArray(GlbContainer::paddingFor(chunk.size()), ' '));
    const qint64 rest = m_source.original ? m_source.restHash.size() : 0;
    const QByteArray head = GlbContainer::head(chunk.size(), rest);
    m_restOffset = head.size() + chunk.size();
    if (m_restOffset + rest > GlbContainer::LargestFile)
        return fail(tr("it would have more than 4 GiB"), tr("split the scene"));
    return m_file.write(head.constData(), head.size()) && m_file.write(chunk.constData(), chunk.size())
           && (!m_source.original || copyFrom(m_source.restOffset));
}

bool SceneSaver::copyFrom(qint64 offset)
{
    QFile &original = *m_source.original;
    QByteArray piece(CopyAtOnce, Qt::Uninitialized);
    if (!original.seek(offset))
        return failSystem(original.errorString());
    for (;;) {
        const qint64 size = original.read(piece.data(), piece.size());
        if (size < 0)
            return failSystem(original.errorString());
        if (size == 0)
            return true;
        if (!m_file.write(piece.constData(), size))
            return false;
    }
}

/// Reads the temporary file as any reader would.
bool SceneSaver::readBack()
{
    QFile file(m_file.temporaryPath());
    if (!file.open(QIODevice::ReadOnly))
        return failSystem(file.errorString());
    const bool isWhole = m_isBinary ? readBackBinary(file) : holds(file, m_json);
    return isWhole || failSystem(tr("the disk holds something else than was written"));
}

bool SceneSaver::readBackBinary(QFile &file)
{
    GlbContainer container;
    QByteArray json = m_json;
    if (!container.read(file))
        return false;
    QByteArray found = container.json();
    for (QByteArray *text : {&json, &found}) {
        while (text->endsWith(' '))
            text->chop(1);
    }
    return found == json && (!m_source.original || FileHash::of(file, m_restOffset) == m_source.restHash);
}

bool SceneSaver::finish()
{
    if (m_file.commit())
        return true;
    if (!m_file.isInPlace())
        return failSystem(m_file.error());
    m_result.error =
        tr("“%1” was saved, but the system could not make sure that it lasts (%2): it may be the old file "
           "again after a power cut; save again.")
            .arg(QDir::toNativeSeparators(m_path), m_file.error());
    return true;
}

void SceneSaver::noteFile()
{
    m_written->filePath = m_path;
    m_written->isBinary = m_isBinary;
    m_written->jsonOffset = m_isBinary ? GlbContainer::HeaderSize + GlbContainer::ChunkHeaderSize : 0;
    // What was read back is known; the rest of a binary file is not held in memory.
    m_written->hash = m_isBinary ? hashOfFile(m_path)
                                 : FileHash::of({m_json.constData(), size_t(m_json.size())});
    if (!m_isBinary)
        return;
    m_written->restOffset = m_restOffset;
    m_written->restHash = m_source.original ? m_source.restHash : FileHash();
    m_written->original = std::make_shared<QFile>(m_path);
    m_written->original->open(QIODevice::ReadOnly);
}

QStringList SceneSaver::filesLeftBehind() const
{
    QStringList files;
    JsonTree tree;
    const bool isMoved = !m_source.filePath.isEmpty()
                         && QFileInfo(m_path).canonicalPath() != QFileInfo(m_source.filePath).canonicalPath();
    if (!isMoved || !JsonReader().read(m_json, tree))
        return files;
    for (const char *list : {"buffers", "images"}) {
        for (const JsonValue element : tree.root().find(QLatin1String(list)).children()) {
            const JsonValue uri = element.find(QLatin1String("uri"));
            const QString file = uri.isString() ? uri.toText() : QString();
            if (!file.isEmpty() && QUrl(file).isRelative() && !files.contains(file))
                files.append(file);
        }
    }
    return files;
}

bool SceneSaver::failSystem(const QString &reason)
{
    return fail(reason, kernel::SaveTarget::systemAdvice());
}

bool SceneSaver::fail(const QString &reason, const QString &advice)
{
    if (m_result.error.isEmpty())
        m_result.error = tr("“%1” was not saved and is what it was: %2; %3.")
                             .arg(QDir::toNativeSeparators(m_path), reason, advice);
    return false;
}

} // namespace interchange
