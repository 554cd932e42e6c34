#include "CameraService.h"

#include "ServiceRegistry.h"

#include <kernel/document/Document.h>

namespace kernel {

namespace {

bool accepts(nkObjectType type)
{
    return type == nkObjectType::Camera;
}

} // namespace

CameraService::CameraService() : m_selection(&accepts)
{
    const Document &document = Document::the();
    connect(&document, &Document::objectsDied, this,
            [this](const QList<quint64> &ids) { m_selection.drop(ids); });
    connect(&document, &Document::cleared, this, [this] { m_selection.dropAll(); });
    connect(&document, &Document::aboutToAnnounce, this, &CameraService::announceLost);
}

QList<nkdNode> CameraService::getAllCameras() const
{
    return handlesOf<nkdNode>(Document::the().objects(nkObjectType::Camera));
}

QList<nkdNode> CameraService::getSelectedCameras() const
{
    return m_selection.items();
}

void CameraService::setSelection(const QList<nkdNode> &nodes)
{
    m_selection.assign(nodes);
    Q_EMIT selectionChanged(m_selection.items());
}

void CameraService::announceLost()
{
    if (m_selection.takeLost()) {
        Q_EMIT selectionChanged(m_selection.items());
    }
}

} // namespace kernel

nkCameraService &nkCameraService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::CameraService>();
}
