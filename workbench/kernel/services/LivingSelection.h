#pragma once

#include <nkKernelServices/nkMaterialEntryId.h>
#include <nkKernelServices/nkObjectType.h>
#include <nkKernelServices/nkdNode.h>

#include <QList>
#include <QSet>

#include <utility>

namespace kernel {

/// How a selection item of an editor stands for an object. Specialise for each kind of item.
template <typename Item>
struct SelectionItem;

template <>
struct SelectionItem<nkdNode>
{
    static quint64 idOf(const nkdNode &node) { return node.getObjectId(); }
    static nkdNode fromObject(const nkdObject &object) { return nkdNode(object); }
};

template <>
struct SelectionItem<nkMaterialEntryId>
{
    static quint64 idOf(const nkMaterialEntryId &entry) { return entry.getObject().getObjectId(); }
    static nkMaterialEntryId fromObject(const nkdObject &object)
    {
        return object.getType() == nkObjectType::Material ? nkMaterialEntryId(nkdMaterial(object))
                                                          : nkMaterialEntryId(nkdMaterialGroupNode(object));
    }
};

/// Handles to these living objects, in the same order.
template <typename Handle>
QList<Handle> handlesOf(const QList<quint64> &ids)
{
    QList<Handle> handles;
    handles.reserve(ids.size());
    for (const quint64 id : ids) {
        handles.append(Handle(nkdObject(id)));
    }
    return handles;
}

/// The selection of one editor: living objects of the kinds that the editor shows, each once, in the order of
/// their first appearance. Dead ones leave by drop().
template <typename Item>
class LivingSelection
{
public:
    using Accepts = bool (*)(nkObjectType type);

    /// @param accepts which kinds of objects the editor shows
    explicit LivingSelection(Accepts accepts) : m_accepts(accepts) {}

    QList<Item> items() const { return m_items; }

    /// Replaces the selection, skipping null and dead handles, other kinds, and repetitions.
    void assign(const QList<Item> &items)
    {
        // Filled aside: items may be a view of what is selected now.
        QList<Item> accepted;
        QSet<quint64> ids;
        for (const Item &item : items) {
            take(SelectionItem<Item>::idOf(item), &accepted, &ids);
        }
        m_items = accepted;
        m_ids = ids;
        m_lost = false;
    }

    /// Takes dead objects out, without a word: whoever owns the selection asks takeLost() later.
    void drop(const QList<quint64> &deadIds)
    {
        const int before = m_ids.size();
        for (const quint64 id : deadIds) {
            m_ids.remove(id);
        }
        if (m_ids.size() != before) {
            m_lost = true;
            keepListed();
        }
    }

    /// Takes everything out, without a word.
    void dropAll()
    {
        m_lost = m_lost || !m_items.isEmpty();
        m_items.clear();
        m_ids.clear();
    }

    /// Whether something was dropped since the last call or the last assign().
    bool takeLost() { return std::exchange(m_lost, false); }

private:
    /// Leaves those items that m_ids still holds.
    void keepListed()
    {
        QList<Item> living;
        for (const Item &item : qAsConst(m_items)) {
            if (m_ids.contains(SelectionItem<Item>::idOf(item))) {
                living.append(item);
            }
        }
        m_items = living;
    }

    void take(quint64 id, QList<Item> *accepted, QSet<quint64> *ids) const
    {
        // The kind is the living object's, whatever the handle says of itself.
        const nkdObject object(id);
        if (m_accepts(object.getType()) && !ids->contains(id)) {
            ids->insert(id);
            accepted->append(SelectionItem<Item>::fromObject(object));
        }
    }

    const Accepts m_accepts;
    QList<Item> m_items;
    QSet<quint64> m_ids;
    bool m_lost = false;
};

} // namespace kernel
