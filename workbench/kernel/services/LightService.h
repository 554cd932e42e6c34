#pragma once

#include "LivingSelection.h"

#include <nkKernelServices/nkLightService.h>

namespace kernel {

/// The lights of the document and the selection of their editor. Deleted objects leave the
/// selection at once, told before the deletion is announced; undoing that does not select them again.
class NK_KERNEL_SERVICES_EXPORT LightService final : public nkLightService
{
    Q_OBJECT
public:
    LightService();

    QList<nkdNode> getAllLights() const override;
    QList<nkdNode> getSelectedLights() const override;
    void setSelection(const QList<nkdNode> &nodes) override;

private:
    void announceLost();

    LivingSelection<nkdNode> m_selection;
};

} // namespace kernel
