#pragma once

#include "IncludeReader.h"
#include "QtHeaders.h"
#include "RoomTable.h"
#include "Violation.h"

#include <QDir>

/// Reads the sources below a root and finds what breaks the rules of the rooms: an include through a door that
/// is not in the table, a file that stands in no room, an include that leads nowhere, a body in the declarations.
class LayerCheck
{
public:
    /// @param root the folder with the rooms' folders "host", "MetadataEditor", "workbench", ...
    /// @param qtIncludeFolder the folder with the headers of Qt, by module
    LayerCheck(const QString &root, const QString &qtIncludeFolder, const RoomTable &table);

    /// Everything that is wrong, ordered by file and line. Reads every file anew.
    Violations run() const;

    /// How many sources, headers and forms the root holds.
    int fileCount() const { return files().size(); }

private:
    QStringList files() const;
    Violations checkFile(const QString &file) const;
    /// What is wrong with one include; empty where nothing is.
    QString judge(const QString &file, const Room &room, const Include &include) const;
    QString judgeForeign(const Room &room, const Include &include) const;
    /// The file of the project that the compiler finds, relative to the root; empty where there is none.
    QString resolve(const QString &file, const Include &include) const;

    QDir m_root;
    QtHeaders m_qtHeaders;
    RoomTable m_table;
};
