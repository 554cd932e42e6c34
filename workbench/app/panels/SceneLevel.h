#pragma once

#include <QHash>
#include <QList>

#include <unordered_map>

/// The rows below one row of a SceneObjectModel, or its top level.
class SceneLevel
{
public:
    /// @param parentLevel the id of the level in which the row above stands; @param row its position there
    SceneLevel(quint64 parentLevel, int row, const QList<quint64> &ids)
        : m_parentLevel(parentLevel), m_row(row), m_ids(ids)
    {}

    quint64 parentLevel() const { return m_parentLevel; }
    int row() const { return m_row; }
    void setRow(int row) { m_row = row; }
    void setPlace(quint64 parentLevel, int row)
    {
        m_parentLevel = parentLevel;
        m_row = row;
    }

    const QList<quint64> &ids() const { return m_ids; }
    int size() const { return m_ids.size(); }
    /// 0 outside the level.
    quint64 idAt(int row) const { return m_ids.value(row); }
    /// -1 where the level has no such row.
    int rowOf(quint64 id) const;

    void insert(int row, const QList<quint64> &ids);
    void remove(int first, int last);

private:
    quint64 m_parentLevel;
    int m_row;
    QList<quint64> m_ids;
    /// From id to row; empty until it is asked for.
    mutable QHash<quint64, int> m_rows;
};

/// Levels by the id of the object above; 0: the top level.
using SceneLevels = std::unordered_map<quint64, SceneLevel>;
