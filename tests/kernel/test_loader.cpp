#include <TestMain.h>

#include "NewsRecorder.h"

#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServices/nkdSceneObject.h>

#include <QSignalSpy>
#include <QUndoStack>

using kernel::Document;
using kernel::DocumentLoader;
using T = nkMetadataTypes;

/// Bulk loading: whole or not at all, one announcement, no history.
class TestLoader : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void replacingIsInvisibleUntilItIsCommitted();
    void replacingForgetsTheOldSceneAndItsHistory();
    void anAbandonedLoadLeavesTheScene_data();
    void anAbandonedLoadLeavesTheScene();
    void addingKeepsWhatWasThere();
    void addingRefersToTheScene();
    void loadingIsRefusedWhileAScopeIsOpen();
    void committingIsRefusedWhileAScopeIsOpen();
    void whatDoesNotFitIsRefused();
    void namesAndKeysAreMadeUnique();
    void valuesAreHeldInTheirType();
    void anEmptyLoadOfAnEmptySceneSaysNothing();
    void idsDoNotClashWithChangesMadeMeanwhile();
    void clipboardsSurviveAnotherScene();
    void loadedThingsAreOrdinary();
    void locksColoursAndAssetsAreLoadedIntoANewScene();
    void assignmentsAreListedInTheOrderOfAssigning();
    void aFixedTreeKeepsItsObjects();
    void aTreeIsFixedForItsSceneOnly();

private:
    Document &m_document = Document::the();
    nkMetadataService &m_service = nkMetadataService::the();
};

Q_DECLARE_METATYPE(DocumentLoader::Mode)

void TestLoader::init()
{
    QVERIFY(m_document.clear());
}

void TestLoader::replacingIsInvisibleUntilItIsCommitted()
{
    const quint64 old = m_document.createObject(nkObjectType::Node, QStringLiteral("old"));
    NewsRecorder news;
    DocumentLoader loader;
    const quint64 node = loader.addObject(nkObjectType::Node, QStringLiteral("new"));
    const quint64 set = loader.addSet(QStringLiteral("S"));
    loader.assign(set, node);
    const quint64 entry = loader.addEntry(set, QStringLiteral("k"), T::Integer, 5);
    QCOMPARE(m_document.topLevelNodes(), QList<quint64>{old});
    QVERIFY(!nkdMetadataSet(set).isAlive());
    QVERIFY(!m_document.isScopeOpen());
    QVERIFY(news.take().isEmpty());
    QVERIFY(loader.commit());
    QCOMPARE(news.take(), (QStringList{"metadata 7", "scene"}));
    QCOMPARE(m_document.topLevelNodes(), QList<quint64>{node});
    QCOMPARE(nkdMetadataEntry(entry).getValue(), QVariant(5));
    QVERIFY(!loader.commit());
    QCOMPARE(loader.addSet(QStringLiteral("late")), Q_UINT64_C(0));
}

void TestLoader::replacingForgetsTheOldSceneAndItsHistory()
{
    const quint64 old = m_document.createObject(nkObjectType::Node, QStringLiteral("old"));
    const nkdMetadataSet oldSet = m_service.createSet(QString(), {});
    m_service.setSelection({oldSet, nkdObject(old)});
    DocumentLoader loader;
    loader.addObject(nkObjectType::Node, QStringLiteral("new"));
    NewsRecorder news;
    QVERIFY(loader.commit());
    QCOMPARE(news.take(), (QStringList{"selection 0", "metadata 7", "scene"}));
    QVERIFY(!oldSet.isAlive() && !nkdObject(old, nkObjectType::Node).isAlive());
    QCOMPARE(m_document.undoStack()->count(), 0);
    QVERIFY(!m_document.isModified());
}

void TestLoader::anAbandonedLoadLeavesTheScene_data()
{
    QTest::addColumn<DocumentLoader::Mode>("mode");
    QTest::newRow("replace") << DocumentLoader::Mode::Replace;
    QTest::newRow("add") << DocumentLoader::Mode::Add;
}

void TestLoader::anAbandonedLoadLeavesTheScene()
{
    QFETCH(DocumentLoader::Mode, mode);
    const nkdMetadataSet set = m_service.createSet(QStringLiteral("S"), {});
    m_document.markSaved();
    const int steps = m_document.undoStack()->count();
    NewsRecorder news;
    quint64 node = 0;
    {
        DocumentLoader loader(mode);
        node = loader.addObject(nkObjectType::Node, QStringLiteral("n"));
        loader.addEntry(loader.objectSet(node), QStringLiteral("k"), T::String, QStringLiteral("v"));
        loader.assign(set.getObjectId(), node);
        loader.addEntry(set.getObjectId(), QStringLiteral("k"), T::String, QStringLiteral("v"));
    }
    QVERIFY(news.take().isEmpty());
    QCOMPARE(m_document.objectCount(), 0);
    QCOMPARE(m_document.typeOf(node), nkObjectType::Null);
    QVERIFY(!set.isAssigned() && set.getEntries().isEmpty());
    QVERIFY(!m_document.isScopeOpen() && !m_document.isModified());
    QCOMPARE(m_document.undoStack()->count(), steps);
    QVERIFY(m_document.undo());
    QVERIFY(!set.isAlive());
}

