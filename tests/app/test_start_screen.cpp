#include "MainWindow.h"
#include "Workbench.h"
#include "files/RecentFiles.h"
#include "files/SceneSession.h"
#include "panels/EditorPanel.h"
#include "start/RecentList.h"
#include "start/StartScreen.h"

#include <TestMain.h>
#include <WindowFocus.h>
#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QAction>
#include <QDockWidget>
#include <QFileDialog>
#include <QLoggingCategory>
#include <QMenu>
#include <QPushButton>

using kernel::Document;

/// The start screen: there while no scene is open, and every way to one leads from it.
class TestStartScreen : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup() { m_workbench.reset(); }
    void itIsThereWhileNoSceneIsOpen();
    void itLeavesTheCoveredDocksAlone();
    void theFocusStaysInIt();
    void theFocusGoesToTheSceneThatComes();
    void aRecentSceneIsOpenedByKeyAndByMouse();
    void namesArePlainTextAndTheFolderIsSaid();
    void whatIsGoneIsMarkedAndCanOnlyBeRemoved();
    void theListFollowsTheMenu();
    void newAndOpenLeadToAScene();
    void theSampleIsOpenedAsACopyWithoutAFile();
    void theSampleNamedAsAFileIsACopyToo();
    void itFillsTheWindowWhenThatGrows();

private:
    QString write(const QString &name) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(R"({"asset":{"version":"2.0"}})") > 0
                   ? file.fileName()
                   : QString();
    }
    MainWindow *window() const { return m_workbench->window(); }
    StartScreen *start() const { return window()->findChild<StartScreen *>(); }
    QPushButton *button(const char *name) const
    {
        return start()->findChild<QPushButton *>(QLatin1String(name));
    }
    void trigger(const char *name) const
    {
        window()->fileMenu()->findChild<QAction *>(QLatin1String(name))->trigger();
    }
    void show(const QStringList &recent)
    {
        for (int i = recent.size() - 1; i >= 0; --i) {
            RecentFiles::add(recent.at(i));
        }
        m_workbench->show();
        window()->activateWindow();
        QVERIFY(WindowFocus::waitFor(window()));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Workbench> m_workbench;
};

void TestStartScreen::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    RecentFiles::clear();
    m_workbench = std::make_unique<Workbench>();
}

void TestStartScreen::itIsThereWhileNoSceneIsOpen()
{
    show({});
    QVERIFY(start()->isVisible());
    QVERIFY(!window()->windowTitle().contains(QStringLiteral("Untitled")));
    trigger("fileNew");
    QVERIFY(!start()->isVisible());
    trigger("fileClose");
    QVERIFY(start()->isVisible());
    QCOMPARE(m_workbench->open(write(QStringLiteral("a.gltf"))), QString());
    QVERIFY(!start()->isVisible());
    trigger("fileClose");
    QVERIFY(start()->isVisible());
    QCOMPARE(start()->recentFiles()->count(), 1);
}

void TestStartScreen::itLeavesTheCoveredDocksAlone()
{
    show({});
    const QList<QDockWidget *> docks = window()->findChildren<QDockWidget *>();
    QVERIFY(docks.size() > 5);
    for (const QDockWidget *dock : docks) {
        QVERIFY(!dock->isEnabled());
        QVERIFY(dock->visibleRegion().isEmpty() || start()->geometry().contains(dock->geometry()));
    }
    trigger("fileNew");
    for (const QDockWidget *dock : docks) {
        QVERIFY(dock->isEnabled());
    }
}

void TestStartScreen::theFocusStaysInIt()
{
    show({});
    QCOMPARE(window()->focusWidget(), button("startOpen"));
    QSet<QWidget *> seen;
    for (int i = 0; i < 12; ++i) {
        QTest::keyClick(window()->focusWidget(), i < 6 ? Qt::Key_Tab : Qt::Key_Backtab);
        seen.insert(window()->focusWidget());
        QVERIFY(start()->isAncestorOf(window()->focusWidget()));
    }
    // The three ways and the list; what there is to do with a row is disabled without one.
    QCOMPARE(seen.size(), 4);
}

void TestStartScreen::theFocusGoesToTheSceneThatComes()
{
    show({});
    QTest::keyClick(button("startNew"), Qt::Key_Space);
    const QWidget *sceneGraph = window()->panels().constFirst();
    QVERIFY(window()->focusWidget());
    QVERIFY(sceneGraph->isAncestorOf(window()->focusWidget()));
    trigger("fileClose");
    QVERIFY(start()->isAncestorOf(window()->focusWidget()));
}

void TestStartScreen::aRecentSceneIsOpenedByKeyAndByMouse()
{
    const QString one = write(QStringLiteral("one.gltf"));
    const QString two = write(QStringLiteral("two.gltf"));
    show({one, two});
    RecentList *list = start()->recentFiles();
    QCOMPARE(window()->focusWidget(), static_cast<QWidget *>(list));
    QCOMPARE(list->currentPath(), one);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QTRY_COMPARE(m_workbench->session()->path(), two);
    trigger("fileClose");
    QCOMPARE(list->currentRow(), 0);
    const QPoint second = list->visualItemRect(list->item(1)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second);
    QVERIFY(!m_workbench->session()->hasScene());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second);
    QTRY_COMPARE(m_workbench->session()->path(), one);
    trigger("fileClose");
    button("startOpenRecent")->click();
    QTRY_COMPARE(m_workbench->session()->path(), one);
}

