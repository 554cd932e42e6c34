#include "../support/SceneFixture.h"
#include "TestMain.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QUndoStack>

/// Sets: names, editability, assignment.
class TestSets : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { SceneFixture::reset(); }

    void namesAreMadeUnique();
    void anEmptyNameIsRefused();
    void aLockedSetRefusesEveryWriteToItsContent();
    void aLockedSetCanBeUnlockedEmptiedAssignedAndDeleted();
    void anAssetIsEditableOnlyWhileItIsModified();
    void oneCallAnswersTheStatesOfASetTogether();
    void theSceneTellsWhetherItHasSets();
    void assignmentsKeepTheirOrderBothWays();
    void assigningTwiceIsNoChange();
    void undoRestoresTheOrderOfAssignments();
    void allSetsAreListedInOrderOfCreation();
    void metadataAnswersForItsObject();
    void queriesAreQuoted();
};

void TestSets::namesAreMadeUnique()
{
    nkMetadataService &service = nkMetadataService::the();
    QCOMPARE(service.getUniqueSetName(QStringLiteral("MetadataSet")), QStringLiteral("MetadataSet"));
    const nkdMetadataSet first = service.createSet(QStringLiteral("MetadataSet"), {});
    nkdMetadataSet second = service.createSet(QStringLiteral("MetadataSet"), {});
    QCOMPARE(first.getName(), QStringLiteral("MetadataSet"));
    QCOMPARE(second.getName(), QStringLiteral("MetadataSet2"));
    QCOMPARE(service.getUniqueSetName(QStringLiteral("MetadataSet")), QStringLiteral("MetadataSet3"));
    second.setName(QStringLiteral("MetadataSet"));
    QCOMPARE(second.getName(), QStringLiteral("MetadataSet2"));
    QCOMPARE(service.createSet(QString(), {}).getName(), QStringLiteral("MetadataSet3"));
}

void TestSets::anEmptyNameIsRefused()
{
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    set.setName(QString());
    QCOMPARE(set.getName(), QStringLiteral("s"));
    set.setColor(QColor());
    QVERIFY(set.getColor().isValid());
}

void TestSets::aLockedSetRefusesEveryWriteToItsContent()
{
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::Integer);
    const QString key = entry.getKey();
    const QColor color = set.getColor();
    nkMetadataService::the().copyEntries({entry});
    set.setLocked(true);
    QVERIFY(!set.isEditable());
    const int steps = kernel::Document::the().undoStack()->count();

    set.setName(QStringLiteral("t"));
    set.setColor(Qt::red);
    set.setValue(key, 5);
    set.setValue(QStringLiteral("new"), 5);
    entry.setKey(QStringLiteral("k"));
    entry.setValue(5);
    entry.setValueType(nkMetadataTypes::String);
    entry.setTag(QStringLiteral("k"));
    set.getEntries().append({entry});
    nkMetadataService::the().pasteEntries({set});
    QVERIFY(set.createEntry(nkMetadataTypes::String).isNull());

    QCOMPARE(set.getName(), QStringLiteral("s"));
    QCOMPARE(set.getColor(), color);
    QCOMPARE(set.getEntries().size(), 1);
    QCOMPARE(entry.getKey(), key);
    QCOMPARE(entry.getValue(), QVariant(0));
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
}

void TestSets::aLockedSetCanBeUnlockedEmptiedAssignedAndDeleted()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    const nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::Integer);
    set.createEntry(nkMetadataTypes::Integer);
    set.setLocked(true);
    QVERIFY(set.getEntries().remove(entry));
    set.getEntries().clear();
    QCOMPARE(set.getEntries().size(), 0);
    nkMetadataService::the().assignSets({node}, {set});
    QVERIFY(set.isAssigned());
    set.setLocked(false);
    QVERIFY(set.isEditable());
    set.setLocked(true);
    nkMetadataService::the().deleteSets({set});
    QVERIFY(!set.isAlive());
}

