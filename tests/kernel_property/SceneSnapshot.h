#pragma once

#include <nkKernelServices/nkMetadataTypes.h>

#include <QColor>
#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

/// One entry, as plain data.
struct EntrySnapshot
{
    quint64 id = 0;
    QString key;
    bool tag = false;
    nkMetadataTypes::ValueType type = nkMetadataTypes::String;
    QVariant value;

    /// By type, then value, as far as the tests' values go (no NaN, no nested lists).
    bool operator==(const EntrySnapshot &other) const
    {
        return id == other.id && key == other.key && tag == other.tag && type == other.type
               && value.userType() == other.value.userType() && value == other.value;
    }
};

/// One set, as plain data.
struct SetSnapshot
{
    quint64 id = 0;
    QString name;
    QRgb color = 0;
    bool locked = false;
    QList<EntrySnapshot> entries;
    QList<quint64> objects;

    bool operator==(const SetSnapshot &other) const
    {
        return id == other.id && name == other.name && color == other.color && locked == other.locked
               && entries == other.entries && objects == other.objects;
    }
};

/// All the metadata of a scene, as plain data that can be compared.
struct SceneSnapshot
{
    /// The shared sets, in order of creation.
    QList<SetSnapshot> sets;
    /// The object sets, in the order of the objects given to take.
    QList<SetSnapshot> objectSets;
    /// The assigned sets of each object, likewise.
    QList<QList<quint64>> setsOfObjects;

    bool operator==(const SceneSnapshot &other) const
    {
        return sets == other.sets && objectSets == other.objectSets && setsOfObjects == other.setsOfObjects;
    }
    bool operator!=(const SceneSnapshot &other) const { return !(*this == other); }

    /// Reads the scene through the contract. @param objects ids of the scene objects to look at
    static SceneSnapshot take(const QList<quint64> &objects);
    /// The first difference in words; empty where there is none.
    QString differenceFrom(const SceneSnapshot &other) const;
};
