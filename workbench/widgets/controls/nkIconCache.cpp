#include "nkQt4Ext/nkIconCache.h"

#include "IconCacheStore.h"

namespace {

constexpr int dragPixmapExtent = 24;

QIcon metadataIcon(const QString &name)
{
    return IconCacheStore::icon(name, QStringLiteral("MetadataEditor"));
}

} // namespace

QIcon nkIconCache::Metadata::getMetadataSetIcon()
{
    return metadataIcon(QStringLiteral("MetadataSet"));
}

QIcon nkIconCache::Metadata::getMetadataTagIcon()
{
    return metadataIcon(QStringLiteral("TagInSetOffNormal"));
}

QIcon nkIconCache::Metadata::getGraphFocusedIcon()
{
    return metadataIcon(QStringLiteral("GraphFocused"));
}

QPixmap nkIconCache::Metadata::getMetadataSetIconPixmap()
{
    return getMetadataSetIcon().pixmap(dragPixmapExtent, dragPixmapExtent);
}
