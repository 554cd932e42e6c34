#include <TestMain.h>

#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdBaseLightNode.h>
#include <nkKernelServices/nkdCameraBaseNode.h>
#include <nkKernelServices/nkdMaterial.h>
#include <nkKernelServices/nkdMaterialGroupNode.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdSceneplateNode.h>

#include <QJsonObject>

using kernel::Document;
using T = nkMetadataTypes;

/// What a handle knows of its object: kind, properties, operations, identity.
class TestHandles : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void kindsDeriveFromEachOther();
    void aHandleFromAnIdKnowsItsType();
    void bareHandlesOfTheWrongKindAreDead();
    void propertiesAreThoseThatAreAnnounced();
    void operationsAreCalledByName();
    void operationsThatDoNotFitAnswerNothing();
    void identitiesTravelAsJson();
    void identitiesOfOtherKindsAreRefused();
    void iconsComeForLivingObjectsOnly();
    void metadataLooksAtTheObjectSetFirst();
    void metadataOfNothingIsEmpty();
    void queriesQuoteTheirTexts();
    void dumpsShowEntries();

private:
    Document &m_document = Document::the();
    nkMetadataService &m_service = nkMetadataService::the();
    nkdObject m_camera;
    nkdMetadataSet m_set;
    nkdMetadataEntry m_entry;
};

void TestHandles::init()
{
    QVERIFY(m_document.clear());
    m_camera = nkdObject(m_document.createObject(nkObjectType::Camera, QStringLiteral("c")));
    m_set = m_service.createSet(QStringLiteral("S"), {nkdSceneObject(m_camera)});
    m_entry = m_set.createEntry(T::Integer);
}

void TestHandles::kindsDeriveFromEachOther()
{
    QVERIFY(m_camera.isTypeOf(nkdCameraBaseNode::staticMetaObject));
    QVERIFY(m_camera.isTypeOf(nkdNode::staticMetaObject));
    QVERIFY(m_camera.isTypeOf(nkdSceneObject::staticMetaObject));
    QVERIFY(m_camera.isTypeOf(nkdObject::staticMetaObject));
    QVERIFY(!m_camera.isTypeOf(nkdBaseLightNode::staticMetaObject));
    QVERIFY(!m_camera.isTypeOf(nkdMetadataSet::staticMetaObject));
    QVERIFY(nkdMaterial(m_camera).isNull() && nkdSceneplateNode(m_camera).isNull());
    const nkdObject group(m_document.createObject(nkObjectType::MaterialGroup, QStringLiteral("g")));
    QVERIFY(!nkdNode(group).isNull() && !nkdMaterialGroupNode(group).isNull() && nkdMaterial(group).isNull());
    QVERIFY(!nkdObject().isTypeOf(nkdObject::staticMetaObject));
    QVERIFY(nkdSceneObject(nkdMetadata::fromObject(nkdSceneObject(m_camera))).isNull());
}

void TestHandles::aHandleFromAnIdKnowsItsType()
{
    QCOMPARE(nkdObject(m_camera.getObjectId()).getType(), nkObjectType::Camera);
    QCOMPARE(nkdObject(m_set.getObjectId()).getType(), nkObjectType::MetadataSet);
    QCOMPARE(nkdObject(m_entry.getObjectId()).getType(), nkObjectType::MetadataEntry);
    QCOMPARE(nkdObject(17).getType(), nkObjectType::Null);
    QCOMPARE(nkdObject(Q_UINT64_C(9999999999)).getType(), nkObjectType::Null);
    QVERIFY(!nkdObject(17).isNull() && !nkdObject(17).isAlive());
}

void TestHandles::bareHandlesOfTheWrongKindAreDead()
{
    const nkdMetadataSet set(m_entry.getObjectId());
    QVERIFY(!set.isAlive() && set.getName().isEmpty() && set.getEntries().isEmpty());
    nkdMetadataEntry entry(m_set.getObjectId());
    entry.setValue(1);
    entry.setTag(QStringLiteral("t"));
    QVERIFY(!entry.isAlive() && entry.getKey().isEmpty() && entry.getIcon().isNull());
}

