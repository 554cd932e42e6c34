#pragma once

#include "SceneSnapshot.h"

#include <QList>
#include <QString>

/// The metadata of a scene kept in the plainest way: lists, searched from the front. Every operation does
/// what the contract says of its namesake, so that the document can be held against it.
///
/// Ids of new sets and entries are given by the caller: they are the document's to choose.
class ShadowScene
{
public:
    /// @param scene what the document holds at the start
    ShadowScene(const QList<quint64> &objects, const SceneSnapshot &scene);

    const SceneSnapshot &scene() const { return m_scene; }
    /// Any set, shared or an object's; null where the id names none.
    SetSnapshot *set(quint64 id);
    EntrySnapshot *entry(quint64 setId, quint64 entryId);

    void createSet(quint64 id, const QString &name, QRgb color, const QList<quint64> &objects);
    void deleteSets(const QList<quint64> &ids);
    /// @param entryIds of the copies, in order
    void duplicateSet(quint64 id, quint64 newId, const QList<quint64> &entryIds);
    void renameSet(quint64 id, const QString &name);
    void assign(const QList<quint64> &objects, const QList<quint64> &sets);
    void removeAssignments(const QList<quint64> &sets, const QList<quint64> &objects);
    void createEntry(quint64 setId, quint64 entryId, nkMetadataTypes::ValueType type, const QVariant &value);
    void renameEntry(quint64 setId, quint64 entryId, const QString &key);
    void removeEntry(quint64 setId, quint64 entryId);
    void appendEntries(quint64 setId, const QList<EntrySnapshot> &entries, const QList<quint64> &newIds);

private:
    QString uniqueName(const QString &base, quint64 exceptId) const;
    static QString uniqueKey(const SetSnapshot &set, const QString &base);
    void assignOne(quint64 setId, quint64 objectId);

    QList<quint64> m_objects;
    SceneSnapshot m_scene;
};
