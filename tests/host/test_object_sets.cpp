#include "../support/SceneFixture.h"
#include "AnnouncementLog.h"
#include "TestMain.h"

#include <QUndoStack>

/// The private set that every scene object has.
class TestObjectSets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { SceneFixture::reset(); }

    void everyKindOfObjectHasOneFromBirth_data();
    void everyKindOfObjectHasOneFromBirth();
    void askingForItChangesNothing();
    void itIsNotListed();
    void itIsNamedLikeItsObject();
    void itIsNeitherDeletedNorAssignedNorRenamed();
    void itStandsForItsOneObject();
    void itLivesAndDiesWithItsObject();
    void entriesInItMakeTheObjectCarryMetadata();
};

void TestObjectSets::everyKindOfObjectHasOneFromBirth_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("node") << int(nkObjectType::Node);
    QTest::newRow("camera") << int(nkObjectType::Camera);
    QTest::newRow("light") << int(nkObjectType::Light);
    QTest::newRow("sceneplate") << int(nkObjectType::Sceneplate);
    QTest::newRow("material group") << int(nkObjectType::MaterialGroup);
    QTest::newRow("material") << int(nkObjectType::Material);
}

void TestObjectSets::everyKindOfObjectHasOneFromBirth()
{
    QFETCH(int, kind);
    const nkdSceneObject object = SceneFixture::object(nkObjectType(kind), QStringLiteral("o"));
    QVERIFY(!object.isNull());
    QVERIFY(nkMetadataService::the().canHaveMetadata(object));
    const nkdMetadataSet set = nkdMetadata::fromObject(object).getObjectSet();
    QVERIFY(set.isAlive());
    QVERIFY(set.isObjectSet());
    QVERIFY(set.isEditable());
    QCOMPARE(set.getEntries().size(), 0);
}

void TestObjectSets::askingForItChangesNothing()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    const int steps = kernel::Document::the().undoStack()->count();
    AnnouncementLog log;
    const nkdMetadataSet first = nkdMetadata::fromObject(node).getObjectSet();
    QVERIFY(first == nkdMetadata::fromObject(node).getObjectSet());
    QVERIFY(!nkdMetadata::fromObject(node).hasObjectEntries());
    QVERIFY(log.takeFlags().isEmpty());
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
}

void TestObjectSets::itIsNotListed()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
    own.createEntry(nkMetadataTypes::String);
    QVERIFY(nkMetadataService::the().getAllSets().isEmpty());
    QVERIFY(nkdMetadata::fromObject(node).getSets().isEmpty());
}

void TestObjectSets::itIsNamedLikeItsObject()
{
    nkdNode node = SceneFixture::node(QStringLiteral("n"));
    const nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
    QCOMPARE(own.getName(), QStringLiteral("n"));
    node.setName(QStringLiteral("m"));
    QCOMPARE(own.getName(), QStringLiteral("m"));
    // A set may bear the name of an object.
    QCOMPARE(nkMetadataService::the().getUniqueSetName(QStringLiteral("m")), QStringLiteral("m"));
}

void TestObjectSets::itIsNeitherDeletedNorAssignedNorRenamed()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    const nkdNode other = SceneFixture::node(QStringLiteral("o"));
    nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
    const int steps = kernel::Document::the().undoStack()->count();
    nkMetadataService::the().deleteSets({own});
    nkMetadataService::the().assignSets({other}, {own});
    nkMetadataService::the().removeAssignments({own}, {node});
    own.setName(QStringLiteral("x"));
    QVERIFY(own.isAlive());
    QVERIFY(!own.isAssigned());
    QCOMPARE(own.getName(), QStringLiteral("n"));
    QVERIFY(nkdMetadata::fromObject(other).getSets().isEmpty());
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
}

void TestObjectSets::itStandsForItsOneObject()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    const nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
    QCOMPARE(own.getObjects(), (QList<nkdSceneObject>{node}));
}

void TestObjectSets::itLivesAndDiesWithItsObject()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
    const nkdMetadataEntry entry = own.createEntry(nkMetadataTypes::Integer);
    QVERIFY(kernel::Document::the().deleteObjects({node.getObjectId()}));
    QVERIFY(!own.isAlive());
    QVERIFY(!entry.isAlive());
    QVERIFY(!nkMetadataService::the().canHaveMetadata(node));
    kernel::Document::the().undo();
    QVERIFY(own.isAlive());
    QVERIFY(nkdMetadata::fromObject(node).getObjectSet() == own);
    QVERIFY(own.getEntries().at(0) == entry);
}

void TestObjectSets::entriesInItMakeTheObjectCarryMetadata()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
    own.createEntry(nkMetadataTypes::Tag);
    QVERIFY(nkdMetadata::fromObject(node).hasObjectEntries());
    own.getEntries().clear();
    QVERIFY(!nkdMetadata::fromObject(node).hasObjectEntries());
}

NK_TEST_MAIN(TestObjectSets)
#include "test_object_sets.moc"