void TestLoader::addingKeepsWhatWasThere()
{
    const quint64 old = m_document.createObject(nkObjectType::Node, QStringLiteral("old"));
    m_document.markSaved();
    NewsRecorder news;
    DocumentLoader loader(DocumentLoader::Mode::Add);
    const quint64 added = loader.addObject(nkObjectType::Node, QStringLiteral("new"));
    QVERIFY(news.take().isEmpty());
    QVERIFY(loader.commit());
    QCOMPARE(news.take(), (QStringList{"metadata 7", "scene"}));
    QCOMPARE(m_document.topLevelNodes(), (QList<quint64>{old, added}));
    QCOMPARE(m_document.undoStack()->count(), 0);
    QVERIFY(m_document.isModified());
}

void TestLoader::addingRefersToTheScene()
{
    const quint64 parent = m_document.createObject(nkObjectType::Node, QStringLiteral("p"));
    const nkdMetadataSet set = m_service.createSet(QStringLiteral("S"), {});
    DocumentLoader loader(DocumentLoader::Mode::Add);
    const quint64 child = loader.addObject(nkObjectType::Light, QStringLiteral("c"), parent);
    QVERIFY(loader.assign(set.getObjectId(), child));
    QVERIFY(loader.commit());
    QCOMPARE(m_document.childrenOf(parent), QList<quint64>{child});
    QVERIFY(set.isAssigned());
}

void TestLoader::loadingIsRefusedWhileAScopeIsOpen()
{
    const nkScopedUndo scope(true);
    DocumentLoader loader(DocumentLoader::Mode::Add);
    QCOMPARE(loader.addObject(nkObjectType::Node, QStringLiteral("n")), Q_UINT64_C(0));
    QCOMPARE(loader.addSet(QStringLiteral("n")), Q_UINT64_C(0));
    QVERIFY(!loader.commit());
    QCOMPARE(m_document.objectCount(), 0);
}

void TestLoader::committingIsRefusedWhileAScopeIsOpen()
{
    DocumentLoader loader;
    loader.addObject(nkObjectType::Node, QStringLiteral("n"));
    {
        const nkScopedUndo scope(true);
        QVERIFY(!loader.commit());
        QCOMPARE(m_document.objectCount(), 0);
    }
    QVERIFY(loader.commit());
    QCOMPARE(m_document.objectCount(), 1);
}

void TestLoader::whatDoesNotFitIsRefused()
{
    DocumentLoader loader;
    const quint64 none = 0;
    const quint64 node = loader.addObject(nkObjectType::Node, QStringLiteral("n"));
    const quint64 set = loader.addSet(QStringLiteral("S"));
    QCOMPARE(loader.addObject(nkObjectType::Material, QString(), node), none);
    QCOMPARE(loader.addObject(nkObjectType::Node, QString(), 4711), none);
    QCOMPARE(loader.addObject(nkObjectType::Node, QString(), set), none);
    QCOMPARE(loader.addEntry(node, QStringLiteral("k"), T::Integer, 1), none);
    QCOMPARE(loader.addEntry(set, QStringLiteral("k"), T::Integer, QStringLiteral("word")), none);
    QCOMPARE(loader.addEntry(set, QStringLiteral("k"), T::Tag, 1), none);
    QCOMPARE(loader.addEntry(set, QStringLiteral("k"), T::ValueType(-1), 1), none);
    QCOMPARE(loader.addTag(4711, QStringLiteral("t")), none);
    QCOMPARE(loader.objectSet(set), none);
    QVERIFY(!loader.assign(loader.objectSet(node), node));
    QVERIFY(!loader.assign(set, set));
    QVERIFY(loader.assign(set, node));
    QVERIFY(!loader.assign(set, node));
    QVERIFY(loader.commit());
    QVERIFY(nkdMetadataSet(set).getEntries().isEmpty());
}

