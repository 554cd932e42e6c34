#include "TestMain.h"

#include <kernel/document/Document.h>
#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMaterialGroupNode.h>

#include <functional>

using kernel::Document;

namespace {

using Nodes = QList<nkdNode>;

/// The four editors of nodes, called alike.
struct Editor
{
    nkObjectType kind = nkObjectType::Node;
    QObject *service = nullptr;
    const char *signal = nullptr;
    std::function<Nodes()> selected;
    std::function<void(const Nodes &)> select;
};

Editor scenegraph()
{
    nkScenegraphService &service = nkScenegraphService::the();
    return {nkObjectType::Node, &service, SIGNAL(selectionChanged(QList<nkdNode>)),
            [&service] { return service.getSelectedNodes(); },
            [&service](const Nodes &nodes) { service.setSelection(nodes); }};
}

Editor cameras()
{
    nkCameraService &service = nkCameraService::the();
    return {nkObjectType::Camera, &service, SIGNAL(selectionChanged(QList<nkdNode>)),
            [&service] { return service.getSelectedCameras(); },
            [&service](const Nodes &nodes) { service.setSelection(nodes); }};
}

Editor lights()
{
    nkLightService &service = nkLightService::the();
    return {nkObjectType::Light, &service, SIGNAL(nodeSelectionChanged(QList<nkdNode>)),
            [&service] { return service.getSelectedLights(); },
            [&service](const Nodes &nodes) { service.setSelection(nodes); }};
}

Editor sceneplates()
{
    nkSceneplateService &service = nkSceneplateService::the();
    return {nkObjectType::Sceneplate, &service, SIGNAL(nodesSelected(QList<nkdNode>)),
            [&service] { return service.getSelectedSceneplates(); },
            [&service](const Nodes &nodes) { service.setSelection(nodes); }};
}

nkdNode make(nkObjectType kind, const QString &name = QStringLiteral("N"),
             const nkdObject &parent = nkdObject())
{
    return nkdNode(nkdObject(Document::the().createObject(kind, name, parent.getObjectId())));
}

void destroy(const nkdObject &object)
{
    QVERIFY(Document::the().deleteObjects({object.getObjectId()}));
}

} // namespace

/// The selections of the scene graph, camera, light and sceneplate editors.
class TestNodeSelections : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { Document::the().clear(); }

    void keepsOrderAndEachOnce_data() { editors(); }
    void keepsOrderAndEachOnce();
    void alwaysEmitsBeforeItReturns_data() { editors(); }
    void alwaysEmitsBeforeItReturns();
    void skipsWhatIsNotAlive_data() { editors(); }
    void skipsWhatIsNotAlive();
    void deletedNodesLeaveBeforeTheNews_data() { editors(); }
    void deletedNodesLeaveBeforeTheNews();
    void othersDeletionSaysNothing_data() { editors(); }
    void othersDeletionSaysNothing();
    void clearingTheSceneEmptiesIt_data() { editors(); }
    void clearingTheSceneEmptiesIt();
    void undoneDeletionIsNotSelectedAgain();
    void deletingInAScopeDropsAtOnce();
    void selectingIsNotUndoable();
    void emitsInsideScopes();
    void mayBeSetByItsListeners();
    void mayBeSetToItsOwnSelection();
    void eachEditorTakesItsKindOnly();
    void believesTheObjectAndNotTheHandle();
    void listsTheScene();
    void asksTheEditorToScroll();
    void copesWithManyNodes();

private:
    static void editors();
};

void TestNodeSelections::editors()
{
    QTest::addColumn<int>("which");
    QTest::newRow("scene graph") << 0;
    QTest::newRow("cameras") << 1;
    QTest::newRow("lights") << 2;
    QTest::newRow("sceneplates") << 3;
}

static Editor editor(int which)
{
    static const QVector<std::function<Editor()>> makers = {scenegraph, cameras, lights, sceneplates};
    return makers.at(which)();
}

#define FETCH_EDITOR()  \
    QFETCH(int, which); \
    const Editor tested = editor(which)

void TestNodeSelections::keepsOrderAndEachOnce()
{
    FETCH_EDITOR();
    const nkdNode a = make(tested.kind);
    const nkdNode b = make(tested.kind);
    const nkdNode c = make(tested.kind);
    tested.select({c, a, c, b, a});
    QCOMPARE(tested.selected(), Nodes({c, a, b}));
    tested.select({});
    QCOMPARE(tested.selected(), Nodes());
}

void TestNodeSelections::alwaysEmitsBeforeItReturns()
{
    FETCH_EDITOR();
    const nkdNode a = make(tested.kind);
    QSignalSpy spy(tested.service, tested.signal);
    tested.select({a, a});
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.last().first().value<Nodes>(), Nodes({a}));
    tested.select({a});
    QCOMPARE(spy.size(), 2);
    tested.select({});
    tested.select({});
    QCOMPARE(spy.size(), 4);
    QCOMPARE(spy.last().first().value<Nodes>(), Nodes());
}

