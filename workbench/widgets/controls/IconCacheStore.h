#pragma once

#include <QHash>
#include <QIcon>
#include <QString>

/// The icons that nkIconCache has already made. They are forgotten when the source of the icon manager
/// changes and when the application ends: no picture outlives the application object.
namespace IconCacheStore {

/// The icon of that name from nkIconManager, made on the first call that finds one; after a null icon
/// it asks again, so asking before there is a source does no harm.
QIcon icon(const QString &name, const QString &category);

void clear();

} // namespace IconCacheStore
