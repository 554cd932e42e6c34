#include "MainWindow.h"
#include "Workbench.h"
#include "files/ImportReportDialog.h"
#include "files/RecentFiles.h"
#include "files/RecentMenu.h"
#include "files/SceneSession.h"
#include "panels/EditorPanel.h"
#include "panels/SceneObjectView.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkScenegraphService.h>
#include <nkKernelServices/nkdMetadata.h>
#include <nkKernelServicesGUI/nkAdvancedSearch.h>
#include <nkKernelServicesGUI/nkAdvancedSearchBar.h>
#include <nkKernelServicesGUI/nkMetadataModuleSelection.h>

#include <QAction>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QUndoStack>

using kernel::Document;

/// The File menu of the workbench: nothing is lost without a question, and what is saved is in the file.
class TestFileMenu : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void theTitleShowsNameAndChanges();
    void savesWhatIsOpen();
    void savesWhatStandsInAnOpenEditor();
    void savesAnUntitledSceneWhereThePersonSays();
    void savesAsAndGoesOnWithTheNewFile();
    void asksBeforeChangesAreLost_data();
    void asksBeforeChangesAreLost();
    void revertsToTheFile();
    void newAndCloseLeaveAnEmptyScene();
    void asksBeforeOverwritingSomebodyElsesChanges();
    void remembersRecentFilesAndGreysThoseThatAreGone();
    void opensADroppedFile();
    void looksForScenesAtHomeWhereThereIsNoFolderForDocuments();
    void whatIsOpenedIsListedWhicheverEditorWasUsedLast();
    void aSearchIsMadeAgainInTheNextScene();
    void showsTheImportReportWhereThereIsSomethingToSay();
    void theImportReportFitsTheDisplayWhateverTheFileIsCalled();
    void namesTheFormatsItCannotOpenYet();
    void commandsAreEnabledWhereTheyMakeSense();

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
        return R"({"asset":{"version":"2.0"},"nodes":[{"name":"Part","extras":{"k":)" + value + "}}]}";
    }
    static nkdMetadataEntry entry()
    {
        const nkdSceneObject part{nkdObject(Document::the().topLevelNodes().value(0))};
        return nkdMetadata::fromObject(part).getObjectSet().getEntries().find(QStringLiteral("k"));
    }
    QAction *action(const char *name) const
    {
        return m_workbench->window()->fileMenu()->findChild<QAction *>(QLatin1String(name));
    }
    void trigger(const char *name) const { action(name)->trigger(); }
    QString title() const { return m_workbench->window()->windowTitle(); }
    RecentMenu *recentMenu() const { return m_workbench->window()->fileMenu()->findChild<RecentMenu *>(); }
    bool drop(QMimeData *data) const;
    /// Chooses another name than the one that the dialog suggests.
    static ModalAnswer::DialogAction choosing(const QString &path)
    {
        return [path](QDialog *dialog) {
            auto *files = qobject_cast<QFileDialog *>(dialog);
            QVERIFY(files);
            files->selectFile(path);
            dialog->accept();
        };
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Workbench> m_workbench;
    QString m_path;
};

void TestFileMenu::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    RecentFiles::clear();
    m_workbench = std::make_unique<Workbench>();
    m_path = write(QStringLiteral("a & b.gltf"), scene());
    QCOMPARE(m_workbench->open(m_path), QString());
    m_workbench->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_workbench->window()));
}

void TestFileMenu::cleanup()
{
    m_workbench.reset();
}

void TestFileMenu::theTitleShowsNameAndChanges()
{
    QVERIFY(title().startsWith(QStringLiteral("a & b.gltf[*]")));
    QCOMPARE(m_workbench->window()->windowFilePath(), m_path);
    QVERIFY(!m_workbench->window()->isWindowModified());
    entry().setValue(2);
    QVERIFY(m_workbench->window()->isWindowModified());
    Document::the().undo();
    QVERIFY(!m_workbench->window()->isWindowModified());
    Document::the().redo();
    trigger("fileSave");
    QVERIFY(!m_workbench->window()->isWindowModified());
    QVERIFY(Document::the().undoStack()->canUndo());
    Document::the().undo();
    QVERIFY(m_workbench->window()->isWindowModified());
}

void TestFileMenu::savesWhatIsOpen()
{
    entry().setValue(2);
    trigger("fileSave");
    QCOMPARE(read(m_path), scene("2"));
    entry().setValue(3);
    trigger("fileSave");
    QCOMPARE(read(m_path), scene("3"));
    Document::the().undoStack()->setIndex(0);
    trigger("fileSave");
    QCOMPARE(read(m_path), scene());
}