void TestHandles::propertiesAreThoseThatAreAnnounced()
{
    QVERIFY(m_camera.supportsProperty("name") && m_camera.supportsProperty("locked"));
    QVERIFY(!m_camera.supportsProperty("color") && !m_camera.supportsProperty("Name"));
    QVERIFY(m_set.supportsProperty("color") && !m_set.supportsProperty("key"));
    QVERIFY(m_entry.supportsProperty("valueType") && !m_entry.supportsProperty("name"));
    QVERIFY(!nkdObject().supportsProperty("name"));
    m_service.deleteSets({m_set});
    QVERIFY(!m_set.supportsProperty("name") && !m_entry.supportsProperty("key"));
}

void TestHandles::operationsAreCalledByName()
{
    const nkdObject plain(m_set.getObjectId());
    QCOMPARE(plain.invokeMethod("getName"), QVariant("S"));
    QVERIFY(!plain.invokeMethod("setName", {QStringLiteral("T")}).isValid());
    QCOMPARE(m_set.getName(), QStringLiteral("T"));
    QCOMPARE(plain.invokeMethod("getValue", {QStringLiteral("Key")}), QVariant(0));
    QCOMPARE(plain.invokeMethod("getColor").value<QColor>(), m_set.getColor());
    QCOMPARE(m_camera.invokeMethod("getObjectId"), QVariant(m_camera.getObjectId()));
    QCOMPARE(m_camera.invokeMethod("getParent").userType(), qMetaTypeId<nkdNode>());
    const nkdObject entry(m_entry.getObjectId());
    entry.invokeMethod("setValue", {12});
    QCOMPARE(entry.invokeMethod("getValue"), QVariant(12));
    entry.invokeMethod("setValueType", {int(T::String)});
    QCOMPARE(m_entry.getValue(), QVariant("12"));
    QCOMPARE(entry.invokeMethod("getValueType").toInt(), int(T::String));
    QCOMPARE(entry.invokeMethod("isTag"), QVariant(false));
}

void TestHandles::operationsThatDoNotFitAnswerNothing()
{
    QVERIFY(!m_set.invokeMethod("getNames").isValid());
    QVERIFY(!m_set.invokeMethod("getName", {1}).isValid());
    QVERIFY(!m_set.invokeMethod("setColor", {QVariantList{1}}).isValid());
    QVERIFY(!m_set.invokeMethod("deleteLater").isValid());
    QVERIFY(!nkdObject().invokeMethod("getName").isValid());
    QVariantList eleven;
    for (int count = 0; count < 11; ++count) {
        eleven << count;
    }
    QVERIFY(!m_set.invokeMethod("getName", eleven).isValid());
    m_service.deleteSets({m_set});
    QVERIFY(!m_set.invokeMethod("getName").isValid());
    QVERIFY(!m_set.invokeMethod("getObjectId").isValid());
}

void TestHandles::identitiesTravelAsJson()
{
    QJsonObject json;
    m_camera.write(json);
    QCOMPARE(json.value(QStringLiteral("id")).toString(), QString::number(m_camera.getObjectId()));
    QCOMPARE(json.value(QStringLiteral("type")).toString(), QStringLiteral("nkdCameraBaseNode"));
    nkdNode node;
    QVERIFY(node.read(json));
    QCOMPARE(node.getObjectId(), m_camera.getObjectId());
    QCOMPARE(node.getType(), nkObjectType::Camera);
    QJsonObject metadataJson;
    nkdMetadata(m_camera.getObjectId()).write(metadataJson);
    nkdMetadata metadata;
    QVERIFY(metadata.read(metadataJson));
    QVERIFY(metadata.isAlive());
    QCOMPARE(metadata.getObject().getObjectId(), m_camera.getObjectId());
}

void TestHandles::identitiesOfOtherKindsAreRefused()
{
    QJsonObject json;
    m_set.write(json);
    nkdNode node(m_camera);
    QVERIFY(!node.read(json) && node.isNull());
    json.insert(QStringLiteral("type"), QStringLiteral("nkdNode"));
    nkdObject object;
    QVERIFY(!object.read(json));
    json.insert(QStringLiteral("type"), QStringLiteral("nkdMetadataSet"));
    QVERIFY(object.read(json));
    m_service.deleteSets({m_set});
    QVERIFY(!object.read(json) && object.isNull());
    QVERIFY(!object.read(QJsonObject()));
}

