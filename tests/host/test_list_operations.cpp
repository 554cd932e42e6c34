#include "../support/SceneFixture.h"
#include "AnnouncementLog.h"
#include "TestMain.h"

#include <QUndoStack>

#include <functional>

Q_DECLARE_METATYPE(std::function<void()>)

/// Every list operation is one change with all its flags: one undo step, one announcement.
class TestListOperations : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();

    void eachIsOneStepAndOneAnnouncement_data();
    void eachIsOneStepAndOneAnnouncement();
    void emptyListsDoNothing();
    void nullAndDeadHandlesAreSkipped();
    void deletedSetsComeBackWithEntriesAndAssignments();
    void duplicatesCarryEntriesColourAndAssignments();
    void theSetClipboardKeepsWhatWasCopied();
    void theEntryClipboardKeepsWhatWasCopied();
    void pastedEntriesGoIntoEachTargetOnce();
    void clipboardsAreNotUndoable();

private:
    QList<nkdSceneObject> m_nodes;
    nkdMetadataSet m_first;
    nkdMetadataSet m_second;
};

void TestListOperations::init()
{
    SceneFixture::reset();
    m_nodes.clear();
    for (int i = 0; i < 3; ++i) {
        m_nodes.append(SceneFixture::node(QString::number(i)));
    }
    m_first = nkMetadataService::the().createSet(QStringLiteral("first"), m_nodes);
    m_second = nkMetadataService::the().createSet(QStringLiteral("second"), {});
    nkdMetadataEntry entry = m_first.createEntry(nkMetadataTypes::Integer);
    entry.setKey(QStringLiteral("weight"));
    entry.setValue(12);
    m_first.createEntry(nkMetadataTypes::Tag);
    nkMetadataService::the().copySets({m_first, m_second});
    nkMetadataService::the().copyEntries(m_first.getEntries());
}

void TestListOperations::eachIsOneStepAndOneAnnouncement_data()
{
    using Operation = std::function<void()>;
    QTest::addColumn<std::function<void()>>("operation");
    QTest::addColumn<int>("flags");
    nkMetadataService &service = nkMetadataService::the();
    const auto row = [](const char *name, int flags, const Operation &operation) {
        QTest::newRow(name) << operation << flags;
    };
    row("createEntry", 2, [this] { m_first.createEntry(nkMetadataTypes::Integer); });
    row("createSet with its assignments", 5,
        [&service, this] { service.createSet(QStringLiteral("new"), m_nodes); });
    row("createSet alone", 1, [&service] { service.createSet(QStringLiteral("new"), {}); });
    row("deleteSets", 7, [&service, this] { service.deleteSets({m_first, m_second}); });
    row("duplicateSets", 7, [&service, this] { service.duplicateSets({m_first, m_second}); });
    row("pasteSets", 7, [&service, this] { service.pasteSets(m_nodes); });
    row("pasteEntries", 2, [&service, this] { service.pasteEntries({m_first, m_second}); });
    row("assignSets", 4, [&service, this] { service.assignSets(nkToObjects(m_nodes), {m_first, m_second}); });
    row("removeAssignments", 4, [&service, this] {
        service.removeAssignments({m_first, m_second}, m_nodes);
    });
    row("clear", 2, [this] { m_first.getEntries().clear(); });
    row("append", 2, [this] { m_second.getEntries().append(m_first.getEntries()); });
}

void TestListOperations::eachIsOneStepAndOneAnnouncement()
{
    QFETCH(std::function<void()>, operation);
    QFETCH(int, flags);
    QUndoStack *stack = kernel::Document::the().undoStack();
    const int steps = stack->count();
    AnnouncementLog log;
    operation();
    QCOMPARE(log.takeFlags(), QVector<int>{flags});
    QCOMPARE(stack->count(), steps + 1);
    QVERIFY(!stack->undoText().isEmpty());
    QVERIFY(kernel::Document::the().undo());
    QCOMPARE(log.takeFlags(), QVector<int>{flags});
    QVERIFY(kernel::Document::the().redo());
    QCOMPARE(log.takeFlags(), QVector<int>{flags});
}

void TestListOperations::emptyListsDoNothing()
{
    const int steps = kernel::Document::the().undoStack()->count();
    AnnouncementLog log;
    nkMetadataService &service = nkMetadataService::the();
    service.deleteSets({});
    QVERIFY(service.duplicateSets({}).isEmpty());
    service.assignSets({}, {m_first});
    service.assignSets(nkToObjects(m_nodes), {});
    service.removeAssignments({}, m_nodes);
    service.pasteEntries({});
    m_first.getEntries().append({});
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
    QVERIFY(log.takeFlags().isEmpty());
}

