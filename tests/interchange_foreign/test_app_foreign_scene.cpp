#include "IfcText.h"
#include "MainWindow.h"
#include "Workbench.h"
#include "files/RecentFiles.h"
#include "files/SceneSession.h"
#include "panels/EditorCommands.h"
#include "panels/EditorPanel.h"
#include "panels/SceneObjectModel.h"
#include "panels/SceneObjectView.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <kernel/document/Document.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QAction>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLoggingCategory>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUndoStack>

using kernel::Document;

/// The File menu with a scene whose file is never written: as with any other, and the metadata goes beside it.
class TestAppForeignScene : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void titleAndRecentFilesNameTheModel();
    void saysThatNoShapesAreDrawn();
    void savesBesideTheModel();
    void asksBeforeChangesAreLost();
    void asksBeforeOverwritingChangedMetadata();
    void revertsToWhatWasSaved();
    void savesAsACopyOfTheSameKind();
    void refusesAnotherKindAndSaysWhy();
    void opensADroppedFile();
    void theFileDialogNamesTheKinds();
    void showsTheImportReport();
    void unreadableMetadataIsTold();
    void objectsStayWhereTheyAreAndTheCommandsSayWhy();
    void objectsAreRenamedAndLocked();
    void nothingIsDroppedIntoTheTree();
    void anotherSceneIsFreeAgain();

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
    static void change(const char *name) { nkMetadataService::the().createSet(QString::fromUtf8(name), {}); }
    static bool hasSet(const char *name)
    {
        for (const nkdMetadataSet &set : nkMetadataService::the().getAllSets()) {
            if (set.getName() == QString::fromUtf8(name))
                return true;
        }
        return false;
    }
    QString sidecar() const { return m_path + QStringLiteral(".metadata.json"); }
    QAction *action(const char *name) const
    {
        return m_workbench->window()->fileMenu()->findChild<QAction *>(QLatin1String(name));
    }
    void trigger(const char *name) const { action(name)->trigger(); }
    static bool changesTree(const QAction *action)
    {
        static const QStringList rest{"rename", "chooseImage", "inFront", "lock"};
        return !rest.contains(action->objectName());
    }
    QList<QAction *> commandsOf(EditorPanel *panel) const
    {
        QMenu menu;
        panel->commands()->fillMenu(&menu);
        QList<QAction *> actions = menu.actions();
        actions.erase(std::remove_if(actions.begin(), actions.end(),
                                     [](const QAction *action) { return action->isSeparator(); }),
                      actions.end());
        return actions;
    }
    EditorPanel *panel(EditorModule module) const
    {
        for (EditorPanel *panel : m_workbench->window()->panels()) {
            if (panel->module() == module)
                return panel;
        }
        return nullptr;
    }
    static void select(EditorPanel *panel)
    {
        panel->view()->setCurrentIndex(panel->model()->index(0, 0));
        QCOMPARE(panel->selectedObjects().size(), 1);
    }
    QString title() const { return m_workbench->window()->windowTitle(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Workbench> m_workbench;
    QString m_path;
};

void TestAppForeignScene::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QLoggingCategory::setFilterRules(QStringLiteral("workbench.info=false"));
    RecentFiles::clear();
    m_workbench = std::make_unique<Workbench>();
    m_path = write(QStringLiteral("a & b.ifc"), IfcText::file(IfcText::taggedHouse()));
    QCOMPARE(m_workbench->open(m_path), QString());
    m_workbench->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_workbench->window()));
}

void TestAppForeignScene::cleanup()
{
    m_workbench.reset();
    QCOMPARE(read(m_path), IfcText::file(IfcText::taggedHouse()));
}

void TestAppForeignScene::titleAndRecentFilesNameTheModel()
{
    QVERIFY(title().startsWith(QStringLiteral("a & b.ifc[*]")));
    QVERIFY(!m_workbench->window()->isWindowModified());
    QCOMPARE(RecentFiles::files(), QStringList{m_path});
    QVERIFY(m_workbench->session()->isForeign());
    change("Mine");
    QVERIFY(m_workbench->window()->isWindowModified());
    trigger("fileSave");
    QVERIFY(!m_workbench->window()->isWindowModified());
    trigger("fileClose");
    QVERIFY(!m_workbench->session()->isForeign());
}

void TestAppForeignScene::saysThatNoShapesAreDrawn()
{
    auto *notice = m_workbench->window()->findChild<QLabel *>(QStringLiteral("notice"));
    QVERIFY(notice);
    QTRY_VERIFY(!notice->isHidden());
    QVERIFY2(notice->text().startsWith(QStringLiteral("The shapes of IFC models are not drawn")),
             qPrintable(notice->text()));
}

