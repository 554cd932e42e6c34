#pragma once

#include <nkKernelServices/nkMetadataTypes.h>

#include <QString>
#include <QVariant>

/// How the table names the value types and reads them from item data.
namespace nkMetadataValueType {

/// The id of the meta-type "nkMetadataTypes::ValueType", registered on first use.
int metaTypeId();

/// The name in the type column and the type editor, translated now; "Unknown" outside 0..7.
QString name(int type);

/// The type a type cell holds under Qt::UserRole. A variant of another type is converted
/// (QVariant::convert); where that cannot be done the type is String.
nkMetadataTypes::ValueType fromVariant(const QVariant &value);

} // namespace nkMetadataValueType
