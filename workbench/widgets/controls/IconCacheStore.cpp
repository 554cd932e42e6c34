#include "IconCacheStore.h"

#include "nkQt4Ext/nkIconManager.h"

#include <QCoreApplication>

namespace {

QHash<QString, QIcon> &icons()
{
    static QHash<QString, QIcon> made;
    return made;
}

} // namespace

QIcon IconCacheStore::icon(const QString &name, const QString &category)
{
    const QString key = category + QLatin1Char('/') + name;
    const QIcon known = icons().value(key);
    if (!known.isNull())
        return known;
    const QIcon made = nkIconManager::getIcon(name, category);
    if (icons().isEmpty())
        qAddPostRoutine(&IconCacheStore::clear);
    icons().insert(key, made);
    return made;
}

void IconCacheStore::clear()
{
    qRemovePostRoutine(&IconCacheStore::clear);
    icons().clear();
}
