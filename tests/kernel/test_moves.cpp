#include "NewsRecorder.h"

#include <TestMain.h>

#include <kernel/document/ChildList.h>
#include <kernel/document/Document.h>
#include <kernel/document/DocumentLoader.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkdNode.h>

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QUndoStack>

#include <map>

using kernel::Document;
using kernel::DocumentLoader;
using kernel::SceneplatePlacement;

/// Objects that change their place in the scene, and sceneplates that change what they show.
class TestMoves : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void childListKeepsTheOrderOfRanks();
    void anObjectMovesToAnotherParent();
    void objectsComeBeforeTheOneAtThePosition_data();
    void objectsComeBeforeTheOneAtThePosition();
    void whatStandsBelowAnotherMovedObjectStaysThere();
    void objectsEndUpInTheOrderTheyAreGiven();
    void aMoveToTheSamePlaceIsNoChange();
    void aMoveThatCannotBeIsRefusedAsAWhole_data();
    void aMoveThatCannotBeIsRefusedAsAWhole();
    void materialsMoveBetweenGroups();
    void aMoveIsOneStepAndTellsOfTheSceneOnce();
    void newObjectsStandBehindWhatWasMovedToTheEnd();
    void movingToTheSamePlaceAgainAndAgainNeverRunsOutOfRoom();
    void deletedObjectsComeBackToTheirPlaceAmongMovedOnes();
    void parentsYoungerThanTheirChildrenAreDeletedWithThem();
    void sceneplatesKnowTheirImageAndPlacement();
    void sceneplatesChangeUndoably();
    void sceneplatesAreLoaded();
    void manyObjectsMoveAndDieInOneGo();

private:
    quint64 node(const char *name, quint64 parent = 0)
    {
        return m_document.createObject(nkObjectType::Node, QLatin1String(name), parent);
    }
    /// The nodes by name, those below others behind them in brackets.
    QString tree(quint64 parent = 0) const
    {
        QStringList texts;
        for (const quint64 id : parent == 0 ? m_document.topLevelNodes() : m_document.childrenOf(parent)) {
            const QString below = tree(id);
            texts << nkdNode(nkdObject(id)).getName() + (below.isEmpty() ? QString() : '(' + below + ')');
        }
        return texts.join(' ');
    }

    Document &m_document = Document::the();
    std::map<QString, quint64> m_ids;
};

void TestMoves::init()
{
    QVERIFY(m_document.clear());
    m_ids.clear();
    const auto add = [this](const char *name, const char *parent = "") {
        m_ids[name] = node(name, m_ids[parent]);
    };
    add("a");
    add("b", "a");
    add("c", "b");
    add("d", "a");
    add("e");
    add("f");
    QCOMPARE(tree(), QStringLiteral("a(b(c) d) e f"));
    m_document.undoStack()->clear();
}

void TestMoves::childListKeepsTheOrderOfRanks()
{
    QRandomGenerator random(5);
    kernel::ChildList list;
    std::map<kernel::Rank, kernel::Slot> expected;
    const auto check = [&] {
        QVector<kernel::Slot> slots;
        for (const auto &entry : expected) {
            slots.append(entry.second);
        }
        QCOMPARE(list.slots(), slots);
    };
    for (int step = 0; step < 20000; ++step) {
        const kernel::Rank rank = 1 + random.bounded(300u);
        const auto present = expected.find(rank);
        if (present == expected.end()) {
            // Ranks are used again by others.
            const kernel::Slot slot = kernel::Slot(rank) * 4 + random.bounded(4u);
            list.insert(slot, rank);
            expected.emplace(rank, slot);
        } else {
            list.remove(present->second, rank);
            expected.erase(present);
        }
        QCOMPARE(list.size(), int(expected.size()));
        if (random.bounded(50) == 0) {
            check();
        }
    }
    check();
}

void TestMoves::anObjectMovesToAnotherParent()
{
    QVERIFY(m_document.moveObjects({m_ids["b"]}, m_ids["e"]));
    QCOMPARE(tree(), QStringLiteral("a(d) e(b(c)) f"));
    QCOMPARE(m_document.parentOf(m_ids["b"]), m_ids["e"]);
    QCOMPARE(nkdNode(nkdObject(m_ids["c"])).getPath(), QStringLiteral("e/b/c"));
    QVERIFY(m_document.moveObjects({m_ids["c"]}, 0));
    QCOMPARE(tree(), QStringLiteral("a(d) e(b) f c"));
    m_document.undo();
    m_document.undo();
    QCOMPARE(tree(), QStringLiteral("a(b(c) d) e f"));
    m_document.redo();
    QCOMPARE(tree(), QStringLiteral("a(d) e(b(c)) f"));
}

