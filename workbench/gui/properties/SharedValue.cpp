#include "SharedValue.h"

#include <nkKernelServicesGUI/nkPropertyEditorNkdObjectWrapper.h>

#include <QList>

#include <cmath>

namespace {

bool sameLists(const QVariantList &left, const QVariantList &right)
{
    return std::equal(left.cbegin(), left.cend(), right.cbegin(), right.cend(), SharedValue::same);
}

bool bothNaN(const QVariant &left, const QVariant &right)
{
    return std::isnan(left.toDouble()) && std::isnan(right.toDouble());
}

} // namespace

SharedValue SharedValue::of(const QList<nkPropertyEditorNkdObjectWrapper> &objects, const QString &property)
{
    SharedValue shared;
    bool first = true;
    for (const nkPropertyEditorNkdObjectWrapper &object : objects) {
        const QVariant value = object.getProperty(property);
        if (first) {
            shared.value = value;
            first = false;
        } else if (!same(shared.value, value)) {
            shared.differing = true;
            break;
        }
    }
    return shared;
}

bool SharedValue::same(const QVariant &left, const QVariant &right)
{
    if (left.userType() != right.userType()) {
        return false;
    }
    switch (left.userType()) {
    case QMetaType::QVariantList:
        return sameLists(left.toList(), right.toList());
    case QMetaType::Double:
        return left == right || bothNaN(left, right);
    default:
        return left == right;
    }
}
