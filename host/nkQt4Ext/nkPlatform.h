#pragma once

#include "nkQt4ExtExport.h"

/// Measures of the display.
class NK_QT4EXT_EXPORT nkPlatform
{
public:
    nkPlatform() = delete;
    /// The primary screen's horizontal logical resolution divided by 96; 1.0 without a screen.
    static double getDpiScaleX();
};
