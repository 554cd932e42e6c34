#pragma once

#include "nkQt4ExtExport.h"

#include <QIcon>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <functional>

/// The icons of the host, by name or by path. All operations are static; where the pictures come from is set
/// once by the host.
class NK_QT4EXT_EXPORT nkIconManager
{
public:
    nkIconManager() = delete;

    /// Where pictures come from.
    struct Source
    {
        std::function<QIcon(const QString &name, const QString &category)> icon;
        std::function<QPixmap(const QString &path)> pixmap;
        std::function<QPixmap(const QString &path, const QSize &size)> render;
    };
    /// @param source empty functions (a default-made Source) take the source away
    static void setSource(const Source &source);

    /// The icon of that name. @param category empty for the default icon set. A null icon without a source.
    static QIcon getIcon(const QString &name, const QString &category);
    /// The picture of a resource path such as "MetadataEditor/ModifyAsset.svg", at 24 × 24 device-independent
    /// pixels; null without a source.
    static QPixmap get(const QString &path);
    /// A picture rendered at size (pixels). @param path a full resource path, ":/iconmanager/resources/..."
    static QPixmap renderPixmap(const QString &path, const QSize &size);
};
