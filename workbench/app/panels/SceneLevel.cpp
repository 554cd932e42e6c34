#include "SceneLevel.h"

int SceneLevel::rowOf(quint64 id) const
{
    if (m_rows.isEmpty()) {
        m_rows.reserve(m_ids.size());
        for (int row = 0; row < m_ids.size(); ++row) {
            m_rows.insert(m_ids.at(row), row);
        }
    }
    return m_rows.value(id, -1);
}

void SceneLevel::insert(int row, const QList<quint64> &ids)
{
    m_ids = m_ids.mid(0, row) + ids + m_ids.mid(row);
    m_rows.clear();
}

void SceneLevel::remove(int first, int last)
{
    m_ids.erase(m_ids.begin() + first, m_ids.begin() + last + 1);
    m_rows.clear();
}