void TestSets::anAssetIsEditableOnlyWhileItIsModified()
{
    using kernel::AssetState;
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    kernel::Document::the().setAssetState(set.getObjectId(), AssetState::AtRest, QStringLiteral("a1"));
    QVERIFY(set.isAsset());
    QVERIFY(!set.isEditedAsset());
    QVERIFY(!set.isEditable());
    QVERIFY(set.createEntry(nkMetadataTypes::String).isNull());
    kernel::Document::the().setAssetState(set.getObjectId(), AssetState::Edited, QStringLiteral("a1"));
    QVERIFY(set.isEditedAsset());
    QVERIFY(set.isEditable());
    set.setLocked(true);
    QVERIFY(!set.isEditable());
}

void TestSets::oneCallAnswersTheStatesOfASetTogether()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    QCOMPARE(set.getStates(), 0u);
    set.createEntry(nkMetadataTypes::Tag);
    QCOMPARE(set.getStates(), quint32(nkdMetadataSet::WithEntries));
    set.setLocked(true);
    QCOMPARE(set.getStates(), quint32(nkdMetadataSet::WithEntries | nkdMetadataSet::Locked));
    set.setLocked(false);
    set.getEntries().clear();
    kernel::Document &document = kernel::Document::the();
    document.setAssetState(set.getObjectId(), kernel::AssetState::AtRest, QStringLiteral("a"));
    QCOMPARE(set.getStates(), quint32(nkdMetadataSet::Asset));
    document.setAssetState(set.getObjectId(), kernel::AssetState::Edited, QStringLiteral("a"));
    QCOMPARE(set.getStates(), quint32(nkdMetadataSet::Asset | nkdMetadataSet::EditedAsset));
    QCOMPARE(nkdMetadata::fromObject(node).getObjectSet().getStates(), quint32(nkdMetadataSet::ObjectSet));
    nkMetadataService::the().deleteSets({set});
    QCOMPARE(set.getStates(), 0u);
    QCOMPARE(nkdMetadataSet().getStates(), 0u);
}

void TestSets::theSceneTellsWhetherItHasSets()
{
    nkMetadataService &service = nkMetadataService::the();
    SceneFixture::node(QStringLiteral("n")); // its own set is none of the scene's
    QVERIFY(!service.hasSets());
    const nkdMetadataSet set = service.createSet(QStringLiteral("s"), {});
    QVERIFY(service.hasSets());
    service.deleteSets({set});
    QVERIFY(!service.hasSets());
}

void TestSets::assignmentsKeepTheirOrderBothWays()
{
    const nkdNode first = SceneFixture::node(QStringLiteral("1"));
    const nkdNode second = SceneFixture::node(QStringLiteral("2"));
    nkMetadataService &service = nkMetadataService::the();
    const nkdMetadataSet a = service.createSet(QStringLiteral("a"), {second, first});
    const nkdMetadataSet b = service.createSet(QStringLiteral("b"), {});
    service.assignSets({first, second}, {b});
    QCOMPARE(a.getObjects(), (QList<nkdSceneObject>{second, first}));
    QCOMPARE(b.getObjects(), (QList<nkdSceneObject>{first, second}));
    QCOMPARE(nkdMetadata::fromObject(first).getSets(), (QList<nkdMetadataSet>{a, b}));
    service.removeAssignments({a}, {first});
    QCOMPARE(a.getObjects(), (QList<nkdSceneObject>{second}));
    QCOMPARE(nkdMetadata::fromObject(first).getSets(), (QList<nkdMetadataSet>{b}));
}

void TestSets::assigningTwiceIsNoChange()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkMetadataService &service = nkMetadataService::the();
    const nkdMetadataSet set = service.createSet(QStringLiteral("s"), {node, node});
    QCOMPARE(set.getObjects().size(), 1);
    const int steps = kernel::Document::the().undoStack()->count();
    service.assignSets({node}, {set});
    QCOMPARE(set.getObjects().size(), 1);
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
}

