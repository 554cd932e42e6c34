#include <nkKernelServices/nkLogService.h>

// A plug-in that tells the log when its entry points are called.

extern "C" Q_DECL_EXPORT void initPlugin()
{
    nkLogService::the().reportInformation(QStringLiteral("goodplugin"), QStringLiteral("initPlugin"));
}

extern "C" Q_DECL_EXPORT void initPreferencesPlugin()
{
    nkLogService::the().reportInformation(QStringLiteral("goodplugin"),
                                          QStringLiteral("initPreferencesPlugin"));
}
