#include <TestMain.h>

#include "NewsRecorder.h"

#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMaterialGroupNode.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdNode.h>

#include <QUndoStack>

using kernel::Document;

/// Scene objects: where they stand, what goes with them, what brings them back.
class TestObjects : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void idsHaveTenDigitsAndAreNeverUsedTwice();
    void objectsStandUnderParentsThatFit_data();
    void objectsStandUnderParentsThatFit();
    void sceneOrderIsDepthFirst();
    void materialsFollowTheirGroups();
    void anObjectIsBornWithAnEmptyUnlistedSet();
    void deletingTakesEverythingBelow();
    void undoingADeletionRestoresIdsPlacesAndMetadata();
    void redoingACreationRestoresTheId();
    void renamingFollowsTheLock();
    void theObjectSetIsNamedLikeItsObject();
    void aVeryDeepSceneIsReadAndDeleted();
    void uniquePathsNumberNamesakes();
    void groupsHaveNoMaterialsAmongTheirChildNodes();
    void objectsWithMetadataAreThoseWithEntriesOrSets();
    void clearingForgetsEverything();
    void clearingIsRefusedWhileAScopeIsOpen();

private:
    Document &m_document = Document::the();
};

namespace {

nkdMetadataSet objectSet(quint64 id)
{
    return nkdMetadata(id).getObjectSet();
}

QStringList namesOf(const QList<quint64> &ids)
{
    QStringList names;
    for (const quint64 id : ids) {
        names << nkdSceneObject(nkdObject(id)).getName();
    }
    return names;
}

} // namespace

void TestObjects::init()
{
    QVERIFY(m_document.clear());
    m_document.undoStack()->clear();
}

void TestObjects::idsHaveTenDigitsAndAreNeverUsedTwice()
{
    const quint64 first = m_document.createObject(nkObjectType::Node, QStringLiteral("a"));
    QCOMPARE(QString::number(first).size(), 10);
    const quint64 firstSet = objectSet(first).getObjectId();
    m_document.clear();
    const quint64 second = m_document.createObject(nkObjectType::Node, QStringLiteral("b"));
    QVERIFY(second > first && second > firstSet);
    m_document.undo();
    QVERIFY(m_document.createObject(nkObjectType::Node, QStringLiteral("c")) > second);
}

void TestObjects::objectsStandUnderParentsThatFit_data()
{
    QTest::addColumn<int>("child");
    QTest::addColumn<int>("parent");
    QTest::addColumn<bool>("fits");
    const auto row = [](nkObjectType child, nkObjectType parent, bool fits) {
        QTest::addRow("%d under %d", int(child), int(parent)) << int(child) << int(parent) << fits;
    };
    using O = nkObjectType;
    row(O::Node, O::Camera, true);
    row(O::Camera, O::Node, true);
    row(O::Light, O::Sceneplate, true);
    row(O::Material, O::MaterialGroup, true);
    row(O::MaterialGroup, O::MaterialGroup, true);
    row(O::MaterialGroup, O::Node, false);
    row(O::Material, O::Node, false);
    row(O::Material, O::Material, false);
    row(O::Node, O::MaterialGroup, false);
    row(O::MetadataSet, O::Node, false);
    row(O::Null, O::Node, false);
}

void TestObjects::objectsStandUnderParentsThatFit()
{
    QFETCH(int, child);
    QFETCH(int, parent);
    QFETCH(bool, fits);
    const quint64 parentId = m_document.createObject(nkObjectType(parent), QStringLiteral("parent"));
    const quint64 id = m_document.createObject(nkObjectType(child), QStringLiteral("child"), parentId);
    QCOMPARE(id != 0, fits);
    QCOMPARE(m_document.childrenOf(parentId), fits ? QList<quint64>{id} : QList<quint64>());
    QCOMPARE(m_document.createObject(nkObjectType::Node, QStringLiteral("lost"), 12345), Q_UINT64_C(0));
}

