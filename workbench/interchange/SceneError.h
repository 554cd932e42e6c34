#pragma once

#include <interchange/json/JsonError.h>

#include <QCoreApplication>
#include <QString>

namespace interchange {

class JsonValue;

/// Why a scene file cannot be opened: what is wrong, where, and what the person can do. The texts may quote the
/// file; they are plain text and must be shown as such.
class SceneError
{
    Q_DECLARE_TR_FUNCTIONS(SceneError)

public:
    SceneError() = default;

    /// Something about the file as a whole: not there, not readable, of another format. `advice` is a clause.
    static SceneError ofFile(const QString &reason, const QString &advice);
    /// Something wrong at this byte of a binary file, in front of or behind its JSON text.
    static SceneError atByte(qint64 offset, const QString &reason);
    /// The JSON text itself is damaged.
    static SceneError atJson(const JsonError &error);
    /// The JSON text is sound, but this value cannot mean anything.
    static SceneError atValue(const JsonValue &value, const QString &reason);

    bool isSet() const { return !m_reason.isEmpty(); }
    /// What is wrong, a clause without capital and full stop.
    const QString &reason() const { return m_reason; }
    /// Line and column from 1 within the JSON text; 0 where the error is in no JSON text.
    int line() const { return m_line; }
    int column() const { return m_column; }
    /// Byte of the file from 0; -1 where the error is about the file as a whole.
    qint64 offset() const { return m_offset; }
    /// JSON path of the value in question; empty where the error is in no JSON text.
    const QString &path() const { return m_path; }

    /// Moves the offset of an error in a JSON text that begins at this byte of its file.
    void shift(qint64 jsonOffset);

    /// One sentence for people: file, what, where, what to do.
    QString message(const QString &fileName) const;

private:
    QString placeText() const;

    QString m_reason;
    QString m_advice;
    QString m_path;
    qint64 m_offset = -1;
    int m_line = 0;
    int m_column = 0;
};

} // namespace interchange
