#include "FileCommands.h"

#include "FileQuestions.h"
#include "MainWindow.h"
#include "RecentFiles.h"
#include "SceneSession.h"
#include "Workbench.h"

#include "preferences/Options.h"

#include <nkKernelServices/nkLogService.h>
#include <nkQt4Ext/QNKViewBase.h>

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStatusBar>

using FileQuestions::Answer;

FileCommands::FileCommands(MainWindow *window, SceneSession *session, QObject *parent)
    : QObject(parent), m_window(window), m_session(session)
{}

void FileCommands::open(const QString &path)
{
    if (!mayLeave()) {
        return;
    }
    const QString error = m_session->open(path);
    if (error.isEmpty()) {
        return;
    }
    if (!QFileInfo::exists(path)) {
        RecentFiles::remove(path);
    }
    nkLogService::the().reportError(tr("Open Scene"), error);
}

void FileCommands::chooseAndOpen()
{
    QNKViewBase::commitOpenEditors();
    const QString path = FileQuestions::fileToOpen(m_window, folder());
    if (!path.isEmpty()) {
        open(path);
    }
}

void FileCommands::makeNew()
{
    if (mayLeave()) {
        m_session->clear();
    }
}

void FileCommands::close()
{
    if (mayLeave()) {
        m_session->close();
    }
}

bool FileCommands::save()
{
    QNKViewBase::commitOpenEditors();
    return m_session->path().isEmpty() ? saveAs() : saveTo(m_session->path());
}

bool FileCommands::saveAs()
{
    QNKViewBase::commitOpenEditors();
    const QString path = m_session->isForeign()
                             ? FileQuestions::fileToCopyTo(m_window, suggestedPath())
                             : FileQuestions::fileToSave(m_window, suggestedPath(), m_session->isBinary());
    return !path.isEmpty() && saveTo(path);
}

bool FileCommands::saveTo(const QString &path)
{
    const SceneFile::Saved saved = m_session->save(path);
    switch (saved.outcome) {
    case SceneFile::Saved::ChangedElsewhere:
        return overwriteOrSaveAs(path, saved.file);
    case SceneFile::Saved::Cancelled:
        return false;
    case SceneFile::Saved::Failed:
        nkLogService::the().reportError(tr("Save Scene"), saved.error);
        return false;
    case SceneFile::Saved::Done:
        break;
    }
    tellSaved(saved);
    return true;
}

void FileCommands::tellSaved(const SceneFile::Saved &saved)
{
    m_window->showStatus(tr("“%1” is saved").arg(m_session->title()));
    if (!saved.error.isEmpty()) {
        nkLogService::the().reportError(tr("Save Scene"), saved.error);
    }
    if (!saved.leftBehind.isEmpty()) {
        FileQuestions::tellLeftBehind(m_window, saved.leftBehind);
    }
}

bool FileCommands::overwriteOrSaveAs(const QString &path, const QString &changedFile)
{
    switch (FileQuestions::overwriteChanged(m_window, QFileInfo(changedFile).fileName())) {
    case Answer::SaveAs:
        return saveAs();
    case Answer::Overwrite: {
        const SceneFile::Saved saved = m_session->save(path, SceneFile::IfChanged::Overwrite);
        if (saved.outcome == SceneFile::Saved::Done) {
            tellSaved(saved);
        } else if (!saved.error.isEmpty()) {
            nkLogService::the().reportError(tr("Save Scene"), saved.error);
        }
        return saved.outcome == SceneFile::Saved::Done;
    }
    default:
        return false;
    }
}

void FileCommands::revert()
{
    QNKViewBase::commitOpenEditors();
    const bool isAsked = m_session->isModified();
    if (m_session->path().isEmpty() || (isAsked && !FileQuestions::revert(m_window, m_session->title()))) {
        return;
    }
    const QString error = m_session->open(m_session->path());
    if (!error.isEmpty()) {
        nkLogService::the().reportError(tr("Revert"), error);
    }
}

bool FileCommands::mayLeave()
{
    QNKViewBase::commitOpenEditors();
    if (!m_session->isModified()) {
        return true;
    }
    switch (FileQuestions::saveChanges(m_window, m_session->title())) {
    case Answer::Save:
        return save();
    case Answer::Discard:
        return true;
    default:
        return false;
    }
}

QString FileCommands::suggestedPath() const
{
    if (!m_session->path().isEmpty()) {
        return m_session->path();
    }
    // One that came from a file and has none of its own is a copy of it; one that was recovered may come from none.
    const QString origin = m_session->source() ? QFileInfo(m_session->source()->filePath).fileName()
                                               : QString();
    return QDir(folder()).filePath(origin.isEmpty() ? tr("Untitled") + QStringLiteral(".gltf") : origin);
}

/// Where the person works: beside the open scene, else in the folder that they have chosen, else beside the last
/// scene, else among the documents, for which not every account has a folder, else at home.
QString FileCommands::folder() const
{
    const auto folderOf = [](const QString &path) {
        return path.isEmpty() || path == Workbench::sampleScene() ? QString()
                                                                  : QFileInfo(path).absolutePath();
    };
    const QStringList places{folderOf(m_session->path()), Options::defaultFolder.value(),
                             folderOf(RecentFiles::files().value(0)),
                             QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)};
    for (const QString &place : places) {
        if (QFileInfo(place).isAbsolute() && QFileInfo(place).isDir()) {
            return place;
        }
    }
    return QDir::homePath();
}
