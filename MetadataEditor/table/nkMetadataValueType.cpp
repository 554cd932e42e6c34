#include "table/nkMetadataValueType.h"

#include <QCoreApplication>

#include <iterator>

namespace {

const char *const typeNames[] = {
    QT_TRANSLATE_NOOP("Metadata", "String"),        QT_TRANSLATE_NOOP("Metadata", "Integer"),
    QT_TRANSLATE_NOOP("Metadata", "Float"),         QT_TRANSLATE_NOOP("Metadata", "Boolean"),
    QT_TRANSLATE_NOOP("Metadata", "Time"),          QT_TRANSLATE_NOOP("Metadata", "Date"),
    QT_TRANSLATE_NOOP("Metadata", "Date and Time"), QT_TRANSLATE_NOOP("Metadata", "List"),
};

} // namespace

int nkMetadataValueType::metaTypeId()
{
    return qMetaTypeId<nkMetadataTypes::ValueType>();
}

QString nkMetadataValueType::name(int type)
{
    const bool known = type >= 0 && type < int(std::size(typeNames));
    return QCoreApplication::translate("Metadata",
                                       known ? typeNames[type] : QT_TRANSLATE_NOOP("Metadata", "Unknown"));
}

nkMetadataTypes::ValueType nkMetadataValueType::fromVariant(const QVariant &value)
{
    QVariant type = value;
    if (type.userType() != metaTypeId() && !type.convert(metaTypeId())) {
        return nkMetadataTypes::String;
    }
    return *static_cast<const nkMetadataTypes::ValueType *>(type.constData());
}
