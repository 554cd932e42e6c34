#include "table/nkMetadataCellCommit.h"

#include "table/nkMetadataKeyConflictBox.h"
#include "table/nkMetadataKeyValueColumns.h"
#include "table/nkMetadataValueType.h"

#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkQt4Ext/QNKItemModel.h>

#include <QColor>
#include <QCoreApplication>

using namespace nkMetadataKeyValue;

nkMetadataCellCommit::nkMetadataCellCommit(const nkdMetadataSet &set, const nkdMetadataEntry &entry,
                                           const QVariant &value, QNKItemModel *model)
    : m_set(set), m_entry(entry), m_value(value), m_model(model)
{}

void nkMetadataCellCommit::run(int role, int column)
{
    {
        const nkScopedUndo undo(true);
        write(role, column);
    }
    refreshRow();
}

void nkMetadataCellCommit::write(int role, int column)
{
    switch (column) {
    case TypeColumn:
        m_entry.setValueType(nkMetadataValueType::fromVariant(m_value));
        break;
    case ValueColumn:
        m_entry.setValue(m_value);
        break;
    case KeyColumn:
        renameKey();
        break;
    case IconColumn:
        if (role == ColorRole) {
            nkdMetadataSet(m_set).setColor(m_value.value<QColor>());
        }
        break;
    default:
        break;
    }
}

void nkMetadataCellCommit::renameKey()
{
    const QString key = m_value.toString();
    if (key == m_entry.getKey()) {
        return;
    }
    // Texts that the host keeps are copied to the heap: literals of the plug-in go when it is unloaded.
    const nkScopedMultiCommand step(nkUndoString(QCoreApplication::translate("Metadata", "Change key name"),
                                                 QString(QLatin1String("Metadata Editor")), QString()));
    if (makeRoomFor(key)) {
        m_entry.setKey(key);
    }
}

bool nkMetadataCellCommit::makeRoomFor(const QString &key)
{
    if (m_set.getEntries().find(key).isNull()) {
        return true;
    }
    if (nkMetadataKeyConflictBox::ask() == nkMetadataKeyConflictBox::Cancel || !canRename()) {
        return false;
    }
    // Looked up again: while the box stood open anything may have happened to the entry that had the key.
    nkdMetadataEntryList entries = m_set.getEntries();
    const nkdMetadataEntry holder = entries.find(key);
    return holder.isNull() || holder == m_entry || entries.remove(holder);
}

bool nkMetadataCellCommit::canRename() const
{
    return m_entry.isAlive() && m_set.isEditable();
}

void nkMetadataCellCommit::refreshRow() const
{
    if (m_model) {
        m_model->reloadIndices({m_model->indexFromId(m_entry.getObjectId())});
    }
}
