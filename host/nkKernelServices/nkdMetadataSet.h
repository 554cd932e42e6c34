#pragma once

#include "nkMetadataTypes.h"
#include "nkdMetadataEntry.h"
#include "nkdMetadataEntryList.h"
#include "nkdSceneObject.h"

#include <QColor>
#include <QIcon>

/// A metadata set: a named, coloured list of entries. Either shared (assigned to any number of objects and
/// listed by nkMetadataService::getAllSets) or the private object set of one scene object: that one exists
/// from the object's birth to its death, is named like it, is never listed nor assigned.
///
/// A set is editable when it is not locked and is not an asset at rest. In a set that is not editable the
/// host itself refuses new, pasted, renamed, retyped and changed entries and a new name or colour, whoever
/// asks. It does not refuse removing entries, deleting or assigning the set.
class NK_KERNEL_SERVICES_EXPORT nkdMetadataSet : public nkdObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ getName WRITE setName)
    Q_PROPERTY(QColor color READ getColor WRITE setColor)
    Q_PROPERTY(bool locked READ isLocked WRITE setLocked)
public:
    /// Bits of getStates.
    enum State : quint32 {
        /// isLocked
        Locked = 1,
        /// isObjectSet
        ObjectSet = 2,
        /// isAsset
        Asset = 4,
        /// isEditedAsset
        EditedAsset = 8,
        /// It has an entry or a tag.
        WithEntries = 16
    };

    nkdMetadataSet() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdMetadataSet::staticMetaObject).
    explicit nkdMetadataSet(const nkdObject &other) : nkdObject(other, staticMetaObject) {}
    /// A handle from a bare set id; not checked.
    explicit nkdMetadataSet(quint64 setId)
        : nkdObject(setId, setId ? nkObjectType::MetadataSet : nkObjectType::Null)
    {}
    nkdMetadataSet(const nkdMetadataSet &other) = default;
    nkdMetadataSet &operator=(const nkdMetadataSet &other) = default;
    ~nkdMetadataSet() override;

    Q_INVOKABLE QString getName() const;
    /// Renames; a name that another set has is made unique, an empty one and an object set's are refused.
    /// metadataChanged(1), propertyChanged(set, "name").
    Q_INVOKABLE void setName(const QString &name);
    /// The colour shown in the icon column. Never invalid for a living set.
    Q_INVOKABLE QColor getColor() const;
    /// An invalid colour is refused. metadataChanged(1), propertyChanged(set, "color").
    Q_INVOKABLE void setColor(const QColor &color);
    /// False for null and dead handles.
    Q_INVOKABLE bool isLocked() const;
    /// Always possible. metadataChanged(1), propertyChanged(set, "locked").
    Q_INVOKABLE void setLocked(bool locked);

    /// The value of the entry with this key; invalid where there is none or it is a tag.
    Q_INVOKABLE QVariant getValue(const QString &key) const;
    /// Sets the value of the entry with this key as nkdMetadataEntry::setValue does; where there is none,
    /// makes one of the type that fits value best: one change either way.
    Q_INVOKABLE void setValue(const QString &key, const QVariant &value);
    /// A key that no entry of the set has: base itself where free, else base followed by 2, 3, ...
    Q_INVOKABLE QString getUniqueKey(const QString &base) const;
    /// A new entry at the end, with a unique key derived from "Key" ("Tag" for a tag) and the type's default
    /// value: "" , 0, 0.0, false, 00:00, today, today 00:00, an empty list. With Tag (8) it is a tag. One
    /// change; its announcement has come before the call returns, also inside an undo scope, where this is
    /// the first change. metadataChanged(2), and with bit 4 where it is an object's first own entry.
    /// @return the entry; null while the set is not editable, and for types outside 0..8
    nkdMetadataEntry createEntry(nkMetadataTypes::ValueType type);
    /// The live view of the entries.
    nkdMetadataEntryList getEntries() const;
    /// The icon of a set, of a locked set, of an asset, or of an object set.
    Q_INVOKABLE QIcon getIcon() const;

    /// Assigned to at least one object. False for an object set.
    Q_INVOKABLE bool isAssigned() const;
    Q_INVOKABLE bool isAsset() const;
    /// An asset that "Modify" has made editable.
    Q_INVOKABLE bool isEditedAsset() const;
    /// The set is the private set of one object.
    Q_INVOKABLE bool isObjectSet() const;
    /// The answers of the questions above and whether it has entries, together: an OR of State bits, for those
    /// who ask many sets. O(1). 0 for null and dead handles.
    Q_INVOKABLE quint32 getStates() const;
    /// Alive, not locked, and not an asset at rest. False for null: the null set is neither locked nor
    /// editable.
    Q_INVOKABLE bool isEditable() const;
    /// The objects it is assigned to, in order of assignment; for an object set, its one object.
    QList<nkdSceneObject> getObjects() const;

    /// The kinds of the objects it is assigned to: bit n stands for the nkObjectType of value n. O(1). 0 for
    /// an unassigned set; for an object set, its object's kind.
    Q_INVOKABLE quint32 getAssignedKinds() const;

    /// The set as JSON text in the layout of set files (one set); empty for null and dead handles.
    QByteArray getJson() const;
    /// Replaces entries, name and colour by what json holds: one change.
    /// @return false, and nothing changed, where json is no set or the set is not editable
    bool setJson(const QByteArray &json);
    /// The set and its entries in readable lines, for logs.
    Q_INVOKABLE QString dump() const;
};

Q_DECLARE_METATYPE(nkdMetadataSet)
