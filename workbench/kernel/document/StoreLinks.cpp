// The assignments of the store: sets to objects, both ways.

#include "Store.h"

namespace kernel {

namespace {

/// Puts a link into one of its chains, between the neighbours it names.
void attach(LinkEnds &ends, LinkIndex link, LinkIndex previous, LinkIndex next, LinkIndex *previousNext,
            LinkIndex *nextPrevious)
{
    *(previous == NoLink ? &ends.first : previousNext) = link;
    *(next == NoLink ? &ends.last : nextPrevious) = link;
    ++ends.count;
}

/// Takes a link out of one of its chains; it goes on naming its neighbours.
void detach(LinkEnds &ends, LinkIndex previous, LinkIndex next, LinkIndex *previousNext,
            LinkIndex *nextPrevious)
{
    *(previous == NoLink ? &ends.first : previousNext) = next;
    *(next == NoLink ? &ends.last : nextPrevious) = previous;
    --ends.count;
}

quint32 pairHash(Slot set, Slot object)
{
    return mixedHash((quint64(set) << 32) | object);
}

} // namespace

quint32 Store::linkHash(LinkIndex link) const
{
    return pairHash(m_links[link].set, m_links[link].object);
}

LinkIndex Store::findLink(Slot set, Slot object) const
{
    return m_linkIndex.find(pairHash(set, object), [&](LinkIndex link) {
        return m_links[link].set == set && m_links[link].object == object;
    });
}

LinkIndex Store::addLink(Slot set, Slot object)
{
    AssignmentLink link;
    link.set = set;
    link.object = object;
    link.previousInSet = this->set(set).links.last;
    link.previousInObject = this->object(object).links.last;
    return m_links.append(link);
}

void Store::setLinkPresent(LinkIndex index, bool present)
{
    const AssignmentLink &link = m_links[index];
    SetRecord &set = this->set(link.set);
    LinkEnds &objectEnds = object(link.object).links;
    const auto neighbour = [this](LinkIndex other) { return other == NoLink ? nullptr : &m_links[other]; };
    AssignmentLink *const beforeInSet = neighbour(link.previousInSet);
    AssignmentLink *const behindInSet = neighbour(link.nextInSet);
    AssignmentLink *const beforeInObject = neighbour(link.previousInObject);
    AssignmentLink *const behindInObject = neighbour(link.nextInObject);
    LinkIndex *const setNext = beforeInSet ? &beforeInSet->nextInSet : nullptr;
    LinkIndex *const setPrevious = behindInSet ? &behindInSet->previousInSet : nullptr;
    LinkIndex *const objectNext = beforeInObject ? &beforeInObject->nextInObject : nullptr;
    LinkIndex *const objectPrevious = behindInObject ? &behindInObject->previousInObject : nullptr;
    const auto hashOf = [this](LinkIndex other) { return linkHash(other); };
    quint32 &kindCount = set.linkedKinds[size_t(sceneKindIndex(object(link.object).type))];
    if (present) {
        attach(set.links, index, link.previousInSet, link.nextInSet, setNext, setPrevious);
        attach(objectEnds, index, link.previousInObject, link.nextInObject, objectNext, objectPrevious);
        m_linkIndex.insert(index, hashOf);
        ++kindCount;
    } else {
        m_linkIndex.remove(index, hashOf);
        detach(set.links, link.previousInSet, link.nextInSet, setNext, setPrevious);
        detach(objectEnds, link.previousInObject, link.nextInObject, objectNext, objectPrevious);
        --kindCount;
    }
}

QVector<Slot> Store::assignedSets(Slot object) const
{
    const LinkEnds &ends = this->object(object).links;
    QVector<Slot> sets;
    sets.reserve(int(ends.count));
    for (LinkIndex link = ends.first; link != NoLink; link = m_links[link].nextInObject) {
        sets.append(m_links[link].set);
    }
    return sets;
}

QVector<Slot> Store::linkedObjects(Slot set) const
{
    const LinkEnds &ends = this->set(set).links;
    QVector<Slot> objects;
    objects.reserve(int(ends.count));
    for (LinkIndex link = ends.first; link != NoLink; link = m_links[link].nextInSet) {
        objects.append(m_links[link].object);
    }
    return objects;
}

} // namespace kernel
