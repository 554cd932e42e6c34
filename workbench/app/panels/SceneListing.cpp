#include "SceneListing.h"

#include "kernel/document/Document.h"

#include <nkKernelServices/nkdSceneObject.h>

#include <QVector>

#include <algorithm>

using kernel::Document;

QList<quint64> SceneListing::topLevel() const
{
    const Document &document = Document::the();
    switch (m_module) {
    case EditorModule::Material:
        return document.topLevelMaterials();
    case EditorModule::Light:
        return document.objects(nkObjectType::Light);
    case EditorModule::Camera:
        return document.objects(nkObjectType::Camera);
    case EditorModule::Sceneplate:
        return document.objects(nkObjectType::Sceneplate);
    case EditorModule::Scenegraph:
        break;
    }
    return document.topLevelNodes();
}

QList<quint64> SceneListing::allBelow(quint64 id) const
{
    if (id == 0) {
        return topLevel();
    }
    return isTree() ? Document::the().childrenOf(id) : QList<quint64>();
}

QList<quint64> SceneListing::below(quint64 id) const
{
    QList<quint64> ids = allBelow(id);
    if (isSearching()) {
        const auto isHidden = [this](quint64 child) { return !m_shown.contains(child); };
        ids.erase(std::remove_if(ids.begin(), ids.end(), isHidden), ids.end());
    }
    return ids;
}

bool SceneListing::hasAnyBelow(quint64 id) const
{
    const QList<quint64> ids = allBelow(id);
    return isSearching() ? std::any_of(ids.cbegin(), ids.cend(),
                                       [this](quint64 child) { return m_shown.contains(child); })
                         : !ids.isEmpty();
}

quint64 SceneListing::parentOf(quint64 id) const
{
    return isTree() ? Document::the().parentOf(id) : 0;
}

int SceneListing::positionOf(quint64 id)
{
    const Document &document = Document::the();
    const quint64 parent = document.parentOf(id);
    if (parent != 0) {
        return document.childrenOf(parent).indexOf(id);
    }
    const nkObjectType type = document.typeOf(id);
    const bool isMaterial = type == nkObjectType::Material || type == nkObjectType::MaterialGroup;
    return (isMaterial ? document.topLevelMaterials() : document.topLevelNodes()).indexOf(id);
}

void SceneListing::setSearch(const QString &text)
{
    m_search = Wildcard(text);
    refresh();
}

bool SceneListing::matches(quint64 id) const
{
    return m_search.matches(nkdSceneObject(nkdObject(id)).getName());
}

void SceneListing::refresh()
{
    m_shown.clear();
    if (!isSearching()) {
        return;
    }
    // Breadth first and with a list of its own instead of recursion: files nest nodes thousands deep.
    QList<quint64> found = topLevel();
    QVector<int> above(found.size(), -1);
    for (int i = 0; isTree() && i < found.size(); ++i) {
        found += allBelow(found.at(i));
        above.insert(above.end(), found.size() - above.size(), i);
    }
    for (int i = found.size() - 1; i >= 0; --i) {
        if (m_shown.contains(found.at(i)) || matches(found.at(i))) {
            m_shown.insert(found.at(i));
            if (above.at(i) >= 0) {
                m_shown.insert(found.at(above.at(i)));
            }
        }
    }
}
