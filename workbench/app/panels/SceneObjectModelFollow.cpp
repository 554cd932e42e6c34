// How the rows follow the scene.

#include "SceneObjectModel.h"
#include "SceneRowChange.h"

#include <nkKernelServices/nkdObject.h>

#include <QSet>

void SceneObjectModel::noteChange(const nkdObject &object, const QString &property)
{
    if (property == QLatin1String("name") || property == QLatin1String("locked")) {
        m_changed.insert(object.getObjectId());
        m_tell.start(0);
    }
}

void SceneObjectModel::tellChanged()
{
    QHash<quint64, QPair<int, int>> rows;
    for (const quint64 id : qAsConst(m_changed)) {
        const quint64 levelId = m_listing.parentOf(id);
        const SceneLevel *level = findLevel(levelId);
        const int row = level ? level->rowOf(id) : -1;
        if (row >= 0) {
            const QPair<int, int> range = rows.value(levelId, {row, row});
            rows.insert(levelId, {qMin(range.first, row), qMax(range.second, row)});
        }
    }
    m_changed.clear();
    for (auto range = rows.cbegin(); range != rows.cend(); ++range) {
        const QModelIndex parent = rowAbove(range.key());
        Q_EMIT dataChanged(index(range->first, 0, parent), index(range->second, 0, parent));
    }
}

void SceneObjectModel::search(const QString &text)
{
    Q_EMIT aboutToFollow();
    m_following = true;
    beginResetModel();
    m_listing.setSearch(text);
    m_levels.clear();
    endResetModel();
    m_following = false;
    Q_EMIT followed();
    if (m_stale) {
        follow();
    }
}

/// A change that a listener makes while the rows follow is followed when they are done.
void SceneObjectModel::follow()
{
    m_stale = true;
    if (m_following) {
        return;
    }
    Q_EMIT aboutToFollow();
    m_following = true;
    while (m_stale) {
        m_stale = false;
        followOnce();
    }
    m_following = false;
    Q_EMIT followed();
}

void SceneObjectModel::followOnce()
{
    if (m_replaced) {
        startAnew();
        return;
    }
    m_listing.refresh();
    if (!findLevel(0)) {
        return; // nobody has looked yet
    }
    const SceneRowChange change(m_listing, m_levels);
    if (change.needsLayout()) {
        layOut(change);
    } else {
        for (const quint64 levelId : change.changedLevels()) {
            removeGone(levelId, change.present(levelId));
        }
        for (const quint64 levelId : change.changedLevels()) {
            insertNew(levelId, change.present(levelId));
        }
    }
    if (m_listing.hasNotes()) {
        tellNotes();
    }
}

void SceneObjectModel::startAnew()
{
    m_replaced = false;
    beginResetModel();
    m_listing.refresh();
    m_levels.clear();
    m_changed.clear();
    endResetModel();
    Q_EMIT sceneReplaced();
}

/// What stands beside the names may have changed with anything of the scene; there are few such rows.
void SceneObjectModel::tellNotes()
{
    if (rowCount() > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, 0));
    }
}

/// Rows that have changed their places, and many changes at once, are told in one go.
void SceneObjectModel::layOut(const SceneRowChange &change)
{
    Q_EMIT layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    QVector<quint64> ids;
    for (const QModelIndex &index : before) {
        ids.append(idOf(index));
    }
    m_levels = change.levels();
    const QHash<quint64, QModelIndex> places = placesOf(ids);
    for (int i = 0; i < before.size(); ++i) {
        changePersistentIndex(before.at(i), places.value(ids.at(i)));
    }
    Q_EMIT layoutChanged();
}

/// Where those of the objects stand that have rows.
QHash<quint64, QModelIndex> SceneObjectModel::placesOf(const QVector<quint64> &ids) const
{
    const QSet<quint64> wanted(ids.cbegin(), ids.cend());
    QHash<quint64, QModelIndex> places;
    for (auto level = m_levels.cbegin(); !wanted.isEmpty() && level != m_levels.cend(); ++level) {
        for (int row = 0; row < level->second.size(); ++row) {
            const quint64 id = level->second.idAt(row);
            if (wanted.contains(id)) {
                places.insert(id, createIndex(row, 0, quintptr(level->first)));
            }
        }
    }
    return places;
}

void SceneObjectModel::removeGone(quint64 levelId, const QList<quint64> &present)
{
    const QSet<quint64> staying(present.cbegin(), present.cend());
    // Its place in the table stays while others come and go.
    const SceneLevel &level = *findLevel(levelId);
    for (int last = level.size() - 1; last >= 0; --last) {
        int first = last + 1;
        while (first > 0 && !staying.contains(level.idAt(first - 1))) {
            --first;
        }
        if (first <= last) {
            removeFrom(levelId, first, last);
            last = first;
        }
    }
}

/// What has stayed is in the order in which it was.
void SceneObjectModel::insertNew(quint64 levelId, const QList<quint64> &present)
{
    const SceneLevel &level = *findLevel(levelId);
    for (int row = 0; row < present.size(); ++row) {
        int next = row;
        while (next < present.size() && (row >= level.size() || present.at(next) != level.idAt(row))) {
            ++next;
        }
        if (next > row) {
            insertInto(levelId, row, present.mid(row, next - row));
            row = next - 1;
        }
    }
}

void SceneObjectModel::removeFrom(quint64 levelId, int first, int last)
{
    beginRemoveRows(rowAbove(levelId), first, last);
    SceneLevel &level = m_levels.at(levelId);
    dropLevels(level.ids().mid(first, last - first + 1));
    level.remove(first, last);
    shiftLevelsBelow(levelId, last + 1, first - last - 1);
    endRemoveRows();
}

void SceneObjectModel::insertInto(quint64 levelId, int row, const QList<quint64> &ids)
{
    beginInsertRows(rowAbove(levelId), row, row + ids.size() - 1);
    m_levels.at(levelId).insert(row, ids);
    shiftLevelsBelow(levelId, row, ids.size());
    endInsertRows();
}

void SceneObjectModel::shiftLevelsBelow(quint64 levelId, int firstRow, int by)
{
    for (auto &level : m_levels) {
        const bool isBelow = level.first != 0 && level.second.parentLevel() == levelId;
        if (isBelow && level.second.row() >= firstRow) {
            level.second.setRow(level.second.row() + by);
        }
    }
}

/// Forgets the rows below these objects.
void SceneObjectModel::dropLevels(const QList<quint64> &ids)
{
    QList<quint64> dropped = ids;
    for (int i = 0; i < dropped.size(); ++i) {
        if (const SceneLevel *level = findLevel(dropped.at(i))) {
            dropped += level->ids();
            m_levels.erase(dropped.at(i));
        }
    }
}
