#pragma once

#include <QString>

namespace interchange {

/// Builds the text of a JSON path, as messages show it: `$.scenes[0].nodes[12]`. Keys that are no plain
/// identifiers stand in quotes, with control characters, quotes and backslashes escaped as in JSON, so a path
/// is always one line and says exactly one place.
class JsonPath
{
public:
    JsonPath() = default;

    /// Steps into the member with this (decoded) key.
    JsonPath &append(const QString &key);
    /// Steps into the element with this position, counted from 0.
    JsonPath &append(quint32 position);

    /// The path so far; `$` for the outermost value.
    const QString &text() const { return m_text; }

    /// A path as messages show it: keys of hand-made files can have any length, so long ones show their two ends.
    static QString shortened(const QString &path);

private:
    QString m_text = QStringLiteral("$");
};

} // namespace interchange
