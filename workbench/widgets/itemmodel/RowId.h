#pragma once

#include <QString>
#include <QVariant>

/// A row's identity, comparable: what QNKModelItem::getId answers, reduced to its decimal text. A number and
/// the text of the same number are one identity; "007" and "7" are two.
class RowId
{
public:
    RowId() = default;
    /// @param id an integer or a text; invalid or empty: no identity
    explicit RowId(const QVariant &id);

    /// Whether the row has no identity; such rows keep no place.
    bool isNull() const { return m_kind == Kind::None; }
    /// Whether number() holds the identity; else text() does.
    bool isNumber() const { return m_kind == Kind::Number; }
    quint64 number() const { return m_number; }
    /// The decimal text, of numbers too; empty for null.
    QString text() const;

    /// Two rows without an identity are never the same row.
    bool isSameAs(const RowId &other) const;

private:
    enum class Kind { None, Number, Text };

    void setNumber(quint64 number);
    void setText(const QString &text);

    quint64 m_number = 0;
    QString m_text;
    Kind m_kind = Kind::None;
};
