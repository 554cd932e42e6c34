#pragma once

#include "nkKernelServicesExport.h"
#include "nkMaterialEntryId.h"

#include <QList>
#include <QObject>

/// The material editor and its selection: materials and material groups. Not undoable.
class NK_KERNEL_SERVICES_EXPORT nkMaterialService : public QObject
{
    Q_OBJECT
public:
    static nkMaterialService &the();

    /// Every material, in the scene's order.
    virtual QList<nkdMaterial> getAllMaterials() const = 0;
    /// Every material group, parents before children.
    virtual QList<nkdMaterialGroupNode> getAllGroups() const = 0;
    /// The selected items: living ones only, each once, in selection order.
    virtual QList<nkMaterialEntryId> getSelectedMaterials() const = 0;
    /// Selects these items and emits selectionChanged with the same flags before it returns: always, also
    /// when nothing changed. Re-entry is allowed. Never moves the last selection.
    /// @param reveal bring the first selected item into view
    /// @param byUser the selection is a person's gesture in the editor itself
    virtual void setSelection(const QList<nkMaterialEntryId> &entries, bool reveal, bool byUser) = 0;

Q_SIGNALS:
    void selectionChanged(const QList<nkMaterialEntryId> &entries, bool reveal, bool byUser);
};
