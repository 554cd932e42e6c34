#pragma once

#include <nkQt4Ext/nkIconManager.h>

/// Pictures for tests that only need there to be some.
namespace TestIcons {

inline QPixmap picture(const QSize &size)
{
    QPixmap picture(size);
    picture.fill(Qt::darkCyan);
    return picture;
}

inline void install()
{
    nkIconManager::Source source;
    source.icon = [](const QString &, const QString &) { return QIcon(picture(QSize(24, 24))); };
    source.pixmap = [](const QString &) { return picture(QSize(24, 24)); };
    source.render = [](const QString &, const QSize &size) { return picture(size); };
    nkIconManager::setSource(source);
}

inline void remove()
{
    nkIconManager::setSource({});
}

} // namespace TestIcons
