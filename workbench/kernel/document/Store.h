#pragma once

#include "Records.h"
#include "SlotDirectory.h"
#include "SlotTable.h"

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QHash>
#include <QList>

namespace kernel {

/// The tables of one scene. It knows what belongs together and keeps the indexes true; what may be changed,
/// undone and announced is not its business.
///
/// Records are made absent and then put in and taken out by the setPresent family, any number of times: what
/// undo and redo do. Taking out and putting back in must happen in exactly opposite orders.
///
/// Looked up by id, nothing but living records is answered. Slots are for those who know what they hold.
class NK_KERNEL_SERVICES_EXPORT Store
{
    Q_DISABLE_COPY(Store)
public:
    Store();
    ~Store();

    // Addresses -----------------------------------------------------------------------------------------

    Slot slotOf(quint64 id) const { return m_directory.slotOf(id); }
    quint64 idOf(Slot slot) const { return slot == NoSlot ? 0 : m_directory.idOf(slot); }
    quint32 slotCount() const { return m_directory.slotCount(); }
    QList<quint64> idsOf(const QVector<Slot> &slots) const;

    /// The kind of a living slot; Null for others.
    nkObjectType typeOf(Slot slot) const;
    bool isAlive(Slot slot) const;
    /// The slot of a living object, set or entry; NoSlot where id names none.
    Slot objectSlot(quint64 id) const { return livingSlot(id, SlotDirectory::Kind::Object); }
    Slot setSlot(quint64 id) const { return livingSlot(id, SlotDirectory::Kind::Set); }
    Slot entrySlot(quint64 id) const { return livingSlot(id, SlotDirectory::Kind::Entry); }
    /// The record of a living object, set or entry; null where id names none.
    const ObjectRecord *findObject(quint64 id) const;
    const SetRecord *findSet(quint64 id) const;
    const EntryRecord *findEntry(quint64 id) const;

    // Records by slot, dead or alive --------------------------------------------------------------------

    const ObjectRecord &object(Slot slot) const { return m_objects[m_directory.indexOf(slot)]; }
    const SetRecord &set(Slot slot) const { return m_sets[m_directory.indexOf(slot)]; }
    const EntryRecord &entry(Slot slot) const { return m_entries[m_directory.indexOf(slot)]; }
    ObjectRecord &object(Slot slot) { return m_objects[m_directory.indexOf(slot)]; }
    SetRecord &set(Slot slot) { return m_sets[m_directory.indexOf(slot)]; }
    EntryRecord &entry(Slot slot) { return m_entries[m_directory.indexOf(slot)]; }
    const AssignmentLink &link(LinkIndex link) const { return m_links[link]; }
    quint32 linkCount() const { return m_links.size(); }

    const QString &key(Slot entry) const { return m_keys.text(this->entry(entry).key); }
    QString setName(Slot set) const;
    KeyPool &keys() { return m_keys; }
    const KeyPool &keys() const { return m_keys; }

    // Reading -------------------------------------------------------------------------------------------

    /// The shared sets, in order of creation.
    const SlotList &sharedSets() const { return m_sharedSets; }
    /// Nodes without parent; material groups and materials without group.
    const ChildList &topLevelNodes() const { return m_topLevelNodes; }
    const ChildList &topLevelMaterials() const { return m_topLevelMaterials; }
    /// The list that objects of this kind stand in below that parent (NoSlot: at the top level).
    const ChildList &childrenBelow(Slot parent, nkObjectType type) const;
    /// The list that the object stands in.
    const ChildList &siblingsOf(Slot object) const;
    /// What a sceneplate shows; that of a new one where nobody has said.
    SceneplateRecord sceneplate(Slot object) const { return m_sceneplates.value(object); }
    /// The living objects.
    int objectCount() const { return m_objectCount; }
    /// The living entries.
    int entryCount() const { return m_entryCount; }
    bool isEmpty() const { return m_objectCount == 0 && m_sharedSets.isEmpty(); }

    /// The entry of the set with this key; NoSlot where there is none.
    Slot findKey(Slot set, quint32 key) const;
    Slot findKey(Slot set, const QString &key) const;
    /// base where no entry of the set has that key, else base followed by 2, 3, ...
    QString uniqueKey(Slot set, const QString &base) const;
    /// The shared set of this name; NoSlot where there is none.
    Slot setByName(const QString &name) const { return m_setNames.value(name, NoSlot); }
    /// @param except this set's name counts as free
    QString uniqueSetName(const QString &base, Slot except = NoSlot) const;

    LinkIndex findLink(Slot set, Slot object) const;
    /// The sets assigned to an object, the objects a set is assigned to; in order of assignment.
    QVector<Slot> assignedSets(Slot object) const;
    QVector<Slot> linkedObjects(Slot set) const;
    bool hasMetadata(Slot object) const;

    // Making records; absent at first -------------------------------------------------------------------

    /// The colour of sets that nobody has coloured.
    static QColor newSetColor();
    /// An object and, in the next slot, its object set.
    Slot addObject(nkObjectType type, const QString &name, Slot parent);
    Slot addSet(const QString &name, const QColor &color);
    Slot addEntry(Slot set, quint32 key, EntryValue value);
    /// A link at the end of both chains; to be put in before the next one is made.
    LinkIndex addLink(Slot set, Slot object);

    void setObjectPresent(Slot object, bool present);
    void setSetPresent(Slot set, bool present);
    void setEntryPresent(Slot entry, bool present);
    void setLinkPresent(LinkIndex link, bool present);

    // Exchanging properties: the argument takes what was there ------------------------------------------

    void swapSetName(Slot set, QString &name);
    void swapKey(Slot entry, quint32 &key);
    /// Moves a living object, with what is below it.
    void swapPlace(Slot object, ObjectPlace &place);
    void swapSceneplate(Slot object, SceneplateRecord &content);

private:
    Slot livingSlot(quint64 id, SlotDirectory::Kind kind) const
    {
        const Slot slot = m_directory.slotOf(id);
        return slot != NoSlot && m_directory.kindOf(slot) == kind && isAlive(slot) ? slot : NoSlot;
    }
    ChildList &childrenBelow(Slot parent, nkObjectType type);
    ChildList &siblings(const ObjectRecord &object);
    quint32 keyHash(Slot entry) const { return mixedHash(this->entry(entry).key); }
    quint32 linkHash(LinkIndex link) const;
    void indexKey(SetRecord &set, Slot entry);
    void unindexKey(SetRecord &set, Slot entry);

    SlotDirectory m_directory;
    KeyPool m_keys;
    SlotTable<ObjectRecord> m_objects;
    SlotTable<SetRecord> m_sets;
    SlotTable<EntryRecord> m_entries;
    SlotTable<AssignmentLink> m_links;
    /// From (set, object) to the link that is in.
    IndexTable m_linkIndex;
    SlotList m_sharedSets;
    ChildList m_topLevelNodes;
    ChildList m_topLevelMaterials;
    QHash<Slot, SceneplateRecord> m_sceneplates;
    QHash<QString, Slot> m_setNames;
    /// Remembers only; what it answers does not change by asking.
    mutable UniqueNames m_uniqueSetNames;
    int m_objectCount = 0;
    int m_entryCount = 0;
};

} // namespace kernel
