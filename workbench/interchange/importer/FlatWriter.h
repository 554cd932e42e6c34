#pragma once

#include <interchange/importer/FlatForm.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace interchange {

/// Writes an answer in the flat form. Keeps a stretch of it and hands that on when it has grown.
class FlatWriter
{
public:
    /// Takes the bytes that are ready.
    using Sink = std::function<void(std::string_view)>;

    /// Begins the answer: magic and version.
    explicit FlatWriter(Sink sink);
    FlatWriter(const FlatWriter &) = delete;
    FlatWriter &operator=(const FlatWriter &) = delete;

    void byte(uint8_t value);
    void word(uint32_t value);
    void longWord(uint64_t value);
    void index(int32_t value) { word(uint32_t(value)); }
    void single(float value);
    void number(double value);
    void text(std::string_view value);

    void record(flat::Record kind);
    /// A whole record of progress; handed on at once.
    void progress(float share);
    /// A whole record of failure; handed on at once.
    void failure(flat::Failure kind, std::string_view detail);
    /// Hands on what is kept.
    void flush();

private:
    template <typename Unsigned>
    void littleEndian(Unsigned value);

    Sink m_sink;
    std::string m_kept;
};

} // namespace interchange
