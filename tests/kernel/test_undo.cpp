#include <TestMain.h>

#include "NewsRecorder.h"

#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QAction>
#include <QUndoStack>

using kernel::Document;
using T = nkMetadataTypes;

/// What makes one step, what it is called, and what undo and redo may do when.
class TestUndo : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void aChangeOutsideAnyScopeIsAStep();
    void aScopeIsOneStepHoweverDeepItNests();
    void aScopeWithoutChangeLeavesNothing();
    void theFirstChangeTitlesTheStep();
    void theOutermostMultiCommandTitlesTheStep();
    void aMultiCommandThatSawNoChangeGivesNoTitle();
    void aMultiCommandIsAScopeOfItsOwn();
    void aDisabledMultiCommandDoesNothing();
    void aScopeThatIsNotUndoableEndsTheHistory();
    void theOutermostScopeDecidesWhatIsUndoable();
    void undoAndRedoAreRefusedInAScope();
    void theStackItselfIsHeldBackInAScope();
    void undoFromInsideAnAnnouncementOfAnUndo();
    void redoBranchGoesWithANewChange();
    void modifiedFollowsTheSavedState();
    void modifiedStaysTruePastTheUndoLimit();
    void modifiedIsAnnounced();
    void undoToTheStartAndRedoToTheEnd();

private:
    QUndoStack &stack() { return *m_document.undoStack(); }

    Document &m_document = Document::the();
    nkMetadataService &m_service = nkMetadataService::the();
    nkdMetadataSet m_set;
    nkdMetadataEntry m_entry;
};

void TestUndo::init()
{
    QVERIFY(m_document.clear());
    stack().setUndoLimit(0);
    m_set = m_service.createSet(QStringLiteral("S"), {});
    m_entry = m_set.createEntry(T::Integer);
    stack().clear();
    m_document.markSaved();
}

void TestUndo::aChangeOutsideAnyScopeIsAStep()
{
    m_entry.setValue(1);
    m_entry.setValue(2);
    QCOMPARE(stack().count(), 2);
    QVERIFY(m_document.undo());
    QCOMPARE(m_entry.getValue(), QVariant(1));
    QVERIFY(m_document.undo());
    QVERIFY(!m_document.undo());
    QVERIFY(m_document.redo() && m_document.redo() && !m_document.redo());
    QCOMPARE(m_entry.getValue(), QVariant(2));
}

void TestUndo::aScopeIsOneStepHoweverDeepItNests()
{
    {
        const nkScopedUndo scope(true);
        m_entry.setValue(1);
        {
            const nkScopedUndo inner(true);
            const nkScopedMultiCommand command(nkUndoString(QStringLiteral("Inner")));
            m_set.setName(QStringLiteral("T"));
            m_set.createEntry(T::Tag);
        }
        m_entry.setValue(2);
        QCOMPARE(stack().count(), 0);
        QVERIFY(m_document.isScopeOpen());
    }
    QVERIFY(!m_document.isScopeOpen());
    QCOMPARE(stack().count(), 1);
    m_document.undo();
    QCOMPARE(m_entry.getValue(), QVariant(0));
    QCOMPARE(m_set.getName(), QStringLiteral("S"));
    QCOMPARE(m_set.getEntries().size(), 1);
    m_document.redo();
    QCOMPARE(m_entry.getValue(), QVariant(2));
    QCOMPARE(m_set.getEntries().size(), 2);
}

void TestUndo::aScopeWithoutChangeLeavesNothing()
{
    NewsRecorder news;
    {
        const nkScopedUndo scope(true);
        const nkScopedMultiCommand command(nkUndoString(QStringLiteral("Nothing")));
        m_entry.setValue(0);
        m_service.deleteSets({});
    }
    QCOMPARE(stack().count(), 0);
    QVERIFY(news.take().isEmpty());
    QVERIFY(!m_document.isModified());
}

void TestUndo::theFirstChangeTitlesTheStep()
{
    {
        const nkScopedUndo scope(true);
        m_entry.setKey(QStringLiteral("k"));
        m_entry.setValue(1);
    }
    QCOMPARE(stack().undoText(), QStringLiteral("Change Key"));
    m_entry.setValue(2);
    QCOMPARE(stack().undoText(), QStringLiteral("Change Value"));
    m_set.setLocked(true);
    QCOMPARE(stack().undoText(), QStringLiteral("Lock Metadata Set"));
}

