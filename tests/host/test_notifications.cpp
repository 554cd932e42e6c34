#include "../support/SceneFixture.h"
#include "AnnouncementLog.h"
#include "TestMain.h"

#include <nkKernelServices/nkScopedUndo.h>

using Flags = QVector<int>;
using Properties = QVector<QPair<quint64, QString>>;

/// What is announced, when, and how often.
class TestNotifications : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { m_log.reset(); }

    void outsideAScopeEachChangeIsAnnouncedAtOnce();
    void theFirstChangeOfAScopeIsAnnouncedInsideTheCall();
    void theRestOfAScopeIsMergedIntoOneAnnouncement();
    void tenThousandChangesInAScopeCostTwoAnnouncements();
    void writingWhatIsThereIsNotAnnounced();
    void aPropertyIsToldOnceAnObjectAndScope();
    void creationsTellNoProperties();
    void aNewEntrysAnnouncementHasGoneWhenItIsReturned();
    void propertyNamesAreTheContracts();
    void undoAndRedoAnnounceLikeTheChange();
    void aWriteFromInsideAnAnnouncementIsAnnouncedToo();
    void renamingAnObjectTellsItsName();
    void theFirstOwnEntryOfAnObjectChangesWhoCarriesMetadata();

private:
    nkdMetadataSet m_set;
    std::unique_ptr<AnnouncementLog> m_log;
};

void TestNotifications::init()
{
    SceneFixture::reset();
    m_set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    m_log = std::make_unique<AnnouncementLog>();
}

void TestNotifications::outsideAScopeEachChangeIsAnnouncedAtOnce()
{
    m_set.setName(QStringLiteral("t"));
    QCOMPARE(m_log->takeFlags(), Flags{nkMetadataTypes::SetsChanged});
    m_set.createEntry(nkMetadataTypes::String);
    QCOMPARE(m_log->takeFlags(), Flags{nkMetadataTypes::EntriesChanged});
    m_set.setLocked(true);
    QCOMPARE(m_log->takeFlags(), Flags{nkMetadataTypes::SetsChanged});
}

void TestNotifications::theFirstChangeOfAScopeIsAnnouncedInsideTheCall()
{
    nkScopedUndo undo(true);
    m_set.setName(QStringLiteral("t"));
    QCOMPARE(m_log->takeFlags(), Flags{nkMetadataTypes::SetsChanged});
    QCOMPARE(m_log->takeProperties(), (Properties{{m_set.getObjectId(), QStringLiteral("name")}}));
}

void TestNotifications::theRestOfAScopeIsMergedIntoOneAnnouncement()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    m_log->clear();
    {
        nkScopedUndo undo(true);
        m_set.setName(QStringLiteral("t"));
        m_log->clear();
        m_set.setColor(Qt::red);
        m_set.createEntry(nkMetadataTypes::Integer);
        nkMetadataService::the().assignSets({node}, {m_set});
        QCOMPARE(m_log->takeFlags(), Flags());
    }
    QCOMPARE(m_log->takeFlags(), Flags{7});
    QCOMPARE(m_log->takeProperties(), (Properties{{m_set.getObjectId(), QStringLiteral("color")}}));
}

void TestNotifications::tenThousandChangesInAScopeCostTwoAnnouncements()
{
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::Integer);
    m_log->clear();
    {
        nkScopedUndo undo(true);
        for (int i = 1; i <= 10000; ++i) {
            entry.setValue(i);
        }
    }
    QCOMPARE(m_log->takeFlags(), (Flags{nkMetadataTypes::EntriesChanged, nkMetadataTypes::EntriesChanged}));
}

void TestNotifications::writingWhatIsThereIsNotAnnounced()
{
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::Integer);
    entry.setValue(3);
    m_log->clear();
    entry.setValue(3);
    entry.setKey(entry.getKey());
    entry.setValueType(nkMetadataTypes::Integer);
    m_set.setName(m_set.getName());
    nkMetadataService::the().removeAssignments({m_set}, {SceneFixture::node(QStringLiteral("n"))});
    m_log->takeFlags();
    QCOMPARE(m_log->takeProperties(), Properties());
}

void TestNotifications::aPropertyIsToldOnceAnObjectAndScope()
{
    nkdMetadataEntry first = m_set.createEntry(nkMetadataTypes::Integer);
    nkdMetadataEntry second = m_set.createEntry(nkMetadataTypes::Integer);
    m_log->clear();
    {
        nkScopedUndo undo(true);
        first.setValue(1);
        first.setValue(2);
        second.setValue(1);
        second.setValue(2);
        second.setKey(QStringLiteral("k"));
        QCOMPARE(m_log->takeProperties(), (Properties{{first.getObjectId(), QStringLiteral("value")}}));
    }
    const Properties rest = m_log->takeProperties();
    QCOMPARE(rest.count({second.getObjectId(), QStringLiteral("value")}), 1);
    QCOMPARE(rest.count({second.getObjectId(), QStringLiteral("key")}), 1);
    QVERIFY(rest.count({first.getObjectId(), QStringLiteral("value")}) <= 1);
}

