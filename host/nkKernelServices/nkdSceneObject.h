#pragma once

#include "nkdObject.h"

#include <QIcon>
#include <QString>

/// An object of the scene that can carry metadata: a node (cameras, lights and sceneplates are nodes too),
/// a material or a material group.
class NK_KERNEL_SERVICES_EXPORT nkdSceneObject : public nkdObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ getName WRITE setName)
    Q_PROPERTY(bool locked READ getLocked WRITE setLocked)
public:
    nkdSceneObject() = default;
    /// The same object as this kind; null unless other.isTypeOf(nkdSceneObject::staticMetaObject).
    explicit nkdSceneObject(const nkdObject &other) : nkdObject(other, staticMetaObject) {}
    nkdSceneObject(const nkdSceneObject &other) = default;
    nkdSceneObject &operator=(const nkdSceneObject &other) = default;
    ~nkdSceneObject() override;

    /// The name as the file gave it: names are not unique and may hold any character.
    Q_INVOKABLE QString getName() const;
    /// Renames, undoably. Refused while the object is not editable. Its object set's name follows.
    /// propertyChanged(object, "name"), and no metadataChanged.
    Q_INVOKABLE void setName(const QString &name);
    /// An icon of the object's kind; null for null and dead handles.
    Q_INVOKABLE QIcon getIcon() const;

    Q_INVOKABLE bool getLocked() const;
    /// Undoable; propertyChanged(object, "locked"). A lock protects name and place, not the metadata.
    Q_INVOKABLE void setLocked(bool locked);
    /// Whether the object comes from the asset manager.
    Q_INVOKABLE bool isAsset() const;
    /// Whether the object is an asset that is being modified.
    Q_INVOKABLE bool isEditedAsset() const;
    /// Alive, not locked, and not an asset at rest.
    Q_INVOKABLE bool isEditable() const;

protected:
    nkdSceneObject(const nkdObject &other, const QMetaObject &kind) : nkdObject(other, kind) {}
};

Q_DECLARE_METATYPE(nkdSceneObject)