void TestSets::undoRestoresTheOrderOfAssignments()
{
    QList<nkdSceneObject> nodes;
    for (int i = 0; i < 5; ++i) {
        nodes.append(SceneFixture::node(QString::number(i)));
    }
    const nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), nodes);
    nkMetadataService::the().removeAssignments({set}, {nodes.at(1), nodes.at(3)});
    QCOMPARE(set.getObjects().size(), 3);
    kernel::Document::the().undo();
    QCOMPARE(set.getObjects(), nodes);
}

void TestSets::allSetsAreListedInOrderOfCreation()
{
    nkMetadataService &service = nkMetadataService::the();
    const nkdMetadataSet b = service.createSet(QStringLiteral("b"), {});
    const nkdMetadataSet a = service.createSet(QStringLiteral("a"), {});
    const nkdMetadataSet c = service.createSet(QStringLiteral("c"), {});
    service.deleteSets({a});
    QCOMPARE(service.getAllSets(), (QList<nkdMetadataSet>{b, c}));
    kernel::Document::the().undo();
    QCOMPARE(service.getAllSets(), (QList<nkdMetadataSet>{b, a, c}));
}

void TestSets::metadataAnswersForItsObject()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    const nkdMetadata metadata = nkdMetadata::fromObject(node);
    QCOMPARE(metadata.getObjectId(), node.getObjectId());
    nkdMetadataSet own = metadata.getObjectSet();
    own.setValue(QStringLiteral("k"), 1);
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {node});
    set.setValue(QStringLiteral("k"), 2);
    set.setValue(QStringLiteral("l"), QStringLiteral("text"));
    nkdMetadataEntry tag = set.createEntry(nkMetadataTypes::Tag);
    tag.setKey(QStringLiteral("flag"));
    QCOMPARE(metadata.getValue(QStringLiteral("k")), QVariant(1));
    QCOMPARE(metadata.getValue(QStringLiteral("l")), QVariant(QStringLiteral("text")));
    QCOMPARE(metadata.entryCount(), 4);
    QCOMPARE(metadata.getTags(), QStringList{QStringLiteral("flag")});
    QVERIFY(metadata.hasKey(QStringLiteral("flag")));
    QVERIFY(metadata.hasValue(2));
    QVERIFY(!metadata.hasValue(QStringLiteral("2")));
    QVERIFY(metadata.hasSet(QStringLiteral("s")));
    QVERIFY(!metadata.hasSet(QStringLiteral("n")));
    QVERIFY(metadata.hasType(nkMetadataTypes::Tag));
    QVERIFY(!metadata.hasType(nkMetadataTypes::Float));
}

void TestSets::queriesAreQuoted()
{
    QCOMPARE(nkdMetadata::getKeyQuery(QStringLiteral("a \"b\" \\c")),
             QStringLiteral("key:\"a \\\"b\\\" \\\\c\""));
    QCOMPARE(nkdMetadata::getSetQuery(QStringLiteral("s")), QStringLiteral("set:\"s\""));
    QCOMPARE(nkdMetadata::getValueTypeQuery(nkMetadataTypes::DateTime),
             QStringLiteral("type:\"Date and Time\""));
    QCOMPARE(nkdMetadata::getValueQuery(42), QStringLiteral("value:\"42\""));
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    const nkdMetadata metadata = nkdMetadata::fromObject(node);
    nkdMetadataSet own = metadata.getObjectSet();
    own.setValue(QStringLiteral("k"), 5);
    QCOMPARE(metadata.getKeyValueQuery(QStringLiteral("k")), QStringLiteral("\"k\" = \"5\""));
    QCOMPARE(metadata.getKeyValueQuery(QStringLiteral("none")), QStringLiteral("key:\"none\""));
}

NK_TEST_MAIN(TestSets)
#include "test_sets.moc"
