#include <TestMain.h>

#include "NewsRecorder.h"

#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QUndoStack>

#include <functional>

using kernel::Document;
using T = nkMetadataTypes;

/// Who is told what, when, and how often; and listeners that do things.
class TestAnnouncements : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void eachOperationTellsItsFlags();
    void undoAndRedoTellLikeTheChange();
    void theFirstChangeOfAScopeIsToldAtOnceTheRestAtItsEnd();
    void tenThousandChangesCostTwoAnnouncements();
    void propertiesAreToldOncePerObject();
    void propertiesOfNewObjectsAreNotTold();
    void propertiesOfVanishedObjectsAreNotTold();
    void undoDoesNotTellPropertiesOfWhatItRemoves();
    void firstAndLastOwnEntryTouchAssignments();
    void renamingAnObjectIsNoMetadataChange();
    void deadObjectsLeaveTheSelectionFirst();
    void deadObjectsLeaveTheSelectionInScopesAtOnce();
    void undoneCreationsLeaveTheSelection();
    void settingTheSelectionAlwaysTells();
    void theSelectionHoldsLivingSetsAndObjectsOnce();
    void aWriteInsideTheFirstAnnouncementBelongsToTheScope();
    void aWriteInsideTheClosingAnnouncementIsAStepOfItsOwn();
    void aWriteInsideAnOrdinaryAnnouncementIsAStepOfItsOwn();
    void aScopeInsideAnAnnouncementNests();
    void aListenerDeletesWhatIsBeingAnnounced();
    void aListenerClearsTheSceneAfterAChange();
    void aListenerSelectsInsideAnnouncements();
    void undoFromInsideAClosingAnnouncement();
    void announcementsNestAsDeepAsListenersGo();

private:
    nkdSceneObject node(const char *name);
    /// Runs reaction at the next metadataChanged.
    void atNextChange(const std::function<void()> &reaction);

    Document &m_document = Document::the();
    nkMetadataService &m_service = nkMetadataService::the();
    nkdMetadataSet m_set;
    nkdMetadataEntry m_entry;
    std::unique_ptr<NewsRecorder> m_news;
    std::unique_ptr<QObject> m_context;
};

void TestAnnouncements::init()
{
    QVERIFY(m_document.clear());
    m_set = m_service.createSet(QStringLiteral("S"), {});
    m_entry = m_set.createEntry(T::Integer);
    m_document.undoStack()->clear();
    m_news = std::make_unique<NewsRecorder>();
    m_news->name(m_set, QStringLiteral("set"));
    m_news->name(m_entry, QStringLiteral("entry"));
    m_context = std::make_unique<QObject>();
}

void TestAnnouncements::cleanup()
{
    m_context.reset();
    m_news.reset();
}

nkdSceneObject TestAnnouncements::node(const char *name)
{
    return nkdSceneObject(nkdObject(m_document.createObject(nkObjectType::Node, QLatin1String(name))));
}

void TestAnnouncements::atNextChange(const std::function<void()> &reaction)
{
    const auto done = std::make_shared<bool>(false);
    connect(&m_service, &nkMetadataService::metadataChanged, m_context.get(), [done, reaction] {
        if (!*done) {
            *done = true;
            reaction();
        }
    });
}

