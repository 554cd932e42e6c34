#include "Autosave.h"

#include "FileQuestions.h"
#include "SceneSession.h"

#include "interchange/foreign/ForeignOrigin.h"
#include "interchange/sidecar/SidecarFile.h"
#include "kernel/document/Document.h"
#include "kernel/services/Progress.h"
#include "preferences/Options.h"

#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkPreferencesService.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QUndoStack>

using interchange::SidecarFile;
using kernel::Document;

namespace {

constexpr int minute = 60 * 1000;
/// When to try again where the person is in the middle of something.
constexpr int moment = 2000;

/// Of the metadata beside a model; that there is none yet is something to be known, too.
QByteArray hashOfWritten(const QString &sidecar)
{
    return QFileInfo(sidecar).exists() ? RecoverySlot::hashOf(sidecar) : QByteArrayLiteral("none");
}

bool isBusy()
{
    return Document::the().isScopeOpen() || kernel::Progress::isRunning() || QApplication::activeModalWidget()
           || QApplication::activePopupWidget();
}

} // namespace

Autosave::Autosave(SceneSession *session, QObject *parent)
    : QObject(parent), m_session(session), m_timer(this)
{
    connect(Document::the().undoStack(), &QUndoStack::indexChanged, this, [this] { m_hasNews = true; });
    connect(session, &SceneSession::sceneReplaced, this, &Autosave::drop);
    connect(session, &SceneSession::modifiedChanged, this, &Autosave::dropWhenSaved);
    connect(&nkPreferencesService::the(), &nkPreferencesService::valueChanged, this,
            [this](const QString &key) {
                if (key == QLatin1String(Options::autosave.key)
                    || key == QLatin1String(Options::autosaveMinutes.key)) {
                    followPreference();
                }
            });
    connect(&m_timer, &QTimer::timeout, this, &Autosave::writeWhenPossible);
    followPreference();
}

Autosave::~Autosave()
{
    drop();
}

void Autosave::followPreference()
{
    if (Options::autosave.value() != 0) {
        m_timer.start(Options::autosaveMinutes.value() * minute);
        return;
    }
    m_timer.stop();
    // An old copy is worse than none once newer changes are not kept. One that was restored is all there is.
    if (!m_session->isRecovered()) {
        drop();
    }
}

void Autosave::writeWhenPossible()
{
    const bool isLater = isBusy();
    m_timer.setInterval(isLater ? moment : Options::autosaveMinutes.value() * minute);
    if (!isLater) {
        write();
    }
}

bool Autosave::write()
{
    if (!m_session->isModified() || (m_slot && !m_hasNews)) {
        return true;
    }
    QString error;
    if (!m_slot) {
        m_slot = RecoverySlot::make(&error);
    }
    return m_slot ? writeCopy() : fail(error);
}

bool Autosave::writeCopy()
{
    const QString path = m_slot->nextCopy(suffix());
    const SceneFile::Saved saved = SceneFile::save(path, m_session->source());
    if (saved.outcome == SceneFile::Saved::Cancelled) {
        return false;
    }
    if (saved.outcome != SceneFile::Saved::Done) {
        return fail(saved.error);
    }
    const QString error = m_slot->take(
        {QFileInfo(path).fileName(), m_session->path(), fileHash(), QDateTime::currentDateTimeUtc()});
    if (!error.isEmpty()) {
        return fail(error);
    }
    m_hasNews = false;
    m_isFailureTold = false;
    return true;
}

/// A copy stays of the kind that the scene is.
QString Autosave::suffix() const
{
    const auto source = m_session->source();
    return m_session->isForeign()  ? QFileInfo(source->filePath).suffix()
           : m_session->isBinary() ? QStringLiteral("glb")
                                   : QStringLiteral("gltf");
}

/// Empty where the file is another one by now: then it is not the one that the copy comes from.
QByteArray Autosave::fileHash()
{
    const auto source = m_session->source();
    if (m_session->isRecovered()) {
        return m_slot->note().fileHash;
    }
    if (!source || m_session->path().isEmpty()) {
        return QByteArray();
    }
    if (source->foreign) {
        const QString sidecar = SidecarFile::pathFor(m_session->path());
        return SidecarFile::hashOf(sidecar) == source->foreign->sidecar ? hashOfWritten(sidecar)
                                                                        : QByteArray();
    }
    if (m_hashedSource.lock() != source) {
        QFile file(m_session->path());
        const bool isAsRead = file.open(QIODevice::ReadOnly)
                              && interchange::FileHash::of(file) == source->hash;
        m_hash = isAsRead ? RecoverySlot::hashOf(m_session->path()) : QByteArray();
        m_hashedSource = source;
    }
    return m_hash;
}

void Autosave::drop()
{
    if (m_slot) {
        m_slot->remove();
        m_slot.reset();
    }
    m_hasNews = false;
}

void Autosave::dropWhenSaved(bool isModified)
{
    if (!isModified) {
        drop();
    }
}

bool Autosave::hasAbandoned()
{
    return !RecoverySlot::abandoned().empty();
}

bool Autosave::offerAbandoned(QWidget *window)
{
    for (std::unique_ptr<RecoverySlot> &slot : RecoverySlot::abandoned()) {
        const RecoverySlot::Note &note = slot->note();
        const QString title = note.file.isEmpty() ? tr("Untitled") : QFileInfo(note.file).fileName();
        const QString written = QLocale().toString(note.written.toLocalTime(), QLocale::ShortFormat);
        const QString more = note.file.isEmpty()
                                 ? tr("The scene was never saved. The copy is of %1.").arg(written)
                                 : tr("The scene's file is %1. The copy is of %2.")
                                       .arg(QDir::toNativeSeparators(note.file), written);
        const FileQuestions::Answer answer = FileQuestions::restore(window, title, more);
        if (answer == FileQuestions::Answer::Discard) {
            slot->remove();
        } else if (answer == FileQuestions::Answer::Restore && restore(std::move(slot))) {
            return true;
        }
    }
    return false;
}

bool Autosave::restore(std::unique_ptr<RecoverySlot> slot)
{
    const RecoverySlot::Note note = slot->note();
    const bool isForeign = QFileInfo(SidecarFile::pathFor(slot->copy())).isFile();
    const auto hash = [&note, isForeign] {
        return isForeign ? hashOfWritten(SidecarFile::pathFor(note.file)) : RecoverySlot::hashOf(note.file);
    };
    const bool isAsItWas = !note.fileHash.isEmpty() && hash() == note.fileHash;
    const QString error = m_session->recover(slot->copy(), note.file, isAsItWas);
    if (!error.isEmpty()) {
        nkLogService::the().reportError(tr("Restore Scene"), error);
    }
    // Where the person has cancelled it, it is asked about again at the next start.
    if (!error.isEmpty() || !m_session->isRecovered()) {
        return false;
    }
    m_slot = std::move(slot);
    m_hasNews = false;
    return true;
}

bool Autosave::fail(const QString &reason)
{
    if (!m_isFailureTold) {
        m_isFailureTold = true;
        nkLogService::the().reportWarning(tr("Autosave"),
                                          tr("The copy for recovery cannot be written: %1").arg(reason));
    }
    return false;
}
