#include "frame/nkMetadataSelectedEntries.h"

#include <QSet>

nkMetadataSelectedEntries nkMetadataSelectedEntries::of(const QList<nkMetadataTableEntries::Row> &rows)
{
    nkMetadataSelectedEntries selected;
    QSet<quint64> sets;
    for (const nkMetadataTableEntries::Row &row : rows) {
        const nkdMetadataEntry &entry = row.second;
        if (entry.isNull()) {
            continue;
        }
        selected.hasTag = selected.hasTag || entry.isTag();
        const nkdMetadataSet &set = row.first;
        if (set.isNull()) {
            continue;
        }
        selected.shareASet = selected.shareASet || sets.contains(set.getObjectId());
        sets.insert(set.getObjectId());
        selected.areEditable = selected.areEditable && set.isEditable();
        selected.wrappers.append(nkPropertyEditorNkdObjectWrapper(entry));
    }
    return selected;
}