void TestAnnouncements::eachOperationTellsItsFlags()
{
    const nkdSceneObject object = node("n");
    QCOMPARE(m_news->take(), QStringList{"scene"});
    m_service.assignSets({object}, {m_set});
    QCOMPARE(m_news->take(), QStringList{"metadata 4"});
    m_service.createSet(QString(), {});
    QCOMPARE(m_news->take(), QStringList{"metadata 1"});
    const nkdMetadataSet assigned = m_service.createSet(QString(), {object});
    QCOMPARE(m_news->take(), QStringList{"metadata 5"});
    m_service.duplicateSets({m_set});
    QCOMPARE(m_news->take(), QStringList{"metadata 7"});
    m_service.removeAssignments({m_set}, {object});
    QCOMPARE(m_news->take(), QStringList{"metadata 4"});
    m_set.setName(QStringLiteral("T"));
    QCOMPARE(m_news->take(), (QStringList{"metadata 1", "set name"}));
    m_set.setColor(Qt::red);
    QCOMPARE(m_news->take(), (QStringList{"metadata 1", "set color"}));
    m_set.setLocked(true);
    QCOMPARE(m_news->take(), (QStringList{"metadata 1", "set locked"}));
    m_set.setLocked(false);
    m_news->take();
    m_entry.setKey(QStringLiteral("k"));
    QCOMPARE(m_news->take(), (QStringList{"metadata 2", "entry key"}));
    m_entry.setValue(1);
    QCOMPARE(m_news->take(), (QStringList{"metadata 2", "entry value"}));
    m_entry.setValueType(T::Boolean);
    QCOMPARE(m_news->take(), (QStringList{"metadata 2", "entry valueType", "entry value"}));
    m_entry.setTag(QStringLiteral("t"));
    QCOMPARE(m_news->take(), (QStringList{"metadata 2", "entry key", "entry valueType", "entry value"}));
    m_service.copyEntries({m_entry});
    m_service.copySets({m_set});
    QVERIFY(m_news->take().isEmpty());
    m_service.pasteEntries({m_set, assigned});
    QCOMPARE(m_news->take(), QStringList{"metadata 2"});
    m_service.pasteSets({object});
    QCOMPARE(m_news->take(), QStringList{"metadata 7"});
    m_set.getEntries().append({m_entry});
    QCOMPARE(m_news->take(), QStringList{"metadata 2"});
    m_set.getEntries().remove(m_entry);
    QCOMPARE(m_news->take(), QStringList{"metadata 2"});
    m_service.deleteSets({m_set, assigned});
    QCOMPARE(m_news->take(), QStringList{"metadata 7"});
    m_document.deleteObjects({object.getObjectId()});
    QCOMPARE(m_news->take(), (QStringList{"metadata 4", "scene"}));
}

void TestAnnouncements::undoAndRedoTellLikeTheChange()
{
    m_entry.setValue(1);
    const QStringList valueNews{"metadata 2", "entry value"};
    QCOMPARE(m_news->take(), valueNews);
    m_document.undo();
    QCOMPARE(m_news->take(), valueNews);
    m_document.undoStack()->redo();
    QCOMPARE(m_news->take(), valueNews);
    m_service.createSet(QString(), {node("n")});
    m_news->take();
    m_document.undo();
    QCOMPARE(m_news->take(), QStringList{"metadata 5"});
    m_document.undo();
    QCOMPARE(m_news->take(), QStringList{"scene"});
    m_document.undoStack()->setIndex(0);
    QCOMPARE(m_news->take(), valueNews);
}

void TestAnnouncements::theFirstChangeOfAScopeIsToldAtOnceTheRestAtItsEnd()
{
    {
        const nkScopedUndo scope(true);
        const nkdMetadataEntry created = m_set.createEntry(T::String);
        QCOMPARE(m_news->take(), QStringList{"metadata 2"});
        m_set.setName(QStringLiteral("T"));
        m_entry.setValue(4);
        QVERIFY(m_news->take().isEmpty());
    }
    QCOMPARE(m_news->take(), (QStringList{"metadata 3", "set name", "entry value"}));
    {
        const nkScopedUndo scope(true);
        m_entry.setValue(5);
        QCOMPARE(m_news->take(), (QStringList{"metadata 2", "entry value"}));
    }
    QVERIFY(m_news->take().isEmpty());
}

void TestAnnouncements::tenThousandChangesCostTwoAnnouncements()
{
    QSignalSpy spy(&m_service, &nkMetadataService::metadataChanged);
    {
        const nkScopedUndo scope(true);
        for (int value = 1; value <= 10000; ++value) {
            m_entry.setValue(value);
        }
    }
    QCOMPARE(spy.count(), 2);
    m_document.undo();
    QCOMPARE(spy.count(), 3);
}

