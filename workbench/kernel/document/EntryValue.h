#pragma once

#include <nkKernelServices/nkKernelServicesExport.h>
#include <nkKernelServices/nkMetadataTypes.h>

#include <QDateTime>
#include <QString>
#include <QVariant>

#include <variant>

namespace kernel {

/// What an entry holds: a value of one of the eight types, or nothing, for a tag. Sixteen bytes; numbers,
/// dates and times lie inside, texts and lists are shared.
class NK_KERNEL_SERVICES_EXPORT EntryValue
{
public:
    /// A String value that remembers being a number.
    struct NumberText
    {
        QString text;
    };

    /// A tag.
    EntryValue() = default;
    /// A value of the type that goes with the stored type.
    explicit EntryValue(const QString &text) : m_data(text) {}
    explicit EntryValue(NumberText number) : m_data(std::move(number)) {}
    explicit EntryValue(int number) : m_data(number) {}
    explicit EntryValue(double number) : m_data(number) {}
    explicit EntryValue(bool truth) : m_data(truth) {}
    explicit EntryValue(QTime time) : m_data(time) {}
    explicit EntryValue(QDate date) : m_data(date) {}
    explicit EntryValue(const QDateTime &dateTime) : m_data(dateTime) {}
    explicit EntryValue(const QVariantList &list) : m_data(list) {}

    bool isTag() const { return std::holds_alternative<std::monostate>(m_data); }
    bool isNumberText() const { return std::holds_alternative<NumberText>(m_data); }
    /// The value type; String for a tag.
    nkMetadataTypes::ValueType type() const;
    /// The value in the stored type of type(); invalid for a tag.
    QVariant toVariant() const;

    /// Same type and same value: NaN equals NaN, date-times are compared with their time zones, lists element
    /// by element in the same way. That a text remembers being a number makes no difference.
    bool operator==(const EntryValue &other) const;
    bool operator!=(const EntryValue &other) const { return !(*this == other); }

private:
    using Data = std::variant<std::monostate, QString, NumberText, int, double, bool, QTime, QDate, QDateTime,
                              QVariantList>;

    const QString *text() const;

    Data m_data;
};

/// Whether two values are the same: type first, then value, as EntryValue compares.
NK_KERNEL_SERVICES_EXPORT bool isSameValue(const QVariant &left, const QVariant &right);

} // namespace kernel