void TestAppForeignScene::savesBesideTheModel()
{
    trigger("fileSave");
    QVERIFY(!QFileInfo::exists(sidecar()));
    change("Mine");
    trigger("fileSave");
    QVERIFY(read(sidecar()).contains("\"Mine\""));
    trigger("fileNew");
    QCOMPARE(m_workbench->open(m_path), QString());
    QVERIFY(hasSet("Mine") && hasSet("Pset_WallCommon"));
}

void TestAppForeignScene::asksBeforeChangesAreLost()
{
    change("Mine");
    {
        const ModalAnswer cancel = ModalAnswer::button(QMessageBox::Cancel);
        trigger("fileClose");
        QVERIFY(cancel.record().text.contains(QStringLiteral("“a & b.ifc”")));
        QVERIFY(hasSet("Mine"));
    }
    const ModalAnswer save = ModalAnswer::button(QMessageBox::Save);
    trigger("fileClose");
    QVERIFY(read(sidecar()).contains("\"Mine\""));
    QCOMPARE(Document::the().objectCount(), 0);
}

void TestAppForeignScene::asksBeforeOverwritingChangedMetadata()
{
    change("Mine");
    trigger("fileSave");
    const QByteArray theirs = read(sidecar()).replace("\"Mine\"", "\"Theirs\"");
    write(QStringLiteral("a & b.ifc.metadata.json"), theirs);
    change("More");
    {
        const ModalAnswer cancel = ModalAnswer::button(QMessageBox::Cancel);
        trigger("fileSave");
        QVERIFY(cancel.record().text.contains(QStringLiteral("“a & b.ifc.metadata.json”")));
        QCOMPARE(read(sidecar()), theirs);
        QVERIFY(Document::the().isModified());
    }
    const ModalAnswer overwrite = ModalAnswer::button(QStringLiteral("Overwrite"));
    trigger("fileSave");
    QVERIFY(read(sidecar()).contains("\"More\""));
    QVERIFY(!Document::the().isModified());
}

void TestAppForeignScene::revertsToWhatWasSaved()
{
    change("Mine");
    trigger("fileSave");
    change("More");
    const ModalAnswer yes = ModalAnswer::button(QStringLiteral("Revert"));
    trigger("fileRevert");
    QVERIFY(hasSet("Mine") && !hasSet("More"));
    QVERIFY(!Document::the().isModified());
}

void TestAppForeignScene::savesAsACopyOfTheSameKind()
{
    change("Mine");
    const QString copy = m_folder->filePath(QStringLiteral("copy"));
    const ModalAnswer answer([copy](QDialog *dialog) {
        auto *files = qobject_cast<QFileDialog *>(dialog);
        QVERIFY(files);
        QCOMPARE(files->nameFilters(), QStringList{QStringLiteral("IFC (*.ifc)")});
        files->selectFile(copy);
        dialog->accept();
    });
    trigger("fileSaveAs");
    QCOMPARE(read(copy + QStringLiteral(".ifc")), read(m_path));
    QVERIFY(read(copy + QStringLiteral(".ifc.metadata.json")).contains("\"Mine\""));
    QVERIFY(!QFileInfo::exists(sidecar()));
    QVERIFY(title().startsWith(QStringLiteral("copy.ifc[*]")));
    QCOMPARE(RecentFiles::files().first(), copy + QStringLiteral(".ifc"));
    change("More");
    trigger("fileSave");
    QVERIFY(read(copy + QStringLiteral(".ifc.metadata.json")).contains("\"More\""));
}

void TestAppForeignScene::refusesAnotherKindAndSaysWhy()
{
    const QString other = m_folder->filePath(QStringLiteral("other.gltf"));
    const ModalAnswer answer([other](QDialog *dialog) {
        qobject_cast<QFileDialog *>(dialog)->selectFile(other);
        dialog->accept();
    });
    const ModalAnswer told = ModalAnswer::button(QMessageBox::Ok);
    trigger("fileSaveAs");
    QTRY_VERIFY(told.given());
    QVERIFY2(told.record().text.contains(QStringLiteral("“.ifc”"))
                 || told.record().informativeText.contains(QStringLiteral("“.ifc”")),
             qPrintable(told.record().text));
    QCOMPARE(m_workbench->session()->path(), m_path);
    QVERIFY(!QFileInfo::exists(other));
}

void TestAppForeignScene::opensADroppedFile()
{
    trigger("fileClose");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(m_path)});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_workbench->window(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_workbench->window(), &drop);
    QTRY_COMPARE(m_workbench->session()->path(), m_path);
    QVERIFY(hasSet("Pset_WallCommon"));
}

