#pragma once

#include <interchange/importer/FlatWriter.h>

#include <assimp/scene.h>

#include <string>
#include <vector>

/// Answers metadata as a list of entries: metadata inside of metadata becomes entries whose keys are joined by points.
class EntrySender
{
public:
    /// Any of them may be null.
    explicit EntrySender(const std::vector<const aiMetadata *> &metadata);

    size_t count() const { return m_entries.size(); }
    void send(interchange::FlatWriter &writer) const;

private:
    struct Entry
    {
        std::string key;
        const aiMetadataEntry *entry;
    };

    void gather(const aiMetadata *metadata, const std::string &path, int depth);

    std::vector<Entry> m_entries;
};
