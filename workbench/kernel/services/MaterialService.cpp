#include "MaterialService.h"

#include "ServiceRegistry.h"

#include <kernel/document/Document.h>

namespace kernel {

namespace {

bool accepts(nkObjectType type)
{
    return type == nkObjectType::Material || type == nkObjectType::MaterialGroup;
}

} // namespace

MaterialService::MaterialService() : m_selection(&accepts)
{
    const Document &document = Document::the();
    connect(&document, &Document::objectsDied, this,
            [this](const QList<quint64> &ids) { m_selection.drop(ids); });
    connect(&document, &Document::cleared, this, [this] { m_selection.dropAll(); });
    connect(&document, &Document::aboutToAnnounce, this, &MaterialService::announceLost);
}

QList<nkdMaterial> MaterialService::getAllMaterials() const
{
    return handlesOf<nkdMaterial>(Document::the().objects(nkObjectType::Material));
}

QList<nkdMaterialGroupNode> MaterialService::getAllGroups() const
{
    return handlesOf<nkdMaterialGroupNode>(Document::the().objects(nkObjectType::MaterialGroup));
}

QList<nkMaterialEntryId> MaterialService::getSelectedMaterials() const
{
    return m_selection.items();
}

void MaterialService::setSelection(const QList<nkMaterialEntryId> &entries, bool reveal, bool byUser)
{
    m_selection.assign(entries);
    Q_EMIT selectionChanged(m_selection.items(), reveal, byUser);
}

void MaterialService::announceLost()
{
    if (m_selection.takeLost()) {
        Q_EMIT selectionChanged(m_selection.items(), false, false);
    }
}

} // namespace kernel

nkMaterialService &nkMaterialService::the()
{
    return kernel::ServiceRegistry::the().service<kernel::MaterialService>();
}
