#include "SceneTree.h"

#include "Sound.h"

#include <interchange/importer/ImportLimits.h>

using namespace interchange;

SceneTree::SceneTree(const aiNode *root)
{
    std::vector<Item> waiting;
    if (root)
        waiting.push_back({root, -1, 1, root->mTransformation});
    while (!waiting.empty()) {
        const Item item = waiting.back();
        waiting.pop_back();
        m_isTooDeep = item.depth > importlimits::Depth;
        m_isTooLarge = m_items.size() >= importlimits::Nodes;
        if (m_isTooDeep || m_isTooLarge)
            return;
        const int index = int(m_items.size());
        m_items.push_back(item);
        for (unsigned i = item.node->mNumChildren; i-- > 0;)
            if (const aiNode *child = item.node->mChildren[i])
                waiting.push_back({child, index, item.depth + 1, child->mTransformation});
    }
}

void SceneTree::mendMatrices(Troubles &troubles)
{
    for (Item &item : m_items) {
        if (Sound::isFinite(item.local))
            continue;
        item.local = aiMatrix4x4();
        troubles.add(flat::Trouble::AbsurdNumbers, Sound::text(item.node->mName));
    }
}
