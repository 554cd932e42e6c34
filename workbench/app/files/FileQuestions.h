#pragma once

#include <QString>
#include <QStringList>

class QWidget;

/// What the commands of the File menu ask. Names come from outside and are shown as plain text.
namespace FileQuestions {

enum class Answer { Save, Discard, Overwrite, SaveAs, Restore, Cancel };

/// The scene has changes that would be lost. @return Save, Discard or Cancel
Answer saveChanges(QWidget *window, const QString &title);
/// Somebody else has changed the file. @return Overwrite, SaveAs or Cancel
Answer overwriteChanged(QWidget *window, const QString &title);
/// Going back to the file loses the changes.
bool revert(QWidget *window, const QString &title);
/// A copy of a scene was left by a program that ended unexpectedly. @return Restore, Discard or Cancel: ask again
/// @param title of the scene; where more says which file it is and when the copy was written
Answer restore(QWidget *window, const QString &title, const QString &more);
/// Tells that these files do not go along with a scene that was saved into another folder.
void tellLeftBehind(QWidget *window, const QStringList &files);

/// The scene to open; empty where the person cancelled. @param folder where to begin
QString fileToOpen(QWidget *window, const QString &folder);
/// Where to save to; empty where the person cancelled. Asks before an existing file is taken.
/// @param path what to suggest; @param isBinary only binary files can be made of the scene
QString fileToSave(QWidget *window, const QString &path, bool isBinary);

/// Where to copy a scene to whose file is never written; a copy is of the same kind. Likewise.
QString fileToCopyTo(QWidget *window, const QString &path);

} // namespace FileQuestions
