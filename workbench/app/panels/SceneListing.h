#pragma once

#include "EditorModule.h"

#include "widgets/itemmodel/Wildcard.h"

#include <QList>
#include <QSet>

/// What an editor lists of the open scene, as object ids in scene order: the whole scene graph or the
/// materials in their groups as a tree, or the objects of one kind as a list. A search leaves those whose name
/// matches, and in trees what stands above them.
class SceneListing
{
public:
    explicit SceneListing(EditorModule module) : m_module(module) {}

    bool isTree() const { return m_module == EditorModule::Scenegraph || m_module == EditorModule::Material; }
    /// Whether something is said beside the names.
    bool hasNotes() const { return m_module == EditorModule::Sceneplate; }
    EditorModule module() const { return m_module; }
    /// The shown objects below this one; 0: the top level. Reads the scene as it is now.
    QList<quint64> below(quint64 id) const;
    bool hasAnyBelow(quint64 id) const;
    /// The object above in the tree; 0 at the top level, in lists, and for the dead.
    quint64 parentOf(quint64 id) const;

    /// The place among all children of its parent, shown or not; -1 for the dead.
    static int positionOf(quint64 id);

    /// * stands for any characters and ? for one; an empty text shows everything.
    void setSearch(const QString &text);
    bool isSearching() const { return !m_search.isEmpty(); }
    /// Matches the names anew; called when the scene has changed.
    void refresh();
    /// How many objects a search shows; 0 without one.
    int shownCount() const { return m_shown.size(); }

private:
    QList<quint64> allBelow(quint64 id) const;
    QList<quint64> topLevel() const;
    bool matches(quint64 id) const;

    EditorModule m_module;
    Wildcard m_search;
    /// While searching: what matches and what stands above that.
    QSet<quint64> m_shown;
};
