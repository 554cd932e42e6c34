#include "frame/nkMetadataEditorModule.h"

#include <QString>

/// Called by the host once after loading the plug-in, on the GUI thread: makes the editor window, which
/// registers itself with the host's main window. Further calls do nothing. The window goes when the plug-in
/// is unloaded.
extern "C" Q_DECL_EXPORT void initPlugin()
{
    static nkMetadataEditorModule window(nullptr, QString());
}
