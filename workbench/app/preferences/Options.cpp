#include "Options.h"

#include <nkKernelServices/nkPreferencesService.h>

namespace Options {

const Number autosave{"Workbench Autosave", 0, 1, 1};
const Number autosaveMinutes{"Workbench Autosave Minutes", 1, 120, 5};
const Number recentFiles{"Workbench Recent Files Kept", 0, 50, 10};
const Number backup{"Workbench Backup", 0, 1, 0};
const Text defaultFolder{"Workbench Default Folder"};
const Text language{"Workbench Language"};

int Number::value() const
{
    const int stored = nkPreferencesService::the().getIntValue(QLatin1String(key), usual);
    return stored < lowest || stored > highest ? usual : stored;
}

void Number::store(int value, bool overwrite) const
{
    nkPreferencesService::the().setIntValue(QLatin1String(key), value, overwrite);
}

QString Text::value() const
{
    return nkPreferencesService::the().getStringListValue(QLatin1String(key)).value(0);
}

void Text::store(const QString &value, bool overwrite) const
{
    const QStringList list = value.isEmpty() ? QStringList() : QStringList{value};
    nkPreferencesService::the().setStringListValue(QLatin1String(key), list, overwrite);
}

} // namespace Options