void TestMoves::objectsComeBeforeTheOneAtThePosition_data()
{
    QTest::addColumn<QStringList>("moved");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("after");
    QTest::newRow("first") << QStringList{"f"} << 0 << "f a(b(c) d) e";
    QTest::newRow("down by one") << QStringList{"a"} << 2 << "e a(b(c) d) f";
    QTest::newRow("last") << QStringList{"a"} << -1 << "e f a(b(c) d)";
    QTest::newRow("beyond the last") << QStringList{"a"} << 99 << "e f a(b(c) d)";
    QTest::newRow("two around the position") << QStringList{"f", "a"} << 1 << "f a(b(c) d) e";
    QTest::newRow("from below") << QStringList{"d", "c"} << 1 << "a(b) d c e f";
}

void TestMoves::objectsComeBeforeTheOneAtThePosition()
{
    QFETCH(QStringList, moved);
    QFETCH(int, position);
    QFETCH(QString, after);
    QList<quint64> ids;
    for (const QString &name : qAsConst(moved)) {
        ids << m_ids[name];
    }
    QVERIFY(m_document.moveObjects(ids, 0, position));
    QCOMPARE(tree(), after);
    m_document.undo();
    QCOMPARE(tree(), QStringLiteral("a(b(c) d) e f"));
    m_document.redo();
    QCOMPARE(tree(), after);
}

void TestMoves::whatStandsBelowAnotherMovedObjectStaysThere()
{
    QVERIFY(m_document.moveObjects({m_ids["c"], m_ids["b"], m_ids["d"], m_ids["b"]}, m_ids["e"]));
    QCOMPARE(tree(), QStringLiteral("a e(b(c) d) f"));
}

void TestMoves::objectsEndUpInTheOrderTheyAreGiven()
{
    QVERIFY(m_document.moveObjects({m_ids["f"], m_ids["e"]}, m_ids["a"], 1));
    QCOMPARE(tree(), QStringLiteral("a(b(c) f e d)"));
}

void TestMoves::aMoveToTheSamePlaceIsNoChange()
{
    NewsRecorder news;
    QVERIFY(!m_document.moveObjects({m_ids["e"]}, 0, 1));
    QVERIFY(!m_document.moveObjects({m_ids["e"]}, 0, 2));
    QVERIFY(!m_document.moveObjects({m_ids["e"], m_ids["f"]}, 0));
    QVERIFY(!m_document.moveObjects({m_ids["b"], m_ids["c"]}, m_ids["a"], 0));
    QVERIFY(!m_document.moveObjects({}, 0));
    QVERIFY(news.take().isEmpty());
    QCOMPARE(m_document.undoStack()->count(), 0);
}

void TestMoves::aMoveThatCannotBeIsRefusedAsAWhole_data()
{
    QTest::addColumn<QStringList>("moved");
    QTest::addColumn<QString>("parent");
    QTest::newRow("below itself") << QStringList{"e", "a"} << "a";
    QTest::newRow("below its child's child") << QStringList{"e", "a"} << "c";
    QTest::newRow("not there") << QStringList{"e", "nobody"} << "a";
    QTest::newRow("to nowhere") << QStringList{"e"} << "nobody";
    QTest::newRow("a material below a node") << QStringList{"e", "gold"} << "a";
    QTest::newRow("a node below a group") << QStringList{"e"} << "paints";
    QTest::newRow("locked") << QStringList{"e", "f"} << "a";
}

void TestMoves::aMoveThatCannotBeIsRefusedAsAWhole()
{
    QFETCH(QStringList, moved);
    QFETCH(QString, parent);
    m_ids["nobody"] = 4711;
    m_ids["gold"] = m_document.createObject(nkObjectType::Material, QStringLiteral("gold"));
    m_ids["paints"] = m_document.createObject(nkObjectType::MaterialGroup, QStringLiteral("paints"));
    nkdNode(nkdObject(m_ids["f"])).setLocked(true);
    QList<quint64> ids;
    for (const QString &name : qAsConst(moved)) {
        ids << m_ids[name];
    }
    QVERIFY(!m_document.moveObjects(ids, m_ids[parent]));
    QCOMPARE(tree(), QStringLiteral("a(b(c) d) e f"));
}

