#include <interchange/json/JsonEdit.h>

#include <interchange/sets/TextBuffer.h>

#include <algorithm>

namespace interchange {

JsonEdit::JsonEdit(const JsonTree &tree, quint32 base, JsonPatches &patches)
    : m_tree(tree), m_base(base), m_patches(patches)
{}

QByteArray JsonEdit::quoted(const QString &text)
{
    TextBuffer buffer;
    buffer.addString(text);
    return buffer.bytes();
}

void JsonEdit::replace(const JsonValue &value, const QByteArray &text)
{
    patch(value.span().offset, value.span().end(), text);
}

void JsonEdit::rename(const JsonValue &member, const QString &key)
{
    patch(member.keySpan().offset, member.keySpan().end(), quoted(key));
}

void JsonEdit::remove(const JsonValue &container, const JsonValue &child)
{
    m_changes[container.index()].removed.insert(child.index());
}

void JsonEdit::append(const JsonValue &object, const Member &member)
{
    m_changes[object.index()].added.append(quoted(member.key) + layoutOf(object).colon + member.value);
}

JsonEdit::Layout JsonEdit::innerOf(const Layout &outer)
{
    Layout inner = outer;
    if (outer.lead.contains('\n')) {
        const bool isIndented = outer.lead.startsWith(outer.tail) && outer.lead != outer.tail;
        inner.lead = outer.lead + (isIndented ? outer.lead.mid(outer.tail.size()) : QByteArray("  "));
        inner.separator = ',' + inner.lead;
        inner.tail = outer.lead;
    }
    return inner;
}

void JsonEdit::appendObject(const JsonValue &object, const QString &key, const QVector<Member> &members)
{
    const Layout inner = innerOf(layoutOf(object));
    QByteArrayList texts;
    for (const Member &member : members)
        texts.append(quoted(member.key) + inner.colon + member.value);
    append(object, {key, '{' + inner.lead + texts.join(inner.separator) + inner.tail + '}'});
}

void JsonEdit::appendElement(const JsonValue &array, const QByteArray &value)
{
    m_changes[array.index()].added.append(value);
}

void JsonEdit::appendList(const JsonValue &object, const QString &key, const QByteArrayList &elements)
{
    const Layout inner = innerOf(layoutOf(object));
    append(object, {key, '[' + inner.lead + elements.join(inner.separator) + inner.tail + ']'});
}

QByteArray JsonEdit::elementText(const JsonValue &like, const JsonValue &around,
                                 const QVector<Member> &members) const
{
    if (!like.isObject() || !like.hasChildren())
        return inLine(members, isSpaced(around));
    const Layout layout = layoutOf(like);
    QByteArrayList texts;
    for (const Member &member : members)
        texts.append(quoted(member.key) + layout.colon + member.value);
    const bool hasLines = layout.lead.contains('\n') && layout.separator.contains('\n');
    const QByteArray separator = hasLines || !layout.separator.contains('\n') ? layout.separator : ", ";
    return '{' + layout.lead + texts.join(separator) + layout.tail + '}';
}

QByteArray JsonEdit::inLine(const QVector<Member> &members, bool isSpaced)
{
    QByteArrayList texts;
    for (const Member &member : members)
        texts.append(quoted(member.key) + (isSpaced ? ": " : ":") + member.value);
    return '{' + texts.join(isSpaced ? ", " : ",") + '}';
}

void JsonEdit::finish()
{
    passUpRemovals();
    for (const auto &[index, changes] : m_changes)
        finish(JsonValue(&m_tree, index), changes);
    m_changes.clear();
}

/// Where nothing is left of a value, it goes. Inner values have the higher index, so all that can become of one is
/// known when its turn comes.
void JsonEdit::passUpRemovals()
{
    for (auto at = m_changes.rbegin(); at != m_changes.rend();) {
        const quint32 index = at->first;
        const Changes &changes = at->second;
        const bool isEmptied = !changes.removed.isEmpty() && changes.added.isEmpty()
                               && quint32(changes.removed.size()) == JsonValue(&m_tree, index).count();
        if (index == 0 || !isEmptied || isElement(index)) {
            ++at;
            continue;
        }
        // The parent has the lower index: whether it comes now or was there, its turn is still to come.
        m_changes[parentOf(index)].removed.insert(index);
        at = std::make_reverse_iterator(m_changes.erase(std::next(at).base()));
    }
}

/// Whether it is a list in an object whose values stand apart from the colons.
bool JsonEdit::isInSpaced(const JsonValue &container) const
{
    const JsonValue parent(&m_tree, parentOf(container.index()));
    return container.isArray() && parent.isObject() && isSpaced(parent);
}

quint32 JsonEdit::parentOf(quint32 index) const
{
    if (m_parents.empty()) {
        m_parents.resize(m_tree.size(), 0);
        std::vector<quint32> open;
        for (quint32 i = 0; i < m_tree.size(); ++i) {
            while (!open.empty() && m_tree.cell(open.back()).next <= i)
                open.pop_back();
            m_parents[i] = open.empty() ? 0 : open.back();
            if (m_tree.cell(i).next > i + 1)
                open.push_back(i);
        }
    }
    return m_parents[index];
}

bool JsonEdit::isElement(quint32 index) const
{
    return m_tree.cell(parentOf(index)).kind == JsonKind::Array;
}

void JsonEdit::finish(const JsonValue &object, const Changes &changes)
{
    const Layout layout = layoutOf(object);
    quint32 firstMember = 0; // begin of the first member
    quint32 end = 0;         // of the member before; 0 before the first
    quint32 gap = 0;         // where a stretch of going members in front of all staying ones begins
    bool hasSurvivor = false;
    for (const JsonValue member : object.children()) {
        const JsonSpan span = member.memberSpan();
        const bool goes = changes.removed.contains(member.index());
        if (end == 0)
            firstMember = gap = span.offset;
        if (goes && hasSurvivor)
            patch(end, span.end(), QByteArray());
        else if (!goes && !hasSurvivor && span.offset != gap)
            patch(gap, span.offset, QByteArray());
        hasSurvivor = hasSurvivor || !goes;
        end = span.end();
    }
    const QByteArray added = changes.added.join(layout.separator);
    if (hasSurvivor && !added.isEmpty())
        patch(end, end, layout.separator + added);
    else if (!hasSurvivor && end != 0)
        patch(firstMember, end, added);
    else if (!hasSurvivor && !added.isEmpty())
        patch(object.span().offset + 1, object.span().end() - 1, added);
}

JsonEdit::Layout JsonEdit::layoutOf(const JsonValue &container) const
{
    Layout layout{QByteArray(), QByteArray(","), QByteArray(":"), QByteArray()};
    quint32 end = 0;
    int count = 0;
    for (const JsonValue member : container.children()) {
        const JsonSpan span = member.memberSpan();
        if (count == 0) {
            layout.lead = between(container.span().offset + 1, span.offset);
            if (member.isMember())
                layout.colon = between(member.keySpan().end(), member.span().offset);
        } else if (count == 1) {
            layout.separator = between(end, span.offset);
        }
        end = span.end();
        ++count;
    }
    if (count > 0)
        layout.tail = between(end, container.span().end() - 1);
    if (count == 1 && layout.lead.contains('\n'))
        layout.separator = ',' + layout.lead;
    else if (count < 2 && (layout.colon.endsWith(' ') || isInSpaced(container)))
        layout.separator = ", ";
    return layout;
}

QByteArray JsonEdit::between(quint32 from, quint32 to) const
{
    return m_tree.text().mid(int(from), int(to - from));
}

void JsonEdit::patch(quint32 from, quint32 to, const QByteArray &text)
{
    m_patches.add({m_base + from, to - from}, text);
}

} // namespace interchange
