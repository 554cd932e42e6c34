#include <interchange/foreign/ForeignSaver.h>

#include <interchange/sidecar/SidecarFile.h>
#include <interchange/sidecar/SidecarMaker.h>
#include <interchange/sidecar/SidecarReader.h>
#include <interchange/sidecar/SidecarText.h>

#include <kernel/document/Document.h>
#include <kernel/services/SaveTarget.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace interchange {

using kernel::Document;

namespace {

constexpr qint64 CopyAtOnce = 1 << 20;
// What making the text, writing it and copying the model cost, roughly.
constexpr double TextMade = 0.3;
constexpr double Written = 0.6;

bool isSameFile(const QString &path, const QString &other)
{
    return path == other || QFileInfo(path) == QFileInfo(other);
}

} // namespace

ForeignSaver::ForeignSaver(const QString &path, const SceneSource &source)
    : m_source(source),
      m_origin(*source.foreign),
      m_model(path),
      m_path(SidecarFile::pathFor(path)),
      m_isSameFile(isSameFile(path, source.filePath)),
      m_progress(tr("Saving “%1”").arg(QFileInfo(path).fileName())),
      m_failing(m_path)
{
    m_result.file = m_path;
}

SceneFile::Saved ForeignSaver::save(SceneFile::IfChanged ifChanged)
{
    m_ifChanged = ifChanged;
    const bool isWritten = checkName() && checkObjects() && makeText() && checkPresent()
                           && !isChangedElsewhere() && copyModel() && (isNothingToSay() || replaceSidecar());
    if (isWritten) {
        noteFiles();
        m_result.outcome = SceneFile::Saved::Done;
    } else if (m_result.error.isEmpty()) {
        m_result.outcome = m_progress.isCancelled() ? SceneFile::Saved::Cancelled
                                                    : SceneFile::Saved::ChangedElsewhere;
    }
    return m_result;
}

/// A copy stays what the model is.
bool ForeignSaver::checkName()
{
    const QString suffix = QFileInfo(m_source.filePath).suffix();
    if (m_isSameFile || suffix.compare(QFileInfo(m_model).suffix(), Qt::CaseInsensitive) == 0)
        return true;
    m_failing = m_model;
    return fail(tr("the scene is a “.%1” file, which is copied and not converted").arg(suffix),
                tr("choose a name that ends in “.%1”").arg(suffix));
}

/// The sidecar is about the objects of the model: it cannot make, delete or move them. The document refuses that
/// while such a scene is open; this guards against whatever gets past it.
bool ForeignSaver::checkObjects()
{
    int living = 0;
    for (const SceneSource::ObjectOrigin &origin : m_source.objects())
        living += Document::the().typeOf(origin.id) != nkObjectType::Null ? 1 : 0;
    const QString advice = tr("undo that, and change the model in the program that writes it");
    if (living < m_source.objectCount())
        return fail(tr("%1 objects of the model were deleted, and the model itself is never written")
                        .arg(m_source.objectCount() - living),
                    advice);
    if (Document::the().objectCount() > living)
        return fail(tr("%1 objects are not in the model, and the model itself is never written")
                        .arg(Document::the().objectCount() - living),
                    advice);
    return !isAnythingMoved()
           || fail(tr("objects stand elsewhere than in the model, and the model itself is never written"),
                   advice);
}

/// Siblings were made in the order of the model, and ids ascend.
bool ForeignSaver::isAnythingMoved() const
{
    const Document &document = Document::the();
    const auto isInOrder = [](const QList<quint64> &ids) { return std::is_sorted(ids.begin(), ids.end()); };
    auto object = m_origin.objects.begin();
    for (const SceneSource::ObjectOrigin &origin : m_source.objects()) {
        if (document.parentOf(origin.id) != (object++)->parentId
            || !isInOrder(document.childrenOf(origin.id)))
            return true;
    }
    return !isInOrder(document.topLevelNodes()) || !isInOrder(document.topLevelMaterials());
}

bool ForeignSaver::makeText()
{
    m_text = textOfSidecar(SidecarMaker(m_source, m_origin).make());
    if (m_text.isEmpty())
        return fail(tr("the sets are more than 1 GiB of text"),
                    tr("keep some of them in files of their own"));
    m_textHash = FileHash::of({m_text.constData(), size_t(m_text.size())});
    return m_progress.advance(TextMade);
}

/// What cannot be read is not overwritten, whatever the person says about changes: nobody knows what would be lost.
bool ForeignSaver::checkPresent()
{
    const bool isRead = m_isSameFile && SidecarFile::hashOf(m_path) == m_origin.sidecar;
    if (isRead && (m_origin.trouble.isEmpty() || m_textHash == m_origin.unchanged))
        return true;
    Sidecar present;
    SidecarFile file(m_path);
    const SidecarFile::State state = file.read(present, [](double) { return true; });
    return state != SidecarFile::State::Foreign
           || fail(tr("what stands there is no metadata that this program can read: %1").arg(file.trouble()),
                   tr("move that file to another place or give it another name, and save again"));
}

