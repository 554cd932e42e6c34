#include <nkKernelServicesGUI/nkMetadataRootModelItem.h>

#include "ListedObjects.h"
#include "MetadataTreeRow.h"

#include <nkKernelServices/nkdObject.h>

nkMetadataRootModelItem::nkMetadataRootModelItem() = default;

nkMetadataRootModelItem::~nkMetadataRootModelItem() = default;

QVariant nkMetadataRootModelItem::getClassName() const
{
    return QStringLiteral("nkMetadataRootModelItem");
}

void nkMetadataRootModelItem::reload()
{
    QList<QNKModelItem *> rows;
    ListedObjects::forEach(m_mode,
                           [&rows](const nkdObject &object) { rows.append(new MetadataTreeRow(object, 0)); });
    setChildren(rows);
}
