#include <interchange/sets/KeyTable.h>

namespace interchange {

const QString *KeyTable::note(Key &key)
{
    if (key.lastSet == m_set)
        return nullptr;
    key.lastSet = m_set;
    return &key.text;
}

const QString *KeyTable::add(std::string_view utf8)
{
    Key &key = m_keys[utf8];
    if (key.lastSet == 0)
        key.text = QString::fromUtf8(utf8.data(), int(utf8.size()));
    return note(key);
}

const QString *KeyTable::addDecoded(const QString &key)
{
    QByteArray bytes = key.toUtf8();
    if (QString::fromUtf8(bytes) != key) {
        // Halves of surrogate pairs have no UTF-8. Told apart from all that has, by a byte that never comes there.
        bytes = QByteArray("\xff") + QByteArray(reinterpret_cast<const char *>(key.utf16()), key.size() * 2);
    }
    m_decoded.push_back(bytes);
    const QByteArray &kept = m_decoded.back();
    Key &known = m_keys[{kept.constData(), size_t(kept.size())}];
    known.text = key;
    return note(known);
}

} // namespace interchange
