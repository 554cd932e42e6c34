#include "../interchange/FaultyFileCalls.h"
#include "Crash.h"
#include "MainWindow.h"
#include "Workbench.h"
#include "files/Autosave.h"
#include "files/RecentFiles.h"
#include "files/SceneSession.h"
#include "preferences/Options.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <interchange/gltf/GlbContainer.h>
#include <kernel/document/Document.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkPlatformService.h>
#include <nkKernelServices/nkScopedUndo.h>
#include <nkKernelServices/nkdMetadata.h>

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QLoggingCategory>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUndoStack>

using kernel::Document;

/// Copies for recovery: written beside the person's file, offered after a crash, gone when nothing would be lost.
class TestAutosave : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void aCopyIsWrittenWhileThereAreChangesAndTheFileIsLeftAlone();
    void theCopyGoesWhenNothingWouldBeLost_data();
    void theCopyGoesWhenNothingWouldBeLost();
    void itIsWrittenAsOftenAsThePreferencesSay();
    void nothingIsWrittenWhileAChangeIsUnderWay();
    void aCopyThatCannotBeWrittenIsToldOnce();
    void afterACrashTheChangesAreOfferedAndRestored();
    void whatWasRestoredIsSavedIntoItsFileWithoutAQuestion();
    void aFileThatHasChangedSinceIsNotOverwrittenWithoutAQuestion();
    void aFileThatIsGoneIsWrittenAgain();
    void aSceneWithoutAFileIsRestoredAsOne();
    void aBinarySceneIsRestoredWithItsGeometry();
    void discardingRemovesTheCopyAndLaterKeepsIt();
    void aRestoredSceneThatCrashesAgainIsOfferedAgain();
    void copiesOfARunningProgramAreNotOffered();
    void aCopyThatCannotBeOpenedIsToldAndKept();
    void leftoversWithoutACopyGo_data();
    void leftoversWithoutACopyGo();
    void aProgramKilledAtAnyCallOfTheSystemLeavesAWholeCopy();

private:
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                        : QString();
    }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }
    static QByteArray scene(const QByteArray &value = "1")
    {
        return R"({"asset":{"version":"2.0"},"buffers":[{"uri":"a.bin","byteLength":4}],)"
               R"("nodes":[{"name":"Part","extras":{"k":)"
               + value + "}}]}";
    }
    static nkdMetadataEntry entry()
    {
        const nkdSceneObject part{nkdObject(Document::the().topLevelNodes().value(0))};
        return nkdMetadata::fromObject(part).getObjectSet().getEntries().find(QStringLiteral("k"));
    }
    static QString root() { return nkPlatformService::the().getUserDataDirectory() + "recovery"; }
    static QStringList slotFolders() { return QDir(root()).entryList(QDir::Dirs | QDir::NoDotAndDotDot); }
    /// The copies that lie there.
    static QStringList copies()
    {
        QStringList found;
        for (const QString &slot : slotFolders()) {
            const QDir folder(QDir(root()).filePath(slot));
            for (const QString &name : folder.entryList({"*.glb", "*.gltf"}, QDir::Files)) {
                found.append(folder.filePath(name));
            }
        }
        return found;
    }
    void trigger(const char *name) const
    {
        m_workbench->window()->fileMenu()->findChild<QAction *>(QLatin1String(name))->trigger();
    }
    SceneSession *session() const { return m_workbench->session(); }
    Autosave *autosave() const { return m_workbench->autosave(); }
    void restart()
    {
        m_workbench.reset();
        m_workbench = std::make_unique<Workbench>();
        m_workbench->show();
    }
    void restore() const
    {
        const ModalAnswer yes = ModalAnswer::button(QStringLiteral("Restore"));
        m_workbench->offerRecovery();
        QVERIFY(yes.given());
    }
    void crashWithValue(int value) const
    {
        Crash::after([this, value] {
            entry().setValue(value);
            autosave()->write();
        });
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Workbench> m_workbench;
    QString m_path;
};

void TestAutosave::init()
{
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    QDir(root()).removeRecursively();
    Options::autosave.store(1);
    Options::autosaveMinutes.store(5);
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = write(QStringLiteral("a & b.gltf"), scene());
    m_workbench = std::make_unique<Workbench>();
    QCOMPARE(m_workbench->open(m_path), QString());
    m_workbench->show();
}

