#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// One room of the house: a folder and what the files in it may include.
struct Room
{
    QString folder;      ///< relative to the root of the project; the deepest fitting folder counts
    QStringList doors;   ///< folders whose files may be included, with all below; the room itself always
    QStringList modules; ///< Qt modules ("QtCore") whose headers may be included
    QStringList headers; ///< single Qt headers beyond these modules
    bool system = false; ///< whether headers of the operating system may be included
    QString library{};   ///< folder of the headers of one more library that may be included; empty for none
};

/// Which room may include which: the table of rooms and doors in docs/architecture.md, as data.
class RoomTable
{
public:
    /// The rooms of this project.
    static RoomTable ofProject();

    explicit RoomTable(const QVector<Room> &rooms);

    /// The room a file stands in, by its path relative to the root; null where it stands in none.
    const Room *roomOf(const QString &file) const;

    /// Whether a file of the room may include a file of the project.
    static bool mayInclude(const Room &room, const QString &file);

    /// Whether a file of the room may include a header of Qt.
    static bool mayIncludeQt(const Room &room, const QString &module, const QString &header);

private:
    QVector<Room> m_rooms;
};
