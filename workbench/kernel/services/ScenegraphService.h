#pragma once

#include "LivingSelection.h"

#include <nkKernelServices/nkScenegraphService.h>

namespace kernel {

/// The nodes of the document and the selection of their editor. Deleted objects leave the
/// selection at once, told before the deletion is announced; undoing that does not select them again.
class NK_KERNEL_SERVICES_EXPORT ScenegraphService final : public nkScenegraphService
{
    Q_OBJECT
public:
    ScenegraphService();

    QList<nkdNode> getRootNodes() const override;
    QList<nkdNode> getSelectedNodes() const override;
    void setSelection(const QList<nkdNode> &nodes) override;
    void scrollToSelected() override;

private:
    void announceLost();

    LivingSelection<nkdNode> m_selection;
};

} // namespace kernel