void TestAnnouncements::propertiesAreToldOncePerObject()
{
    nkdMetadataEntry other = m_set.createEntry(T::Integer);
    m_news->name(other, QStringLiteral("other"));
    m_news->take();
    {
        const nkScopedUndo scope(true);
        m_set.setLocked(false);
        m_entry.setValue(1);
        m_news->take();
        for (int value = 1; value < 5; ++value) {
            other.setValue(value);
            m_entry.setKey(QStringLiteral("k%1").arg(value));
        }
        other.setKey(QStringLiteral("o"));
    }
    QCOMPARE(m_news->take(), (QStringList{"metadata 2", "other key", "other value", "entry key"}));
    m_document.undo();
    QCOMPARE(m_news->take(),
             (QStringList{"metadata 2", "entry key", "entry value", "other key", "other value"}));
}

void TestAnnouncements::propertiesOfNewObjectsAreNotTold()
{
    {
        const nkScopedUndo scope(true);
        nkdMetadataEntry created = m_set.createEntry(T::Integer);
        m_news->take();
        created.setValue(3);
        created.setKey(QStringLiteral("x"));
        nkdMetadataSet set = m_service.createSet(QString(), {});
        set.setName(QStringLiteral("y"));
    }
    QCOMPARE(m_news->take(), QStringList{"metadata 3"});
    m_document.undo();
    QCOMPARE(m_news->take(), QStringList{"metadata 3"});
    m_document.redo();
    QCOMPARE(m_news->take(), QStringList{"metadata 3"});
}

void TestAnnouncements::propertiesOfVanishedObjectsAreNotTold()
{
    {
        const nkScopedUndo scope(true);
        m_set.setLocked(true);
        m_set.setLocked(false);
        m_news->take();
        m_entry.setValue(3);
        m_set.getEntries().remove(m_entry);
    }
    QCOMPARE(m_news->take(), (QStringList{"metadata 3", "set locked"}));
}

void TestAnnouncements::undoDoesNotTellPropertiesOfWhatItRemoves()
{
    {
        const nkScopedUndo scope(true);
        m_entry.setValue(3);
        m_set.getEntries().remove(m_entry);
    }
    m_news->take();
    m_document.undo();
    // The entry is back with its old value: it did not change before anybody's eyes.
    QCOMPARE(m_news->take(), QStringList{"metadata 2"});
    QCOMPARE(m_entry.getValue(), QVariant(0));
    m_document.redo();
    QCOMPARE(m_news->take(), QStringList{"metadata 2"});
}

void TestAnnouncements::firstAndLastOwnEntryTouchAssignments()
{
    nkdMetadataSet own = nkdMetadata::fromObject(node("n")).getObjectSet();
    m_news->take();
    const nkdMetadataEntry first = own.createEntry(T::String);
    QCOMPARE(m_news->take(), QStringList{"metadata 6"});
    own.createEntry(T::String);
    QCOMPARE(m_news->take(), QStringList{"metadata 2"});
    own.getEntries().remove(first);
    QCOMPARE(m_news->take(), QStringList{"metadata 2"});
    own.getEntries().clear();
    QCOMPARE(m_news->take(), QStringList{"metadata 6"});
    m_document.undo();
    QCOMPARE(m_news->take(), QStringList{"metadata 6"});
}

void TestAnnouncements::renamingAnObjectIsNoMetadataChange()
{
    nkdSceneObject object = node("n");
    m_news->name(object, QStringLiteral("node"));
    m_news->take();
    object.setName(QStringLiteral("m"));
    QCOMPARE(m_news->take(), (QStringList{"scene", "node name"}));
    object.setLocked(true);
    QCOMPARE(m_news->take(), QStringList{"node locked"});
    m_document.undo();
    QCOMPARE(m_news->take(), QStringList{"node locked"});
}

