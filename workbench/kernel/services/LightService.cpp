#include "LightService.h"

#include "ServiceRegistry.h"

#include <kernel/document/Document.h>

namespace kernel {

namespace {

bool accepts(nkObjectType type)
{
    return type == nkObjectType::Light;
}

} // namespace

LightService::LightService() : m_selection(&accepts)
{
    const Document &document = Document::the();
    connect(&document, &Document::objectsDied, this,
            [this](const QList<quint64> &ids) { m_selection.drop(ids); });
    connect(&document, &Document::cleared, this, [this] { m_selection.dropAll(); });
    connect(&document, &Document::aboutToAnnounce, this, &LightService::announceLost);
}

QList<nkdNode> LightService::getAllLights() const
{
    return handlesOf<nkdNode>(Document::the().objects(nkObjectType::Light));
}

QList<nkdNode> LightService::getSelectedLights() const
{
    return m_selection.items();
}

void LightService::setSelection(const QList<nkdNode> &nodes)
{
    m_selection.assign(nodes);
    Q_EMIT nodeSelectionChanged(m_selection.items());
}

void LightService::announceLost()
{
    if (m_selection.takeLost()) {
        Q_EMIT nodeSelectionChanged(m_selection.items());
    }
}

} // namespace kernel

nkLightService &nkLightService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::LightService>();
}
