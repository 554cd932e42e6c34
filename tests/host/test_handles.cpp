#include "../support/SceneFixture.h"
#include "TestMain.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdBaseLightNode.h>
#include <nkKernelServices/nkdCameraBaseNode.h>

#include <QJsonObject>
#include <QSet>
#include <QUndoStack>

/// Handles: ids, kinds, null and dead ones.
class TestHandles : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { SceneFixture::reset(); }

    void idsStartAtOneMilliardAndAreAllEquallyWide();
    void idsAreNeverUsedTwice();
    void undoingADeletionBringsBackTheSameId();
    void nullHandlesAnswerEmptyAndIgnoreWrites();
    void aNullSetIsNeitherLockedNorEditable();
    void deadHandlesReadAsEmptyAndIgnoreWrites();
    void kindIsJudgedByTheObjectNotByTheHandle();
    void conversionToAnotherKindGivesNull();
    void comparisonIsByIdAlone();
    void copyingAHandleCopiesNoObject();
    void handlesTravelInVariants();
    void identityIsWrittenAndRead();
    void readRefusesAnotherKindAndUnknownIds();
    void propertiesAreKnownByKind();
    void operationsAreInvokedByName();
};

void TestHandles::idsStartAtOneMilliardAndAreAllEquallyWide()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("a"));
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {node});
    const nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::String);
    for (const nkdObject &object : {nkdObject(node), nkdObject(set), nkdObject(entry)}) {
        QVERIFY(object.getObjectId() >= Q_UINT64_C(1000000000));
        QCOMPARE(QString::number(object.getObjectId()).size(), 10);
    }
}

void TestHandles::idsAreNeverUsedTwice()
{
    QSet<quint64> seen;
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 10; ++i) {
            const quint64 id = SceneFixture::node(QStringLiteral("n")).getObjectId();
            QVERIFY(!seen.contains(id));
            seen.insert(id);
        }
        SceneFixture::reset();
    }
}

void TestHandles::undoingADeletionBringsBackTheSameId()
{
    const nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("kept"), {});
    nkMetadataService::the().deleteSets({set});
    QVERIFY(!set.isAlive());
    QVERIFY(kernel::Document::the().undo());
    QVERIFY(set.isAlive());
    QCOMPARE(set.getName(), QStringLiteral("kept"));
    QCOMPARE(nkMetadataService::the().getAllSets(), QList<nkdMetadataSet>{set});
}

void TestHandles::nullHandlesAnswerEmptyAndIgnoreWrites()
{
    nkdMetadataEntry entry;
    QVERIFY(entry.isNull());
    QVERIFY(!entry.isAlive());
    entry.setKey(QStringLiteral("k"));
    entry.setValue(1);
    entry.setValueType(nkMetadataTypes::Integer);
    entry.setTag(QStringLiteral("t"));
    QCOMPARE(entry.getKey(), QString());
    QCOMPARE(entry.getValue(), QVariant());
    QVERIFY(entry.getSet().isNull());
    QVERIFY(!entry.isTag());
    QVERIFY(entry.getIcon().isNull());
    QVERIFY(nkdNode().getParent().isNull());
    QVERIFY(nkdNode().getChildren().isEmpty());
    QVERIFY(nkdMetadata::fromObject(nkdSceneObject()).isNull());
    QCOMPARE(nkdMetadataEntryList().size(), 0);
    QVERIFY(!kernel::Document::the().undo());
}

void TestHandles::aNullSetIsNeitherLockedNorEditable()
{
    const nkdMetadataSet set;
    QVERIFY(!set.isLocked());
    QVERIFY(!set.isEditable());
    QVERIFY(!set.isObjectSet());
    QVERIFY(!set.isAssigned());
    QVERIFY(nkdMetadataSet(set).createEntry(nkMetadataTypes::String).isNull());
}

void TestHandles::deadHandlesReadAsEmptyAndIgnoreWrites()
{
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    nkdMetadataEntry entry = set.createEntry(nkMetadataTypes::Integer);
    nkMetadataService::the().deleteSets({set});
    const int steps = kernel::Document::the().undoStack()->count();

    QVERIFY(!set.isNull());
    QCOMPARE(set.getName(), QString());
    QVERIFY(!set.isLocked());
    QVERIFY(!set.isEditable());
    QCOMPARE(set.getEntries().size(), 0);
    QCOMPARE(entry.getKey(), QString());
    QVERIFY(!entry.getValue().isValid());
    QVERIFY(entry.getSet().isNull());
    set.setName(QStringLiteral("x"));
    set.setLocked(true);
    entry.setValue(5);
    QVERIFY(set.createEntry(nkMetadataTypes::String).isNull());
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
}

