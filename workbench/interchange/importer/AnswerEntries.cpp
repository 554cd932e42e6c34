#include <interchange/importer/AnswerEntries.h>

#include <interchange/importer/FlatForm.h>
#include <interchange/importer/ImportLimits.h>

#include <kernel/document/UniqueNames.h>

#include <QSet>

#include <limits>

namespace interchange {

namespace {

/// Bytes of the shortest entry: an empty key and a tag.
constexpr quint32 SmallestEntry = 5;

template <typename Integer>
bool isShort(Integer number)
{
    return number <= Integer(std::numeric_limits<int>::max())
           && (number >= 0 || qint64(number) >= std::numeric_limits<int>::min());
}

} // namespace

IndexRange AnswerEntries::read(const QString &place)
{
    const auto limit = importlimits::Entries - quint32(m_scene.entries.size());
    const quint32 count = m_reader.count(limit, SmallestEntry);
    const IndexRange range{quint32(m_scene.entries.size()), count};
    QSet<QString> keys;
    kernel::UniqueNames unique;
    for (quint32 i = 0; i < count && m_reader.isSound(); ++i) {
        m_reasons.clear();
        bool isBroken = false;
        const QString key = m_reader.text(&isBroken);
        const QString free = unique.unique(key.isEmpty() ? QStringLiteral("Key") : key,
                                           [&keys](const QString &taken) { return keys.contains(taken); });
        keys.insert(free);
        if (free != key)
            m_reasons.append(ImportReason::RenamedKey);
        if (isBroken)
            m_reasons.append(ImportReason::InvalidText);
        readEntry(free);
        note(place + QStringLiteral(", ") + free, m_reasons);
    }
    return range;
}

void AnswerEntries::note(const QString &path, const QVector<ImportReason> &reasons)
{
    if (reasons.isEmpty())
        m_scene.report.addKept();
    for (const ImportReason reason : reasons)
        m_scene.report.addConverted(path, reason);
}

void AnswerEntries::readEntry(const QString &key)
{
    ForeignScene::Entry entry;
    entry.key = key;
    switch (flat::Value(m_reader.choice(quint8(flat::Value::Vector)))) {
    case flat::Value::Tag:
        entry.isTag = true;
        break;
    case flat::Value::Boolean:
        entry.type = nkMetadataTypes::Boolean;
        entry.value = m_reader.flag();
        break;
    case flat::Value::Integer:
        readInteger(entry);
        break;
    case flat::Value::Unsigned:
        readUnsigned(entry);
        break;
    case flat::Value::Single:
        entry.type = nkMetadataTypes::Float;
        entry.value = double(m_reader.single());
        break;
    case flat::Value::Double:
        entry.type = nkMetadataTypes::Float;
        entry.value = m_reader.number();
        break;
    case flat::Value::Text:
        readText(entry);
        break;
    case flat::Value::Vector:
        readVector(entry);
        break;
    }
    m_scene.entries.push_back(entry);
}

void AnswerEntries::readInteger(ForeignScene::Entry &entry)
{
    const auto number = qint64(m_reader.longWord());
    entry.type = isShort(number) ? nkMetadataTypes::Integer : nkMetadataTypes::String;
    entry.value = isShort(number) ? QVariant(int(number)) : QVariant(QString::number(number));
    if (!isShort(number))
        m_reasons.append(ImportReason::LongInteger);
}

void AnswerEntries::readUnsigned(ForeignScene::Entry &entry)
{
    const quint64 number = m_reader.longWord();
    entry.type = isShort(number) ? nkMetadataTypes::Integer : nkMetadataTypes::String;
    entry.value = isShort(number) ? QVariant(int(number)) : QVariant(QString::number(number));
    if (!isShort(number))
        m_reasons.append(ImportReason::LongInteger);
}

void AnswerEntries::readText(ForeignScene::Entry &entry)
{
    const int before = m_reader.position();
    bool isBroken = false;
    entry.value = m_reader.text(&isBroken);
    // Four bytes of them are the length. The cut may go through a letter, which is then no damage of the file.
    if (m_reader.position() - before - 4 >= int(importlimits::LibraryTextBytes))
        m_reasons.append(ImportReason::CutText);
    else if (isBroken)
        m_reasons.append(ImportReason::InvalidText);
}

void AnswerEntries::readVector(ForeignScene::Entry &entry)
{
    QVariantList numbers;
    for (int i = 0; i < 3; ++i)
        numbers.append(double(m_reader.single()));
    entry.type = nkMetadataTypes::List;
    entry.value = numbers;
}

} // namespace interchange
