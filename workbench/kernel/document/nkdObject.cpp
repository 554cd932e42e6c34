#include <nkKernelServices/nkdObject.h>

#include "Document.h"
#include "EntryReading.h"
#include "HandleInvoker.h"
#include "HandleKind.h"

#include <QJsonObject>

#include <algorithm>
#include <vector>

using namespace kernel;

namespace {

const QString IdMember = QStringLiteral("id");
const QString TypeMember = QStringLiteral("type");

/// The type of what can be read under this id: what lives in the scene, or an entry of the clipboard.
nkObjectType readableType(quint64 id)
{
    const nkObjectType type = Document::the().typeOf(id);
    if (type != nkObjectType::Null) {
        return type;
    }
    return EntryReading(Document::the(), id).isReadable() ? nkObjectType::MetadataEntry : nkObjectType::Null;
}

bool isSceneKind(nkObjectType type)
{
    return type >= nkObjectType::Node && type <= nkObjectType::Material;
}

/// Whether a handle that says handleType may stand for something that is of type: metadata is called by its
/// object's id.
bool isType(nkObjectType handleType, nkObjectType type)
{
    return handleType == nkObjectType::Metadata ? isSceneKind(type) : handleType == type;
}

std::vector<QByteArray> propertiesOf(nkObjectType type)
{
    switch (type) {
    case nkObjectType::MetadataSet:
        return {"name", "color", "locked"};
    case nkObjectType::MetadataEntry:
        return {"key", "value", "valueType"};
    default:
        return isSceneKind(type) ? std::vector<QByteArray>{"name", "locked"} : std::vector<QByteArray>();
    }
}

} // namespace

nkdObject::nkdObject(quint64 objectId) : m_objectId(objectId), m_typeId(quint64(readableType(objectId))) {}

nkdObject::nkdObject(const nkdObject &other, const QMetaObject &kind) : QObject()
{
    if (other.isTypeOf(kind)) {
        m_objectId = other.m_objectId;
        m_typeId = other.m_typeId;
    }
}

nkdObject::~nkdObject() = default;

bool nkdObject::isAlive() const
{
    const nkObjectType type = Document::the().typeOf(m_objectId);
    return type != nkObjectType::Null && isType(getType(), type);
}

bool nkdObject::isTypeOf(const QMetaObject &kind) const
{
    return !isNull() && kindOf(getType()).inherits(&kind);
}

bool nkdObject::supportsProperty(const QByteArray &name) const
{
    const nkObjectType type = readableType(m_objectId);
    if (type == nkObjectType::Null || !isType(getType(), type) || getType() == nkObjectType::Metadata) {
        return false;
    }
    const std::vector<QByteArray> properties = propertiesOf(type);
    return std::find(properties.cbegin(), properties.cend(), name) != properties.cend();
}

QVariant nkdObject::invokeMethod(const QByteArray &name, const QVariantList &arguments) const
{
    QVariant result;
    if (!isNull() && isType(getType(), readableType(m_objectId))) {
        withHandle(getType(), m_objectId,
                   [&](nkdObject &handle) { result = HandleInvoker(handle).invoke(name, arguments); });
    }
    return result;
}

void nkdObject::write(QJsonObject &json) const
{
    json.insert(IdMember, QString::number(m_objectId));
    json.insert(TypeMember, QLatin1String(kindOf(getType()).className()));
}

bool nkdObject::read(const QJsonObject &json)
{
    *this = nkdObject();
    bool isNumber = false;
    const quint64 id = json.value(IdMember).toString().toULongLong(&isNumber);
    const nkObjectType living = isNumber ? Document::the().typeOf(id) : nkObjectType::Null;
    const QString kind = json.value(TypeMember).toString();
    for (const nkObjectType type : {living, nkObjectType::Metadata}) {
        const nkdObject object(id, type);
        if (object.isAlive() && kind == QLatin1String(kindOf(type).className())
            && object.isTypeOf(*metaObject())) {
            m_objectId = id;
            m_typeId = quint64(type);
            return true;
        }
    }
    return false;
}
