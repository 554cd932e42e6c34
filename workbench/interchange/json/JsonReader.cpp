#include <interchange/json/JsonReader.h>

#include <interchange/json/JsonParser.h>

namespace interchange {

JsonReader::JsonReader(JsonLimits limits) : m_limits(limits) {}

bool JsonReader::read(const QByteArray &text, JsonTree &tree)
{
    JsonParser parser(text, m_limits, m_goOn);
    const bool read = parser.parse();
    m_error = parser.error();
    tree = read ? parser.takeTree() : JsonTree();
    return read;
}

} // namespace interchange