/// A file that is gone can be written again; nobody's work is lost.
bool ForeignSaver::isChangedElsewhere() const
{
    return m_isSameFile && m_ifChanged == SceneFile::IfChanged::Refuse && QFileInfo::exists(m_path)
           && SidecarFile::hashOf(m_path) != m_origin.sidecar;
}

/// Metadata that is as the model has it needs no sidecar. One that is there is kept as it is as long as it is true.
bool ForeignSaver::isNothingToSay() const
{
    const bool isUnchanged = m_textHash == m_origin.unchanged;
    if (m_isSameFile)
        return isUnchanged && SidecarFile::hashOf(m_path) == m_origin.sidecar;
    const bool hadNone = m_origin.sidecar == FileHash() || !m_origin.trouble.isEmpty();
    return isUnchanged && hadNone && !QFileInfo::exists(m_path);
}

bool ForeignSaver::replaceSidecar()
{
    m_failing = m_path;
    const kernel::SaveTarget target(m_path);
    if (!target.isWritable())
        return fail(target.reason(), target.advice());
    kernel::DurableReplacement file(m_path);
    if (!file.begin() || !file.write(m_text.constData(), m_text.size()) || !file.finishWriting())
        return failSystem(file.error());
    QFile written(file.temporaryPath());
    if (!written.open(QIODevice::ReadOnly) || written.readAll() != m_text)
        return failSystem(tr("the disk holds something else than was written"));
    if (!canBeRead())
        return false;
    // Others had all the time of the writing to change the file.
    return m_progress.advance(1) && !isChangedElsewhere() && commit(file, m_path);
}

/// Limits hold for reading: what goes beyond them would be lost when it is written.
bool ForeignSaver::canBeRead()
{
    Sidecar sidecar;
    SidecarReader reader;
    const auto goOn = [this](double share) { return m_progress.advance(Written + (1 - Written) * share); };
    return reader.read(m_text, sidecar, goOn)
           || (reader.error().isSet()
               && fail(tr("it could not be read back: %1").arg(reader.error().clause()),
                       tr("keep some of the sets in files of their own")));
}

/// Only under another name.
bool ForeignSaver::copyModel()
{
    if (m_isSameFile)
        return true;
    m_failing = m_model;
    const kernel::SaveTarget target(m_model);
    if (!target.isWritable())
        return fail(target.reason(), target.advice());
    kernel::DurableReplacement copy(m_model);
    if (!copy.begin() || !writeCopy(copy) || !copy.finishWriting())
        return failSystem(copy.error());
    if (SidecarFile::hashOf(copy.temporaryPath()) != m_origin.model)
        return fail(tr("“%1” has been changed or removed by another program since it was opened")
                        .arg(QDir::toNativeSeparators(m_source.filePath)),
                    tr("save the metadata with the model itself, and open it again"));
    return m_progress.advance(Written) && commit(copy, m_model);
}

bool ForeignSaver::writeCopy(kernel::DurableReplacement &copy)
{
    QFile model(m_source.filePath);
    // What is missing is noticed by the hash.
    if (!model.open(QIODevice::ReadOnly))
        return true;
    for (;;) {
        const QByteArray piece = model.read(CopyAtOnce);
        if (piece.isEmpty())
            return true;
        if (!copy.write(piece.constData(), piece.size()))
            return false;
    }
}

bool ForeignSaver::commit(kernel::DurableReplacement &file, const QString &path)
{
    if (file.commit())
        return true;
    if (!file.isInPlace())
        return failSystem(file.error());
    m_result.error =
        tr("“%1” was saved, but the system could not make sure that it lasts (%2): it may be the old file "
           "again after a power cut; save again.")
            .arg(QDir::toNativeSeparators(path), file.error());
    return true;
}

void ForeignSaver::noteFiles()
{
    auto origin = std::make_shared<ForeignOrigin>(m_origin);
    auto source = std::make_shared<SceneSource>(m_source);
    origin->sidecar = SidecarFile::hashOf(m_path);
    origin->unchanged = m_textHash;
    // One that cannot be read is still there where nothing was written.
    if (origin->sidecar == m_textHash || !m_isSameFile)
        origin->trouble.clear();
    source->filePath = m_model;
    source->foreign = origin;
    m_result.source = source;
}

bool ForeignSaver::failSystem(const QString &reason)
{
    return fail(reason, kernel::SaveTarget::systemAdvice());
}

bool ForeignSaver::fail(const QString &reason, const QString &advice)
{
    m_result.outcome = SceneFile::Saved::Failed;
    m_result.error = tr("“%1” was not saved and is what it was: %2; %3.")
                         .arg(QDir::toNativeSeparators(m_failing), reason, advice);
    return false;
}

} // namespace interchange
