#include "harness/BenchmarkRegistry.h"

#include "kernel/document/DocumentLoader.h"

#include "actions/nkMetadataActions.h"
#include "actions/nkMetadataActionsHandler.h"

#include <nkKernelServices/nkMetadataService.h>

#include <QWidget>

#include <memory>

namespace {

constexpr int AssignmentsPerSet = 100;

/// Sets of one entry, each on a hundred objects.
QList<nkdObject> loadSets(qint64 sets)
{
    kernel::DocumentLoader loader;
    QList<quint64> carriers;
    for (int i = 0; i < AssignmentsPerSet; ++i) {
        carriers.append(loader.addObject(nkObjectType::Node, QStringLiteral("Node %1").arg(i)));
    }
    QList<nkdObject> selection;
    for (qint64 i = 0; i < sets; ++i) {
        const quint64 set = loader.addSet(QStringLiteral("Set %1").arg(i));
        loader.addEntry(set, QStringLiteral("key"), nkMetadataTypes::Integer, int(i));
        for (const quint64 carrier : qAsConst(carriers)) {
            loader.assign(set, carrier);
        }
        selection.append(nkdObject(set, nkObjectType::MetadataSet));
    }
    loader.commit();
    return selection;
}

QList<nkdObject> loadObjects(qint64 objects)
{
    kernel::DocumentLoader loader;
    QList<nkdObject> selection;
    for (qint64 i = 0; i < objects; ++i) {
        const quint64 node = loader.addObject(nkObjectType::Node, QStringLiteral("Node %1").arg(i));
        selection.append(nkdObject(node, nkObjectType::Node));
    }
    loader.commit();
    return selection;
}

/// What any evaluation has to do at the least: look at every selected handle, as a set and as an object.
void passOverHandles()
{
    int members = 0;
    const QList<nkdObject> selection = nkMetadataService::the().getSelection();
    for (const nkdObject &object : selection) {
        members += object.isTypeOf(nkdMetadataSet::staticMetaObject)
                   || object.isTypeOf(nkdSceneObject::staticMetaObject);
    }
    if (members != selection.size()) {
        qFatal("What is selected is neither set nor object");
    }
}

Comparison evaluation(const QList<nkdObject> &selection)
{
    const auto window = std::make_shared<QWidget>();
    auto *actions = new nkMetadataActions(window.get());
    nkMetadataService::the().setSelection(selection);
    Comparison comparison;
    comparison.ours.run = [window, actions] { actions->handler()->updateActionStates(); };
    comparison.baseline.run = passOverHandles;
    comparison.timeAim = 3;
    return comparison;
}

} // namespace

/// The states of all actions, with many objects selected.
static Comparison compareObjects(qint64 objects)
{
    return evaluation(loadObjects(objects));
}
NK_BENCHMARK("actions-evaluate-objects", compareObjects, 100000)

/// The same with many sets selected, each assigned a hundred times.
static Comparison compareSets(qint64 sets)
{
    return evaluation(loadSets(sets));
}
NK_BENCHMARK("actions-evaluate-sets", compareSets, 10000)