void TestHandles::iconsComeForLivingObjectsOnly()
{
    QVERIFY(!nkdSceneObject(m_camera).getIcon().isNull());
    QVERIFY(!m_set.getIcon().isNull() && !m_entry.getIcon().isNull());
    QVERIFY(nkdSceneObject().getIcon().isNull() && nkdMetadataSet().getIcon().isNull());
    m_service.deleteSets({m_set});
    QVERIFY(m_set.getIcon().isNull() && m_entry.getIcon().isNull());
}

void TestHandles::metadataLooksAtTheObjectSetFirst()
{
    const nkdMetadata metadata = nkdMetadata::fromObject(nkdSceneObject(m_camera));
    QVERIFY(!metadata.hasObjectEntries());
    m_set.setValue(QStringLiteral("k"), 1);
    nkdMetadataSet own = metadata.getObjectSet();
    QCOMPARE(metadata.getValue(QStringLiteral("k")), QVariant(1));
    own.setValue(QStringLiteral("k"), QStringLiteral("own"));
    own.createEntry(T::Tag);
    m_set.createEntry(T::Tag);
    m_set.createEntry(T::Tag);
    QCOMPARE(metadata.getValue(QStringLiteral("k")), QVariant("own"));
    QCOMPARE(metadata.getTags(), (QStringList{"Tag", "Tag2"}));
    QCOMPARE(metadata.entryCount(), 6);
    QVERIFY(metadata.hasObjectEntries() && metadata.hasKey(QStringLiteral("Tag2")));
    QVERIFY(metadata.hasValue(1) && !metadata.hasValue(1.0) && !metadata.hasValue(QVariant()));
    QVERIFY(metadata.hasSet(QStringLiteral("S")) && !metadata.hasSet(QStringLiteral("c")));
    QVERIFY(metadata.hasType(T::Tag) && metadata.hasType(T::Integer) && !metadata.hasType(T::List));
    QCOMPARE(metadata.getSets(), QList<nkdMetadataSet>{m_set});
}

void TestHandles::metadataOfNothingIsEmpty()
{
    QVERIFY(nkdMetadata::fromObject(nkdSceneObject()).isNull());
    QVERIFY(nkdMetadata(m_set.getObjectId()).isNull());
    const nkdMetadata metadata(m_camera.getObjectId());
    m_document.deleteObjects({m_camera.getObjectId()});
    QVERIFY(!metadata.isNull() && !metadata.isAlive());
    QVERIFY(metadata.getObjectSet().isNull() && metadata.getSets().isEmpty() && metadata.getTags().isEmpty());
    QVERIFY(!metadata.getValue(QStringLiteral("Key")).isValid() && !metadata.hasKey(QStringLiteral("Key")));
    QCOMPARE(metadata.entryCount(), 0);
    QVERIFY(!metadata.hasSet(QStringLiteral("S")));
}

void TestHandles::queriesQuoteTheirTexts()
{
    QCOMPARE(nkdMetadata::getKeyQuery(QStringLiteral("a \"b\" \\c")),
             QStringLiteral("key:\"a \\\"b\\\" \\\\c\""));
    QCOMPARE(nkdMetadata::getValueQuery(0.5), QStringLiteral("value:\"0.5\""));
    QCOMPARE(nkdMetadata::getSetQuery(QStringLiteral("S")), QStringLiteral("set:\"S\""));
    QCOMPARE(nkdMetadata::getValueTypeQuery(T::DateTime), QStringLiteral("type:\"Date and Time\""));
    QCOMPARE(nkdMetadata::getValueTypeQuery(T::Tag), QStringLiteral("type:\"Tag\""));
    const nkdMetadata metadata(m_camera.getObjectId());
    QCOMPARE(metadata.getKeyValueQuery(QStringLiteral("Key")), QStringLiteral("\"Key\" = \"0\""));
    QCOMPARE(metadata.getKeyValueQuery(QStringLiteral("x")), QStringLiteral("key:\"x\""));
}

void TestHandles::dumpsShowEntries()
{
    m_entry.setKey(QStringLiteral("%1"));
    m_set.createEntry(T::Tag);
    const QString dump = m_set.dump();
    QVERIFY(dump.startsWith(QLatin1String("S [")));
    QVERIFY(dump.contains(QLatin1String("  %1 (Integer) = 0\n")));
    QVERIFY(dump.contains(QLatin1String("  Tag (Tag)\n")));
}

NK_TEST_MAIN(TestHandles)
#include "test_handles.moc"