void TestStartScreen::namesArePlainTextAndTheFolderIsSaid()
{
    show({write(QStringLiteral("<b>a & \tb.gltf"))});
    const QListWidgetItem *item = start()->recentFiles()->item(0);
    QCOMPARE(item->text(), QStringLiteral("<b>a &  b.gltf"));
    QCOMPARE(item->data(Qt::AccessibleTextRole).toString(),
             QStringLiteral("<b>a &  b.gltf, in %1").arg(m_folder->path()));
    QVERIFY(item->toolTip().contains(QStringLiteral("&lt;b&gt;a")));
}

void TestStartScreen::whatIsGoneIsMarkedAndCanOnlyBeRemoved()
{
    const QString there = write(QStringLiteral("there.gltf"));
    const QString gone = m_folder->filePath(QStringLiteral("gone.gltf"));
    show({gone, there});
    RecentList *list = start()->recentFiles();
    QVERIFY(list->item(0)
                ->data(Qt::AccessibleTextRole)
                .toString()
                .contains(QStringLiteral("not there any more")));
    QVERIFY(!list->item(1)->data(Qt::AccessibleTextRole).toString().contains(QStringLiteral("not there")));
    QVERIFY(!button("startOpenRecent")->isEnabled());
    QTest::keyClick(list, Qt::Key_Return);
    QCoreApplication::processEvents();
    QVERIFY(!m_workbench->session()->hasScene());
    button("startRemoveRecent")->click();
    QCOMPARE(RecentFiles::files(), QStringList{there});
    QCOMPARE(list->count(), 1);
    QVERIFY(button("startOpenRecent")->isEnabled());
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(list->count(), 0);
    QVERIFY(QFile::exists(there));
    QVERIFY(!button("startRemoveRecent")->isEnabled());
    QCOMPARE(list->accessibleDescription(), QStringLiteral("No scenes yet"));
}

void TestStartScreen::theListFollowsTheMenu()
{
    show({write(QStringLiteral("a.gltf")), write(QStringLiteral("b.gltf"))});
    QCOMPARE(start()->recentFiles()->count(), 2);
    RecentFiles::clear();
    QCOMPARE(start()->recentFiles()->count(), 0);
}

void TestStartScreen::newAndOpenLeadToAScene()
{
    const QString path = write(QStringLiteral("a.gltf"));
    show({});
    QTest::keyClick(button("startNew"), Qt::Key_Return);
    QVERIFY(m_workbench->session()->hasScene());
    QCOMPARE(m_workbench->session()->path(), QString());
    trigger("fileClose");
    const ModalAnswer answer = ModalAnswer::file(path);
    QTest::mouseClick(button("startOpen"), Qt::LeftButton);
    QCOMPARE(m_workbench->session()->path(), path);
}

void TestStartScreen::theSampleIsOpenedAsACopyWithoutAFile()
{
    show({});
    button("startSample")->click();
    QVERIFY(Document::the().objectCount() > 20);
    QCOMPARE(m_workbench->session()->path(), QString());
    QVERIFY(window()->windowTitle().startsWith(QStringLiteral("Untitled")));
    QVERIFY(RecentFiles::files().isEmpty());
    QVERIFY(!Document::the().isModified());
    nkMetadataService::the().createSet(QStringLiteral("Mine"), {});
    QFile sample(Workbench::sampleScene());
    QVERIFY(sample.open(QIODevice::ReadOnly));
    const QByteArray before = sample.readAll();
    // Save asks for a name, and suggests the sample's somewhere else.
    QString suggested;
    const ModalAnswer answer([&](QDialog *dialog) {
        auto *files = qobject_cast<QFileDialog *>(dialog);
        QVERIFY(files);
        suggested = files->selectedFiles().value(0);
        files->selectFile(m_folder->filePath(QStringLiteral("copy.gltf")));
        dialog->accept();
    });
    trigger("fileSave");
    QCOMPARE(QFileInfo(suggested).fileName(), QStringLiteral("showroom.gltf"));
    QVERIFY(suggested != Workbench::sampleScene());
    QVERIFY(QFile::exists(m_folder->filePath(QStringLiteral("copy.gltf"))));
    sample.seek(0);
    QCOMPARE(sample.readAll(), before);
}

void TestStartScreen::theSampleNamedAsAFileIsACopyToo()
{
    QCOMPARE(m_workbench->open(Workbench::sampleScene()), QString());
    QCOMPARE(m_workbench->session()->path(), QString());
    QVERIFY(m_workbench->session()->source());
}

void TestStartScreen::itFillsTheWindowWhenThatGrows()
{
    show({});
    window()->resize(1234, 777);
    QTRY_COMPARE(start()->width(), window()->width());
    trigger("fileNew");
    window()->resize(1200, 760);
    trigger("fileClose");
    QTRY_COMPARE(start()->width(), window()->width());
}

NK_TEST_MAIN(TestStartScreen)
#include "test_start_screen.moc"