void TestFileMenu::savesWhatStandsInAnOpenEditor()
{
    SceneObjectView *view = m_workbench->window()->panels().constFirst()->view();
    view->setFocus();
    view->setCurrentIndex(view->model()->index(0, 0));
    view->edit(view->currentIndex());
    auto *editor = view->viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("Typed"));
    QVERIFY(!Document::the().isModified());
    trigger("fileSave");
    QCOMPARE(read(m_path), scene().replace("\"Part\"", "\"Typed\""));
}

void TestFileMenu::savesAnUntitledSceneWhereThePersonSays()
{
    trigger("fileNew");
    nkMetadataService::the().createSet(QStringLiteral("Set"), {});
    const QString path = m_folder->filePath(QStringLiteral("mine"));
    {
        const ModalAnswer cancel = ModalAnswer::reject();
        trigger("fileSave");
        QCOMPARE(cancel.record().className, QStringLiteral("QFileDialog"));
        QVERIFY(Document::the().isModified());
    }
    const ModalAnswer answer(choosing(path));
    trigger("fileSave");
    QVERIFY(read(path + QStringLiteral(".gltf")).contains("\"Set\""));
    QVERIFY(title().startsWith(QStringLiteral("mine.gltf")));
    QVERIFY(!Document::the().isModified());
}

void TestFileMenu::savesAsAndGoesOnWithTheNewFile()
{
    entry().setValue(2);
    const QString path = m_folder->filePath(QStringLiteral("copy.gltf"));
    const ModalAnswer answer(choosing(path));
    trigger("fileSaveAs");
    QCOMPARE(read(path), scene("2"));
    QCOMPARE(read(m_path), scene());
    QCOMPARE(m_workbench->session()->path(), path);
    entry().setValue(4);
    trigger("fileSave");
    QCOMPARE(read(path), scene("4"));
    QCOMPARE(RecentFiles::files().first(), path);
}

void TestFileMenu::asksBeforeChangesAreLost_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("button");
    for (const char *command : {"fileNew", "fileClose", "fileOpen", "close"}) {
        QTest::addRow("%s, save", command) << command << int(QMessageBox::Save);
        QTest::addRow("%s, discard", command) << command << int(QMessageBox::Discard);
        QTest::addRow("%s, cancel", command) << command << int(QMessageBox::Cancel);
    }
}

void TestFileMenu::asksBeforeChangesAreLost()
{
    QFETCH(QString, command);
    QFETCH(int, button);
    const QString other = write(QStringLiteral("other.gltf"), scene("7"));
    entry().setValue(2);
    std::unique_ptr<ModalAnswer> choice;
    if (command == QLatin1String("fileOpen")) {
        choice.reset(new ModalAnswer(ModalAnswer::file(other)));
    }
    const ModalAnswer answer = ModalAnswer::button(QMessageBox::StandardButton(button));
    if (command == QLatin1String("close")) {
        m_workbench->window()->close();
    } else {
        trigger(qPrintable(command));
    }
    QVERIFY(answer.given());
    QVERIFY(answer.record().text.contains(QStringLiteral("“a & b.gltf”")));
    QCOMPARE(answer.record().buttons.size(), 3);
    const bool stays = button == QMessageBox::Cancel;
    QCOMPARE(read(m_path), scene(button == QMessageBox::Save ? "2" : "1"));
    if (command == QLatin1String("close")) {
        QCOMPARE(m_workbench->window()->isVisible(), stays);
    } else {
        QCOMPARE(m_workbench->session()->path() == m_path, stays);
        QCOMPARE(Document::the().isModified(), stays);
    }
}

void TestFileMenu::revertsToTheFile()
{
    entry().setValue(2);
    {
        const ModalAnswer no = ModalAnswer::button(QMessageBox::Cancel);
        trigger("fileRevert");
        QCOMPARE(entry().getValue(), QVariant(2));
    }
    const ModalAnswer yes = ModalAnswer::button(QStringLiteral("Revert"));
    trigger("fileRevert");
    QCOMPARE(entry().getValue(), QVariant(1));
    // Without changes it takes in, unasked, what others have made of the file.
    write(QStringLiteral("a & b.gltf"), scene("8"));
    trigger("fileRevert");
    QCOMPARE(entry().getValue(), QVariant(8));
    QVERIFY(!Document::the().isModified() && !Document::the().undoStack()->canUndo());
}

void TestFileMenu::newAndCloseLeaveAnEmptyScene()
{
    for (const char *command : {"fileNew", "fileClose"}) {
        QCOMPARE(m_workbench->open(m_path), QString());
        trigger(command);
        QCOMPARE(Document::the().objectCount(), 0);
        QCOMPARE(title().startsWith(QStringLiteral("Untitled[*]")),
                 QLatin1String(command) == QLatin1String("fileNew"));
        QCOMPARE(m_workbench->session()->path(), QString());
    }
}

