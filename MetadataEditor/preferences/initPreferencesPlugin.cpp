#include "preferences/nkMetadataPreferencesGUII.h"

/// Called by the host once after loading the plug-in, on the GUI thread: makes the preferences page, which
/// registers itself with the host's preferences dialog. Further calls do nothing. The page goes when the
/// plug-in is unloaded.
extern "C" Q_DECL_EXPORT void initPreferencesPlugin()
{
    static nkMetadataPreferencesGUII page;
}
