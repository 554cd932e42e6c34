#pragma once

#include "LivingSelection.h"

#include <nkKernelServices/nkSceneplateService.h>

namespace kernel {

/// The sceneplates of the document and the selection of their editor. Deleted objects leave the
/// selection at once, told before the deletion is announced; undoing that does not select them again.
class NK_KERNEL_SERVICES_EXPORT SceneplateService final : public nkSceneplateService
{
    Q_OBJECT
public:
    SceneplateService();

    QList<nkdNode> getAllSceneplates() const override;
    QList<nkdNode> getSelectedSceneplates() const override;
    void setSelection(const QList<nkdNode> &nodes) override;

private:
    void announceLost();

    LivingSelection<nkdNode> m_selection;
};

} // namespace kernel