void TestFileMenu::asksBeforeOverwritingSomebodyElsesChanges()
{
    entry().setValue(2);
    write(QStringLiteral("a & b.gltf"), scene("9"));
    {
        const ModalAnswer cancel = ModalAnswer::button(QMessageBox::Cancel);
        trigger("fileSave");
        QVERIFY(cancel.record().text.contains(QStringLiteral("another program")));
        QCOMPARE(read(m_path), scene("9"));
        QVERIFY(Document::the().isModified());
    }
    {
        const QString path = m_folder->filePath(QStringLiteral("elsewhere.gltf"));
        const ModalAnswer saveAs = ModalAnswer::button(QStringLiteral("Save As..."));
        const ModalAnswer file(choosing(path));
        trigger("fileSave");
        QCOMPARE(read(path), scene("2"));
        QCOMPARE(read(m_path), scene("9"));
        write(QStringLiteral("elsewhere.gltf"), scene("9"));
    }
    entry().setValue(3);
    m_workbench->window()->statusBar()->clearMessage();
    const ModalAnswer overwrite = ModalAnswer::button(QStringLiteral("Overwrite"));
    trigger("fileSave");
    QCOMPARE(read(m_workbench->session()->path()), scene("3"));
    QVERIFY(!Document::the().isModified());
    QCOMPARE(m_workbench->window()->statusBar()->currentMessage(),
             QStringLiteral("“elsewhere.gltf” is saved"));
}

void TestFileMenu::remembersRecentFilesAndGreysThoseThatAreGone()
{
    const QString other = write(QStringLiteral("other.gltf"), scene("7"));
    QCOMPARE(m_workbench->open(other), QString());
    QCOMPARE(RecentFiles::files(), (QStringList{other, m_path}));
    Q_EMIT recentMenu()->aboutToShow();
    const QAction *first = recentMenu()->actions().at(0);
    QAction *second = recentMenu()->actions().at(1);
    QVERIFY(first->text().startsWith(QStringLiteral("&1  other.gltf")));
    QVERIFY(second->text().contains(QStringLiteral("a && b.gltf")));
    second->trigger();
    QCOMPARE(m_workbench->session()->path(), m_path);
    QVERIFY(QFile::remove(other));
    Q_EMIT recentMenu()->aboutToShow();
    QVERIFY(!recentMenu()->actions().at(1)->isEnabled());
    QVERIFY(recentMenu()->actions().at(0)->isEnabled());
    // One that goes while the menu is open leaves the list when it is chosen.
    QVERIFY(QFile::remove(m_path));
    const ModalAnswer told = ModalAnswer::button(QMessageBox::Ok);
    recentMenu()->actions().at(0)->trigger();
    QTRY_VERIFY(told.given());
    QCOMPARE(RecentFiles::files(), QStringList{other});
    for (int i = 0; i < 20; ++i) {
        RecentFiles::add(QString::number(i));
    }
    QCOMPARE(RecentFiles::files().size(), RecentFiles::capacity());
    recentMenu()->actions().last()->trigger();
    QVERIFY(RecentFiles::files().isEmpty());
}

bool TestFileMenu::drop(QMimeData *data) const
{
    // Qt delivers a drop to whom the drag has entered.
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton,
                          Qt::NoModifier);
    QCoreApplication::sendEvent(m_workbench->window(), &enter);
    if (!enter.isAccepted()) {
        return false;
    }
    QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_workbench->window(), &event);
    return event.isAccepted() && event.dropAction() == Qt::CopyAction;
}

void TestFileMenu::opensADroppedFile()
{
    const QString other = write(QStringLiteral("other.gltf"), scene("7"));
    QVERIFY(m_workbench->window()->acceptDrops());
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(other), QUrl::fromLocalFile(m_path)});
    QVERIFY(!drop(&data));
    data.setUrls({QUrl(QStringLiteral("https://example.org/a.gltf"))});
    QVERIFY(!drop(&data));
    data.setUrls({QUrl::fromLocalFile(other)});
    {
        QDialog question(m_workbench->window());
        question.setModal(true);
        question.show();
        QVERIFY(!drop(&data));
    }
    QVERIFY(drop(&data));
    QCOMPARE(m_workbench->session()->path(), m_path);
    QTRY_COMPARE(m_workbench->session()->path(), other);
}

void TestFileMenu::looksForScenesAtHomeWhereThereIsNoFolderForDocuments()
{
    QVERIFY(!QFileInfo::exists(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)));
    trigger("fileClose");
    RecentFiles::clear();
    QString folder;
    QString name;
    const ModalAnswer answer([&folder, &name](QDialog *dialog) {
        folder = qobject_cast<QFileDialog *>(dialog)->directory().absolutePath();
        name = dialog->findChild<QLineEdit *>()->text();
        dialog->reject();
    });
    trigger("fileOpen");
    QCOMPARE(folder, QDir::homePath());
    QCOMPARE(name, QString());
}

