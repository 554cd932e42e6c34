#include <nkKernelServices/nkdNode.h>

#include "Document.h"
#include "Store.h"

#include <QStringList>

using namespace kernel;

namespace {

const Store &openStore()
{
    return Document::the().store();
}

nkdNode nodeAt(Slot slot)
{
    return nkdNode(nkdObject(openStore().idOf(slot), openStore().object(slot).type));
}

/// The node and its ancestors, the top-level node first; none for dead and null ones.
QVector<Slot> lineOf(quint64 id)
{
    QVector<Slot> line;
    for (Slot slot = openStore().objectSlot(id); slot != NoSlot;
         slot = openStore().object(slot).place.parent) {
        line.prepend(slot);
    }
    return line;
}

/// The place among the siblings of the same name, from 1.
int placeAmongNamesakes(Slot slot)
{
    const Store &store = openStore();
    const QString &name = store.object(slot).name;
    int place = 1;
    for (const Slot sibling : store.siblingsOf(slot).slots()) {
        if (sibling == slot) {
            break;
        }
        place += store.object(sibling).name == name ? 1 : 0;
    }
    return place;
}

} // namespace

nkdNode::~nkdNode() = default;

nkdNode nkdNode::getParent() const
{
    const ObjectRecord *object = openStore().findObject(getObjectId());
    return object && object->place.parent != NoSlot ? nodeAt(object->place.parent) : nkdNode();
}

QList<nkdNode> nkdNode::getChildren() const
{
    QList<nkdNode> children;
    const ObjectRecord *object = openStore().findObject(getObjectId());
    if (object) {
        for (const Slot child : object->children.slots()) {
            // Materials stand in groups and are no nodes.
            if (openStore().object(child).type != nkObjectType::Material) {
                children.append(nodeAt(child));
            }
        }
    }
    return children;
}

QString nkdNode::getPath() const
{
    QStringList names;
    const QVector<Slot> line = lineOf(getObjectId());
    for (const Slot slot : line) {
        names.append(openStore().object(slot).name);
    }
    return names.join(QLatin1Char('/'));
}

QString nkdNode::getUniquePath() const
{
    QStringList names;
    const QVector<Slot> line = lineOf(getObjectId());
    for (const Slot slot : line) {
        const int place = placeAmongNamesakes(slot);
        const QString &name = openStore().object(slot).name;
        names.append(place == 1 ? name : QStringLiteral("%1[%2]").arg(name, QString::number(place)));
    }
    return names.join(QLatin1Char('/'));
}
