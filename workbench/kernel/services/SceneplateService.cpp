#include "SceneplateService.h"

#include "ServiceRegistry.h"

#include <kernel/document/Document.h>

namespace kernel {

namespace {

bool accepts(nkObjectType type)
{
    return type == nkObjectType::Sceneplate;
}

} // namespace

SceneplateService::SceneplateService() : m_selection(&accepts)
{
    const Document &document = Document::the();
    connect(&document, &Document::objectsDied, this,
            [this](const QList<quint64> &ids) { m_selection.drop(ids); });
    connect(&document, &Document::cleared, this, [this] { m_selection.dropAll(); });
    connect(&document, &Document::aboutToAnnounce, this, &SceneplateService::announceLost);
}

QList<nkdNode> SceneplateService::getAllSceneplates() const
{
    return handlesOf<nkdNode>(Document::the().objects(nkObjectType::Sceneplate));
}

QList<nkdNode> SceneplateService::getSelectedSceneplates() const
{
    return m_selection.items();
}

void SceneplateService::setSelection(const QList<nkdNode> &nodes)
{
    m_selection.assign(nodes);
    Q_EMIT nodesSelected(m_selection.items());
}

void SceneplateService::announceLost()
{
    if (m_selection.takeLost()) {
        Q_EMIT nodesSelected(m_selection.items());
    }
}

} // namespace kernel

nkSceneplateService &nkSceneplateService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::SceneplateService>();
}