void TestFileMenu::whatIsOpenedIsListedWhicheverEditorWasUsedLast()
{
    nkMetadataModuleSelection &last = nkMetadataModuleSelection::the();
    last.setLastSelectionModule(int(EditorModule::Material));
    QCOMPARE(m_workbench->open(m_path), QString());
    QCOMPARE(last.getLastSelectionModule(), int(EditorModule::Scenegraph));
    QCOMPARE(nkScenegraphService::the().getSelectedNodes().size(), 1);
}

void TestFileMenu::aSearchIsMadeAgainInTheNextScene()
{
    const nkAdvancedSearch search(5, nullptr, m_workbench->window());
    const QSignalSpy asked(&search, &nkAdvancedSearch::searchChanged);
    nkAdvancedSearchBar *bar = search.getSearchBar();
    QCOMPARE(m_workbench->open(m_path), QString());
    QCOMPARE(asked.count(), 0);
    bar->lineEdit()->setText(QStringLiteral("key:k"));
    bar->setState(nkAdvancedSearchBar::Succeeded);
    QCOMPARE(m_workbench->open(m_path), QString());
    QCOMPARE(asked.count(), 1);
    QCOMPARE(asked.constFirst(), QVariantList({true, QStringLiteral("key:k")}));
}

void TestFileMenu::showsTheImportReportWhereThereIsSomethingToSay()
{
    const auto dialog = [this] { return m_workbench->window()->findChild<ImportReportDialog *>(); };
    QVERIFY(!dialog());
    QCOMPARE(m_workbench->open(write(QStringLiteral("odd.gltf"), scene("5000000000,\"<b>&\":[[1]]"))),
             QString());
    QVERIFY(dialog() && dialog()->isVisible());
    const auto *list = dialog()->findChild<QTreeWidget *>();
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(0)->text(0), QStringLiteral("Converted"));
    QCOMPARE(list->topLevelItem(0)->text(1), QStringLiteral("$.nodes[0].extras.k"));
    QCOMPARE(list->topLevelItem(1)->text(0), QStringLiteral("Left untouched"));
    QVERIFY(list->topLevelItem(1)->text(1).contains(QStringLiteral("<b>&")));
    QVERIFY(!list->topLevelItem(1)->text(2).isEmpty());
    dialog()->close();
    QTRY_VERIFY(!dialog());
    trigger("fileImportReport");
    QVERIFY(dialog() && dialog()->isVisible());
    QCOMPARE(m_workbench->open(m_path), QString());
    QVERIFY(!dialog());
}

void TestFileMenu::theImportReportFitsTheDisplayWhateverTheFileIsCalled()
{
    const QString name(240, QLatin1Char('n'));
    const ImportReportDialog dialog(m_workbench->session()->report(), name);
    QVERIFY2(dialog.minimumSizeHint().width() < 1000,
             qPrintable(QString::number(dialog.minimumSizeHint().width())));
    const QList<QLabel *> labels = dialog.findChildren<QLabel *>();
    QCOMPARE(labels.constFirst()->accessibleName(), name);
    QVERIFY(labels.constFirst()->toolTip().contains(name));
}

void TestFileMenu::namesTheFormatsItCannotOpenYet()
{
    const QString error = m_workbench->open(write(QStringLiteral("house.USDA"), "#usda 1.0"));
    QVERIFY2(error.contains(QStringLiteral("“.usda” cannot be opened yet")), qPrintable(error));
    QVERIFY(error.contains(QStringLiteral("glTF")));
    QCOMPARE(m_workbench->session()->path(), m_path);
}

void TestFileMenu::commandsAreEnabledWhereTheyMakeSense()
{
    const auto enabled = [this] {
        QStringList names;
        for (const char *name : {"fileSave", "fileSaveAs", "fileRevert", "fileClose", "fileImportReport"}) {
            if (action(name)->isEnabled()) {
                names.append(QLatin1String(name).mid(4));
            }
        }
        return names.join(QLatin1Char(' '));
    };
    QCOMPARE(enabled(), QStringLiteral("Save SaveAs Revert Close ImportReport"));
    entry().setValue(2);
    QCOMPARE(enabled(), QStringLiteral("Save SaveAs Revert Close ImportReport"));
    Document::the().undo();
    QCOMPARE(enabled(), QStringLiteral("Save SaveAs Revert Close ImportReport"));
    trigger("fileNew");
    QCOMPARE(enabled(), QStringLiteral("Save SaveAs Close"));
    trigger("fileClose");
    QCOMPARE(enabled(), QString());
}

NK_TEST_MAIN(TestFileMenu)
#include "test_file_menu.moc"
