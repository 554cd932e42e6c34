#pragma once

#include "nkKernelServicesExport.h"

#include <QMetaType>
#include <QObject>

/// The enumerations of the metadata system. Never instantiated; a class and no namespace so that the
/// enumerations carry meta-type names such as "nkMetadataTypes::ValueType" and travel in QVariant.
class NK_KERNEL_SERVICES_EXPORT nkMetadataTypes
{
    Q_GADGET
public:
    nkMetadataTypes() = delete;

    /// What an entry's value is. The stored type is one per value type: String QString, Integer int,
    /// Float double, Boolean bool, Time QTime, Date QDate, DateTime QDateTime, List QVariantList.
    /// Signed; numbers outside 0..7 are shown as "Unknown".
    enum ValueType : int {
        String = 0,
        Integer = 1,
        Float = 2,
        Boolean = 3,
        Time = 4,
        Date = 5,
        DateTime = 6,
        List = 7,
        /// No value type: nkdMetadataSet::createEntry makes a tag of it, and filters use it for tags. An
        /// entry never answers it (a tag's getValueType is String).
        Tag = 8
    };
    Q_ENUM(ValueType)

    /// The order in which the sixteen numbers of a matrix value stand in its list.
    enum MatrixOrder : int { RowOrder = 0, ColumnOrder = 1 };
    Q_ENUM(MatrixOrder)

    /// Bits of nkMetadataService::metadataChanged, combined by OR (the combination is cast back to
    /// this type).
    enum ChangeFlag : int {
        NoChange = 0,
        /// Sets were created, deleted, renamed, locked, unlocked, coloured, or their asset state changed.
        SetsChanged = 1,
        /// Entries were created, removed, renamed, retyped, turned into tags, or their values changed.
        EntriesChanged = 2,
        /// Assignments changed, or which objects carry metadata of their own.
        AssignmentsChanged = 4
    };
    Q_ENUM(ChangeFlag)
};