void TestLoader::namesAndKeysAreMadeUnique()
{
    DocumentLoader loader;
    const quint64 set = loader.addSet(QStringLiteral("S"));
    loader.addSet(QStringLiteral("S"), QColor(Qt::red), true);
    loader.addSet(QString());
    loader.addTag(set, QStringLiteral("k"));
    loader.addEntry(set, QStringLiteral("k"), T::Integer, 1);
    loader.addTag(set, QString());
    loader.addNumberText(set, QString(), QStringLiteral("12"));
    QVERIFY(loader.commit());
    QStringList keys;
    for (const nkdMetadataEntry &entry : nkdMetadataSet(set).getEntries()) {
        keys << entry.getKey();
    }
    QCOMPARE(keys, (QStringList{"k", "k2", "Tag", "Key"}));
    const QList<nkdMetadataSet> sets = m_service.getAllSets();
    QCOMPARE(sets.at(1).getName(), QStringLiteral("S2"));
    QCOMPARE(sets.at(1).getColor(), QColor(Qt::red));
    QVERIFY(sets.at(1).isLocked());
    QCOMPARE(sets.at(2).getName(), QStringLiteral("MetadataSet"));
    QVERIFY(sets.at(2).getColor().isValid());
}

void TestLoader::valuesAreHeldInTheirType()
{
    DocumentLoader loader;
    const quint64 set = loader.addSet(QStringLiteral("S"));
    const nkdMetadataEntry number(loader.addEntry(set, QStringLiteral("i"), T::Integer, QStringLiteral("7")));
    const nkdMetadataEntry date(
        loader.addEntry(set, QStringLiteral("d"), T::Date, QStringLiteral("2023-03-02")));
    const nkdMetadataEntry fallback(loader.addEntry(set, QStringLiteral("f"), T::Float, QVariant()));
    QVERIFY(loader.commit());
    QCOMPARE(number.getValue().userType(), int(QMetaType::Int));
    QCOMPARE(date.getValue(), QVariant(QDate(2023, 3, 2)));
    QCOMPARE(fallback.getValue(), QVariant(0.0));
}

void TestLoader::anEmptyLoadOfAnEmptySceneSaysNothing()
{
    NewsRecorder news;
    QVERIFY(DocumentLoader().commit());
    QVERIFY(DocumentLoader(DocumentLoader::Mode::Add).commit());
    QVERIFY(news.take().isEmpty());
}

void TestLoader::idsDoNotClashWithChangesMadeMeanwhile()
{
    DocumentLoader loader;
    const quint64 first = loader.addObject(nkObjectType::Node, QStringLiteral("a"));
    const quint64 meanwhile = m_document.createObject(nkObjectType::Node, QStringLiteral("m"));
    const quint64 second = loader.addObject(nkObjectType::Node, QStringLiteral("b"));
    QVERIFY(meanwhile > first && second > meanwhile);
    QVERIFY(loader.commit());
    QCOMPARE(m_document.topLevelNodes(), (QList<quint64>{first, second}));
    QCOMPARE(m_document.typeOf(meanwhile), nkObjectType::Null);
}

void TestLoader::clipboardsSurviveAnotherScene()
{
    nkdMetadataSet set = m_service.createSet(QStringLiteral("S"), {});
    m_service.copyEntries({set.createEntry(T::Tag)});
    m_service.copySets({set});
    DocumentLoader loader;
    loader.addObject(nkObjectType::Node, QStringLiteral("n"));
    QVERIFY(loader.commit());
    QCOMPARE(m_service.getClipboardEntries().first().getKey(), QStringLiteral("Tag"));
    m_service.pasteSets({});
    QCOMPARE(m_service.getAllSets().size(), 1);
}

void TestLoader::loadedThingsAreOrdinary()
{
    DocumentLoader loader;
    const quint64 node = loader.addObject(nkObjectType::Node, QStringLiteral("n"));
    nkdMetadataEntry entry(loader.addEntry(loader.objectSet(node), QStringLiteral("k"), T::Integer, 1));
    QVERIFY(loader.commit());
    entry.setValue(2);
    m_document.deleteObjects({node});
    QVERIFY(m_document.undo());
    QCOMPARE(entry.getValue(), QVariant(2));
    QVERIFY(m_document.undo());
    QCOMPARE(entry.getValue(), QVariant(1));
    QVERIFY(!m_document.isModified());
}

