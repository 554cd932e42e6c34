#include "nkQt4Ext/nkIconManager.h"

#include "IconCacheStore.h"

namespace {

nkIconManager::Source &currentSource()
{
    static nkIconManager::Source source;
    return source;
}

} // namespace

void nkIconManager::setSource(const Source &source)
{
    IconCacheStore::clear();
    currentSource() = source;
}

QIcon nkIconManager::getIcon(const QString &name, const QString &category)
{
    const Source &source = currentSource();
    return source.icon ? source.icon(name, category) : QIcon();
}

QPixmap nkIconManager::get(const QString &path)
{
    const Source &source = currentSource();
    return source.pixmap ? source.pixmap(path) : QPixmap();
}

QPixmap nkIconManager::renderPixmap(const QString &path, const QSize &size)
{
    const Source &source = currentSource();
    return source.render && !size.isEmpty() ? source.render(path, size) : QPixmap();
}