void TestHandles::kindIsJudgedByTheObjectNotByTheHandle()
{
    const nkdObject camera = SceneFixture::camera(QStringLiteral("c"));
    QVERIFY(camera.isTypeOf(nkdCameraBaseNode::staticMetaObject));
    QVERIFY(camera.isTypeOf(nkdNode::staticMetaObject));
    QVERIFY(camera.isTypeOf(nkdSceneObject::staticMetaObject));
    QVERIFY(camera.isTypeOf(nkdObject::staticMetaObject));
    QVERIFY(!camera.isTypeOf(nkdBaseLightNode::staticMetaObject));
    QVERIFY(!camera.isTypeOf(nkdMaterial::staticMetaObject));
    QVERIFY(!camera.isTypeOf(nkdMetadataSet::staticMetaObject));
    QVERIFY(!nkdObject().isTypeOf(nkdObject::staticMetaObject));
    QVERIFY(nkdNode(camera).isTypeOf(nkdCameraBaseNode::staticMetaObject));
}

void TestHandles::conversionToAnotherKindGivesNull()
{
    const nkdObject material = SceneFixture::material(QStringLiteral("m"));
    QVERIFY(nkdNode(material).isNull());
    QVERIFY(nkdMetadataSet(material).isNull());
    QCOMPARE(nkdMaterial(material).getObjectId(), material.getObjectId());
    QCOMPARE(nkdSceneObject(material).getName(), QStringLiteral("m"));
}

void TestHandles::comparisonIsByIdAlone()
{
    const nkdNode first = SceneFixture::node(QStringLiteral("n"));
    const nkdNode second = SceneFixture::node(QStringLiteral("n"));
    QVERIFY(nkdObject(first) == nkdObject(first.getObjectId()));
    QVERIFY(nkdObject(first) != nkdObject(second));
    QVERIFY(nkdObject(first) < nkdObject(second));
    QCOMPARE(qHash(nkdObject(first)), qHash(nkdObject(first.getObjectId())));
}

void TestHandles::copyingAHandleCopiesNoObject()
{
    nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("one"), {});
    nkdMetadataSet copy = set;
    copy.setName(QStringLiteral("two"));
    QCOMPARE(set.getName(), QStringLiteral("two"));
    QCOMPARE(nkMetadataService::the().getAllSets().size(), 1);
}

void TestHandles::handlesTravelInVariants()
{
    const nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    const QVariant carried = QVariant::fromValue(set);
    QCOMPARE(QString::fromLatin1(carried.typeName()), QStringLiteral("nkdMetadataSet"));
    QVERIFY(carried.value<nkdMetadataSet>() == set);
}

void TestHandles::identityIsWrittenAndRead()
{
    const nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    QJsonObject json;
    set.write(json);
    QCOMPARE(json.value(QStringLiteral("id")).toString(), QString::number(set.getObjectId()));
    QCOMPARE(json.value(QStringLiteral("type")).toString(), QStringLiteral("nkdMetadataSet"));
    nkdMetadataSet read;
    QVERIFY(read.read(json));
    QVERIFY(read == set);
}

void TestHandles::readRefusesAnotherKindAndUnknownIds()
{
    QJsonObject json;
    SceneFixture::node(QStringLiteral("n")).write(json);
    nkdMetadataSet set;
    QVERIFY(!set.read(json));
    QVERIFY(set.isNull());
    json.insert(QStringLiteral("id"), QStringLiteral("9999999999"));
    nkdNode node;
    QVERIFY(!node.read(json));
    QVERIFY(!node.read(QJsonObject()));
    QVERIFY(node.isNull());
}

void TestHandles::propertiesAreKnownByKind()
{
    const nkdMetadataSet set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    const nkdMetadataEntry entry = nkdMetadataSet(set).createEntry(nkMetadataTypes::Integer);
    QVERIFY(nkdObject(set).supportsProperty("name"));
    QVERIFY(nkdObject(set).supportsProperty("color"));
    QVERIFY(nkdObject(set).supportsProperty("locked"));
    QVERIFY(!nkdObject(set).supportsProperty("key"));
    QVERIFY(nkdObject(entry).supportsProperty("key"));
    QVERIFY(nkdObject(entry).supportsProperty("value"));
    QVERIFY(nkdObject(entry).supportsProperty("valueType"));
    QVERIFY(!nkdObject(entry).supportsProperty("name"));
    QVERIFY(nkdObject(SceneFixture::node(QStringLiteral("n"))).supportsProperty("name"));
    QVERIFY(!nkdObject().supportsProperty("name"));
    nkMetadataService::the().deleteSets({set});
    QVERIFY(!set.supportsProperty("name"));
}

void TestHandles::operationsAreInvokedByName()
{
    const nkdObject plain = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    QCOMPARE(plain.invokeMethod("getName"), QVariant(QStringLiteral("s")));
    plain.invokeMethod("setName", {QStringLiteral("t")});
    QCOMPARE(nkdMetadataSet(plain).getName(), QStringLiteral("t"));
    QVERIFY(!plain.invokeMethod("noSuchOperation").isValid());
    QVERIFY(!plain.invokeMethod("setName", {1, 2, 3}).isValid());
    QCOMPARE(nkdMetadataSet(plain).getName(), QStringLiteral("t"));
    QVERIFY(!nkdObject().invokeMethod("isNull").isValid());
}

NK_GUILESS_TEST_MAIN(TestHandles)
#include "test_handles.moc"
