#pragma once

#include "LivingSelection.h"

#include <nkKernelServices/nkMaterialService.h>

namespace kernel {

/// The materials and material groups of the document and the selection of their editor. Deleted objects leave the
/// selection at once, told before the deletion is announced; undoing that does not select them again.
class NK_KERNEL_SERVICES_EXPORT MaterialService final : public nkMaterialService
{
    Q_OBJECT
public:
    MaterialService();

    QList<nkdMaterial> getAllMaterials() const override;
    QList<nkdMaterialGroupNode> getAllGroups() const override;
    QList<nkMaterialEntryId> getSelectedMaterials() const override;
    void setSelection(const QList<nkMaterialEntryId> &entries, bool reveal, bool byUser) override;

private:
    void announceLost();

    LivingSelection<nkMaterialEntryId> m_selection;
};

} // namespace kernel