void TestObjects::sceneOrderIsDepthFirst()
{
    const quint64 a = m_document.createObject(nkObjectType::Node, QStringLiteral("a"));
    const quint64 b = m_document.createObject(nkObjectType::Node, QStringLiteral("b"));
    m_document.createObject(nkObjectType::Camera, QStringLiteral("b1"), b);
    const quint64 a1 = m_document.createObject(nkObjectType::Node, QStringLiteral("a1"), a);
    m_document.createObject(nkObjectType::Camera, QStringLiteral("a2"), a);
    m_document.createObject(nkObjectType::Camera, QStringLiteral("a1x"), a1);
    QCOMPARE(namesOf(m_document.topLevelNodes()), (QStringList{"a", "b"}));
    QCOMPARE(namesOf(m_document.objects(nkObjectType::Camera)), (QStringList{"a1x", "a2", "b1"}));
    QCOMPARE(namesOf(m_document.objects(nkObjectType::Node)), (QStringList{"a", "a1", "b"}));
    QVERIFY(m_document.objects(nkObjectType::MetadataSet).isEmpty());
    QCOMPARE(m_document.objectCount(), 6);
}

void TestObjects::materialsFollowTheirGroups()
{
    const quint64 group = m_document.createObject(nkObjectType::MaterialGroup, QStringLiteral("metals"));
    m_document.createObject(nkObjectType::Material, QStringLiteral("glass"));
    m_document.createObject(nkObjectType::Material, QStringLiteral("steel"), group);
    QCOMPARE(namesOf(m_document.topLevelMaterials()), (QStringList{"metals", "glass"}));
    QCOMPARE(namesOf(m_document.objects(nkObjectType::Material)), (QStringList{"steel", "glass"}));
    QVERIFY(m_document.topLevelNodes().isEmpty());
}

void TestObjects::anObjectIsBornWithAnEmptyUnlistedSet()
{
    const quint64 id = m_document.createObject(nkObjectType::Light, QStringLiteral("lamp"));
    const nkdMetadataSet set = objectSet(id);
    QVERIFY(set.isAlive() && set.isObjectSet() && set.isEditable() && !set.isAssigned());
    QCOMPARE(set.getEntries().size(), 0);
    QVERIFY(nkMetadataService::the().getAllSets().isEmpty());
    QCOMPARE(set.getObjects().size(), 1);
    QCOMPARE(set.getObjects().first().getObjectId(), id);
    QCOMPARE(m_document.undoStack()->count(), 1);
}

void TestObjects::deletingTakesEverythingBelow()
{
    const quint64 top = m_document.createObject(nkObjectType::Node, QStringLiteral("top"));
    const quint64 middle = m_document.createObject(nkObjectType::Node, QStringLiteral("middle"), top);
    const quint64 leaf = m_document.createObject(nkObjectType::Light, QStringLiteral("leaf"), middle);
    const nkdMetadataSet own = objectSet(leaf);
    nkdMetadataSet mutableOwn = own;
    const nkdMetadataEntry entry = mutableOwn.createEntry(nkMetadataTypes::String);
    const nkdMetadataSet shared = nkMetadataService::the().createSet(QStringLiteral("S"),
                                                                     {nkdSceneObject(nkdObject(leaf))});
    QVERIFY(entry.isAlive() && shared.isAssigned());
    // Below first, then above: named twice is deleted once.
    QVERIFY(m_document.deleteObjects({leaf, top, 4711}));
    for (const quint64 id : {top, middle, leaf}) {
        QVERIFY(!nkdObject(id, nkObjectType::Node).isAlive());
    }
    QVERIFY(!own.isAlive() && !entry.isAlive());
    QVERIFY(shared.isAlive() && !shared.isAssigned());
    QCOMPARE(m_document.objectCount(), 0);
    QVERIFY(!m_document.deleteObjects({leaf}));
    QVERIFY(!m_document.deleteObjects({shared.getObjectId()}));
    QCOMPARE(m_document.undoStack()->undoText(), QStringLiteral("Delete Objects"));
}