void TestListOperations::nullAndDeadHandlesAreSkipped()
{
    nkMetadataService &service = nkMetadataService::the();
    const nkdMetadataSet dead = service.createSet(QStringLiteral("dead"), {});
    service.deleteSets({dead});
    service.assignSets({nkdObject(), m_nodes.at(0)}, {nkdMetadataSet(), dead, m_second});
    QCOMPARE(m_second.getObjects(), (QList<nkdSceneObject>{m_nodes.at(0)}));
    QCOMPARE(service.duplicateSets({dead, nkdMetadataSet()}).size(), 0);
    service.deleteSets({nkdMetadataSet(), dead, m_second});
    QVERIFY(!m_second.isAlive());
}

void TestListOperations::deletedSetsComeBackWithEntriesAndAssignments()
{
    const QList<nkdMetadataEntry> entries = m_first.getEntries();
    m_first.setColor(Qt::red);
    nkMetadataService::the().deleteSets({m_first});
    QVERIFY(nkdMetadata::fromObject(m_nodes.at(0)).getSets().isEmpty());
    kernel::Document::the().undo();
    QCOMPARE(m_first.getEntries().data(), entries);
    QCOMPARE(m_first.getObjects(), m_nodes);
    QCOMPARE(m_first.getColor(), QColor(Qt::red));
    QCOMPARE(entries.at(0).getValue(), QVariant(12));
}

void TestListOperations::duplicatesCarryEntriesColourAndAssignments()
{
    m_first.setColor(Qt::red);
    m_first.setLocked(true);
    const QList<nkdMetadataSet> copies = nkMetadataService::the().duplicateSets({m_first});
    QCOMPARE(copies.size(), 1);
    const nkdMetadataSet copy = copies.at(0);
    QVERIFY(copy != m_first);
    QCOMPARE(copy.getName(), QStringLiteral("first2"));
    QCOMPARE(copy.getColor(), QColor(Qt::red));
    QVERIFY(!copy.isLocked());
    QCOMPARE(copy.getObjects(), m_nodes);
    QCOMPARE(copy.getValue(QStringLiteral("weight")), QVariant(12));
    QVERIFY(copy.getEntries().at(1).isTag());
}

void TestListOperations::theSetClipboardKeepsWhatWasCopied()
{
    nkMetadataService &service = nkMetadataService::the();
    QVERIFY(!service.hasNoCopiedSets());
    m_first.setValue(QStringLiteral("weight"), 99);
    service.deleteSets({m_first, m_second});
    service.pasteSets({m_nodes.at(1)});
    const QList<nkdMetadataSet> sets = service.getAllSets();
    QCOMPARE(sets.size(), 2);
    QCOMPARE(sets.at(0).getName(), QStringLiteral("first"));
    QCOMPARE(sets.at(0).getValue(QStringLiteral("weight")), QVariant(12));
    QCOMPARE(sets.at(0).getObjects(), (QList<nkdSceneObject>{m_nodes.at(1)}));
    // Copying nothing keeps what was copied.
    service.copySets({});
    QVERIFY(!service.hasNoCopiedSets());
    SceneFixture::reset();
    QVERIFY(service.hasNoCopiedSets());
}

void TestListOperations::theEntryClipboardKeepsWhatWasCopied()
{
    nkMetadataService &service = nkMetadataService::the();
    QVERIFY(!service.hasNoCopiedEntries());
    m_first.setValue(QStringLiteral("weight"), 99);
    const QList<nkdMetadataEntry> copied = service.getClipboardEntries();
    QCOMPARE(copied.size(), 2);
    QCOMPARE(copied.at(0).getKey(), QStringLiteral("weight"));
    QCOMPARE(copied.at(0).getValue(), QVariant(12));
    QVERIFY(copied.at(0).getSet().isNull());
    QVERIFY(copied.at(1).isTag());
    service.pasteEntries({m_second});
    QCOMPARE(m_second.getValue(QStringLiteral("weight")), QVariant(12));
    service.copyEntries({});
    QVERIFY(!service.hasNoCopiedEntries());
    SceneFixture::reset();
    QVERIFY(service.hasNoCopiedEntries());
    QVERIFY(service.getClipboardEntries().isEmpty());
}

void TestListOperations::pastedEntriesGoIntoEachTargetOnce()
{
    nkMetadataService::the().pasteEntries({m_second, m_second, nkdMetadataSet(), m_first});
    QCOMPARE(m_second.getEntries().size(), 2);
    QCOMPARE(m_first.getEntries().size(), 4);
    QVERIFY(!m_first.getEntries().find(QStringLiteral("weight2")).isNull());
}

void TestListOperations::clipboardsAreNotUndoable()
{
    const int steps = kernel::Document::the().undoStack()->count();
    nkMetadataService::the().copySets({m_first});
    nkMetadataService::the().copyEntries(m_first.getEntries());
    QCOMPARE(kernel::Document::the().undoStack()->count(), steps);
}

NK_TEST_MAIN(TestListOperations)
#include "test_list_operations.moc"
