#include "SceneText.h"

#include <TestMain.h>

#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QUndoStack>

#include <random>

using kernel::Document;
using kernel::SceneplatePlacement;

namespace {

constexpr int seedCount = 60;
constexpr int stepCount = 250;
constexpr int objectLimit = 40;

/// Who stands below whom, kept in the plainest way: what a move does is held against it.
class PlainTree
{
public:
    static PlainTree ofScene()
    {
        PlainTree tree;
        tree.read(0, Document::the().topLevelNodes());
        return tree;
    }

    bool operator==(const PlainTree &other) const { return m_children == other.m_children; }

    bool isBelow(quint64 id, quint64 above) const
    {
        for (quint64 at = m_parents.value(id); at != 0; at = m_parents.value(at)) {
            if (at == above) {
                return true;
            }
        }
        return false;
    }

    /// @return whether anything changed; nothing has where the move cannot be
    bool move(const QList<quint64> &ids, quint64 parent, int position)
    {
        QList<quint64> moved;
        for (const quint64 id : ids) {
            if (id == parent || isBelow(parent, id)) {
                return false;
            }
            const bool isCarried = std::any_of(ids.cbegin(), ids.cend(),
                                               [&](quint64 other) { return isBelow(id, other); });
            if (!isCarried && !moved.contains(id)) {
                moved.append(id);
            }
        }
        const PlainTree before = *this;
        QList<quint64> &list = m_children[parent];
        const quint64 behind = firstStaying(list, moved, position);
        for (const quint64 id : qAsConst(moved)) {
            m_children[m_parents.value(id)].removeAll(id);
            m_parents[id] = parent;
        }
        const int place = behind == 0 ? list.size() : list.indexOf(behind);
        for (int i = 0; i < moved.size(); ++i) {
            list.insert(place + i, moved.at(i));
        }
        return !(*this == before);
    }

private:
    void read(quint64 parent, const QList<quint64> &children)
    {
        m_children.insert(parent, children);
        for (const quint64 child : children) {
            m_parents.insert(child, parent);
            read(child, Document::the().childrenOf(child));
        }
    }

    static quint64 firstStaying(const QList<quint64> &list, const QList<quint64> &moved, int position)
    {
        for (int i = position < 0 ? list.size() : position; i < list.size(); ++i) {
            if (!moved.contains(list.at(i))) {
                return list.at(i);
            }
        }
        return 0;
    }

    QHash<quint64, QList<quint64>> m_children;
    QHash<quint64, quint64> m_parents;
};

/// Random changes of the scene's structure, with the scene before each remembered.
class StructureRun
{
public:
    explicit StructureRun(unsigned seed) : m_random(seed)
    {
        m_document.clear();
        nkMetadataService::the().createSet(QStringLiteral("shared"), {});
        m_document.undoStack()->clear();
        m_states.append(sceneText());
    }

    void step()
    {
        switch (pick(15)) {
        case 0:
        case 1:
            return undoOrRedo(&Document::undo, -1);
        case 2:
            return undoOrRedo(&Document::redo, 1);
        case 3:
        case 4:
            create();
            break;
        case 5:
            remove();
            break;
        case 6:
            rename();
            break;
        case 7:
            changePlate();
            break;
        case 8:
            addMetadata();
            break;
        case 9:
            removeMetadata();
            break;
        case 10: {
            const nkScopedUndo scope(true);
            move();
            create();
            move();
            remove();
            break;
        }
        default:
            move();
            break;
        }
        note();
    }

    void unwind()
    {
        while (m_document.undoStack()->canUndo()) {
            undoOrRedo(&Document::undo, -1);
        }
        while (m_document.undoStack()->canRedo()) {
            undoOrRedo(&Document::redo, 1);
        }
    }

private:
    int pick(int count) { return int(m_random() % unsigned(count)); }

    QList<quint64> all() const
    {
        QList<quint64> ids = m_document.objects(nkObjectType::Node);
        return ids + m_document.objects(nkObjectType::Sceneplate);
    }
    quint64 any()
    {
        const QList<quint64> ids = all();
        return ids.isEmpty() ? 0 : ids.at(pick(ids.size()));
    }
    QList<quint64> some()
    {
        QList<quint64> ids;
        for (int count = 1 + pick(4); count > 0; --count) {
            if (const quint64 id = any()) {
                ids.append(id);
            }
        }
        return ids;
    }

