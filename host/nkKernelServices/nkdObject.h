#pragma once

#include "nkKernelServicesExport.h"
#include "nkObjectType.h"

#include <QHash>
#include <QList>
#include <QMetaType>
#include <QObject>
#include <QVariant>

class QJsonObject;

/// A handle to one object of the host: an object id and a type id, and nothing else. Copying a handle
/// never copies the object.
///
/// Ids are 64-bit, never 0 but for the null handle, never used twice in a process, and all of one decimal
/// width (the first is 1,000,000,000; tree row ids are ids written one after the other). Deleting an
/// object and undoing that brings the object back under the same id, so handles stay true across undo.
///
/// A handle whose object is gone is not null; it reads as empty (empty texts, invalid values, null handles,
/// false) and ignores writes. Handles belong to the GUI thread.
class NK_KERNEL_SERVICES_EXPORT nkdObject : public QObject
{
    Q_OBJECT
public:
    /// The null handle: object id 0, type id 0.
    nkdObject() = default;
    /// A handle to the object with this id, of whatever type it has; the type id is 0 where no such
    /// object lives.
    explicit nkdObject(quint64 objectId);
    nkdObject(quint64 objectId, nkObjectType type) : m_objectId(objectId), m_typeId(quint64(type)) {}
    nkdObject(const nkdObject &other) : QObject(), m_objectId(other.m_objectId), m_typeId(other.m_typeId) {}
    nkdObject &operator=(const nkdObject &other)
    {
        m_objectId = other.m_objectId;
        m_typeId = other.m_typeId;
        return *this;
    }
    ~nkdObject() override;

    Q_INVOKABLE quint64 getObjectId() const { return m_objectId; }
    Q_INVOKABLE quint64 getTypeId() const { return m_typeId; }
    nkObjectType getType() const { return nkObjectType(m_typeId); }

    /// True for the null handle only; a handle whose object is gone is not null (see isAlive).
    Q_INVOKABLE bool isNull() const { return m_objectId == 0; }
    /// True when the object stands in the scene now. O(1). False for null.
    Q_INVOKABLE bool isAlive() const;

    /// The kind test: true when the object's kind is kind or derives from it, judged by the type id and
    /// not by the C++ type of this handle, so a plain nkdObject that stands for a camera is an
    /// nkdCameraBaseNode, an nkdNode and an nkdSceneObject. False for null.
    /// @param kind the static meta-object of a handle class
    bool isTypeOf(const QMetaObject &kind) const;

    /// Whether the object has the property that nkObjectService::propertyChanged would name so ("name",
    /// "color", "locked", "key", "value", "valueType"). False for null and dead handles.
    bool supportsProperty(const QByteArray &name) const;

    /// Calls the invokable operation of that name on the object's kind (for example "getName").
    /// @param arguments converted to the operation's parameter types; at most 10
    /// @return what the operation answers; invalid where there is no such operation, the arguments do not
    ///         fit, the operation answers nothing, or the handle is null or dead
    QVariant invokeMethod(const QByteArray &name, const QVariantList &arguments = {}) const;

    /// Writes the identity into json: "id" (decimal text) and "type" (the kind's class name).
    void write(QJsonObject &json) const;
    /// Takes the identity that write left in json.
    /// @return false, and this handle null, where json names no object that lives, or one of another kind
    bool read(const QJsonObject &json);

    /// By object id alone.
    bool operator==(const nkdObject &other) const { return m_objectId == other.m_objectId; }
    bool operator!=(const nkdObject &other) const { return m_objectId != other.m_objectId; }
    bool operator<(const nkdObject &other) const { return m_objectId < other.m_objectId; }

protected:
    /// Converting constructor of the kinds: copies other when other.isTypeOf(kind), else stays null.
    nkdObject(const nkdObject &other, const QMetaObject &kind);

private:
    quint64 m_objectId = 0;
    quint64 m_typeId = 0;
};

Q_DECLARE_METATYPE(nkdObject)

inline uint qHash(const nkdObject &object, uint seed = 0)
{
    return qHash(object.getObjectId(), seed);
}

/// A list of handles of one kind as a list of plain handles, in the same order.
template <typename Handle>
QList<nkdObject> nkToObjects(const QList<Handle> &handles)
{
    QList<nkdObject> objects;
    objects.reserve(handles.size());
    for (const Handle &handle : handles) {
        objects.append(handle);
    }
    return objects;
}
