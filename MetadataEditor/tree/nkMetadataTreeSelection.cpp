#include "tree/nkMetadataTreeSelection.h"

#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkMetadataTreeView.h>

nkMetadataTreeSelection::nkMetadataTreeSelection(const nkMetadataTreeView *view,
                                                 const QModelIndexList &indexes, TreeMode mode)
{
    for (const QModelIndex &index : indexes) {
        addRow(view, index, mode);
    }
}

void nkMetadataTreeSelection::addRow(const nkMetadataTreeView *view, const QModelIndex &index, TreeMode mode)
{
    const nkdObject object = view->getObject(index);
    addObject(object);
    nkdMetadataSet set(object);
    // In the list of sets an object below a set stands for that set. The mode is asked first: looking for a
    // first child makes the children of the row.
    if (set.isNull() && mode == TreeMode::Sets && !index.model()->index(0, 0, index).isValid()) {
        set = view->getMetadataSet(index.parent());
    }
    if (set.isNull()) {
        addSetsOf(object);
    } else {
        addSet(set);
    }
}

void nkMetadataTreeSelection::addObject(const nkdObject &object)
{
    if (!object.isNull() && !m_objectIds.contains(object.getObjectId())) {
        m_objectIds.insert(object.getObjectId());
        m_objects.append(object);
    }
}

void nkMetadataTreeSelection::addSet(const nkdMetadataSet &set)
{
    if (!m_setIds.contains(set.getObjectId())) {
        m_setIds.insert(set.getObjectId());
        m_sets.append(set);
    }
}

void nkMetadataTreeSelection::addSetsOf(const nkdObject &object)
{
    const nkdMetadata metadata(object.getObjectId());
    if (metadata.hasObjectEntries()) {
        addSet(metadata.getObjectSet());
    }
    const QList<nkdMetadataSet> sets = metadata.getSets();
    for (const nkdMetadataSet &set : sets) {
        addSet(set);
    }
}
