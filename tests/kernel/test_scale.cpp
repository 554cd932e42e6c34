#include <TestMain.h>

#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QUndoStack>

using kernel::Document;
using kernel::DocumentLoader;
using T = nkMetadataTypes;

/// Sizes at which anything quadratic does not come to an end within a test's time.
class TestScale : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void manySetsOfOneName();
    void manyKeysOfOneName();
    void removingEntriesOneByOne();
    void assigningManySetsToManyObjects();
    void manyChangesInOneScope();
    void deletingManyObjects();

private:
    Document &m_document = Document::the();
    nkMetadataService &m_service = nkMetadataService::the();
};

namespace {

constexpr int Many = 40000;

} // namespace

void TestScale::init()
{
    QVERIFY(m_document.clear());
}

void TestScale::manySetsOfOneName()
{
    {
        const nkScopedUndo scope(true);
        for (int count = 0; count < Many; ++count) {
            m_service.createSet(QString(), {});
        }
    }
    QCOMPARE(m_service.getAllSets().last().getName(), QStringLiteral("MetadataSet%1").arg(Many));
    QVERIFY(m_document.undo());
    QVERIFY(m_service.getAllSets().isEmpty());
    QVERIFY(m_document.redo());
    QCOMPARE(m_service.getUniqueSetName(QString()), QStringLiteral("MetadataSet%1").arg(Many + 1));
}

void TestScale::manyKeysOfOneName()
{
    nkdMetadataSet set = m_service.createSet(QString(), {});
    {
        const nkScopedUndo scope(true);
        for (int count = 0; count < Many; ++count) {
            set.createEntry(T::Integer);
        }
    }
    QCOMPARE(set.getEntries().at(Many - 1).getKey(), QStringLiteral("Key%1").arg(Many));
    QCOMPARE(set.getEntries().find(QStringLiteral("Key4711")), set.getEntries().at(4710));
}

void TestScale::removingEntriesOneByOne()
{
    DocumentLoader loader;
    nkdMetadataSet set(loader.addSet(QStringLiteral("S")));
    for (int count = 0; count < Many; ++count) {
        loader.addEntry(set.getObjectId(), QStringLiteral("k%1").arg(count), T::Integer, count);
    }
    QVERIFY(loader.commit());
    const QList<nkdMetadataEntry> entries = set.getEntries();
    {
        const nkScopedUndo scope(true);
        for (int index = 0; index < Many - 1; ++index) {
            QVERIFY(set.getEntries().remove(entries.at(index)));
        }
    }
    QCOMPARE(set.getEntries().size(), 1);
    QVERIFY(m_document.undo());
    QCOMPARE(set.getEntries().data(), entries);
}

void TestScale::assigningManySetsToManyObjects()
{
    constexpr int objectCount = 2000;
    DocumentLoader loader;
    QList<nkdObject> objects;
    QList<nkdMetadataSet> sets;
    for (int count = 0; count < objectCount; ++count) {
        objects << nkdObject(loader.addObject(nkObjectType::Node, QStringLiteral("n")), nkObjectType::Node);
    }
    for (int count = 0; count < 100; ++count) {
        sets << nkdMetadataSet(loader.addSet(QStringLiteral("S")));
    }
    QVERIFY(loader.commit());
    QSignalSpy spy(&m_service, &nkMetadataService::metadataChanged);
    m_service.assignSets(objects, sets);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(m_document.undoStack()->count(), 1);
    QCOMPARE(sets.last().getObjects().size(), objectCount);
    QVERIFY(m_document.undo());
    QVERIFY(!sets.first().isAssigned());
    QVERIFY(m_document.redo());
    QCOMPARE(nkdMetadata(objects.last().getObjectId()).getSets(), sets);
    m_service.deleteSets(sets);
    QVERIFY(m_document.undo());
    QCOMPARE(nkToObjects(sets.at(50).getObjects()), objects);
}

void TestScale::manyChangesInOneScope()
{
    DocumentLoader loader;
    nkdMetadataSet set(loader.addSet(QStringLiteral("S")));
    for (int count = 0; count < Many; ++count) {
        loader.addEntry(set.getObjectId(), QStringLiteral("k%1").arg(count), T::Integer, count);
    }
    QVERIFY(loader.commit());
    QSignalSpy spy(&m_service, &nkMetadataService::metadataChanged);
    QList<nkdMetadataEntry> entries = set.getEntries();
    {
        const nkScopedUndo scope(true);
        for (nkdMetadataEntry &entry : entries) {
            entry.setValue(-1);
        }
    }
    QCOMPARE(spy.count(), 2);
    QVERIFY(m_document.undo());
    QCOMPARE(entries.last().getValue(), QVariant(Many - 1));
    QCOMPARE(spy.count(), 3);
}

void TestScale::deletingManyObjects()
{
    DocumentLoader loader;
    QList<quint64> ids;
    const quint64 root = loader.addObject(nkObjectType::Node, QStringLiteral("root"));
    for (int count = 0; count < Many; ++count) {
        ids << loader.addObject(nkObjectType::Node, QStringLiteral("n"), root);
    }
    QVERIFY(loader.commit());
    QVERIFY(m_document.deleteObjects(ids));
    QCOMPARE(m_document.objectCount(), 1);
    QVERIFY(m_document.undo());
    QCOMPARE(m_document.childrenOf(root), ids);
    QVERIFY(m_document.redo());
    QVERIFY(m_document.childrenOf(root).isEmpty());
}

NK_GUILESS_TEST_MAIN(TestScale)
#include "test_scale.moc"
