#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>

#include "ConflictDialog.h"
#include "gui/preferences/MetadataCompletions.h"

#include <nkQt4Ext/QNKStringCompleterLineEdit.h>

#include <QSet>

#include <limits>

QList<nkdMetadataEntry> nkMetadataGUIUtils::getConflictingEntries(const nkdMetadataSet &set,
                                                                  const QList<nkdMetadataEntry> &entries)
{
    if (!set.isEditable()) {
        return {};
    }
    QSet<QString> keys;
    for (const nkdMetadataEntry &entry : entries) {
        keys.insert(entry.getKey());
    }
    // Null and dead handles read as an empty key, which no entry of a set has.
    QList<nkdMetadataEntry> conflicts;
    for (const nkdMetadataEntry &present : set.getEntries()) {
        if (keys.contains(present.getKey())) {
            conflicts.append(present);
        }
    }
    return conflicts;
}

nkMetadataGUIUtils::ConflictResult nkMetadataGUIUtils::showConflictingEntriesWarning(
    const QMap<quint64, QList<nkdMetadataEntry>> &conflicts)
{
    return ConflictDialog::ask(conflicts, ConflictDialog::clipboardValues());
}

QNKStringCompleterLineEdit *nkMetadataGUIUtils::createMetadataLineEdit(QWidget *parent)
{
    QNKStringCompleterLineEdit *edit = new QNKStringCompleterLineEdit(parent);
    // The stock limit of 32,767 characters would cut longer texts when they are merely looked at.
    edit->setMaxLength(std::numeric_limits<int>::max());
    MetadataCompletions::feed(edit);
    return edit;
}
