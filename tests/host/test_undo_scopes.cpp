#include "../support/SceneFixture.h"
#include "TestMain.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScopedMultiCommand.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkUndoString.h>

#include <QUndoStack>

/// Undo scopes: what becomes a step, and what it is called.
class TestUndoScopes : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();

    void aScopeIsOneStep();
    void nestedScopesAreOneStep();
    void aChangeOutsideAnyScopeIsAStepOfItsOwn();
    void aScopeWithoutChangesLeavesNothing();
    void aScopeOfWritesThatChangeNothingLeavesNothing();
    void aMultiCommandWithoutAScopeOpensOne();
    void theOutermostMultiCommandGivesTheTitle();
    void withoutAMultiCommandTheFirstChangeGivesTheTitle();
    void aDisabledMultiCommandGivesNoTitle();
    void theTextOfAnUndoStringIsTheTitleAlone();
    void undoAndRedoAreRefusedWhileAScopeIsOpen();
    void aScopeThatIsNotUndoableLeavesNoStep();
    void undoAndRedoRestoreEveryChangeOfAStep();

private:
    QUndoStack *stack() const { return kernel::Document::the().undoStack(); }
    nkdMetadataSet m_set;
};

void TestUndoScopes::init()
{
    SceneFixture::reset();
    m_set = nkMetadataService::the().createSet(QStringLiteral("s"), {});
    stack()->clear();
}

void TestUndoScopes::aScopeIsOneStep()
{
    {
        nkScopedUndo undo(true);
        m_set.setLocked(true);
        m_set.setLocked(false);
        m_set.setColor(Qt::red);
    }
    QCOMPARE(stack()->count(), 1);
}

void TestUndoScopes::nestedScopesAreOneStep()
{
    {
        nkScopedUndo outer(true);
        {
            nkScopedUndo inner(true);
            nkScopedMultiCommand command(nkUndoString(QStringLiteral("Inner")), true);
            m_set.setColor(Qt::red);
        }
        QCOMPARE(stack()->count(), 0);
        m_set.setName(QStringLiteral("t"));
    }
    QCOMPARE(stack()->count(), 1);
    QVERIFY(kernel::Document::the().undo());
    QCOMPARE(m_set.getName(), QStringLiteral("s"));
    QVERIFY(m_set.getColor() != QColor(Qt::red));
}

void TestUndoScopes::aChangeOutsideAnyScopeIsAStepOfItsOwn()
{
    m_set.setColor(Qt::red);
    m_set.setName(QStringLiteral("t"));
    QCOMPARE(stack()->count(), 2);
}

void TestUndoScopes::aScopeWithoutChangesLeavesNothing()
{
    {
        nkScopedUndo undo(true);
        nkScopedMultiCommand command(nkUndoString(QStringLiteral("Nothing")), true);
    }
    QCOMPARE(stack()->count(), 0);
}

void TestUndoScopes::aScopeOfWritesThatChangeNothingLeavesNothing()
{
    {
        nkScopedUndo undo(true);
        nkScopedMultiCommand command(nkUndoString(QStringLiteral("Nothing")), true);
        m_set.setName(m_set.getName());
        m_set.setColor(m_set.getColor());
        m_set.setLocked(false);
        nkMetadataService::the().deleteSets({});
        nkMetadataService::the().assignSets({}, {m_set});
    }
    QCOMPARE(stack()->count(), 0);
}

void TestUndoScopes::aMultiCommandWithoutAScopeOpensOne()
{
    {
        nkScopedMultiCommand command(nkUndoString(QStringLiteral("Both")), true);
        m_set.setColor(Qt::red);
        m_set.setName(QStringLiteral("t"));
        QVERIFY(kernel::Document::the().isScopeOpen());
    }
    QCOMPARE(stack()->count(), 1);
    QCOMPARE(stack()->undoText(), QStringLiteral("Both"));
}

void TestUndoScopes::theOutermostMultiCommandGivesTheTitle()
{
    {
        nkScopedUndo undo(true);
        m_set.setColor(Qt::red);
        nkScopedMultiCommand outer(
            nkUndoString(QStringLiteral("Outer"), QStringLiteral("Metadata Editor"), QString()), true);
        nkScopedMultiCommand inner(nkUndoString(QStringLiteral("Inner")), true);
        m_set.setName(QStringLiteral("t"));
    }
    QCOMPARE(stack()->undoText(), QStringLiteral("Outer"));
}

void TestUndoScopes::withoutAMultiCommandTheFirstChangeGivesTheTitle()
{
    m_set.setName(QStringLiteral("t"));
    const QString renameTitle = stack()->undoText();
    QVERIFY(!renameTitle.isEmpty());
    {
        nkScopedUndo undo(true);
        m_set.setName(QStringLiteral("u"));
        m_set.setColor(Qt::red);
    }
    QCOMPARE(stack()->undoText(), renameTitle);
}

void TestUndoScopes::aDisabledMultiCommandGivesNoTitle()
{
    {
        nkScopedUndo undo(true);
        nkScopedMultiCommand command(nkUndoString(QStringLiteral("Not me")), false);
        m_set.setColor(Qt::red);
    }
    QVERIFY(stack()->undoText() != QStringLiteral("Not me"));
}

void TestUndoScopes::theTextOfAnUndoStringIsTheTitleAlone()
{
    const nkUndoString title(QStringLiteral("Delete"), QStringLiteral("Metadata Editor"),
                             QStringLiteral("x"));
    QCOMPARE(title.text(), QStringLiteral("Delete"));
    QCOMPARE(title.category(), QStringLiteral("Metadata Editor"));
    QCOMPARE(title.detail(), QStringLiteral("x"));
}

void TestUndoScopes::undoAndRedoAreRefusedWhileAScopeIsOpen()
{
    m_set.setName(QStringLiteral("t"));
    {
        nkScopedUndo undo(true);
        QVERIFY(!kernel::Document::the().undo());
        stack()->undo();
        QCOMPARE(m_set.getName(), QStringLiteral("t"));
    }
    QVERIFY(kernel::Document::the().undo());
    {
        nkScopedUndo undo(true);
        QVERIFY(!kernel::Document::the().redo());
        stack()->redo();
        QCOMPARE(m_set.getName(), QStringLiteral("s"));
    }
}

void TestUndoScopes::aScopeThatIsNotUndoableLeavesNoStep()
{
    {
        nkScopedUndo undo(false);
        m_set.setName(QStringLiteral("t"));
    }
    QCOMPARE(m_set.getName(), QStringLiteral("t"));
    QCOMPARE(stack()->count(), 0);
}

void TestUndoScopes::undoAndRedoRestoreEveryChangeOfAStep()
{
    nkdMetadataEntry entry;
    {
        nkScopedUndo undo(true);
        entry = m_set.createEntry(nkMetadataTypes::Integer);
        entry.setValue(7);
        entry.setKey(QStringLiteral("weight"));
        m_set.setColor(Qt::blue);
    }
    QVERIFY(kernel::Document::the().undo());
    QVERIFY(!entry.isAlive());
    QCOMPARE(m_set.getEntries().size(), 0);
    QVERIFY(kernel::Document::the().redo());
    QVERIFY(entry.isAlive());
    QCOMPARE(entry.getKey(), QStringLiteral("weight"));
    QCOMPARE(entry.getValue(), QVariant(7));
    QCOMPARE(m_set.getColor(), QColor(Qt::blue));
}

NK_GUILESS_TEST_MAIN(TestUndoScopes)
#include "test_undo_scopes.moc"
