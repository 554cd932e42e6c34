#pragma once

#include "nkMetadataTypes.h"
#include "nkdObject.h"

#include <QColor>
#include <QIcon>
#include <QMatrix4x4>
#include <QVector3D>

class nkdMetadataSet;

/// One key/value entry of a metadata set, or a tag (a key without a value).
///
/// Every write is undoable, compares first (type, then value: writing what is already there is no change)
/// and is refused while the entry's set is not editable.
class NK_KERNEL_SERVICES_EXPORT nkdMetadataEntry : public nkdObject
{
    Q_OBJECT
    Q_PROPERTY(QString key READ getKey WRITE setKey)
    Q_PROPERTY(QVariant value READ getValue WRITE setValue)
    Q_PROPERTY(nkMetadataTypes::ValueType valueType READ getValueType WRITE setValueType)
public:
    nkdMetadataEntry() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdMetadataEntry::staticMetaObject).
    explicit nkdMetadataEntry(const nkdObject &other) : nkdObject(other, staticMetaObject) {}
    /// A handle from a bare entry id; not checked.
    explicit nkdMetadataEntry(quint64 entryId)
        : nkdObject(entryId, entryId ? nkObjectType::MetadataEntry : nkObjectType::Null)
    {}
    nkdMetadataEntry(const nkdMetadataEntry &other) = default;
    nkdMetadataEntry &operator=(const nkdMetadataEntry &other) = default;
    ~nkdMetadataEntry() override;

    Q_INVOKABLE QString getKey() const;
    /// Renames. Refused where key is empty or another entry of the set has it (keys are unique in a set,
    /// compared case-sensitively): whoever offers a rename asks the user first.
    /// metadataChanged(2), propertyChanged(entry, "key").
    Q_INVOKABLE void setKey(const QString &key);

    /// The value in the stored type of getValueType (see nkMetadataTypes::ValueType); invalid for a tag.
    Q_INVOKABLE QVariant getValue() const;
    /// Sets the value, converted to the declared type; where that cannot be done, or the entry is a tag,
    /// the write is refused and nothing changes. metadataChanged(2), propertyChanged(entry, "value").
    Q_INVOKABLE void setValue(const QVariant &value);

    /// The declared type; String for a tag.
    Q_INVOKABLE nkMetadataTypes::ValueType getValueType() const;
    /// Retypes. The value is kept where it can be (text "42", 42, 42.0 and true; ISO dates and text; a list
    /// and its text joined with ", ") and becomes the type's default otherwise. A tag becomes an entry with
    /// the type's default; type 8 turns the entry into a tag. Numbers outside 0..8 are refused.
    /// metadataChanged(2), propertyChanged(entry, "valueType"), and "value" where the value changed too.
    Q_INVOKABLE void setValueType(nkMetadataTypes::ValueType type);

    Q_INVOKABLE bool isTag() const;
    /// Turns the entry into a tag with this key: its value is dropped. Refused like setKey.
    Q_INVOKABLE void setTag(const QString &key);

    /// The owning set; null for null and dead handles. Defined with nkdMetadataSet.
    nkdMetadataSet getSet() const;
    /// One of four icons: tag or entry, on an object or in a set. Null for null and dead handles.
    Q_INVOKABLE QIcon getIcon() const;

    /// Retypes to List and stores the three components.
    void setValueFromVector3D(const QVector3D &vector);
    /// The first three numbers of a list value; the null vector where the value holds no three numbers.
    QVector3D getValueAsVector3D() const;
    /// Retypes to String and stores "#rrggbb" ("#aarrggbb" where not opaque). An invalid colour is refused.
    void setValueFromColor(const QColor &color);
    /// The colour a String value names, or a List value of three or four numbers 0..1 gives; else invalid.
    QColor getValueAsColor() const;
    /// Retypes to List and stores sixteen numbers in the given order.
    void setValueFromMatrix(const QMatrix4x4 &matrix, nkMetadataTypes::MatrixOrder order);
    /// The matrix of a list value of sixteen numbers; identity where the value holds no sixteen numbers.
    QMatrix4x4 getValueAsMatrix(nkMetadataTypes::MatrixOrder order) const;
};

Q_DECLARE_METATYPE(nkdMetadataEntry)
