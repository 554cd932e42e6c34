#pragma once

#include "nkMetadataTypes.h"
#include "nkdMetadataSet.h"
#include "nkdSceneObject.h"

#include <QStringList>

/// The metadata of one scene object: its object set and the sets assigned to it. Its object id is the scene
/// object's. Asking never changes anything.
class NK_KERNEL_SERVICES_EXPORT nkdMetadata : public nkdObject
{
    Q_OBJECT
public:
    nkdMetadata() = default;
    /// The metadata of the scene object with this id; null where no scene object has it.
    explicit nkdMetadata(quint64 sceneObjectId);
    nkdMetadata(const nkdMetadata &other) = default;
    nkdMetadata &operator=(const nkdMetadata &other) = default;
    ~nkdMetadata() override;

    /// Null for a null object.
    static nkdMetadata fromObject(const nkdSceneObject &object);

    nkdSceneObject getObject() const;
    /// The object's private set: exists from the object's birth; empty until an entry is made in it.
    nkdMetadataSet getObjectSet() const;
    /// The assigned sets, in order of assignment, without the object set.
    QList<nkdMetadataSet> getSets() const;
    bool hasObjectEntries() const;
    /// Entries of the object set and of all assigned sets together, tags included.
    int entryCount() const;

    // The following look at the object set first, then at the assigned sets in their order.

    /// The value of the first entry with this key; invalid where there is none or it is a tag.
    QVariant getValue(const QString &key) const;
    /// The keys of all tags, each once, in order of appearance.
    QStringList getTags() const;
    bool hasKey(const QString &key) const;
    /// Whether an entry holds this value, compared by type, then value.
    bool hasValue(const QVariant &value) const;
    /// Whether a set of this name is assigned.
    bool hasSet(const QString &name) const;
    /// Whether an entry is of this type; 8 asks for a tag.
    bool hasType(nkMetadataTypes::ValueType type) const;

    // Builders of queries in the language of nkQueryService::startAsyncMetadataQuery. Texts are quoted, with
    // a backslash before quotes and backslashes.

    /// key:"..."
    static QString getKeyQuery(const QString &key);
    /// value:"..."
    static QString getValueQuery(const QVariant &value);
    /// set:"..."
    static QString getSetQuery(const QString &name);
    /// type:"...", with the type's name ("String" ... "List", "Tag")
    static QString getValueTypeQuery(nkMetadataTypes::ValueType type);
    /// "key" = "value" with the value that getValue(key) answers; getKeyQuery(key) where that is invalid.
    QString getKeyValueQuery(const QString &key) const;
};

Q_DECLARE_METATYPE(nkdMetadata)
