#include "EntrySender.h"

#include "Sound.h"

#include <interchange/importer/ImportLimits.h>

#include <assimp/commonMetaData.h>

#include <cstring>

using namespace interchange;

namespace {

template <typename Number>
Number as(const aiMetadataEntry &entry)
{
    Number number;
    std::memcpy(&number, entry.mData, sizeof(number));
    return number;
}

void sendVector(const aiVector3D &vector, FlatWriter &writer)
{
    writer.byte(uint8_t(flat::Value::Vector));
    writer.single(vector.x);
    writer.single(vector.y);
    writer.single(vector.z);
}

void sendText(const aiString &text, FlatWriter &writer)
{
    writer.byte(uint8_t(flat::Value::Text));
    writer.text(Sound::text(text));
}

void sendValue(const aiMetadataEntry &entry, FlatWriter &writer)
{
    const auto kind = [&writer](flat::Value value) { writer.byte(uint8_t(value)); };
    switch (entry.mType) {
    case AI_BOOL:
        kind(flat::Value::Boolean);
        return writer.byte(as<uint8_t>(entry) != 0 ? 1 : 0);
    case AI_INT32:
        kind(flat::Value::Integer);
        return writer.longWord(uint64_t(int64_t(as<int32_t>(entry))));
    case AI_UINT64:
        kind(flat::Value::Unsigned);
        return writer.longWord(as<uint64_t>(entry));
    case AI_FLOAT:
        kind(flat::Value::Single);
        return writer.single(as<float>(entry));
    case AI_DOUBLE:
        kind(flat::Value::Double);
        return writer.number(as<double>(entry));
    case AI_AISTRING:
        return sendText(*static_cast<const aiString *>(entry.mData), writer);
    case AI_AIVECTOR3D:
        return sendVector(as<aiVector3D>(entry), writer);
    default:
        return kind(flat::Value::Tag);
    }
}

/// What the library itself adds to the metadata of every scene, and to every node of some kinds of files.
bool isOfLibrary(const aiMetadata &metadata, unsigned index)
{
    const std::string_view key = Sound::text(metadata.mKeys[index]);
    const bool isFirst = index == 0 && key == "UserProperties" && metadata.mValues[0].mType == AI_AISTRING;
    if (isFirst && metadata.mValues[0].mData)
        return static_cast<const aiString *>(metadata.mValues[0].mData)->length == 0;
    return key == AI_METADATA_SOURCE_FORMAT
           || (index == 1 && key == "IsNull" && Sound::text(metadata.mKeys[0]) == "UserProperties");
}

} // namespace

EntrySender::EntrySender(const std::vector<const aiMetadata *> &metadata)
{
    for (const aiMetadata *one : metadata)
        gather(one, std::string(), 1);
}

void EntrySender::gather(const aiMetadata *metadata, const std::string &path, int depth)
{
    if (!metadata || depth > importlimits::EntryDepth)
        return;
    for (unsigned i = 0; i < metadata->mNumProperties; ++i) {
        const aiMetadataEntry &entry = metadata->mValues[i];
        const std::string key = path + std::string(Sound::text(metadata->mKeys[i]));
        if (entry.mType == AI_AIMETADATA)
            gather(static_cast<const aiMetadata *>(entry.mData), key + '.', depth + 1);
        else if (entry.mData && !isOfLibrary(*metadata, i))
            m_entries.push_back({key, &entry});
    }
}

void EntrySender::send(FlatWriter &writer) const
{
    writer.word(uint32_t(m_entries.size()));
    for (const Entry &entry : m_entries) {
        writer.text(entry.key);
        sendValue(*entry.entry, writer);
    }
}
