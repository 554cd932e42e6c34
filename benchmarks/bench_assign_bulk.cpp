#include "harness/BenchmarkRegistry.h"

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QSet>

#include <memory>

namespace {

constexpr int Sets = 100;

/// What is assigned to what.
struct Scene
{
    QList<nkdObject> objects;
    QList<nkdMetadataSet> sets;
};

Scene load(qint64 objects)
{
    Scene scene;
    kernel::DocumentLoader loader;
    for (qint64 i = 0; i < objects; ++i) {
        const quint64 node = loader.addObject(nkObjectType::Node, QStringLiteral("Node %1").arg(i));
        scene.objects.append(nkdObject(node, nkObjectType::Node));
    }
    for (int i = 0; i < Sets; ++i) {
        scene.sets.append(nkdMetadataSet(loader.addSet(QStringLiteral("Set %1").arg(i))));
    }
    loader.commit();
    return scene;
}

/// Pairs kept both ways, and nothing else: no order, no kinds, no undo.
struct Pairs
{
    QHash<quint64, QSet<quint64>> objectsOfSets;
    QHash<quint64, QSet<quint64>> setsOfObjects;

    void add(const Scene &scene)
    {
        for (const nkdMetadataSet &set : scene.sets) {
            for (const nkdObject &object : scene.objects) {
                objectsOfSets[set.getObjectId()].insert(object.getObjectId());
                setsOfObjects[object.getObjectId()].insert(set.getObjectId());
            }
        }
    }
};

void verifyAssigned(const Scene &scene, bool isAssigned)
{
    if (scene.sets.last().isAssigned() != isAssigned) {
        qFatal("The sets are %s", isAssigned ? "not assigned" : "assigned still");
    }
}

/// @param undone what is timed: taking the assignment back instead of making it
Comparison compare(qint64 objects, bool undone)
{
    const auto scene = std::make_shared<Scene>();
    const auto pairs = std::make_shared<std::unique_ptr<Pairs>>();
    const auto assign = [scene] { nkMetadataService::the().assignSets(scene->objects, scene->sets); };
    Comparison comparison;
    comparison.ours.prepare = [=] {
        *scene = load(objects);
        if (undone) {
            assign();
        }
    };
    comparison.ours.run = [=] {
        if (undone) {
            kernel::Document::the().undo();
        } else {
            assign();
        }
    };
    comparison.ours.finish = [=] {
        verifyAssigned(*scene, !undone);
        kernel::Document::the().clear();
    };
    comparison.baseline.prepare = [=] {
        *scene = load(objects);
        *pairs = std::make_unique<Pairs>();
    };
    comparison.baseline.run = [=] { (*pairs)->add(*scene); };
    comparison.baseline.finish = [=] {
        pairs->reset();
        kernel::Document::the().clear();
    };
    comparison.timeAim = 3;
    return comparison;
}

} // namespace

/// A hundred sets assigned to many objects at once, against the two hash inserts that every pair takes.
static Comparison compareAssignBulk(qint64 objects)
{
    return compare(objects, false);
}
NK_BENCHMARK("assign-bulk", compareAssignBulk, 10000, 100000)

/// The same taken back by undo, against the same inserts.
static Comparison compareAssignBulkUndo(qint64 objects)
{
    return compare(objects, true);
}
NK_BENCHMARK("assign-bulk-undo", compareAssignBulkUndo, 10000, 100000)
