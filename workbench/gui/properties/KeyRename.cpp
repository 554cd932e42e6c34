#include "KeyRename.h"

#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadataEntryList.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>

namespace KeyRename {
namespace {

QString text(const char *source)
{
    return QCoreApplication::translate("Metadata", source);
}

QList<nkdMetadataEntry> renamable(const QList<nkdMetadataEntry> &entries, const QString &key)
{
    QList<nkdMetadataEntry> remaining;
    for (const nkdMetadataEntry &entry : entries) {
        if (entry.getSet().isEditable() && entry.getKey() != key) {
            remaining.append(entry);
        }
    }
    return remaining;
}

bool shareASet(const QList<nkdMetadataEntry> &entries)
{
    QSet<quint64> sets;
    for (const nkdMetadataEntry &entry : entries) {
        sets.insert(entry.getSet().getObjectId());
    }
    return sets.size() < entries.size();
}

bool isTaken(const QList<nkdMetadataEntry> &entries, const QString &key)
{
    for (const nkdMetadataEntry &entry : entries) {
        if (!entry.getSet().getEntries().find(key).isNull()) {
            return true;
        }
    }
    return false;
}

// The question that a rename in the key/value table asks, word for word.
bool mayReplace()
{
    QMessageBox box(
        QMessageBox::Warning, text("Change key name"),
        text("The key name is already assigned.\nPress \"Cancel\" for no change. Press \"Replace\" "
             "to overwrite the existing entry."),
        QMessageBox::Cancel);
    box.setTextFormat(Qt::PlainText);
    const QPushButton *replace = box.addButton(text("Replace"), QMessageBox::AcceptRole);
    box.exec();
    return box.clickedButton() == replace;
}

} // namespace

bool rename(const QList<nkdMetadataEntry> &entries, const QString &key)
{
    if (key.isEmpty() || shareASet(entries)) {
        return false;
    }
    if (isTaken(renamable(entries, key), key) && !mayReplace()) {
        return false;
    }
    // Looked up only now: the scene may have changed under the question.
    const QList<nkdMetadataEntry> remaining = renamable(entries, key);
    const nkScopedUndo undo(true);
    const nkScopedMultiCommand command(nkUndoString(text("Change key name")));
    for (nkdMetadataEntry entry : remaining) {
        nkdMetadataEntryList siblings = entry.getSet().getEntries();
        siblings.remove(siblings.find(key));
        entry.setKey(key);
    }
    return !remaining.isEmpty();
}

} // namespace KeyRename
