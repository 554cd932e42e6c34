#pragma once

#include "nkQt4ExtExport.h"

#include <QKeySequence>
#include <QString>

/// Texts of shortcuts in the host's notation.
class NK_QT4EXT_EXPORT nkShortcut
{
public:
    nkShortcut() = delete;
    /// For example "Ctrl+C" or "Del": the platform's native text; empty for an empty sequence.
    static QString convertKey(const QKeySequence &sequence);
};
