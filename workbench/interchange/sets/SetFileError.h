#pragma once

#include <interchange/json/JsonError.h>

#include <QCoreApplication>
#include <QString>

namespace interchange {

class JsonValue;

/// Why a text cannot be read as metadata sets: what is wrong, and where. The texts may quote the file; they are
/// plain text and must be shown as such.
class SetFileError
{
    Q_DECLARE_TR_FUNCTIONS(SetFileError)

public:
    SetFileError() = default;
    /// Something about the file as a whole. @param reason a clause, without capital and full stop
    static SetFileError ofFile(const QString &reason, const QString &advice);
    /// The text is no JSON.
    static SetFileError atJson(const JsonError &error);
    /// The text is JSON, but this value cannot mean anything.
    static SetFileError atValue(const JsonValue &value, const QString &reason);
    /// The member itself has no business here, whatever its value.
    static SetFileError atMember(const JsonValue &member, const QString &reason);

    bool isSet() const { return !m_reason.isEmpty(); }
    /// What is wrong and where, a clause.
    QString clause() const;
    /// One sentence: what was not done to what, why, where, what to do.
    /// @param intent for example "“a.json” was not loaded"
    QString message(const QString &intent) const;

private:
    QString m_reason;
    QString m_advice;
    /// Empty where the whole file is meant.
    QString m_path;
    JsonPlace m_place;
};

} // namespace interchange