void TestObjects::undoingADeletionRestoresIdsPlacesAndMetadata()
{
    QList<quint64> ids;
    for (const char *name : {"a", "b", "c", "d"}) {
        ids << m_document.createObject(nkObjectType::Node, QLatin1String(name));
    }
    const quint64 child = m_document.createObject(nkObjectType::Node, QStringLiteral("b1"), ids.at(1));
    nkdMetadataSet own = objectSet(child);
    own.setValue(QStringLiteral("weight"), 12);
    QList<nkdSceneObject> objects;
    for (const quint64 id : {ids.at(0), child, ids.at(2)}) {
        objects << nkdSceneObject(nkdObject(id));
    }
    const nkdMetadataSet first = nkMetadataService::the().createSet(QStringLiteral("first"), objects);
    const nkdMetadataSet second = nkMetadataService::the().createSet(QStringLiteral("second"), objects);
    m_document.deleteObjects({ids.at(1), ids.at(0)});
    QCOMPARE(namesOf(m_document.topLevelNodes()), (QStringList{"c", "d"}));
    QVERIFY(m_document.undo());
    QCOMPARE(m_document.topLevelNodes(), ids);
    QCOMPARE(m_document.childrenOf(ids.at(1)), QList<quint64>{child});
    QCOMPARE(own.getValue(QStringLiteral("weight")), QVariant(12));
    QCOMPARE(nkToObjects(first.getObjects()), nkToObjects(objects));
    QCOMPARE(nkdMetadata(child).getSets(), (QList<nkdMetadataSet>{first, second}));
    QVERIFY(m_document.redo());
    QCOMPARE(nkToObjects(second.getObjects()), nkToObjects(objects.mid(2)));
}

void TestObjects::redoingACreationRestoresTheId()
{
    const quint64 id = m_document.createObject(nkObjectType::Node, QStringLiteral("n"));
    QVERIFY(m_document.undo());
    QCOMPARE(m_document.typeOf(id), nkObjectType::Null);
    QVERIFY(!objectSet(id).isAlive());
    QVERIFY(m_document.redo());
    QCOMPARE(m_document.topLevelNodes(), QList<quint64>{id});
}

void TestObjects::renamingFollowsTheLock()
{
    nkdSceneObject object(nkdObject(m_document.createObject(nkObjectType::Node, QStringLiteral("old"))));
    object.setLocked(true);
    object.setName(QStringLiteral("new"));
    QCOMPARE(object.getName(), QStringLiteral("old"));
    QVERIFY(!object.isEditable());
    // The lock protects name and place, not the metadata.
    nkdMetadataSet own = objectSet(object.getObjectId());
    QVERIFY(!own.createEntry(nkMetadataTypes::Integer).isNull());
    object.setLocked(false);
    object.setName(QStringLiteral("new"));
    QCOMPARE(object.getName(), QStringLiteral("new"));
    m_document.undo();
    QCOMPARE(object.getName(), QStringLiteral("old"));
}

void TestObjects::theObjectSetIsNamedLikeItsObject()
{
    nkdSceneObject object(nkdObject(m_document.createObject(nkObjectType::Node, QStringLiteral("old"))));
    nkdMetadataSet own = objectSet(object.getObjectId());
    object.setName(QStringLiteral("new"));
    QCOMPARE(own.getName(), QStringLiteral("new"));
    own.setName(QStringLiteral("other"));
    QCOMPARE(own.getName(), QStringLiteral("new"));
}

void TestObjects::aVeryDeepSceneIsReadAndDeleted()
{
    constexpr int depth = 20000;
    quint64 parent = 0;
    QList<quint64> line;
    for (int level = 0; level < depth; ++level) {
        parent = m_document.createObject(nkObjectType::Node, QStringLiteral("n"), parent);
        line << parent;
    }
    QCOMPARE(m_document.objects(nkObjectType::Node), line);
    QVERIFY(m_document.deleteObjects({line.first()}));
    QCOMPARE(m_document.objectCount(), 0);
    QVERIFY(m_document.undo());
    QCOMPARE(m_document.objects(nkObjectType::Node), line);
}