void TestUndo::theOutermostMultiCommandTitlesTheStep()
{
    {
        const nkScopedUndo scope(true);
        m_entry.setValue(1);
        {
            const nkScopedMultiCommand outer(
                nkUndoString(QStringLiteral("Outer"), QStringLiteral("Metadata Editor"), {}));
            const nkScopedMultiCommand inner(nkUndoString(QStringLiteral("Inner")));
            m_entry.setValue(2);
        }
        const nkScopedMultiCommand later(nkUndoString(QStringLiteral("Later")));
        m_entry.setValue(3);
    }
    QCOMPARE(stack().count(), 1);
    QCOMPARE(stack().undoText(), QStringLiteral("Outer"));
}

void TestUndo::aMultiCommandThatSawNoChangeGivesNoTitle()
{
    {
        const nkScopedUndo scope(true);
        {
            const nkScopedMultiCommand nothing(nkUndoString(QStringLiteral("Nothing")));
        }
        m_entry.setValue(1);
    }
    QCOMPARE(stack().undoText(), QStringLiteral("Change Value"));
}

void TestUndo::aMultiCommandIsAScopeOfItsOwn()
{
    {
        const nkScopedMultiCommand command(nkUndoString(QStringLiteral("Both")));
        m_entry.setValue(1);
        m_entry.setValue(2);
    }
    QCOMPARE(stack().count(), 1);
    QCOMPARE(stack().undoText(), QStringLiteral("Both"));
}

void TestUndo::aDisabledMultiCommandDoesNothing()
{
    {
        const nkScopedMultiCommand command(nkUndoString(QStringLiteral("Off")), false);
        QVERIFY(!m_document.isScopeOpen());
        m_entry.setValue(1);
        m_entry.setValue(2);
    }
    QCOMPARE(stack().count(), 2);
    QCOMPARE(stack().undoText(), QStringLiteral("Change Value"));
}

void TestUndo::aScopeThatIsNotUndoableEndsTheHistory()
{
    m_entry.setValue(1);
    {
        const nkScopedUndo scope(false);
    }
    QCOMPARE(stack().count(), 1);
    NewsRecorder news;
    {
        const nkScopedUndo scope(false);
        m_entry.setValue(2);
        QCOMPARE(news.take().first(), QStringLiteral("metadata 2"));
    }
    QCOMPARE(stack().count(), 0);
    QCOMPARE(m_entry.getValue(), QVariant(2));
    QVERIFY(m_document.isModified());
}

void TestUndo::theOutermostScopeDecidesWhatIsUndoable()
{
    {
        const nkScopedUndo outer(true);
        const nkScopedUndo inner(false);
        m_entry.setValue(1);
    }
    QCOMPARE(stack().count(), 1);
    {
        const nkScopedUndo outer(false);
        const nkScopedMultiCommand inner(nkUndoString(QStringLiteral("x")));
        m_entry.setValue(2);
    }
    QCOMPARE(stack().count(), 0);
}

void TestUndo::undoAndRedoAreRefusedInAScope()
{
    m_entry.setValue(1);
    m_entry.setValue(2);
    m_document.undo();
    const nkScopedUndo scope(true);
    QVERIFY(!m_document.undo());
    QVERIFY(!m_document.redo());
    QCOMPARE(m_entry.getValue(), QVariant(1));
}

void TestUndo::theStackItselfIsHeldBackInAScope()
{
    for (int value = 1; value <= 3; ++value) {
        m_entry.setValue(value);
    }
    m_document.undo();
    QAction *undoAction = stack().createUndoAction(this);
    {
        const nkScopedUndo scope(true);
        stack().undo();
        QCOMPARE(stack().index(), 2);
        undoAction->trigger();
        stack().redo();
        stack().setIndex(0);
        QCOMPARE(stack().index(), 2);
        QCOMPARE(m_entry.getValue(), QVariant(2));
        QVERIFY(undoAction->isEnabled());
    }
    QCOMPARE(stack().count(), 3);
    undoAction->trigger();
    QCOMPARE(m_entry.getValue(), QVariant(1));
    stack().setIndex(3);
    QCOMPARE(m_entry.getValue(), QVariant(3));
    delete undoAction;
}

