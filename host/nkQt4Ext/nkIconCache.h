#pragma once

#include "nkQt4ExtExport.h"

#include <QIcon>
#include <QPixmap>

/// Fixed icons, made once on first use from nkIconManager.
class NK_QT4EXT_EXPORT nkIconCache
{
public:
    nkIconCache() = delete;

    /// The icons of metadata.
    class NK_QT4EXT_EXPORT Metadata
    {
    public:
        Metadata() = delete;
        static QIcon getMetadataSetIcon();
        static QIcon getMetadataTagIcon();
        static QIcon getGraphFocusedIcon();
        /// The set icon at 24 × 24, for drags.
        static QPixmap getMetadataSetIconPixmap();
    };
};
