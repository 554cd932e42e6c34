#include "ShadowScene.h"

#include <algorithm>
#include <functional>

namespace {

/// base where it is free, else base followed by 2, 3, ...
QString firstFree(const QString &base, const std::function<bool(const QString &)> &taken)
{
    QString candidate = base;
    for (int number = 2; taken(candidate); ++number) {
        candidate = base + QString::number(number);
    }
    return candidate;
}

} // namespace

ShadowScene::ShadowScene(const QList<quint64> &objects, const SceneSnapshot &scene)
    : m_objects(objects), m_scene(scene)
{}

SetSnapshot *ShadowScene::set(quint64 id)
{
    for (QList<SetSnapshot> *sets : {&m_scene.sets, &m_scene.objectSets}) {
        for (SetSnapshot &candidate : *sets) {
            if (candidate.id == id) {
                return &candidate;
            }
        }
    }
    return nullptr;
}

EntrySnapshot *ShadowScene::entry(quint64 setId, quint64 entryId)
{
    for (EntrySnapshot &candidate : set(setId)->entries) {
        if (candidate.id == entryId) {
            return &candidate;
        }
    }
    return nullptr;
}

QString ShadowScene::uniqueName(const QString &base, quint64 exceptId) const
{
    return firstFree(base, [this, exceptId](const QString &name) {
        return std::any_of(m_scene.sets.begin(), m_scene.sets.end(), [&](const SetSnapshot &candidate) {
            return candidate.id != exceptId && candidate.name == name;
        });
    });
}

QString ShadowScene::uniqueKey(const SetSnapshot &set, const QString &base)
{
    return firstFree(base, [&set](const QString &key) {
        return std::any_of(set.entries.begin(), set.entries.end(),
                           [&](const EntrySnapshot &candidate) { return candidate.key == key; });
    });
}

void ShadowScene::createSet(quint64 id, const QString &name, QRgb color, const QList<quint64> &objects)
{
    m_scene.sets.append({id, uniqueName(name, 0), color, false, {}, {}});
    assign(objects, {id});
}

void ShadowScene::deleteSets(const QList<quint64> &ids)
{
    for (quint64 id : ids) {
        m_scene.sets.erase(std::remove_if(m_scene.sets.begin(), m_scene.sets.end(),
                                          [id](const SetSnapshot &candidate) { return candidate.id == id; }),
                           m_scene.sets.end());
        for (QList<quint64> &sets : m_scene.setsOfObjects) {
            sets.removeAll(id);
        }
    }
}

void ShadowScene::duplicateSet(quint64 id, quint64 newId, const QList<quint64> &entryIds)
{
    const SetSnapshot original = *set(id);
    createSet(newId, original.name, original.color, original.objects);
    appendEntries(newId, original.entries, entryIds);
}

void ShadowScene::renameSet(quint64 id, const QString &name)
{
    set(id)->name = uniqueName(name, id);
}

void ShadowScene::assign(const QList<quint64> &objects, const QList<quint64> &sets)
{
    for (quint64 setId : sets) {
        for (quint64 objectId : objects) {
            assignOne(setId, objectId);
        }
    }
}

void ShadowScene::assignOne(quint64 setId, quint64 objectId)
{
    QList<quint64> &sets = m_scene.setsOfObjects[m_objects.indexOf(objectId)];
    if (!sets.contains(setId)) {
        sets.append(setId);
        set(setId)->objects.append(objectId);
    }
}

void ShadowScene::removeAssignments(const QList<quint64> &sets, const QList<quint64> &objects)
{
    for (quint64 setId : sets) {
        for (quint64 objectId : objects) {
            m_scene.setsOfObjects[m_objects.indexOf(objectId)].removeAll(setId);
            set(setId)->objects.removeAll(objectId);
        }
    }
}

void ShadowScene::createEntry(quint64 setId, quint64 entryId, nkMetadataTypes::ValueType type,
                              const QVariant &value)
{
    SetSnapshot &target = *set(setId);
    const bool tag = type == nkMetadataTypes::Tag;
    const QString key = uniqueKey(target, tag ? QStringLiteral("Tag") : QStringLiteral("Key"));
    target.entries.append({entryId, key, tag, tag ? nkMetadataTypes::String : type, value});
}

void ShadowScene::renameEntry(quint64 setId, quint64 entryId, const QString &key)
{
    if (uniqueKey(*set(setId), key) == key) {
        entry(setId, entryId)->key = key;
    }
}

void ShadowScene::removeEntry(quint64 setId, quint64 entryId)
{
    QList<EntrySnapshot> &entries = set(setId)->entries;
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [entryId](const EntrySnapshot &one) { return one.id == entryId; }),
                  entries.end());
}

void ShadowScene::appendEntries(quint64 setId, const QList<EntrySnapshot> &entries,
                                const QList<quint64> &newIds)
{
    SetSnapshot &target = *set(setId);
    for (int i = 0; i < entries.size(); ++i) {
        EntrySnapshot copy = entries.at(i);
        copy.id = newIds.at(i);
        copy.key = uniqueKey(target, copy.key);
        target.entries.append(copy);
    }
}