void TestAppForeignScene::theFileDialogNamesTheKinds()
{
    const ModalAnswer answer([](QDialog *dialog) {
        const QStringList filters = qobject_cast<QFileDialog *>(dialog)->nameFilters();
        QVERIFY(filters.first().contains(QStringLiteral("*.gltf"))
                && filters.first().contains(QStringLiteral("*.ifc")));
        QVERIFY(filters.contains(QStringLiteral("IFC (*.ifc)")));
        dialog->reject();
    });
    trigger("fileOpen");
    QVERIFY(answer.given());
}

void TestAppForeignScene::showsTheImportReport()
{
    QVERIFY(action("fileImportReport")->isEnabled());
    QCOMPARE(m_workbench->session()->report().keptCount(), 3);
}

void TestAppForeignScene::unreadableMetadataIsTold()
{
    write(QStringLiteral("a & b.ifc.metadata.json"), "notes");
    trigger("fileRevert");
    QCOMPARE(m_workbench->session()->report().refused().size(), 1);
    change("Mine");
    const ModalAnswer told = ModalAnswer::button(QMessageBox::Ok);
    trigger("fileSave");
    QTRY_VERIFY(told.given());
    QCOMPARE(read(sidecar()), QByteArray("notes"));
    QVERIFY(Document::the().isModified());
}

void TestAppForeignScene::objectsStayWhereTheyAreAndTheCommandsSayWhy()
{
    const QString reason = QStringLiteral("can only be renamed, locked and given metadata.");
    for (EditorPanel *panel : m_workbench->window()->panels()) {
        panel->view()->selectAll();
        for (const QAction *action : commandsOf(panel)) {
            if (changesTree(action))
                QVERIFY2(!action->isEnabled(), qPrintable(action->objectName()));
            QCOMPARE(action->toolTip().contains(reason), changesTree(action));
            QCOMPARE(action->statusTip().contains(reason), changesTree(action));
            QVERIFY(!action->statusTip().contains(QLatin1Char('\n')));
        }
        QVERIFY2(!panel->view()->emptyText().contains(QStringLiteral("Create")),
                 qPrintable(panel->view()->emptyText()));
    }
    QTest::keyClick(panel(EditorModule::Scenegraph)->view(), Qt::Key_Delete);
    QCOMPARE(Document::the().undoStack()->count(), 0);
}

void TestAppForeignScene::objectsAreRenamedAndLocked()
{
    EditorPanel *tree = panel(EditorModule::Scenegraph);
    select(tree);
    nkdSceneObject object{nkdObject(tree->selectedObjects().first())};
    QVERIFY(tree->commands()->action(EditorCommand::Rename)->isEnabled());
    object.setName(QStringLiteral("Other"));
    tree->commands()->action(EditorCommand::Lock)->trigger();
    QVERIFY(object.getLocked());
    trigger("fileSave");
    QVERIFY(read(sidecar()).contains("\"Other\"") && read(sidecar()).contains("\"locked\":true"));
}

void TestAppForeignScene::nothingIsDroppedIntoTheTree()
{
    EditorPanel *tree = panel(EditorModule::Scenegraph);
    SceneObjectModel *model = tree->model();
    const QModelIndex parent = model->index(0, 0);
    const std::unique_ptr<QMimeData> data(model->mimeData({model->index(0, 0, parent)}));
    QVERIFY(data);
    QVERIFY(!model->canDropMimeData(data.get(), Qt::MoveAction, 0, 0, QModelIndex()));
    // Whoever asks for a move all the same is told.
    QSignalSpy told(tree, &EditorPanel::statusMessage);
    tree->commands()->move({model->idOf(model->index(0, 0, parent))}, 0, 0);
    QCOMPARE(told.size(), 1);
    QVERIFY(told.first().first().toString().contains(QStringLiteral("never written")));
    QVERIFY(!Document::the().isModified());
}

void TestAppForeignScene::anotherSceneIsFreeAgain()
{
    trigger("fileNew");
    for (EditorPanel *panel : m_workbench->window()->panels()) {
        for (const QAction *action : commandsOf(panel)) {
            QVERIFY(action->statusTip().isEmpty() && !action->toolTip().contains(QLatin1Char('\n')));
            if (action->objectName().startsWith(QLatin1String("new")))
                QVERIFY2(action->isEnabled(), qPrintable(action->objectName()));
        }
        QVERIFY(panel->view()->emptyText().contains(QLatin1Char('\n')));
    }
    panel(EditorModule::Scenegraph)->commands()->action(EditorCommand::NewGroup)->trigger();
    QCOMPARE(Document::the().objectCount(), 1);
    Document::the().undo();
}

NK_TEST_MAIN(TestAppForeignScene)
#include "test_app_foreign_scene.moc"
