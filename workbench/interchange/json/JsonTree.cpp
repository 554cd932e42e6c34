#include <interchange/json/JsonTree.h>

#include <interchange/json/JsonPath.h>
#include <interchange/json/JsonValue.h>

namespace interchange {

JsonValue JsonTree::root() const
{
    return isEmpty() ? JsonValue() : JsonValue(this, 0);
}

QString JsonTree::pathOf(quint32 index) const
{
    JsonPath path;
    quint32 container = 0;
    while (container < index && index < m_cells[container].next) {
        quint32 child = container + 1;
        quint32 position = 0;
        for (; m_cells[child].next <= index; ++position)
            child = m_cells[child].next;
        if (m_cells[child].keyLength > 0)
            path.append(JsonValue(this, child).key());
        else
            path.append(position);
        container = child;
    }
    return path.text();
}

} // namespace interchange
