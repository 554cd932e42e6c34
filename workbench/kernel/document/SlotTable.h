#pragma once

#include <QtGlobal>

#include <memory>
#include <utility>
#include <vector>

namespace kernel {

/// A table that only grows. Records lie in chunks of fixed size: growing moves none of them, so references
/// stay true, and no more than one chunk is reserved beyond what is used.
template <typename Record>
class SlotTable
{
public:
    quint32 size() const { return m_size; }

    Record &operator[](quint32 index) { return m_chunks[index >> ChunkBits][index & ChunkMask]; }
    const Record &operator[](quint32 index) const { return m_chunks[index >> ChunkBits][index & ChunkMask]; }

    /// @return the index of the new record
    quint32 append(Record record)
    {
        if ((m_size & ChunkMask) == 0) {
            m_chunks.push_back(std::make_unique<Record[]>(ChunkMask + 1));
        }
        (*this)[m_size] = std::move(record);
        return m_size++;
    }

private:
    static constexpr quint32 ChunkBits = 10;
    static constexpr quint32 ChunkMask = (1u << ChunkBits) - 1;

    std::vector<std::unique_ptr<Record[]>> m_chunks;
    quint32 m_size = 0;
};

} // namespace kernel
