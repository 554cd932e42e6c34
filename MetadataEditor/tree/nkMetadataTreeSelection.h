#pragma once

#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdObject.h>
#include <nkKernelServicesGUI/TreeMode.h>

#include <QList>
#include <QModelIndex>
#include <QSet>

class nkMetadataTreeView;

/// What a selection of tree rows means: the objects that the host is told, and the sets whose entries the
/// table shows. Both lists hold each handle once, in order of first appearance.
class nkMetadataTreeSelection
{
public:
    /// Reads the rows; nothing is kept of indexes or view.
    /// @param mode what the tree lists; decides what a row without a set of its own stands for
    nkMetadataTreeSelection(const nkMetadataTreeView *view, const QModelIndexList &indexes, TreeMode mode);

    QList<nkdObject> objects() const { return m_objects; }
    QList<nkdMetadataSet> sets() const { return m_sets; }

private:
    void addRow(const nkMetadataTreeView *view, const QModelIndex &index, TreeMode mode);
    void addObject(const nkdObject &object);
    void addSet(const nkdMetadataSet &set);
    void addSetsOf(const nkdObject &object);

    QList<nkdObject> m_objects;
    QList<nkdMetadataSet> m_sets;
    QSet<quint64> m_objectIds;
    QSet<quint64> m_setIds;
};