void TestAnnouncements::deadObjectsLeaveTheSelectionFirst()
{
    const nkdSceneObject object = node("n");
    m_service.setSelection({m_set, object});
    m_news->take();
    m_service.deleteSets({m_set});
    QCOMPARE(m_news->take(), (QStringList{"selection 1", "metadata 3"}));
    m_document.deleteObjects({object.getObjectId()});
    QCOMPARE(m_news->take(), (QStringList{"selection 0", "scene"}));
    m_document.undo();
    QVERIFY(m_service.getSelection().isEmpty());
}

void TestAnnouncements::deadObjectsLeaveTheSelectionInScopesAtOnce()
{
    nkdMetadataSet other = m_service.createSet(QString(), {});
    m_service.setSelection({other, m_set});
    {
        const nkScopedUndo scope(true);
        m_set.setLocked(true);
        m_news->take();
        m_service.deleteSets({other});
        QCOMPARE(m_service.getSelection(), QList<nkdObject>{m_set});
        QVERIFY(m_news->take().isEmpty());
    }
    QCOMPARE(m_news->take(), (QStringList{"selection 1", "metadata 1"}));
}

void TestAnnouncements::undoneCreationsLeaveTheSelection()
{
    const nkdMetadataSet created = m_service.createSet(QString(), {});
    m_service.setSelection({created});
    m_news->take();
    m_document.undo();
    QCOMPARE(m_news->take(), (QStringList{"selection 0", "metadata 1"}));
}

void TestAnnouncements::settingTheSelectionAlwaysTells()
{
    m_service.setSelection({m_set});
    m_service.setSelection({m_set});
    {
        const nkScopedUndo scope(true);
        m_service.setSelection({});
        QCOMPARE(m_news->take(), (QStringList{"selection 1", "selection 1", "selection 0"}));
    }
    QVERIFY(m_news->take().isEmpty());
    QCOMPARE(m_document.undoStack()->count(), 0);
}

void TestAnnouncements::theSelectionHoldsLivingSetsAndObjectsOnce()
{
    const nkdSceneObject object = node("n");
    const nkdMetadataSet own = nkdMetadata::fromObject(object).getObjectSet();
    m_service.setSelection({object, m_entry, nkdObject(), m_set, object, nkdObject(5, nkObjectType::Node),
                            own, nkdMetadata::fromObject(object)});
    const QList<nkdObject> selection = m_service.getSelection();
    QCOMPARE(selection, (QList<nkdObject>{object, m_set, own}));
    QCOMPARE(selection.first().getType(), nkObjectType::Node);
    QVERIFY(nkdMetadataSet(selection.at(1)) == m_set);
}

void TestAnnouncements::aWriteInsideTheFirstAnnouncementBelongsToTheScope()
{
    atNextChange([this] { m_set.setName(QStringLiteral("T")); });
    {
        const nkScopedUndo scope(true);
        m_entry.setValue(1);
        QCOMPARE(m_news->take(), (QStringList{"metadata 2", "entry value"}));
    }
    QCOMPARE(m_news->take(), (QStringList{"metadata 1", "set name"}));
    QCOMPARE(m_document.undoStack()->count(), 1);
    m_document.undo();
    QCOMPARE(m_set.getName(), QStringLiteral("S"));
}

void TestAnnouncements::aWriteInsideTheClosingAnnouncementIsAStepOfItsOwn()
{
    {
        const nkScopedUndo scope(true);
        m_entry.setValue(1);
        m_entry.setValue(2);
        m_news->take();
        atNextChange([this] { m_set.setName(QStringLiteral("T")); });
    }
    QCOMPARE(m_document.undoStack()->count(), 2);
    const QStringList news = m_news->take();
    QCOMPARE(news, (QStringList{"metadata 2", "metadata 1", "set name", "entry value"}));
    m_document.undo();
    QCOMPARE(m_set.getName(), QStringLiteral("S"));
    QCOMPARE(m_entry.getValue(), QVariant(2));
}

