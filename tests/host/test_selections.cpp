#include "../support/SceneFixture.h"
#include "TestMain.h"

#include <nkKernelServices/nkCameraService.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMaterialService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkSceneplateService.h>
#include <nkKernelServices/nkScopedUndo.h>

#include <QSignalSpy>
#include <QUndoStack>

/// The metadata selection and the five editor selections.
class TestSelections : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { SceneFixture::reset(); }

    void settingTheMetadataSelectionIsToldAtOnceAlways();
    void theMetadataSelectionHoldsEachObjectOnceInOrder();
    void settingItInsideAScopeIsToldAtOnceToo();
    void settingItFromInsideItsOwnSignalWorks();
    void selectionsAreNotUndoable();
    void deadHandlesLeaveTheSelectionBeforeTheChangeIsAnnounced();
    void undoneDeletionsDoNotReturnToTheSelection();
    void editorSelectionsKeepTheirKind();
    void editorSelectionsAreToldAtOnceAlways();
    void deadNodesLeaveTheEditorSelections();
    void materialSelectionsTellTheirFlags();
    void materialEntriesTellMaterialsFromGroups();
    void servicesEnumerateTheScene();
};

void TestSelections::settingTheMetadataSelectionIsToldAtOnceAlways()
{
    nkMetadataService &service = nkMetadataService::the();
    QSignalSpy spy(&service, &nkMetadataService::selectionChanged);
    const nkdObject node = SceneFixture::node(QStringLiteral("n"));
    service.setSelection({node});
    QCOMPARE(spy.count(), 1);
    service.setSelection({node});
    QCOMPARE(spy.count(), 2);
    service.setSelection({});
    service.setSelection({});
    QCOMPARE(spy.count(), 4);
}

void TestSelections::theMetadataSelectionHoldsEachObjectOnceInOrder()
{
    nkMetadataService &service = nkMetadataService::the();
    const nkdObject node = SceneFixture::node(QStringLiteral("n"));
    const nkdObject set = service.createSet(QStringLiteral("s"), {});
    service.setSelection({set, nkdObject(), node, set});
    QCOMPARE(service.getSelection(), (QList<nkdObject>{set, node}));
}

void TestSelections::settingItInsideAScopeIsToldAtOnceToo()
{
    nkMetadataService &service = nkMetadataService::the();
    QSignalSpy spy(&service, &nkMetadataService::selectionChanged);
    nkScopedUndo undo(true);
    service.setSelection({});
    service.setSelection({});
    QCOMPARE(spy.count(), 2);
}

void TestSelections::settingItFromInsideItsOwnSignalWorks()
{
    nkMetadataService &service = nkMetadataService::the();
    const nkdObject first = SceneFixture::node(QStringLiteral("1"));
    const nkdObject second = SceneFixture::node(QStringLiteral("2"));
    QObject context;
    connect(&service, &nkMetadataService::selectionChanged, &context, [&](const QList<nkdObject> &objects) {
        if (objects == QList<nkdObject>{first}) {
            service.setSelection({second});
        }
    });
    service.setSelection({first});
    QCOMPARE(service.getSelection(), QList<nkdObject>{second});
}

void TestSelections::selectionsAreNotUndoable()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkMetadataService::the().setSelection({node});
    nkScenegraphService::the().setSelection({node});
    QCOMPARE(kernel::Document::the().undoStack()->count(), 0);
}

void TestSelections::deadHandlesLeaveTheSelectionBeforeTheChangeIsAnnounced()
{
    nkMetadataService &service = nkMetadataService::the();
    const nkdMetadataSet first = service.createSet(QStringLiteral("1"), {});
    const nkdMetadataSet second = service.createSet(QStringLiteral("2"), {});
    service.setSelection({first, second});
    QObject context;
    QList<nkdObject> seen{nkdObject()};
    connect(&service, &nkMetadataService::metadataChanged, &context, [&] { seen = service.getSelection(); });
    QSignalSpy spy(&service, &nkMetadataService::selectionChanged);
    service.deleteSets({first});
    QCOMPARE(seen, QList<nkdObject>{second});
    QCOMPARE(spy.count(), 1);
}

void TestSelections::undoneDeletionsDoNotReturnToTheSelection()
{
    nkMetadataService &service = nkMetadataService::the();
    const nkdMetadataSet set = service.createSet(QStringLiteral("s"), {});
    service.setSelection({set});
    service.deleteSets({set});
    QVERIFY(service.getSelection().isEmpty());
    kernel::Document::the().undo();
    QVERIFY(service.getSelection().isEmpty());
}

void TestSelections::editorSelectionsKeepTheirKind()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    const nkdNode camera = SceneFixture::camera(QStringLiteral("c"));
    const nkdNode light = SceneFixture::light(QStringLiteral("l"));
    const nkdNode plate(SceneFixture::object(nkObjectType::Sceneplate, QStringLiteral("p")));
    const QList<nkdNode> all{node, camera, light, plate, camera};
    nkCameraService::the().setSelection(all);
    nkLightService::the().setSelection(all);
    nkSceneplateService::the().setSelection(all);
    nkScenegraphService::the().setSelection(all);
    QCOMPARE(nkCameraService::the().getSelectedCameras(), QList<nkdNode>{camera});
    QCOMPARE(nkLightService::the().getSelectedLights(), QList<nkdNode>{light});
    QCOMPARE(nkSceneplateService::the().getSelectedSceneplates(), QList<nkdNode>{plate});
    QCOMPARE(nkScenegraphService::the().getSelectedNodes(), (QList<nkdNode>{node, camera, light, plate}));
}

