#include "SceneRowChange.h"

#include "SceneListing.h"

#include <QSet>

#include <algorithm>

namespace {

/// Runs of rows that come or go; beyond these, telling each costs a view more than a new layout.
constexpr int mostRuns = 64;

/// How many runs of neighbours in ids are not among the others.
int runsWithout(const QList<quint64> &ids, const QList<quint64> &others)
{
    const QSet<quint64> known(others.cbegin(), others.cend());
    int runs = 0;
    bool wasKnown = true;
    for (const quint64 id : ids) {
        const bool isKnown = known.contains(id);
        runs += wasKnown && !isKnown ? 1 : 0;
        wasKnown = isKnown;
    }
    return runs;
}

} // namespace

SceneRowChange::SceneRowChange(const SceneListing &listing, const SceneLevels &levels)
{
    read(listing, levels);
    for (const quint64 levelId : qAsConst(m_order)) {
        if (levels.at(levelId).ids() != m_present.value(levelId)) {
            m_changed.append(levelId);
        }
    }
    m_needsLayout = !m_changed.isEmpty() && (hasMoves(levels) || runCount(levels) > mostRuns);
}

void SceneRowChange::read(const SceneListing &listing, const SceneLevels &levels)
{
    m_order.append(0);
    for (int i = 0; i < m_order.size(); ++i) {
        const QList<quint64> ids = listing.below(m_order.at(i));
        m_present.insert(m_order.at(i), ids);
        if (levels.size() == 1) {
            return;
        }
        std::copy_if(ids.cbegin(), ids.cend(), std::back_inserter(m_order),
                     [&levels](quint64 id) { return levels.count(id) > 0; });
    }
}

/// Whether any row that stays stands in another level than before, or behind others.
bool SceneRowChange::hasMoves(const SceneLevels &levels) const
{
    QHash<quint64, QPair<quint64, int>> places;
    for (const quint64 levelId : m_changed) {
        const SceneLevel &level = levels.at(levelId);
        for (int row = 0; row < level.size(); ++row) {
            places.insert(level.idAt(row), {levelId, row});
        }
    }
    for (const quint64 levelId : m_changed) {
        int last = -1;
        for (const quint64 id : m_present.value(levelId)) {
            const auto place = places.constFind(id);
            if (place == places.cend()) {
                continue;
            }
            if (place->first != levelId || place->second < last) {
                return true;
            }
            last = place->second;
        }
    }
    return false;
}

int SceneRowChange::runCount(const SceneLevels &levels) const
{
    int runs = 0;
    for (const quint64 levelId : m_changed) {
        const QList<quint64> before = levels.at(levelId).ids();
        const QList<quint64> now = m_present.value(levelId);
        runs += runsWithout(before, now) + runsWithout(now, before);
    }
    return runs;
}

SceneLevels SceneRowChange::levels() const
{
    SceneLevels levels;
    for (const quint64 levelId : m_order) {
        levels.emplace(levelId, SceneLevel(0, -1, m_present.value(levelId)));
    }
    for (const quint64 levelId : m_order) {
        const QList<quint64> ids = m_present.value(levelId);
        for (int row = 0; levels.size() > 1 && row < ids.size(); ++row) {
            const auto below = levels.find(ids.at(row));
            if (below != levels.end()) {
                below->second.setPlace(levelId, row);
            }
        }
    }
    return levels;
}
