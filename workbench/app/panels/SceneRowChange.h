#pragma once

#include "SceneLevel.h"

#include <QHash>
#include <QList>

class SceneListing;

/// What a change of the scene means for the rows that a SceneObjectModel has made.
class SceneRowChange
{
public:
    /// @param levels the rows as they are; not kept
    SceneRowChange(const SceneListing &listing, const SceneLevels &levels);

    /// The made levels whose rows change, those above first.
    const QList<quint64> &changedLevels() const { return m_changed; }
    /// The rows as they come to be, of a level that is still there.
    QList<quint64> present(quint64 levelId) const { return m_present.value(levelId); }
    /// Whether rows change their places, or so many come and go that they are not told one by one.
    bool needsLayout() const { return m_needsLayout; }
    /// All rows as they come to be.
    SceneLevels levels() const;

private:
    void read(const SceneListing &listing, const SceneLevels &levels);
    bool hasMoves(const SceneLevels &levels) const;
    int runCount(const SceneLevels &levels) const;

    /// In the order in which they were reached from the top.
    QList<quint64> m_order;
    QHash<quint64, QList<quint64>> m_present;
    QList<quint64> m_changed;
    bool m_needsLayout = false;
};