void TestNodeSelections::skipsWhatIsNotAlive()
{
    FETCH_EDITOR();
    const nkdNode a = make(tested.kind);
    const nkdNode dead = make(tested.kind);
    destroy(dead);
    const nkdMaterialGroupNode group(
        nkdObject(Document::the().createObject(nkObjectType::MaterialGroup, QString())));
    tested.select({nkdNode(), dead, a, group});
    QCOMPARE(tested.selected(), Nodes({a}));
}

void TestNodeSelections::deletedNodesLeaveBeforeTheNews()
{
    FETCH_EDITOR();
    const nkdNode a = make(tested.kind);
    const nkdNode b = make(tested.kind);
    const nkdNode c = make(tested.kind);
    tested.select({a, b, c});
    QStringList order;
    QObject context;
    connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, &context, [&order, &tested, b] {
        order << (tested.selected().contains(b) ? QStringLiteral("changed too early")
                                                : QStringLiteral("changed"));
    });
    connect(&Document::the(), &Document::sceneChanged, &context, [&order, &tested, b] {
        order << (tested.selected().contains(b) ? QStringLiteral("scene too early")
                                                : QStringLiteral("scene"));
    });
    QSignalSpy spy(tested.service, tested.signal);
    destroy(b);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().value<Nodes>(), Nodes({a, c}));
    QCOMPARE(tested.selected(), Nodes({a, c}));
    QVERIFY(order.contains(QStringLiteral("scene")));
    QVERIFY(!order.join(QLatin1Char(' ')).contains(QStringLiteral("too early")));
}

void TestNodeSelections::othersDeletionSaysNothing()
{
    FETCH_EDITOR();
    const nkdNode a = make(tested.kind);
    const nkdNode other = make(tested.kind);
    tested.select({a});
    QSignalSpy spy(tested.service, tested.signal);
    destroy(other);
    QVERIFY(spy.isEmpty());
    QCOMPARE(tested.selected(), Nodes({a}));
}

void TestNodeSelections::clearingTheSceneEmptiesIt()
{
    FETCH_EDITOR();
    tested.select({make(tested.kind)});
    QSignalSpy spy(tested.service, tested.signal);
    QVERIFY(Document::the().clear());
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first().value<Nodes>(), Nodes());
    QVERIFY(tested.selected().isEmpty());
    QVERIFY(Document::the().objectCount() == 0);
}

void TestNodeSelections::undoneDeletionIsNotSelectedAgain()
{
    const nkdNode parent = make(nkObjectType::Node);
    const nkdNode child = make(nkObjectType::Camera, QStringLiteral("Child"), parent);
    nkScenegraphService::the().setSelection({child});
    nkCameraService::the().setSelection({child});
    destroy(parent);
    QVERIFY(nkScenegraphService::the().getSelectedNodes().isEmpty());
    QVERIFY(nkCameraService::the().getSelectedCameras().isEmpty());
    QVERIFY(Document::the().undo());
    QVERIFY(child.isAlive());
    QVERIFY(nkScenegraphService::the().getSelectedNodes().isEmpty());
    nkScenegraphService::the().setSelection({child});
    QVERIFY(Document::the().redo());
    QVERIFY(nkScenegraphService::the().getSelectedNodes().isEmpty());
}

void TestNodeSelections::deletingInAScopeDropsAtOnce()
{
    const nkdNode a = make(nkObjectType::Node);
    const nkdNode b = make(nkObjectType::Node);
    const nkdNode c = make(nkObjectType::Node);
    nkScenegraphService &service = nkScenegraphService::the();
    service.setSelection({a, b, c});
    QSignalSpy spy(&service, &nkScenegraphService::selectionChanged);
    {
        const nkScopedUndo scope(true);
        destroy(a);
        QCOMPARE(service.getSelectedNodes(), Nodes({b, c}));
        QCOMPARE(spy.size(), 1);
        destroy(b);
        QCOMPARE(service.getSelectedNodes(), Nodes({c}));
        QCOMPARE(spy.size(), 1);
    }
    QCOMPARE(spy.size(), 2);
    QCOMPARE(spy.last().first().value<Nodes>(), Nodes({c}));
}

void TestNodeSelections::selectingIsNotUndoable()
{
    const nkdNode a = make(nkObjectType::Node);
    Document::the().markSaved();
    nkScenegraphService::the().setSelection({a});
    QVERIFY(!Document::the().isModified());
    QVERIFY(Document::the().undo());
    QVERIFY(!a.isAlive());
}

void TestNodeSelections::emitsInsideScopes()
{
    const nkdNode a = make(nkObjectType::Light);
    QSignalSpy spy(&nkLightService::the(), &nkLightService::nodeSelectionChanged);
    const nkScopedUndo scope(true);
    nkLightService::the().setSelection({a});
    QCOMPARE(spy.size(), 1);
}