void TestMoves::materialsMoveBetweenGroups()
{
    const quint64 paints = m_document.createObject(nkObjectType::MaterialGroup, QStringLiteral("paints"));
    const quint64 metals = m_document.createObject(nkObjectType::MaterialGroup, QStringLiteral("metals"));
    const quint64 gold = m_document.createObject(nkObjectType::Material, QStringLiteral("gold"));
    QVERIFY(m_document.moveObjects({gold, metals}, paints));
    QCOMPARE(m_document.childrenOf(paints), (QList<quint64>{gold, metals}));
    QVERIFY(m_document.moveObjects({gold}, 0, 0));
    QCOMPARE(m_document.topLevelMaterials(), (QList<quint64>{gold, paints}));
    QVERIFY(!m_document.moveObjects({paints}, metals));
}

void TestMoves::aMoveIsOneStepAndTellsOfTheSceneOnce()
{
    NewsRecorder news;
    QVERIFY(m_document.moveObjects({m_ids["b"], m_ids["f"]}, m_ids["e"]));
    QCOMPARE(news.take(), QStringList{"scene"});
    QCOMPARE(m_document.undoStack()->count(), 1);
    QCOMPARE(m_document.undoStack()->undoText(), QStringLiteral("Move Objects"));
    QVERIFY(m_document.isModified());
    m_document.undo();
    QCOMPARE(news.take(), QStringList{"scene"});
}

void TestMoves::newObjectsStandBehindWhatWasMovedToTheEnd()
{
    QVERIFY(m_document.moveObjects({m_ids["a"]}, 0));
    node("g");
    QCOMPARE(tree(), QStringLiteral("e f a(b(c) d) g"));
}

void TestMoves::movingToTheSamePlaceAgainAndAgainNeverRunsOutOfRoom()
{
    QStringList seen;
    for (int turn = 0; turn < 200; ++turn) {
        seen << tree();
        QVERIFY(m_document.moveObjects({m_ids[turn % 2 == 0 ? "f" : "e"]}, 0, 1));
        QCOMPARE(tree(), turn % 2 == 0 ? QStringLiteral("a(b(c) d) f e") : QStringLiteral("a(b(c) d) e f"));
    }
    while (!seen.isEmpty()) {
        QVERIFY(m_document.undo());
        QCOMPARE(tree(), seen.takeLast());
    }
}

void TestMoves::deletedObjectsComeBackToTheirPlaceAmongMovedOnes()
{
    QVERIFY(m_document.moveObjects({m_ids["f"], m_ids["d"]}, 0, 0));
    QVERIFY(m_document.deleteObjects({m_ids["d"], m_ids["a"]}));
    QCOMPARE(tree(), QStringLiteral("f e"));
    m_document.undo();
    QCOMPARE(tree(), QStringLiteral("f d a(b(c)) e"));
}

void TestMoves::parentsYoungerThanTheirChildrenAreDeletedWithThem()
{
    const quint64 group = node("group");
    QVERIFY(m_document.moveObjects({m_ids["a"], m_ids["e"]}, group));
    QVERIFY(m_document.deleteObjects({m_ids["b"], group}));
    QCOMPARE(tree(), QStringLiteral("f"));
    QCOMPARE(m_document.objectCount(), 1);
    m_document.undo();
    QCOMPARE(tree(), QStringLiteral("f group(a(b(c) d) e)"));
}

void TestMoves::sceneplatesKnowTheirImageAndPlacement()
{
    const quint64 plate = m_document.createSceneplate(QStringLiteral("sky"), QStringLiteral("/p/sky.png"),
                                                      SceneplatePlacement::InFront, m_ids["a"]);
    QCOMPARE(m_document.typeOf(plate), nkObjectType::Sceneplate);
    QCOMPARE(m_document.parentOf(plate), m_ids["a"]);
    QCOMPARE(m_document.sceneplateImage(plate), QStringLiteral("/p/sky.png"));
    QCOMPARE(m_document.sceneplatePlacement(plate), SceneplatePlacement::InFront);
    QCOMPARE(m_document.undoStack()->undoText(), QStringLiteral("Create Sceneplate"));
    QVERIFY(m_document.deleteObjects({m_ids["a"]}));
    QVERIFY(m_document.sceneplateImage(plate).isEmpty());
    m_document.undo();
    QCOMPARE(m_document.sceneplateImage(plate), QStringLiteral("/p/sky.png"));
    QCOMPARE(m_document.sceneplatePlacement(plate), SceneplatePlacement::InFront);
    QCOMPARE(m_document.createSceneplate(QString(), QString(), SceneplatePlacement::Behind, 4711),
             quint64(0));
    const quint64 plain = m_document.createObject(nkObjectType::Sceneplate, QStringLiteral("plain"));
    QVERIFY(m_document.sceneplateImage(plain).isEmpty());
    QCOMPARE(m_document.sceneplatePlacement(plain), SceneplatePlacement::Behind);
}

