#pragma once

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QPointer>
#include <QVariant>

class QNKItemModel;

/// Carries the edit of one table cell to the host.
///
/// Works on copies alone, because every call of the host and the question about a taken key can bring a
/// reload that replaces the row the edit came from. The row is found again by the entry's id.
class nkMetadataCellCommit
{
public:
    /// @param value the edited cell's datum
    /// @param model the model to refresh the row in; may be null, and may go while the commit runs
    nkMetadataCellCommit(const nkdMetadataSet &set, const nkdMetadataEntry &entry, const QVariant &value,
                         QNKItemModel *model);

    /// Writes the value as an edit of that column and role, inside one undo scope; then has the row read
    /// anew, so that it never keeps a value the host refused or converted.
    void run(int role, int column);

private:
    void write(int role, int column);
    void renameKey();
    bool makeRoomFor(const QString &key);
    bool canRename() const;
    void refreshRow() const;

    const nkdMetadataSet m_set;
    nkdMetadataEntry m_entry;
    const QVariant m_value;
    const QPointer<QNKItemModel> m_model;
};