void TestAutosave::cleanup()
{
    m_workbench.reset();
}

void TestAutosave::aCopyIsWrittenWhileThereAreChangesAndTheFileIsLeftAlone()
{
    QVERIFY(autosave()->write());
    QVERIFY(copies().isEmpty());
    entry().setValue(2);
    const auto source = session()->source();
    QVERIFY(autosave()->write());
    QCOMPARE(copies().size(), 1);
    QCOMPARE(read(copies().first()), scene("2"));
    QCOMPARE(read(m_path), scene());
    QCOMPARE(session()->path(), m_path);
    QCOMPARE(session()->source(), source);
    QVERIFY(session()->isModified() && m_workbench->window()->isWindowModified());
    QVERIFY(Document::the().undoStack()->canUndo());
    QCOMPARE(RecentFiles::files().first(), m_path);
    // Nothing new: the copy is left as it is.
    const QString first = copies().first();
    QVERIFY(autosave()->write());
    QCOMPARE(copies(), QStringList{first});
    entry().setValue(3);
    QVERIFY(autosave()->write());
    QCOMPARE(copies().size(), 1);
    QCOMPARE(read(copies().first()), scene("3"));
}

void TestAutosave::theCopyGoesWhenNothingWouldBeLost_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : {"save", "undo", "open", "new", "end", "off"}) {
        QTest::newRow(how) << how;
    }
}

void TestAutosave::theCopyGoesWhenNothingWouldBeLost()
{
    QFETCH(QString, how);
    entry().setValue(2);
    QVERIFY(autosave()->write());
    QCOMPARE(slotFolders().size(), 1);
    if (how == QLatin1String("save")) {
        trigger("fileSave");
    } else if (how == QLatin1String("undo")) {
        Document::the().undo();
    } else if (how == QLatin1String("open")) {
        QCOMPARE(m_workbench->open(m_path), QString());
    } else if (how == QLatin1String("new")) {
        const ModalAnswer discard = ModalAnswer::button(QMessageBox::Discard);
        trigger("fileNew");
    } else if (how == QLatin1String("end")) {
        m_workbench.reset();
    } else {
        Options::autosave.store(0);
    }
    QCOMPARE(slotFolders(), QStringList());
}

void TestAutosave::itIsWrittenAsOftenAsThePreferencesSay()
{
    const auto *timer = autosave()->findChild<QTimer *>();
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 5 * 60 * 1000);
    Options::autosaveMinutes.store(7);
    QCOMPARE(timer->interval(), 7 * 60 * 1000);
    Options::autosave.store(0);
    QVERIFY(!timer->isActive());
    Options::autosave.store(1);
    QVERIFY(timer->isActive());
}

void TestAutosave::nothingIsWrittenWhileAChangeIsUnderWay()
{
    auto *timer = autosave()->findChild<QTimer *>();
    {
        const nkScopedUndo scope(true);
        entry().setValue(2);
        QMetaObject::invokeMethod(timer, "timeout");
        QVERIFY(copies().isEmpty());
        QVERIFY2(timer->interval() < 10000, "tried again soon");
    }
    QMetaObject::invokeMethod(timer, "timeout");
    QCOMPARE(copies().size(), 1);
    QCOMPARE(timer->interval(), 5 * 60 * 1000);
}

void TestAutosave::aCopyThatCannotBeWrittenIsToldOnce()
{
    QVERIFY(QDir().mkpath(root()) && QDir(root()).removeRecursively());
    QFile inTheWay(root());
    QVERIFY(inTheWay.open(QIODevice::WriteOnly));
    QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
    entry().setValue(2);
    QVERIFY(!autosave()->write());
    QVERIFY(!autosave()->write());
    QCOMPARE(reports.size(), 1);
    QVERIFY(reports.at(0).at(2).toString().contains(QStringLiteral("cannot be made or written to")));
    QVERIFY(inTheWay.remove());
    QVERIFY(autosave()->write());
    QCOMPARE(copies().size(), 1);
}

