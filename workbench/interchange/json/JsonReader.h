#pragma once

#include <interchange/json/JsonError.h>
#include <interchange/json/JsonTree.h>

#include <functional>

namespace interchange {

/// What a JSON text may be at most.
struct JsonLimits
{
    /// Objects and arrays inside each other, the outermost counted. Real scene files nest a dozen levels, deeply
    /// nested extensions a few dozen more; the reader itself needs no stack, so this only protects what comes after.
    int depth = 512;
    /// Values in all, containers counted; each takes 24 bytes of memory, whatever little text it has.
    quint32 values = 0xffffffffu;
};

/// Whether reading is to go on. @param share of the text that has been read, 0 to 1
using JsonGoOn = std::function<bool(double share)>;

/// Reads JSON as RFC 8259 has it and nothing more, and keeps where everything stands.
///
/// Accepted beyond the grammar: a UTF-8 byte order mark in front. Refused: other encodings, bytes that are no
/// UTF-8, anything behind the value. Escapes for lone halves of surrogate pairs belong to the grammar and are
/// accepted; see JsonValue::toText. The reader does not recurse: no text can exhaust the stack.
class JsonReader
{
public:
    explicit JsonReader(JsonLimits limits = JsonLimits());

    /// Reads `text` into `tree`, which keeps the text. True when all of it was read; otherwise the tree is left
    /// empty and error() says why and where.
    bool read(const QByteArray &text, JsonTree &tree);

    /// Asked again and again while a long text is read, with the share that has been read; false ends the reading
    /// with JsonErrorCode::Cancelled.
    void setGoOn(const JsonGoOn &goOn) { m_goOn = goOn; }

    /// What was wrong with the text read last; not set when it was read.
    const JsonError &error() const { return m_error; }

private:
    JsonLimits m_limits;
    JsonGoOn m_goOn;
    JsonError m_error;
};

} // namespace interchange
