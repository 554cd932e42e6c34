#include <nkKernelServicesGUI/nkPropertyEditorNkdObjectWrapper.h>

#include <nkKernelServices/nkdMetadataEntry.h>
#include <nkKernelServices/nkdMetadataSet.h>
#include <nkKernelServices/nkdSceneObject.h>

namespace {

// Handles declare their properties as Qt properties; the object's kind decides whose they are.
template <typename Function>
auto withHandle(const nkdObject &object, Function function)
{
    nkdMetadataEntry entry(object);
    if (!entry.isNull()) {
        return function(static_cast<QObject &>(entry));
    }
    nkdMetadataSet set(object);
    if (!set.isNull()) {
        return function(static_cast<QObject &>(set));
    }
    nkdSceneObject sceneObject(object);
    return function(static_cast<QObject &>(sceneObject));
}

} // namespace

QStringList nkPropertyEditorNkdObjectWrapper::getProperties() const
{
    static const QStringList inOrder{QStringLiteral("key"),       QStringLiteral("value"),
                                     QStringLiteral("valueType"), QStringLiteral("name"),
                                     QStringLiteral("color"),     QStringLiteral("locked")};
    QStringList properties;
    for (const QString &property : inOrder) {
        if (m_object.supportsProperty(property.toLatin1())) {
            properties.append(property);
        }
    }
    return properties;
}

QVariant nkPropertyEditorNkdObjectWrapper::getProperty(const QString &name) const
{
    const QByteArray property = name.toLatin1();
    if (!m_object.supportsProperty(property)) {
        return {};
    }
    return withHandle(m_object,
                      [&property](QObject &handle) { return handle.property(property.constData()); });
}

void nkPropertyEditorNkdObjectWrapper::setProperty(const QString &name, const QVariant &value) const
{
    const QByteArray property = name.toLatin1();
    // Qt would take an unknown name for a new property of the handle.
    if (!m_object.supportsProperty(property)) {
        return;
    }
    withHandle(m_object, [&](QObject &handle) { return handle.setProperty(property.constData(), value); });
}
