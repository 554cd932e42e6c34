#include "../support/SceneFixture.h"

#include "history/SceneStatus.h"

#include <TestMain.h>
#include <nkKernelServices/nkLightService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QSignalSpy>

using kernel::Document;

/// The counts in the status line.
class TestSceneStatus : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        SceneFixture::reset();
        nkMetadataModuleSelection::the().setLastSelectionModule(0);
    }
    void itCountsObjectsSetsAndEntries();
    void itCountsTheSelectionOfTheLastEditor();
    void entriesAreCountedWithWhatTheyBelongTo();
    void largeNumbersAreGrouped();
    void itCountsOnceForManyChanges();
};

void TestSceneStatus::itCountsObjectsSetsAndEntries()
{
    SceneStatus status;
    QCOMPARE(status.text(), QStringLiteral("0 objects · 0 sets · 0 entries"));
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("S"), {node});
    QTRY_COMPARE(status.text(), QStringLiteral("1 object · 1 set · 0 entries"));
    set.createEntry(nkMetadataTypes::String);
    QTRY_COMPARE(status.text(), QStringLiteral("1 object · 1 set · 1 entry"));
    QVERIFY(!status.accessibleName().isEmpty());
}

void TestSceneStatus::itCountsTheSelectionOfTheLastEditor()
{
    SceneStatus status;
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    const nkdNode light = SceneFixture::light(QStringLiteral("l"));
    const nkdNode other = SceneFixture::light(QStringLiteral("m"));
    nkScenegraphService::the().setSelection({node});
    QTRY_COMPARE(status.text(), QStringLiteral("1 of 3 objects selected · 0 sets · 0 entries"));
    nkLightService::the().setSelection({light, other});
    nkMetadataModuleSelection::the().setLastSelectionModule(2);
    QTRY_COMPARE(status.text(), QStringLiteral("2 of 3 objects selected · 0 sets · 0 entries"));
    Document::the().deleteObjects({other.getObjectId()});
    QTRY_COMPARE(status.text(), QStringLiteral("1 of 2 objects selected · 0 sets · 0 entries"));
}

void TestSceneStatus::entriesAreCountedWithWhatTheyBelongTo()
{
    Document &document = Document::the();
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkdMetadata(node.getObjectId()).getObjectSet().createEntry(nkMetadataTypes::Tag);
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("S"), {node});
    set.createEntry(nkMetadataTypes::String);
    set.createEntry(nkMetadataTypes::String);
    QCOMPARE(document.entryCount(), 3);
    document.deleteObjects({node.getObjectId()});
    QCOMPARE(document.entryCount(), 2);
    nkMetadataService::the().deleteSets({set});
    QCOMPARE(document.entryCount(), 0);
    QCOMPARE(document.setCount(), 0);
    while (document.undo()) {}
    QCOMPARE(document.entryCount(), 0);
    while (document.redo()) {}
    document.undo();
    document.undo();
    QCOMPARE(document.entryCount(), 3);
}

void TestSceneStatus::largeNumbersAreGrouped()
{
    kernel::DocumentLoader loader;
    for (int i = 0; i < 1157; ++i) {
        loader.addObject(nkObjectType::Node, QStringLiteral("n"));
    }
    loader.commit();
    const SceneStatus status;
    QVERIFY(status.text().startsWith(QLocale().toString(1157) + QStringLiteral(" objects")));
}

void TestSceneStatus::itCountsOnceForManyChanges()
{
    SceneStatus status;
    int painted = 0;
    connect(&Document::the(), &Document::sceneChanged, &status, [&] { painted += status.text()[0] == '0'; });
    for (int i = 0; i < 100; ++i) {
        Document::the().createObject(nkObjectType::Node, QStringLiteral("n"));
    }
    QCOMPARE(painted, 100); // still as it was before
    QTRY_COMPARE(status.text(), QStringLiteral("100 objects · 0 sets · 0 entries"));
}

NK_TEST_MAIN(TestSceneStatus)
#include "test_scene_status.moc"
