#pragma once

#include "LivingSelection.h"

#include <nkKernelServices/nkCameraService.h>

namespace kernel {

/// The cameras of the document and the selection of their editor. Deleted objects leave the
/// selection at once, told before the deletion is announced; undoing that does not select them again.
class NK_KERNEL_SERVICES_EXPORT CameraService final : public nkCameraService
{
    Q_OBJECT
public:
    CameraService();

    QList<nkdNode> getAllCameras() const override;
    QList<nkdNode> getSelectedCameras() const override;
    void setSelection(const QList<nkdNode> &nodes) override;

private:
    void announceLost();

    LivingSelection<nkdNode> m_selection;
};

} // namespace kernel
