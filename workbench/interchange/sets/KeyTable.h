#pragma once

#include <QByteArray>
#include <QString>

#include <deque>
#include <string_view>
#include <unordered_map>

namespace interchange {

/// The keys of a text's entries, each one text however often it comes, and whether one comes twice in a set.
class KeyTable
{
public:
    /// From now on another set's keys come.
    void beginSet() { ++m_set; }

    /// The key of these UTF-8 bytes, which must outlive the table. Null when the present set has had it before.
    const QString *add(std::string_view utf8);
    /// The same for a key that does not stand in the text as it is.
    const QString *addDecoded(const QString &key);

private:
    struct Key
    {
        QString text;
        quint32 lastSet = 0;
    };

    const QString *note(Key &key);

    std::unordered_map<std::string_view, Key> m_keys;
    std::deque<QByteArray> m_decoded;
    quint32 m_set = 1;
};

} // namespace interchange