void TestAutosave::afterACrashTheChangesAreOfferedAndRestored()
{
    crashWithValue(2);
    QCOMPARE(read(m_path), scene());
    restart();
    const ModalAnswer yes = ModalAnswer::button(QStringLiteral("Restore"));
    m_workbench->offerRecovery();
    QVERIFY(yes.record().text.contains(QStringLiteral("“a & b.gltf”")));
    QVERIFY(yes.record().informativeText.contains(m_path));
    QCOMPARE(yes.record().buttons.size(), 3);
    QCOMPARE(yes.record().defaultButton, QStringLiteral("&Restore"));
    QCOMPARE(entry().getValue(), QVariant(2));
    QCOMPARE(session()->path(), m_path);
    QVERIFY(session()->isModified() && m_workbench->window()->isWindowModified());
    QVERIFY(m_workbench->window()->windowTitle().startsWith(QStringLiteral("a & b.gltf[*]")));
    // Nothing is lost by looking at it, and nothing without a question.
    const ModalAnswer cancel = ModalAnswer::button(QMessageBox::Cancel);
    trigger("fileNew");
    QVERIFY(cancel.given());
    QCOMPARE(copies().size(), 1);
}

void TestAutosave::whatWasRestoredIsSavedIntoItsFileWithoutAQuestion()
{
    crashWithValue(2);
    restart();
    restore();
    trigger("fileSave");
    QCOMPARE(read(m_path), scene("2"));
    QVERIFY(!session()->isModified() && !m_workbench->window()->isWindowModified());
    QVERIFY(slotFolders().isEmpty());
    entry().setValue(3);
    trigger("fileSave");
    QCOMPARE(read(m_path), scene("3"));
}

void TestAutosave::aFileThatHasChangedSinceIsNotOverwrittenWithoutAQuestion()
{
    crashWithValue(2);
    write(QStringLiteral("a & b.gltf"), scene("9"));
    restart();
    restore();
    {
        const ModalAnswer cancel = ModalAnswer::button(QMessageBox::Cancel);
        trigger("fileSave");
        QVERIFY(cancel.record().text.contains(QStringLiteral("another program")));
    }
    QCOMPARE(read(m_path), scene("9"));
    QVERIFY(session()->isModified());
    QCOMPARE(copies().size(), 1);
    const ModalAnswer overwrite = ModalAnswer::button(QStringLiteral("Overwrite"));
    trigger("fileSave");
    QCOMPARE(read(m_path), scene("2"));
    QVERIFY(!session()->isModified());
}

void TestAutosave::aFileThatIsGoneIsWrittenAgain()
{
    crashWithValue(2);
    QVERIFY(QFile::remove(m_path));
    restart();
    restore();
    trigger("fileSave");
    QCOMPARE(read(m_path), scene("2"));
}

void TestAutosave::aSceneWithoutAFileIsRestoredAsOne()
{
    trigger("fileNew");
    Crash::after([this] {
        nkMetadataService::the().createSet(QStringLiteral("Fresh"), {});
        autosave()->write();
    });
    restart();
    const ModalAnswer yes = ModalAnswer::button(QStringLiteral("Restore"));
    m_workbench->offerRecovery();
    QVERIFY(yes.record().text.contains(QStringLiteral("“Untitled”")));
    QCOMPARE(session()->path(), QString());
    QCOMPARE(nkMetadataService::the().getAllSets().first().getName(), QStringLiteral("Fresh"));
    QString suggested;
    const ModalAnswer where(ModalAnswer::DialogAction([&suggested](QDialog *dialog) {
        suggested = qobject_cast<QFileDialog *>(dialog)->selectedFiles().value(0);
        dialog->reject();
    }));
    trigger("fileSave");
    QCOMPARE(QFileInfo(suggested).fileName(), QStringLiteral("Untitled.gltf"));
}

void TestAutosave::aBinarySceneIsRestoredWithItsGeometry()
{
    QByteArray json = R"({"asset":{"version":"2.0"},"nodes":[{"name":"Part","extras":{"k":1}}]})";
    json.append(QByteArray(interchange::GlbContainer::paddingFor(json.size()), ' '));
    const QByteArray bin = QByteArray("\4\0\0\0BIN\0\1\2\3\4", 12);
    const QByteArray glb = interchange::GlbContainer::head(json.size(), bin.size()) + json + bin;
    const QString path = write(QStringLiteral("part.glb"), glb);
    QCOMPARE(m_workbench->open(path), QString());
    crashWithValue(12345);
    restart();
    restore();
    QCOMPARE(entry().getValue(), QVariant(12345));
    QCOMPARE(read(path), glb);
    trigger("fileSave");
    QVERIFY(read(path).contains("12345"));
    QVERIFY(read(path).endsWith(bin));
}