void TestMoves::sceneplatesChangeUndoably()
{
    const quint64 plate = m_document.createSceneplate(QStringLiteral("sky"), QStringLiteral("a.png"),
                                                      SceneplatePlacement::Behind);
    NewsRecorder news;
    QVERIFY(!m_document.setSceneplateImage(plate, QStringLiteral("a.png")));
    QVERIFY(!m_document.setSceneplatePlacement(plate, SceneplatePlacement::Behind));
    QVERIFY(!m_document.setSceneplateImage(m_ids["a"], QStringLiteral("b.png")));
    QVERIFY(news.take().isEmpty());
    QVERIFY(m_document.setSceneplateImage(plate, QStringLiteral("b.png")));
    QVERIFY(m_document.setSceneplatePlacement(plate, SceneplatePlacement::InFront));
    QCOMPARE(news.take(), (QStringList{"scene", "scene"}));
    m_document.undo();
    QCOMPARE(m_document.sceneplatePlacement(plate), SceneplatePlacement::Behind);
    QCOMPARE(m_document.sceneplateImage(plate), QStringLiteral("b.png"));
    m_document.undo();
    QCOMPARE(m_document.sceneplateImage(plate), QStringLiteral("a.png"));
    nkdSceneObject(nkdObject(plate)).setLocked(true);
    QVERIFY(!m_document.setSceneplateImage(plate, QStringLiteral("c.png")));
}

void TestMoves::sceneplatesAreLoaded()
{
    quint64 plate = 0;
    {
        DocumentLoader loader;
        plate = loader.addObject(nkObjectType::Sceneplate, QStringLiteral("sky"));
        const quint64 other = loader.addObject(nkObjectType::Node, QStringLiteral("n"));
        QVERIFY(loader.setSceneplate(plate, QStringLiteral("a.png"), SceneplatePlacement::InFront));
        QVERIFY(!loader.setSceneplate(other, QStringLiteral("a.png"), SceneplatePlacement::InFront));
        QVERIFY(loader.commit());
    }
    QCOMPARE(m_document.sceneplateImage(plate), QStringLiteral("a.png"));
    QCOMPARE(m_document.sceneplatePlacement(plate), SceneplatePlacement::InFront);
    DocumentLoader adding(DocumentLoader::Mode::Add);
    QVERIFY(!adding.setSceneplate(plate, QString(), SceneplatePlacement::Behind));
}

/// No figures are asked for here: what is not linear takes minutes.
void TestMoves::manyObjectsMoveAndDieInOneGo()
{
    constexpr int count = 100000;
    QList<quint64> ids;
    {
        DocumentLoader loader;
        for (int i = 0; i < count; ++i) {
            ids << loader.addObject(nkObjectType::Node, QStringLiteral("n"));
        }
        loader.commit();
    }
    QList<quint64> every;
    for (int i = 0; i < count; i += 10) {
        every << ids.at(i);
    }
    const quint64 group = node("group");
    QElapsedTimer timer;
    timer.start();
    QVERIFY(m_document.moveObjects(every, group));
    qInfo("moving 10,000: %lld ms", timer.restart());
    QVERIFY(m_document.moveObjects(every, 0, 5));
    qInfo("moving 10,000 among 100,000: %lld ms", timer.restart());
    QCOMPARE(m_document.topLevelNodes().mid(5, every.size()), every);
    QVERIFY(m_document.deleteObjects(every));
    qInfo("deleting 10,000: %lld ms", timer.restart());
    for (int step = 0; step < 3; ++step) {
        QVERIFY(m_document.undo());
    }
    qInfo("undoing all: %lld ms", timer.restart());
    QCOMPARE(m_document.topLevelNodes(), ids + QList<quint64>{group});
}

NK_GUILESS_TEST_MAIN(TestMoves)
#include "test_moves.moc"
