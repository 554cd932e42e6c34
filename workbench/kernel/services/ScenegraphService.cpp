#include "ScenegraphService.h"

#include "ServiceRegistry.h"

#include <kernel/document/Document.h>

namespace kernel {

namespace {

/// Material groups are nodes too, but stand outside the scene graph.
bool accepts(nkObjectType type)
{
    switch (type) {
    case nkObjectType::Node:
    case nkObjectType::Camera:
    case nkObjectType::Light:
    case nkObjectType::Sceneplate:
        return true;
    default:
        return false;
    }
}

} // namespace

ScenegraphService::ScenegraphService() : m_selection(&accepts)
{
    const Document &document = Document::the();
    connect(&document, &Document::objectsDied, this,
            [this](const QList<quint64> &ids) { m_selection.drop(ids); });
    connect(&document, &Document::cleared, this, [this] { m_selection.dropAll(); });
    connect(&document, &Document::aboutToAnnounce, this, &ScenegraphService::announceLost);
}

QList<nkdNode> ScenegraphService::getRootNodes() const
{
    return handlesOf<nkdNode>(Document::the().topLevelNodes());
}

QList<nkdNode> ScenegraphService::getSelectedNodes() const
{
    return m_selection.items();
}

void ScenegraphService::setSelection(const QList<nkdNode> &nodes)
{
    m_selection.assign(nodes);
    Q_EMIT selectionChanged(m_selection.items());
}

void ScenegraphService::scrollToSelected()
{
    Q_EMIT scrollToSelectedRequested();
}

void ScenegraphService::announceLost()
{
    if (m_selection.takeLost()) {
        Q_EMIT selectionChanged(m_selection.items());
    }
}

} // namespace kernel

nkScenegraphService &nkScenegraphService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::ScenegraphService>();
}