void TestAutosave::discardingRemovesTheCopyAndLaterKeepsIt()
{
    crashWithValue(2);
    restart();
    {
        const ModalAnswer later = ModalAnswer::reject();
        m_workbench->offerRecovery();
    }
    QCOMPARE(copies().size(), 1);
    QVERIFY(session()->path().isEmpty());
    {
        const ModalAnswer discard = ModalAnswer::button(QStringLiteral("Discard"));
        m_workbench->offerRecovery();
    }
    QVERIFY(slotFolders().isEmpty());
    m_workbench->offerRecovery();
}

void TestAutosave::aRestoredSceneThatCrashesAgainIsOfferedAgain()
{
    crashWithValue(2);
    restart();
    // All of it in the process that dies: what is held by this one is not offered.
    Crash::after([this] {
        for (std::unique_ptr<RecoverySlot> &slot : RecoverySlot::abandoned()) {
            session()->recover(slot->copy(), slot->note().file, true);
        }
    });
    QCOMPARE(copies().size(), 1);
    restore();
    crashWithValue(4);
    QCOMPARE(entry().getValue(), QVariant(2));
    m_workbench.reset();
    QVERIFY2(slotFolders().isEmpty(), "the end of this program was no crash");
}

void TestAutosave::copiesOfARunningProgramAreNotOffered()
{
    entry().setValue(2);
    QVERIFY(autosave()->write());
    QVERIFY(RecoverySlot::abandoned().empty());
    m_workbench->offerRecovery();
    QCOMPARE(copies().size(), 1);
}

void TestAutosave::aCopyThatCannotBeOpenedIsToldAndKept()
{
    crashWithValue(2);
    QFile copy(copies().first());
    QVERIFY(copy.open(QIODevice::WriteOnly) && copy.write("{\"asset\"") > 0);
    copy.close();
    restart();
    const ModalAnswer yes = ModalAnswer::button(QStringLiteral("Restore"));
    const ModalAnswer told = ModalAnswer::button(QMessageBox::Ok);
    m_workbench->offerRecovery();
    QTRY_VERIFY(told.given());
    QVERIFY(told.record().text.contains(QStringLiteral("line 1")));
    QCOMPARE(copies().size(), 1);
    QVERIFY(!session()->isModified());
}

void TestAutosave::leftoversWithoutACopyGo_data()
{
    QTest::addColumn<QByteArray>("note");
    QTest::newRow("no note") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("{{{");
    QTest::newRow("no copy") << QByteArray(R"({"copy":"first.gltf","file":"/a.gltf"})");
    QTest::newRow("elsewhere") << QByteArray(R"({"copy":"../../preferences.json","file":"/a.gltf"})");
}

void TestAutosave::leftoversWithoutACopyGo()
{
    QFETCH(QByteArray, note);
    const QDir slot(root() + "/some");
    QVERIFY(QDir().mkpath(slot.path()));
    QFile file(slot.filePath("scene.json"));
    QVERIFY(note.isEmpty() || (file.open(QIODevice::WriteOnly) && file.write(note) > 0));
    file.close();
    m_workbench->offerRecovery();
    QVERIFY(!slot.exists());
}

void TestAutosave::aProgramKilledAtAnyCallOfTheSystemLeavesAWholeCopy()
{
    int calls = 0;
    for (int at = 1; at <= qMax(calls, 1); ++at) {
        QDir(root()).removeRecursively();
        Crash::after([this, at] {
            entry().setValue(2);
            autosave()->write();
            entry().setValue(3);
            FaultyFileCalls faulty;
            faulty.fault = FaultyFileCalls::Kill;
            faulty.at = at;
            autosave()->write();
            QFile(m_folder->filePath("calls")).open(QIODevice::WriteOnly);
        });
        // The first one that is killed nowhere is the end.
        calls = QFile::remove(m_folder->filePath("calls")) ? 0 : at + 1;
        QVERIFY(at < 1000);
        auto found = RecoverySlot::abandoned();
        QCOMPARE(int(found.size()), 1);
        const QByteArray copy = read(found.front()->copy());
        QVERIFY2(copy == scene("2") || copy == scene("3"), qPrintable(QString::number(at)));
        if (calls == 0) {
            QVERIFY(at > 10);
            QCOMPARE(copy, scene("3"));
        }
    }
}

NK_TEST_MAIN(TestAutosave)
#include "test_autosave.moc"
