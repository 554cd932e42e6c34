#include "HandleInvoker.h"

#include <nkKernelServices/nkdObject.h>

#include <array>
#include <optional>

namespace kernel {

namespace {

constexpr int MostArguments = 10;

bool isEnumeration(int type)
{
    return QMetaType::typeFlags(type).testFlag(QMetaType::IsEnumeration);
}

/// The value in that type; nothing where it cannot be had.
std::optional<QVariant> inType(QVariant value, int type)
{
    if (type == QMetaType::QVariant || value.userType() == type) {
        return value;
    }
    if (isEnumeration(type)) {
        bool ok = false;
        const int number = value.toInt(&ok);
        return ok ? std::optional<QVariant>(QVariant(type, &number)) : std::nullopt;
    }
    return value.canConvert(type) && value.convert(type) ? std::optional<QVariant>(value) : std::nullopt;
}

/// The arguments in the parameters' types; nothing where one does not fit.
std::optional<QVariantList> fitted(const QMetaMethod &method, const QVariantList &arguments)
{
    QVariantList result;
    for (int index = 0; index < arguments.size(); ++index) {
        const std::optional<QVariant> value = inType(arguments.at(index), method.parameterType(index));
        if (!value) {
            return std::nullopt;
        }
        result.append(*value);
    }
    return result;
}

QGenericArgument asArgument(const QVariant &value, int parameterType)
{
    if (parameterType == QMetaType::QVariant) {
        return QGenericArgument("QVariant", &value);
    }
    return QGenericArgument(QMetaType::typeName(parameterType), value.constData());
}

QVariant call(const QMetaMethod &method, QObject *object, const QVariantList &arguments)
{
    std::array<QGenericArgument, MostArguments> given;
    for (int index = 0; index < arguments.size(); ++index) {
        given[size_t(index)] = asArgument(arguments.at(index), method.parameterType(index));
    }
    const int type = method.returnType();
    const bool hasResult = type != QMetaType::Void && type != QMetaType::UnknownType;
    const bool isVariant = type == QMetaType::QVariant;
    QVariant result = hasResult && !isVariant ? QVariant(type, nullptr) : QVariant();
    void *const place = isVariant ? static_cast<void *>(&result) : result.data();
    const QGenericReturnArgument answer(method.typeName(), hasResult ? place : nullptr);
    const bool ok = method.invoke(object, Qt::DirectConnection, hasResult ? answer : QGenericReturnArgument(),
                                  given[0], given[1], given[2], given[3], given[4], given[5], given[6],
                                  given[7], given[8], given[9]);
    return ok && hasResult ? result : QVariant();
}

} // namespace

QMetaMethod HandleInvoker::findMethod(const QByteArray &name, const QVariantList &arguments) const
{
    const QMetaObject *kind = m_handle.metaObject();
    // What QObject itself offers (deleteLater) is nobody's operation.
    for (int index = kind->methodCount() - 1; index >= QObject::staticMetaObject.methodCount(); --index) {
        const QMetaMethod method = kind->method(index);
        if (method.name() == name && method.parameterCount() == arguments.size()) {
            return method;
        }
    }
    return QMetaMethod();
}

QVariant HandleInvoker::invoke(const QByteArray &name, const QVariantList &arguments) const
{
    if (arguments.size() > MostArguments) {
        return QVariant();
    }
    const QMetaMethod method = findMethod(name, arguments);
    const std::optional<QVariantList> values = method.isValid() ? fitted(method, arguments)
                                                                : std::optional<QVariantList>();
    return values ? call(method, &m_handle, *values) : QVariant();
}

} // namespace kernel
