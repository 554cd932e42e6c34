#pragma once

#include <interchange/json/JsonValue.h>
#include <interchange/sets/SetFileError.h>
#include <interchange/sets/SetFileLimits.h>

#include <kernel/document/EntryValue.h>

#include <QCoreApplication>

namespace interchange {

/// Reads the values of entries in the layout of set files.
class SetValueReader
{
    Q_DECLARE_TR_FUNCTIONS(SetValueReader)

public:
    explicit SetValueReader(const SetFileLimits &limits) : m_limits(limits) {}

    /// Reads what stands under "value" of an entry. @param type its place in SetFileNames::Types, no tag
    bool read(int type, const JsonValue &json, kernel::EntryValue &value);

    /// The text of a JSON string, exactly: also halves of surrogate pairs that stand alone.
    static QString text(const JsonValue &json);

    const SetFileError &error() const { return m_error; }

private:
    bool readText(const JsonValue &json, kernel::EntryValue &value);
    bool readNumberText(const JsonValue &json, kernel::EntryValue &value);
    bool readInteger(const JsonValue &json, kernel::EntryValue &value);
    bool readFloat(const JsonValue &json, double &number);
    bool readMoment(int type, const JsonValue &json, QVariant &moment);
    bool readList(const JsonValue &json, int depth, QVariantList &list);
    bool readElement(const JsonValue &json, int depth, QVariant &element);
    bool readWholeElement(const JsonValue &json, QVariant &element);
    bool readTypedElement(const JsonValue &json, QVariant &element);
    bool fail(const JsonValue &json, const QString &reason);

    SetFileLimits m_limits;
    SetFileError m_error;
};

} // namespace interchange
