#pragma once

#include "Troubles.h"

#include <assimp/scene.h>

#include <vector>

/// The nodes of a scene in one row, parents before their children and children in their order. Made without
/// recursion: depth costs memory and no stack.
class SceneTree
{
public:
    struct Item
    {
        const aiNode *node = nullptr;
        int parent = -1;
        int depth = 1;
        aiMatrix4x4 local;
    };

    /// Stops where there are more nodes or levels than may be answered, see isTooDeep() and isTooLarge().
    explicit SceneTree(const aiNode *root);

    std::vector<Item> &items() { return m_items; }
    const std::vector<Item> &items() const { return m_items; }
    bool isTooDeep() const { return m_isTooDeep; }
    bool isTooLarge() const { return m_isTooLarge; }

    /// Puts the unit matrix where a node's has numbers that are none.
    void mendMatrices(Troubles &troubles);

private:
    std::vector<Item> m_items;
    bool m_isTooDeep = false;
    bool m_isTooLarge = false;
};