    void create()
    {
        const quint64 parent = pick(3) == 0 ? 0 : any();
        const QString name = QString::number(pick(1000));
        if (pick(4) == 0) {
            m_document.createSceneplate(name, name + QLatin1String(".png"), SceneplatePlacement::InFront,
                                        parent);
        } else {
            m_document.createObject(nkObjectType::Node, name, parent);
        }
    }
    void remove()
    {
        if (m_document.objectCount() > objectLimit || pick(3) == 0) {
            m_document.deleteObjects(some());
        }
    }
    void rename()
    {
        if (const quint64 id = any()) {
            nkdSceneObject(nkdObject(id)).setName(QString::number(pick(1000)));
        }
    }
    void changePlate()
    {
        const QList<quint64> plates = m_document.objects(nkObjectType::Sceneplate);
        if (!plates.isEmpty()) {
            const quint64 plate = plates.at(pick(plates.size()));
            m_document.setSceneplateImage(plate, QString::number(pick(10)));
            const int placement = pick(2);
            const nkScopedUndo scope(true);
            m_document.setSceneplatePlacement(plate, SceneplatePlacement(placement));
        }
    }
    void addMetadata()
    {
        const nkScopedUndo scope(true);
        if (const quint64 id = any()) {
            nkdMetadata(id).getObjectSet().createEntry(nkMetadataTypes::String);
            nkMetadataService::the().assignSets({nkdSceneObject(nkdObject(id))},
                                                nkMetadataService::the().getAllSets());
        }
    }
    void removeMetadata()
    {
        if (const quint64 id = any()) {
            nkdMetadata(id).getObjectSet().getEntries().clear();
        }
        const QList<nkdMetadataSet> sets = nkMetadataService::the().getAllSets();
        if (pick(4) == 0 && sets.size() > 1) {
            nkMetadataService::the().deleteSets({sets.constLast()});
        } else {
            nkdMetadataSet set = nkMetadataService::the().createSet(QString(), {});
            set.createEntry(nkMetadataTypes::Integer);
        }
    }
    void move()
    {
        const QList<quint64> ids = some();
        const quint64 parent = pick(4) == 0 ? 0 : any();
        const int position = pick(5) - 1;
        PlainTree expected = PlainTree::ofScene();
        const bool changes = !ids.isEmpty() && expected.move(ids, parent, position);
        QCOMPARE(m_document.moveObjects(ids, parent, position), changes);
        if (changes) {
            QVERIFY(PlainTree::ofScene() == expected);
        }
    }

    /// A step of the person may have been several of the stack, or none.
    void note()
    {
        const int index = m_document.undoStack()->index();
        const QString now = sceneText();
        if (index == m_at && !m_states.at(m_at).isEmpty() && now != m_states.at(m_at)) {
            QFAIL("the scene changed without an undo step");
        }
        if (index > m_at) {
            m_states = m_states.mid(0, m_at + 1);
            while (m_states.size() < index) {
                m_states.append(QString()); // in between, nobody looked
            }
            m_states.append(now);
            m_at = index;
        }
    }

    void undoOrRedo(bool (Document::*change)(), int by)
    {
        if ((m_document.*change)()) {
            m_at += by;
            if (!m_states.at(m_at).isEmpty()) {
                QCOMPARE(sceneText(), m_states.at(m_at));
            }
        }
    }

    Document &m_document = Document::the();
    std::mt19937 m_random;
    /// The scene at each index of the stack.
    QStringList m_states;
    int m_at = 0;
};

} // namespace

/// The structure of a scene under random changes: undo and redo lead through exactly the same scenes.
class TestStructureProperty : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void undoAndRedoLeadThroughTheSameScenes_data();
    void undoAndRedoLeadThroughTheSameScenes();
};

void TestStructureProperty::undoAndRedoLeadThroughTheSameScenes_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= seedCount; ++seed) {
        QTest::addRow("seed %d", seed) << seed;
    }
}

void TestStructureProperty::undoAndRedoLeadThroughTheSameScenes()
{
    QFETCH(int, seed);
    StructureRun run{unsigned(seed)};
    for (int step = 0; step < stepCount && !QTest::currentTestFailed(); ++step) {
        run.step();
    }
    run.unwind();
}

NK_GUILESS_TEST_MAIN(TestStructureProperty)
#include "test_structure_property.moc"