void TestAnnouncements::aWriteInsideAnOrdinaryAnnouncementIsAStepOfItsOwn()
{
    atNextChange([this] { m_entry.setValue(2); });
    m_entry.setValue(1);
    QCOMPARE(m_entry.getValue(), QVariant(2));
    QCOMPARE(m_document.undoStack()->count(), 2);
    m_document.undo();
    QCOMPARE(m_entry.getValue(), QVariant(1));
}

void TestAnnouncements::aScopeInsideAnAnnouncementNests()
{
    atNextChange([this] {
        const nkScopedUndo inner(true);
        const nkScopedMultiCommand title(nkUndoString(QStringLiteral("Inner")));
        m_set.setName(QStringLiteral("T"));
        m_set.createEntry(T::Tag);
    });
    {
        const nkScopedUndo scope(true);
        m_entry.setValue(1);
    }
    QCOMPARE(m_document.undoStack()->count(), 1);
    QCOMPARE(m_news->take(), (QStringList{"metadata 2", "entry value", "metadata 3", "set name"}));
    m_document.undo();
    QCOMPARE(m_set.getEntries().size(), 1);
}

void TestAnnouncements::aListenerDeletesWhatIsBeingAnnounced()
{
    atNextChange([this] { m_service.deleteSets({m_set}); });
    m_entry.setValue(1);
    QVERIFY(!m_entry.isAlive());
    QCOMPARE(m_news->take(), (QStringList{"metadata 2", "metadata 3"}));
    m_document.undo();
    QCOMPARE(m_entry.getValue(), QVariant(1));
}

void TestAnnouncements::aListenerClearsTheSceneAfterAChange()
{
    atNextChange([this] { QVERIFY(m_document.clear()); });
    m_entry.setValueType(T::Float);
    QVERIFY(!m_entry.isAlive());
    QVERIFY(m_service.getAllSets().isEmpty());
    QCOMPARE(m_document.undoStack()->count(), 0);
    QCOMPARE(m_news->take(), (QStringList{"metadata 2", "metadata 7", "scene"}));
}

void TestAnnouncements::aListenerSelectsInsideAnnouncements()
{
    const nkdMetadataSet other = m_service.createSet(QString(), {});
    m_service.setSelection({m_set});
    connect(&m_service, &nkMetadataService::selectionChanged, m_context.get(),
            [this, other](const QList<nkdObject> &objects) {
                if (objects.isEmpty()) {
                    m_service.setSelection({other});
                }
            });
    m_news->take();
    m_service.deleteSets({m_set});
    QCOMPARE(m_service.getSelection(), QList<nkdObject>{other});
    QCOMPARE(m_news->take(), (QStringList{"selection 0", "selection 1", "metadata 3"}));
}

void TestAnnouncements::undoFromInsideAClosingAnnouncement()
{
    {
        const nkScopedUndo scope(true);
        m_entry.setValue(1);
        QVERIFY(!m_document.undo());
        m_entry.setValue(2);
        atNextChange([this] { QVERIFY(m_document.undo()); });
    }
    QCOMPARE(m_entry.getValue(), QVariant(0));
    QVERIFY(m_document.redo());
    QCOMPARE(m_entry.getValue(), QVariant(2));
}

void TestAnnouncements::announcementsNestAsDeepAsListenersGo()
{
    // Deep re-entry: each announcement changes the value again, a hundred times.
    connect(&m_service, &nkMetadataService::metadataChanged, m_context.get(), [this] {
        const int value = m_entry.getValue().toInt();
        if (value < 100) {
            m_entry.setValue(value + 1);
        }
    });
    m_entry.setValue(1);
    QCOMPARE(m_entry.getValue(), QVariant(100));
    QCOMPARE(m_news->take().size(), 200);
    QCOMPARE(m_document.undoStack()->count(), 100);
}

NK_GUILESS_TEST_MAIN(TestAnnouncements)
#include "test_announcements.moc"
