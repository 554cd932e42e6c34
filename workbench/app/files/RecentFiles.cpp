#include "RecentFiles.h"

#include "preferences/Options.h"

#include <nkKernelServices/nkPreferencesService.h>

namespace {

const QString key = QStringLiteral("workbench.recentFiles");

void store(const QStringList &files)
{
    nkPreferencesService::the().setStringListValue(key, files, true);
}

} // namespace

namespace RecentFiles {

int capacity()
{
    return Options::recentFiles.value();
}

QStringList files()
{
    return nkPreferencesService::the().getStringListValue(key).mid(0, capacity());
}

void add(const QString &path)
{
    QStringList present = files();
    present.removeAll(path);
    present.prepend(path);
    store(present.mid(0, capacity()));
}

void remove(const QString &path)
{
    QStringList present = files();
    if (present.removeAll(path) > 0) {
        store(present);
    }
}

void clear()
{
    store({});
}

} // namespace RecentFiles