void TestUndo::undoFromInsideAnAnnouncementOfAnUndo()
{
    for (int value = 1; value <= 3; ++value) {
        m_entry.setValue(value);
    }
    QObject context;
    bool isNested = false;
    connect(&m_service, &nkMetadataService::metadataChanged, &context, [&] {
        if (!isNested) {
            isNested = true;
            QVERIFY(m_document.undo());
        }
    });
    QVERIFY(m_document.undo());
    QCOMPARE(m_entry.getValue(), QVariant(1));
    QCOMPARE(stack().index(), 1);
}

void TestUndo::redoBranchGoesWithANewChange()
{
    m_entry.setValue(1);
    const nkdMetadataEntry lost = m_set.createEntry(T::String);
    m_document.undo();
    m_entry.setValue(5);
    QVERIFY(!m_document.redo());
    QVERIFY(!lost.isAlive());
    QCOMPARE(m_set.createEntry(T::String).getKey(), QStringLiteral("Key2"));
}

void TestUndo::modifiedFollowsTheSavedState()
{
    QVERIFY(!m_document.isModified());
    m_entry.setValue(1);
    QVERIFY(m_document.isModified());
    m_document.markSaved();
    m_entry.setValue(2);
    m_document.undo();
    QVERIFY(!m_document.isModified());
    m_document.undo();
    QVERIFY(m_document.isModified());
    m_document.redo();
    QVERIFY(!m_document.isModified());
    m_document.undo();
    // The saved state is on a branch that is gone now.
    m_entry.setValue(9);
    m_document.undo();
    QVERIFY(m_document.isModified());
    {
        const nkScopedUndo scope(true);
        m_document.markSaved();
        m_entry.setValue(10);
        QVERIFY(m_document.isModified());
    }
    m_document.undo();
    QVERIFY(!m_document.isModified());
}

void TestUndo::modifiedStaysTruePastTheUndoLimit()
{
    stack().setUndoLimit(2);
    for (int value = 1; value <= 5; ++value) {
        m_entry.setValue(value);
    }
    QCOMPARE(stack().count(), 2);
    while (m_document.undo()) {}
    QCOMPARE(m_entry.getValue(), QVariant(3));
    QVERIFY(m_document.isModified());
}

void TestUndo::modifiedIsAnnounced()
{
    QSignalSpy spy(&m_document, &Document::modifiedChanged);
    m_entry.setValue(1);
    m_entry.setValue(2);
    m_document.undo();
    m_document.undo();
    m_document.redo();
    m_document.markSaved();
    QList<bool> told;
    for (const QVariantList &arguments : qAsConst(spy)) {
        told << arguments.first().toBool();
    }
    QCOMPARE(told, (QList<bool>{true, false, true, false}));
}

void TestUndo::undoToTheStartAndRedoToTheEnd()
{
    const nkdSceneObject object(nkdObject(m_document.createObject(nkObjectType::Node, QStringLiteral("n"))));
    QStringList pictures{m_set.dump()};
    const int start = stack().count();
    const auto step = [&] { pictures << m_set.dump(); };
    m_entry.setValue(3);
    step();
    m_set.createEntry(T::Tag).getKey();
    step();
    m_service.assignSets({object}, {m_set});
    step();
    m_entry.setValueType(T::List);
    step();
    m_set.getEntries().clear();
    step();
    m_set.setColor(Qt::blue);
    step();
    m_service.deleteSets({m_set});
    step();
    QCOMPARE(stack().count() - start, pictures.size() - 1);
    for (int index = pictures.size() - 2; index >= 0; --index) {
        QVERIFY(m_document.undo());
        QCOMPARE(m_set.dump(), pictures.at(index));
    }
    for (int index = 1; index < pictures.size(); ++index) {
        QVERIFY(m_document.redo());
        QCOMPARE(m_set.dump(), pictures.at(index));
    }
}

NK_TEST_MAIN(TestUndo)
#include "test_undo.moc"
