#include "RoomTable.h"

namespace {

bool standsIn(const QString &file, const QString &folder)
{
    return file.startsWith(folder + QLatin1Char('/'));
}

QStringList list(const char *words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// A room of the plug-in: the host's declarations, Qt, and the doors named.
Room moduleRoom(const char *folder, const char *innerDoors)
{
    return {
        QLatin1String(folder), list("host") + list(innerDoors), list("QtCore QtGui QtWidgets"), {}, false};
}

Room hostRoom(const char *folder, const char *doors, const char *modules)
{
    return {QLatin1String(folder), list(doors), list(modules), {}, false};
}

Room workbenchRoom(const char *folder, const char *doors, const char *modules, const char *headers = "")
{
    return {QLatin1String(folder), list(doors), list(modules), list(headers), true};
}

Room withLibrary(Room room, const char *folder)
{
    room.library = QLatin1String(folder);
    return room;
}

} // namespace

RoomTable RoomTable::ofProject()
{
    return RoomTable({
        hostRoom("host/nkKernelServices", "", "QtCore QtGui"),
        hostRoom("host/nkQt4Ext", "", "QtCore QtGui QtWidgets"),
        hostRoom("host/nkKernelServicesGUI", "host/nkKernelServices host/nkQt4Ext", "QtCore QtGui QtWidgets"),

        moduleRoom(
            "MetadataEditor/frame",
            "MetadataEditor/table MetadataEditor/tree MetadataEditor/actions MetadataEditor/preferences"),
        moduleRoom("MetadataEditor/table", "MetadataEditor/actions"),
        moduleRoom("MetadataEditor/tree", "MetadataEditor/table MetadataEditor/actions"),
        // For instance(), and through it the trees' mode and the updater.
        moduleRoom("MetadataEditor/actions", "MetadataEditor/frame"),
        moduleRoom("MetadataEditor/preferences", ""),

        // The undo stack is no widget, but stands in Qt Widgets in Qt 5.
        workbenchRoom("workbench/kernel", "host/nkKernelServices", "QtCore QtGui", "QUndoStack QUndoCommand"),
        workbenchRoom("workbench/widgets", "host/nkQt4Ext", "QtCore QtGui QtWidgets"),
        workbenchRoom("workbench/gui", "host", "QtCore QtGui QtWidgets"),
        workbenchRoom("workbench/interchange", "host/nkKernelServices workbench/kernel", "QtCore QtGui"),
        // The one place that speaks SQL: files in and out need none, and the kernel has the store given to it.
        workbenchRoom("workbench/interchange/assets", "host/nkKernelServices workbench/kernel",
                      "QtCore QtSql"),
        // A process of its own, without Qt: it shares the form of its answers with the workbench, and nothing else.
        withLibrary(workbenchRoom("workbench/importer", "workbench/interchange/importer", ""), "assimp"),
        workbenchRoom("workbench/app", "host workbench", "QtCore QtGui QtWidgets"),

        workbenchRoom("tests", "host workbench MetadataEditor benchmarks",
                      "QtCore QtGui QtWidgets QtTest QtSql"),
        withLibrary(workbenchRoom("tests/importer", "host workbench tests", "QtCore QtGui QtTest"), "assimp"),
        workbenchRoom("benchmarks", "host workbench MetadataEditor", "QtCore QtGui QtWidgets QtTest"),
    });
}

RoomTable::RoomTable(const QVector<Room> &rooms) : m_rooms(rooms) {}

const Room *RoomTable::roomOf(const QString &file) const
{
    const Room *deepest = nullptr;
    for (const Room &room : m_rooms)
        if (standsIn(file, room.folder) && (!deepest || room.folder.size() > deepest->folder.size()))
            deepest = &room;
    return deepest;
}

bool RoomTable::mayInclude(const Room &room, const QString &file)
{
    if (standsIn(file, room.folder))
        return true;
    for (const QString &door : room.doors)
        if (standsIn(file, door))
            return true;
    return false;
}

bool RoomTable::mayIncludeQt(const Room &room, const QString &module, const QString &header)
{
    return room.modules.contains(module) || room.headers.contains(header);
}