void TestLoader::locksColoursAndAssetsAreLoadedIntoANewScene()
{
    DocumentLoader loader;
    const quint64 node = loader.addObject(nkObjectType::Node, QStringLiteral("n"));
    const quint64 own = loader.objectSet(node);
    const quint64 set = loader.addSet(QStringLiteral("S"));
    QVERIFY(loader.lockObject(node) && loader.lockSet(own) && loader.setColor(own, Qt::red));
    QVERIFY(loader.setAsset(set, kernel::AssetState::AtRest, QStringLiteral("id")));
    QVERIFY(!loader.setAsset(own, kernel::AssetState::AtRest, QString()));
    QVERIFY(!loader.setColor(own, QColor()) && !loader.lockSet(node) && !loader.lockObject(set));
    QVERIFY(loader.addTag(own, QStringLiteral("into a locked set")) != 0);
    QVERIFY(loader.commit());
    QVERIFY(nkdSceneObject(nkdObject(node)).getLocked());
    QVERIFY(nkdMetadataSet(own).isLocked());
    QCOMPARE(nkdMetadataSet(own).getColor(), QColor(Qt::red));
    QCOMPARE(m_document.assetState(set), kernel::AssetState::AtRest);
    QCOMPARE(m_document.assetId(set), QStringLiteral("id"));
    DocumentLoader adding(DocumentLoader::Mode::Add);
    QVERIFY(!adding.lockObject(node) && !adding.lockSet(set) && !adding.setColor(set, Qt::red));
}

void TestLoader::assignmentsAreListedInTheOrderOfAssigning()
{
    DocumentLoader loader;
    const quint64 a = loader.addObject(nkObjectType::Node, QStringLiteral("a"));
    const quint64 b = loader.addObject(nkObjectType::Node, QStringLiteral("b"));
    const quint64 s = loader.addSet(QStringLiteral("s"));
    const quint64 t = loader.addSet(QStringLiteral("t"));
    QVERIFY(loader.assign(t, b) && loader.assign(s, b) && loader.assign(t, a) && loader.commit());
    const auto pairs = [this] {
        QList<quint64> ids;
        for (const Document::Assignment &assignment : m_document.assignments())
            ids << assignment.setId << assignment.objectId;
        return ids;
    };
    QCOMPARE(pairs(), (QList<quint64>{t, b, s, b, t, a}));
    m_service.removeAssignments({nkdMetadataSet(t)}, {nkdSceneObject(nkdObject(b))});
    QCOMPARE(pairs(), (QList<quint64>{s, b, t, a}));
    QVERIFY(m_document.undo());
    QCOMPARE(pairs(), (QList<quint64>{t, b, s, b, t, a}));
    m_service.deleteSets({nkdMetadataSet(t)});
    QCOMPARE(pairs(), (QList<quint64>{s, b}));
}

void TestLoader::aFixedTreeKeepsItsObjects()
{
    Document &document = Document::the();
    DocumentLoader loader;
    const quint64 a = loader.addObject(nkObjectType::Node, QStringLiteral("a"));
    const quint64 b = loader.addObject(nkObjectType::Node, QStringLiteral("b"), a);
    loader.fixTree();
    QVERIFY2(!document.isTreeFixed(), "it is about the scene to be");
    QVERIFY(loader.commit());
    QVERIFY(document.isTreeFixed());
    QCOMPARE(document.createObject(nkObjectType::Node, QStringLiteral("c")), quint64(0));
    QCOMPARE(document.createSceneplate(QStringLiteral("p"), QString(), kernel::SceneplatePlacement::Behind),
             quint64(0));
    QVERIFY(!document.moveObjects({b}, 0));
    QVERIFY(!document.deleteObjects({b}));
    QCOMPARE(document.childrenOf(a), QList<quint64>{b});
    QCOMPARE(document.objectCount(), 2);
    QVERIFY(!document.undoStack()->canUndo());
    nkdSceneObject object{nkdObject(b)};
    object.setName(QStringLiteral("Named"));
    object.setLocked(true);
    QCOMPARE(object.getName(), QStringLiteral("Named"));
    QVERIFY(object.getLocked());
}

void TestLoader::aTreeIsFixedForItsSceneOnly()
{
    Document &document = Document::the();
    QSignalSpy told(&document, &Document::treeFixedChanged);
    bool isToldInTime = false;
    const auto watch = connect(&document, &Document::cleared, this,
                               [&] { isToldInTime = document.isTreeFixed(); });
    const auto load = [](bool isFixed) {
        DocumentLoader loader;
        if (isFixed) {
            loader.fixTree();
        }
        return loader.commit();
    };
    QVERIFY(load(true) && isToldInTime);
    QVERIFY(load(true));
    QCOMPARE(told.size(), 1);
    QVERIFY(load(false) && !document.isTreeFixed());
    QVERIFY(load(true) && document.clear() && !document.isTreeFixed());
    QCOMPARE(told.size(), 4);
    QCOMPARE(told.last().first().toBool(), false);
    QVERIFY(document.createObject(nkObjectType::Node, QStringLiteral("c")) != 0);
    disconnect(watch);
}

NK_GUILESS_TEST_MAIN(TestLoader)
#include "test_loader.moc"
