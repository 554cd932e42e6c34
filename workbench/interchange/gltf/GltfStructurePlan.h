#pragma once

#include <interchange/SceneSource.h>

#include <kernel/document/Document.h>
#include <kernel/document/Store.h>

#include <vector>

namespace interchange {

/// What differs between the objects of the document and those of the text that it was read from: which are new, which
/// are gone, and what stands below what.
class GltfStructurePlan
{
public:
    using Origin = SceneSource::ObjectOrigin;
    using Ids = std::vector<quint64>;

    /// @param source outlives it
    explicit GltfStructurePlan(const SceneSource &source);

    /// Whether the text needs to change beyond single objects.
    bool isNeeded() const { return m_isNeeded; }
    /// Objects without a place in the text, in the order of their ids.
    const Ids &newNodes() const { return m_newNodes; }
    const Ids &newMaterials() const { return m_newMaterials; }
    /// Nodes of the text that stand below others than they did.
    const std::vector<const Origin *> &movedNodes() const { return m_moved; }
    /// Nodes that were deleted since the text was made.
    const std::vector<const Origin *> &goneNodes() const { return m_gone; }

    bool isAlive(quint64 id) const { return m_store.objectSlot(id) != kernel::NoSlot; }
    /// What is to stand below a node of the text or a new one; deleted nodes keep the deleted ones below them.
    Ids childrenOf(quint64 id) const;
    /// The top level of the document.
    Ids roots() const;
    /// Whether the top level is another one than that of the text.
    bool hasOtherRoots() const { return m_hasOtherRoots; }

private:
    void findNew();
    void compare(const Origin &origin);
    bool hasSameChildren(const Origin &origin) const;

    const SceneSource &m_source;
    const kernel::Store &m_store;
    Ids m_newNodes;
    Ids m_newMaterials;
    std::vector<const Origin *> m_moved;
    std::vector<const Origin *> m_gone;
    bool m_hasOtherRoots = false;
    bool m_isNeeded = false;
};

} // namespace interchange
