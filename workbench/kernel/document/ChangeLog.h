#pragma once

#include "EntryValue.h"
#include "Records.h"

#include <nkKernelServices/nkKernelServicesExport.h>

#include <QColor>
#include <QList>
#include <QString>

#include <vector>

namespace kernel {

class Store;

/// What one change does. Undone, a Born dies and the rest goes back to what was there.
enum class ChangeKind : quint8 {
    ObjectBorn,
    ObjectDied,
    SetBorn,
    SetDied,
    EntryBorn,
    EntryDied,
    Linked,
    Unlinked,
    ObjectName,
    ObjectLock,
    ObjectPlacing,
    SceneplateContent,
    SetName,
    SetColor,
    SetLock,
    SetAsset,
    EntryKey,
    EntryContent
};

/// The properties of nkObjectService::propertyChanged, as bits.
enum PropertyBit : quint8 {
    NameProperty = 1,
    ColorProperty = 2,
    LockedProperty = 4,
    KeyProperty = 8,
    ValueProperty = 16,
    ValueTypeProperty = 32
};

/// What listeners have to be told: ChangeFlag bits and SceneChange.
enum EffectFlag : int { SceneChange = 0x100 };

/// What carrying out changes has done, beyond single properties.
struct ChangeEffects
{
    int flags = 0;
    /// Ids of objects and sets that ceased to live, in order.
    QList<quint64> died;
};

/// A property of one object that changed.
struct PropertyNews
{
    quint64 id = 0;
    /// PropertyBit, one or more.
    int properties = 0;
};

/// The changes of one undo step, in order, and the one place where they are carried out, the first time as
/// well as in undo and redo. Twelve bytes a change beside what it exchanges; changes of neighbours (the
/// entries of a paste, the links of an assignment) are one.
///
/// A change of a property holds the value that the store does not: carrying it out either way exchanges both.
class NK_KERNEL_SERVICES_EXPORT ChangeLog
{
public:
    bool isEmpty() const { return m_changes.empty(); }
    int size() const { return int(m_changes.size()); }

    // Each adds a change and carries it out.

    /// ObjectBorn to EntryDied (slots) and Linked, Unlinked (links).
    void toggle(Store &store, ChangeKind kind, quint32 slotOrLink, ChangeEffects &effects);
    void changeName(Store &store, ChangeKind kind, Slot slot, const QString &name, ChangeEffects &effects);
    void changeLock(Store &store, ChangeKind kind, Slot slot, ChangeEffects &effects);
    void changePlace(Store &store, Slot object, const ObjectPlace &place, ChangeEffects &effects);
    void changeSceneplate(Store &store, Slot object, const SceneplateRecord &content, ChangeEffects &effects);
    void changeColor(Store &store, Slot set, const QColor &color, ChangeEffects &effects);
    void changeAsset(Store &store, Slot set, const AssetLink &asset, ChangeEffects &effects);
    void changeKey(Store &store, Slot entry, quint32 key, ChangeEffects &effects);
    void changeContent(Store &store, Slot entry, EntryValue value, ChangeEffects &effects);

    ChangeEffects undo(Store &store);
    ChangeEffects redo(Store &store);

    /// The property changes from that position on, an object once, in order of first appearance.
    /// @param firstNew slots from this one on were born in this step and are left out
    std::vector<PropertyNews> propertyNews(const Store &store, int from, Slot firstNew) const;

private:
    struct Change
    {
        ChangeKind kind;
        quint8 properties;
        /// What changes: the first slot or link of a run, or the slot whose property it is.
        quint32 first;
        /// The length of a run, the other key, or the place of the other value in its list.
        quint32 extra;
    };

    void record(Store &store, Change change, ChangeEffects &effects);
    bool extendRun(ChangeKind kind, quint32 next);
    void carryOut(Store &store, Change &change, bool forward, ChangeEffects &effects);
    void carryOutRun(Store &store, const Change &change, bool forward, ChangeEffects &effects);
    void exchange(Store &store, Change &change, ChangeEffects &effects);

    std::vector<Change> m_changes;
    std::vector<EntryValue> m_values;
    std::vector<QString> m_names;
    std::vector<QColor> m_colors;
    std::vector<AssetLink> m_assets;
    std::vector<ObjectPlace> m_places;
    std::vector<SceneplateRecord> m_sceneplates;
};

} // namespace kernel