void TestSelections::editorSelectionsAreToldAtOnceAlways()
{
    QSignalSpy nodes(&nkScenegraphService::the(), &nkScenegraphService::selectionChanged);
    QSignalSpy cameras(&nkCameraService::the(), &nkCameraService::selectionChanged);
    QSignalSpy lights(&nkLightService::the(), &nkLightService::nodeSelectionChanged);
    QSignalSpy plates(&nkSceneplateService::the(), &nkSceneplateService::nodesSelected);
    nkScopedUndo undo(true);
    for (int i = 0; i < 2; ++i) {
        nkScenegraphService::the().setSelection({});
        nkCameraService::the().setSelection({});
        nkLightService::the().setSelection({});
        nkSceneplateService::the().setSelection({});
    }
    QCOMPARE(nodes.count(), 2);
    QCOMPARE(cameras.count(), 2);
    QCOMPARE(lights.count(), 2);
    QCOMPARE(plates.count(), 2);
}

void TestSelections::deadNodesLeaveTheEditorSelections()
{
    const nkdNode camera = SceneFixture::camera(QStringLiteral("c"));
    nkCameraService::the().setSelection({camera});
    nkScenegraphService::the().setSelection({camera});
    QSignalSpy spy(&nkCameraService::the(), &nkCameraService::selectionChanged);
    kernel::Document::the().deleteObjects({camera.getObjectId()});
    QVERIFY(nkCameraService::the().getSelectedCameras().isEmpty());
    QVERIFY(nkScenegraphService::the().getSelectedNodes().isEmpty());
    QCOMPARE(spy.count(), 1);
}

void TestSelections::materialSelectionsTellTheirFlags()
{
    const nkdMaterial material = SceneFixture::material(QStringLiteral("m"));
    QSignalSpy spy(&nkMaterialService::the(), &nkMaterialService::selectionChanged);
    nkMaterialService::the().setSelection({material, material}, true, false);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(1).toBool(), true);
    QCOMPARE(spy.at(0).at(2).toBool(), false);
    QCOMPARE(nkMaterialService::the().getSelectedMaterials().size(), 1);
}

void TestSelections::materialEntriesTellMaterialsFromGroups()
{
    const nkdMaterial material = SceneFixture::material(QStringLiteral("m"));
    const nkdMaterialGroupNode group(SceneFixture::object(nkObjectType::MaterialGroup, QStringLiteral("g")));
    nkMaterialService::the().setSelection({group, material}, true, false);
    const QList<nkMaterialEntryId> entries = nkMaterialService::the().getSelectedMaterials();
    QCOMPARE(entries.at(0).getEntryType(), nkMaterialEntryId::Group);
    QVERIFY(entries.at(0).getEntry().getGroupNode() == group);
    QVERIFY(entries.at(0).getEntry().getMaterial().isNull());
    QCOMPARE(entries.at(1).getEntryType(), nkMaterialEntryId::Material);
    QVERIFY(entries.at(1).getEntry().getMaterial() == material);
    QVERIFY(entries.at(1).getEntry().getGroupNode().isNull());
    QCOMPARE(nkMaterialEntryId().getEntryType(), nkMaterialEntryId::Invalid);
}

void TestSelections::servicesEnumerateTheScene()
{
    const nkdNode root = SceneFixture::node(QStringLiteral("root"));
    const nkdNode child = SceneFixture::node(QStringLiteral("child"), root.getObjectId());
    const nkdNode camera = SceneFixture::camera(QStringLiteral("c"));
    const nkdMaterial material = SceneFixture::material(QStringLiteral("m"));
    const nkdMaterialGroupNode group(SceneFixture::object(nkObjectType::MaterialGroup, QStringLiteral("g")));
    QCOMPARE(nkScenegraphService::the().getRootNodes(), (QList<nkdNode>{root, camera}));
    QCOMPARE(root.getChildren(), QList<nkdNode>{child});
    QVERIFY(child.getParent() == root);
    QCOMPARE(child.getPath(), QStringLiteral("root/child"));
    QCOMPARE(nkCameraService::the().getAllCameras(), QList<nkdNode>{camera});
    QVERIFY(nkLightService::the().getAllLights().isEmpty());
    QVERIFY(nkSceneplateService::the().getAllSceneplates().isEmpty());
    QCOMPARE(nkMaterialService::the().getAllMaterials(), QList<nkdMaterial>{material});
    QCOMPARE(nkMaterialService::the().getAllGroups(), QList<nkdMaterialGroupNode>{group});
    const nkdNode twin = SceneFixture::node(QStringLiteral("child"), root.getObjectId());
    QCOMPARE(twin.getUniquePath(), QStringLiteral("root/child[2]"));
}

NK_GUILESS_TEST_MAIN(TestSelections)
#include "test_selections.moc"