void TestObjects::uniquePathsNumberNamesakes()
{
    const quint64 top = m_document.createObject(nkObjectType::Node, QStringLiteral("car"));
    m_document.createObject(nkObjectType::Node, QStringLiteral("wheel"), top);
    m_document.createObject(nkObjectType::Node, QStringLiteral("door"), top);
    const nkdNode second(
        nkdObject(m_document.createObject(nkObjectType::Node, QStringLiteral("wheel"), top)));
    const nkdNode inside(nkdObject(
        m_document.createObject(nkObjectType::Light, QStringLiteral("lamp"), second.getObjectId())));
    QCOMPARE(inside.getPath(), QStringLiteral("car/wheel/lamp"));
    QCOMPARE(inside.getUniquePath(), QStringLiteral("car/wheel[2]/lamp"));
    QCOMPARE(inside.getParent(), nkdObject(second));
    QVERIFY(nkdNode(nkdObject(top)).getParent().isNull());
}

void TestObjects::groupsHaveNoMaterialsAmongTheirChildNodes()
{
    const quint64 group = m_document.createObject(nkObjectType::MaterialGroup, QStringLiteral("g"));
    const quint64 inner = m_document.createObject(nkObjectType::MaterialGroup, QStringLiteral("i"), group);
    const quint64 material = m_document.createObject(nkObjectType::Material, QStringLiteral("m"), group);
    const QList<nkdNode> children = nkdNode(nkdObject(group)).getChildren();
    QCOMPARE(children.size(), 1);
    QCOMPARE(children.first().getObjectId(), inner);
    QCOMPARE(m_document.childrenOf(group), (QList<quint64>{inner, material}));
}

void TestObjects::objectsWithMetadataAreThoseWithEntriesOrSets()
{
    QList<quint64> ids;
    for (int count = 0; count < 3; ++count) {
        ids << m_document.createObject(nkObjectType::Node, QString::number(count));
    }
    objectSet(ids.at(2)).createEntry(nkMetadataTypes::Tag);
    nkMetadataService::the().createSet(QString(), {nkdSceneObject(nkdObject(ids.at(0)))});
    QCOMPARE(m_document.objectsWithMetadata(nkObjectType::Node), (QList<quint64>{ids.at(0), ids.at(2)}));
}

void TestObjects::clearingForgetsEverything()
{
    const quint64 id = m_document.createObject(nkObjectType::Node, QStringLiteral("n"));
    nkMetadataService &service = nkMetadataService::the();
    const nkdMetadataSet set = service.createSet(QString(), {});
    const nkdMetadataEntry entry = nkdMetadataSet(set).createEntry(nkMetadataTypes::String);
    service.copySets({set});
    service.copyEntries({entry});
    service.setSelection({set, nkdObject(id)});
    NewsRecorder news;
    QVERIFY(m_document.clear());
    QCOMPARE(news.take(), (QStringList{"selection 0", "metadata 7", "scene"}));
    QVERIFY(!set.isAlive() && !entry.isAlive() && !nkdObject(id, nkObjectType::Node).isAlive());
    QVERIFY(service.getSelection().isEmpty());
    QVERIFY(service.hasNoCopiedSets() && service.hasNoCopiedEntries());
    QCOMPARE(m_document.undoStack()->count(), 0);
    QVERIFY(!m_document.isModified());
    QVERIFY(m_document.clear());
    QVERIFY(news.take().isEmpty());
}

void TestObjects::clearingIsRefusedWhileAScopeIsOpen()
{
    const quint64 id = m_document.createObject(nkObjectType::Node, QStringLiteral("n"));
    const nkScopedUndo scope(true);
    QVERIFY(!m_document.clear());
    QCOMPARE(m_document.typeOf(id), nkObjectType::Node);
}

NK_GUILESS_TEST_MAIN(TestObjects)
#include "test_objects.moc"
