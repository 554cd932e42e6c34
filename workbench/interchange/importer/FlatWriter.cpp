#include <interchange/importer/FlatWriter.h>

#include <cstring>
#include <utility>

namespace interchange {

namespace {

constexpr size_t Stretch = 64 * 1024;

} // namespace

FlatWriter::FlatWriter(Sink sink) : m_sink(std::move(sink))
{
    m_kept.reserve(Stretch + 16);
    word(flat::Magic);
    word(flat::Version);
}

template <typename Unsigned>
void FlatWriter::littleEndian(Unsigned value)
{
    char bytes[sizeof(Unsigned)];
    for (char &byte : bytes) {
        byte = char(value & 0xff);
        value = Unsigned(value >> 8);
    }
    m_kept.append(bytes, sizeof(bytes));
    if (m_kept.size() >= Stretch)
        flush();
}

void FlatWriter::byte(uint8_t value)
{
    m_kept.push_back(char(value));
}

void FlatWriter::word(uint32_t value)
{
    littleEndian(value);
}

void FlatWriter::longWord(uint64_t value)
{
    littleEndian(value);
}

void FlatWriter::single(float value)
{
    uint32_t bits = 0;
    static_assert(sizeof(bits) == sizeof(value));
    std::memcpy(&bits, &value, sizeof(bits));
    word(bits);
}

void FlatWriter::number(double value)
{
    uint64_t bits = 0;
    static_assert(sizeof(bits) == sizeof(value));
    std::memcpy(&bits, &value, sizeof(bits));
    longWord(bits);
}

void FlatWriter::text(std::string_view value)
{
    word(uint32_t(value.size()));
    m_kept.append(value);
}

void FlatWriter::record(flat::Record kind)
{
    byte(uint8_t(kind));
}

void FlatWriter::progress(float share)
{
    record(flat::Record::Progress);
    single(share);
    flush();
}

void FlatWriter::failure(flat::Failure kind, std::string_view detail)
{
    record(flat::Record::Failure);
    byte(uint8_t(kind));
    text(detail);
    flush();
}

void FlatWriter::flush()
{
    if (!m_kept.empty())
        m_sink(m_kept);
    m_kept.clear();
}

} // namespace interchange