void TestNodeSelections::mayBeSetByItsListeners()
{
    const nkdNode a = make(nkObjectType::Node);
    const nkdNode b = make(nkObjectType::Node);
    nkScenegraphService &service = nkScenegraphService::the();
    QVector<Nodes> seen;
    QObject context;
    connect(&service, &nkScenegraphService::selectionChanged, &context, [&](const Nodes &nodes) {
        if (nodes == Nodes({a})) {
            destroy(a);
            service.setSelection({b});
        }
        seen.append(nodes);
    });
    service.setSelection({a});
    QCOMPARE(service.getSelectedNodes(), Nodes({b}));
    QCOMPARE(seen, QVector<Nodes>({{}, {b}, {a}}));
}

void TestNodeSelections::mayBeSetToItsOwnSelection()
{
    const nkdNode a = make(nkObjectType::Node);
    nkScenegraphService &service = nkScenegraphService::the();
    service.setSelection({a});
    service.setSelection(service.getSelectedNodes());
    QCOMPARE(service.getSelectedNodes(), Nodes({a}));
}

void TestNodeSelections::eachEditorTakesItsKindOnly()
{
    const nkdNode node = make(nkObjectType::Node);
    const nkdNode camera = make(nkObjectType::Camera);
    const nkdNode light = make(nkObjectType::Light);
    const nkdNode plate = make(nkObjectType::Sceneplate);
    const nkdNode group = make(nkObjectType::MaterialGroup);
    QVERIFY(!group.isNull());
    const Nodes all({node, camera, light, plate, group});
    for (const Editor &tested : {scenegraph(), cameras(), lights(), sceneplates()}) {
        tested.select(all);
    }
    QCOMPARE(nkScenegraphService::the().getSelectedNodes(), Nodes({node, camera, light, plate}));
    QCOMPARE(nkCameraService::the().getSelectedCameras(), Nodes({camera}));
    QCOMPARE(nkLightService::the().getSelectedLights(), Nodes({light}));
    QCOMPARE(nkSceneplateService::the().getSelectedSceneplates(), Nodes({plate}));
}

void TestNodeSelections::believesTheObjectAndNotTheHandle()
{
    const nkdNode light = make(nkObjectType::Light);
    const nkdNode disguised(nkdObject(light.getObjectId(), nkObjectType::Camera));
    nkCameraService::the().setSelection({disguised});
    QVERIFY(nkCameraService::the().getSelectedCameras().isEmpty());
    nkLightService::the().setSelection({disguised});
    QCOMPARE(nkLightService::the().getSelectedLights(), Nodes({light}));
    QCOMPARE(nkLightService::the().getSelectedLights().first().getType(), nkObjectType::Light);
}

void TestNodeSelections::listsTheScene()
{
    const nkdNode first = make(nkObjectType::Node);
    const nkdNode second = make(nkObjectType::Camera);
    const nkdNode below = make(nkObjectType::Camera, QStringLiteral("Below"), first);
    const nkdNode light = make(nkObjectType::Light, QStringLiteral("Light"), below);
    const nkdNode plate = make(nkObjectType::Sceneplate);
    QCOMPARE(nkScenegraphService::the().getRootNodes(), Nodes({first, second, plate}));
    QCOMPARE(nkCameraService::the().getAllCameras(), Nodes({below, second}));
    QCOMPARE(nkLightService::the().getAllLights(), Nodes({light}));
    QCOMPARE(nkSceneplateService::the().getAllSceneplates(), Nodes({plate}));
}

void TestNodeSelections::asksTheEditorToScroll()
{
    QSignalSpy spy(&nkScenegraphService::the(), &nkScenegraphService::scrollToSelectedRequested);
    nkScenegraphService::the().scrollToSelected();
    QCOMPARE(spy.size(), 1);
}

/// Quadratic work would take minutes here.
void TestNodeSelections::copesWithManyNodes()
{
    constexpr int count = 20000;
    Nodes nodes;
    {
        const nkScopedUndo scope(true);
        for (int i = 0; i < count; ++i) {
            nodes.append(make(nkObjectType::Node));
        }
    }
    nkScenegraphService::the().setSelection(nodes + nodes);
    QCOMPARE(nkScenegraphService::the().getSelectedNodes().size(), count);
    QList<quint64> even;
    for (int i = 0; i < count; i += 2) {
        even.append(nodes.at(i).getObjectId());
    }
    QVERIFY(Document::the().deleteObjects(even));
    QCOMPARE(nkScenegraphService::the().getSelectedNodes().size(), count / 2);
    QCOMPARE(nkScenegraphService::the().getSelectedNodes().first(), nodes.at(1));
}

NK_GUILESS_TEST_MAIN(TestNodeSelections)
#include "test_node_selections.moc"
