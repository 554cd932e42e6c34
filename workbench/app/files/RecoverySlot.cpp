#include "RecoverySlot.h"

#include "kernel/services/DurableFile.h"

#include <nkKernelServices/nkPlatformService.h>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

#include <algorithm>
#include <sys/file.h>

namespace {

const QLatin1String noteName("scene.json");
const QLatin1String copyMember("copy");
const QLatin1String fileMember("file");
const QLatin1String hashMember("fileHash");
const QLatin1String writtenMember("written");
constexpr qint64 largestNote = 1 << 20;

QString translate(const char *text)
{
    return QCoreApplication::translate("RecoverySlot", text);
}

} // namespace

RecoverySlot::RecoverySlot(const QString &folder)
    : m_folder(folder), m_lock(QDir(folder).filePath(QStringLiteral("lock")))
{}

RecoverySlot::~RecoverySlot() = default;

QString RecoverySlot::root()
{
    return nkPlatformService::the().getUserDataDirectory() + QLatin1String("recovery");
}

std::unique_ptr<RecoverySlot> RecoverySlot::make(QString *error)
{
    const QString folder = QDir(root()).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces));
    std::unique_ptr<RecoverySlot> slot(new RecoverySlot(folder));
    if (!QDir().mkpath(folder) || !slot->hold()) {
        *error = translate(QT_TRANSLATE_NOOP("RecoverySlot", "the folder “%1” cannot be made or written to"))
                     .arg(QDir::toNativeSeparators(folder));
        return nullptr;
    }
    // Scenes may be nobody else's business.
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return slot;
}

std::vector<std::unique_ptr<RecoverySlot>> RecoverySlot::abandoned()
{
    std::vector<std::unique_ptr<RecoverySlot>> found;
    const QDir all(root());
    const QStringList folders = all.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : folders) {
        std::unique_ptr<RecoverySlot> slot(new RecoverySlot(all.filePath(folder)));
        if (!slot->hold()) {
            continue;
        }
        if (slot->readNote()) {
            found.push_back(std::move(slot));
        } else {
            slot->remove();
        }
    }
    std::sort(found.begin(), found.end(),
              [](const auto &a, const auto &b) { return a->note().written < b->note().written; });
    return found;
}

/// The system's own lock on an open file: it goes with the process, whatever ends that.
bool RecoverySlot::hold()
{
    return m_lock.open(QIODevice::ReadWrite) && flock(m_lock.handle(), LOCK_EX | LOCK_NB) == 0;
}

bool RecoverySlot::readNote()
{
    QFile file(QDir(m_folder).filePath(noteName));
    if (!file.open(QIODevice::ReadOnly) || file.size() > largestNote) {
        return false;
    }
    const QJsonObject members = QJsonDocument::fromJson(file.readAll()).object();
    m_note.copy = QFileInfo(members.value(copyMember).toString()).fileName();
    m_note.file = members.value(fileMember).toString();
    m_note.fileHash = QByteArray::fromHex(members.value(hashMember).toString().toLatin1());
    m_note.written = QDateTime::fromString(members.value(writtenMember).toString(), Qt::ISODateWithMs);
    return !m_note.copy.isEmpty() && QFileInfo(copy()).isFile();
}

QString RecoverySlot::nextCopy(const QString &suffix)
{
    // Two names by turns: the present copy stays whole until the next one is.
    const bool isSecond = m_note.copy.startsWith(QLatin1String("first"));
    const QString name = isSecond ? QStringLiteral("second.") : QStringLiteral("first.");
    removeFiles({name + QLatin1Char('*')});
    return QDir(m_folder).filePath(name + suffix);
}

void RecoverySlot::removeFiles(const QStringList &patterns)
{
    QDir folder(m_folder);
    const QStringList names = folder.entryList(patterns, QDir::Files);
    for (const QString &name : names) {
        folder.remove(name);
    }
}

QString RecoverySlot::take(const Note &note)
{
    const QJsonObject members{{copyMember, note.copy},
                              {fileMember, note.file},
                              {hashMember, QString::fromLatin1(note.fileHash.toHex())},
                              {writtenMember, note.written.toString(Qt::ISODateWithMs)}};
    const QString error = kernel::DurableFile::replace(QDir(m_folder).filePath(noteName),
                                                       QJsonDocument(members).toJson());
    if (error.isEmpty()) {
        if (!m_note.copy.isEmpty()) {
            removeFiles({m_note.copy.section(QLatin1Char('.'), 0, 0) + QLatin1String(".*")});
        }
        m_note = note;
    }
    return error;
}

QString RecoverySlot::copy() const
{
    return QDir(m_folder).filePath(m_note.copy);
}

/// Only what this program writes is removed, and no folder that holds anything else.
void RecoverySlot::remove()
{
    // The note first: without it, what is left after a crash in between is no copy to anybody.
    QFile::remove(QDir(m_folder).filePath(noteName));
    removeFiles({QStringLiteral("first.*"), QStringLiteral("second.*"), QStringLiteral("lock")});
    m_lock.close();
    QDir().rmdir(m_folder);
}

QByteArray RecoverySlot::hashOf(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}