void TestNotifications::creationsTellNoProperties()
{
    {
        nkScopedUndo undo(true);
        nkdMetadataSet made = nkMetadataService::the().createSet(QStringLiteral("made"), {});
        nkdMetadataEntry entry = made.createEntry(nkMetadataTypes::Integer);
        entry.setValue(5);
        entry.setKey(QStringLiteral("k"));
        made.setColor(Qt::red);
    }
    QCOMPARE(m_log->takeProperties(), Properties());
}

void TestNotifications::aNewEntrysAnnouncementHasGoneWhenItIsReturned()
{
    nkScopedUndo undo(true);
    m_set.createEntry(nkMetadataTypes::String);
    QCOMPARE(m_log->takeFlags(), Flags{nkMetadataTypes::EntriesChanged});
}

void TestNotifications::propertyNamesAreTheContracts()
{
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::String);
    entry.setValue(QStringLiteral("text"));
    m_log->clear();
    m_set.setName(QStringLiteral("t"));
    m_set.setColor(Qt::red);
    m_set.setLocked(true);
    m_set.setLocked(false);
    entry.setKey(QStringLiteral("k"));
    entry.setValue(QStringLiteral("v"));
    entry.setValueType(nkMetadataTypes::Integer);
    QStringList names;
    for (const auto &property : m_log->takeProperties()) {
        names.append(property.second);
    }
    names.removeDuplicates();
    names.sort();
    QCOMPARE(names,
             (QStringList{QStringLiteral("color"), QStringLiteral("key"), QStringLiteral("locked"),
                          QStringLiteral("name"), QStringLiteral("value"), QStringLiteral("valueType")}));
}

void TestNotifications::undoAndRedoAnnounceLikeTheChange()
{
    nkdMetadataEntry entry = m_set.createEntry(nkMetadataTypes::Integer);
    entry.setValue(4);
    m_log->clear();
    const Properties value{{entry.getObjectId(), QStringLiteral("value")}};
    kernel::Document::the().undo();
    QCOMPARE(m_log->takeFlags(), Flags{nkMetadataTypes::EntriesChanged});
    QCOMPARE(m_log->takeProperties(), value);
    kernel::Document::the().redo();
    QCOMPARE(m_log->takeFlags(), Flags{nkMetadataTypes::EntriesChanged});
    QCOMPARE(m_log->takeProperties(), value);
}

void TestNotifications::aWriteFromInsideAnAnnouncementIsAnnouncedToo()
{
    QObject context;
    bool written = false;
    nkdMetadataSet set = m_set;
    connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, &context,
            [&written, set]() mutable {
                if (!written) {
                    written = true;
                    set.createEntry(nkMetadataTypes::String);
                }
            });
    m_set.setName(QStringLiteral("t"));
    QVERIFY(written);
    QCOMPARE(m_set.getEntries().size(), 1);
    int all = 0;
    for (int flags : m_log->takeFlags()) {
        all |= flags;
    }
    QCOMPARE(all, nkMetadataTypes::SetsChanged | nkMetadataTypes::EntriesChanged);
    kernel::Document::the().undo();
    kernel::Document::the().undo();
    QCOMPARE(m_set.getName(), QStringLiteral("s"));
    QCOMPARE(m_set.getEntries().size(), 0);
}

void TestNotifications::renamingAnObjectTellsItsName()
{
    nkdNode node = SceneFixture::node(QStringLiteral("n"));
    m_log->clear();
    node.setName(QStringLiteral("m"));
    QCOMPARE(m_log->takeProperties(), (Properties{{node.getObjectId(), QStringLiteral("name")}}));
    QCOMPARE(m_log->takeFlags(), Flags());
}

void TestNotifications::theFirstOwnEntryOfAnObjectChangesWhoCarriesMetadata()
{
    const nkdNode node = SceneFixture::node(QStringLiteral("n"));
    nkdMetadataSet own = nkdMetadata::fromObject(node).getObjectSet();
    m_log->clear();
    nkdMetadataEntry first = own.createEntry(nkMetadataTypes::String);
    QCOMPARE(m_log->takeFlags(), Flags{6});
    nkdMetadataEntry second = own.createEntry(nkMetadataTypes::String);
    QCOMPARE(m_log->takeFlags(), Flags{2});
    own.getEntries().remove(first);
    QCOMPARE(m_log->takeFlags(), Flags{2});
    own.getEntries().remove(second);
    QCOMPARE(m_log->takeFlags(), Flags{6});
}

NK_GUILESS_TEST_MAIN(TestNotifications)
#include "test_notifications.moc"
