#include "GuidePage.h"
#include "GuideStage.h"
#include "MainWindow.h"
#include "StagedAssets.h"
#include "Workbench.h"
#include "assets/AssetDock.h"
#include "assets/AssetPanel.h"
#include "assets/AssetView.h"
#include "files/FileQuestions.h"

#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkdMetadataSet.h>

#include <QAbstractItemView>
#include <QAction>
#include <QCompleter>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QTreeView>
#include <QtTest>

namespace {

constexpr int editorHeight = 620;
constexpr QSize menuRoom(900, 640);
constexpr int keyColumn = 2;

/// Those of the list that begin with what is typed.
constexpr int offeredWords = 3;

/// What a person has typed before.
void writeWords()
{
    QFile file(QDir::home().filePath(QStringLiteral("words.txt")));
    if (!file.open(QIODevice::WriteOnly)
        || file.write("supplier\nsupplied on\nsupport until\nsurface\n") < 0) {
        qFatal("The list of words cannot be written");
    }
    nkMetadataService::the().setStringLibraries({file.fileName()});
    nkMetadataService::the().setActiveStringLibraryIndex(0);
}

/// Asks for the context menu of a list, and looks at it.
void askForMenu(const GuideStage &stage, QWidget *list, const std::function<void(QMenu *)> &looking)
{
    constexpr QPoint place(150, 30);
    stage.during(
        [list, place] {
            QContextMenuEvent event(QContextMenuEvent::Mouse, place, list->mapToGlobal(place));
            QCoreApplication::sendEvent(list->findChild<QWidget *>(QStringLiteral("qt_scrollarea_viewport")),
                                        &event);
        },
        [&looking](QWidget *menu) {
            looking(qobject_cast<QMenu *>(menu));
            GuideStage::closePopups();
        });
}

/// The list is read beside the program: typed too early, other words are offered.
void typeUntilOffered(QWidget *field)
{
    const auto *completer = field ? field->findChild<QCompleter *>() : nullptr;
    const bool isOffered = completer && QTest::qWaitFor([field, completer] {
                               QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
                               QTest::keyClicks(field, QStringLiteral("sup"));
                               GuideStage::hurry();
                               return completer->popup()->isVisible()
                                      && completer->popup()->model()->rowCount() == offeredWords;
                           });
    if (!isOffered) {
        qFatal("The words of the list are not offered");
    }
}

void takePreferences(GuideStage &stage)
{
    GuideStage::openMenu(stage.window()->menuBar(),
                         {QStringLiteral("Edit"), QStringLiteral("Preferences...")});
    QWidget *menu = QApplication::activePopupWidget();
    stage.during([menu] { QTest::keyClick(menu, Qt::Key_Return); },
                 [&stage](QWidget *dialog) {
                     stage.takeDialog(QStringLiteral("preferences"), dialog);
                     QTest::keyClick(dialog, Qt::Key_Escape);
                 });
}

void takeCompletion(GuideStage &stage)
{
    writeWords();
    GuideStage::clickRow(stage.upperList(), QStringLiteral("Wearing Part"));
    const QModelIndex key = GuideStage::cell(stage.table(), QStringLiteral("check"), keyColumn);
    GuideStage::click(stage.table(), key);
    QTest::mouseDClick(stage.table()->viewport(), Qt::LeftButton, {},
                       stage.table()->visualRect(key).center());
    typeUntilOffered(QApplication::focusWidget());
    stage.take(QStringLiteral("completion"), stage.editor());
    GuideStage::closePopups();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
}

} // namespace

void GuidePage::shareAssets(GuideStage &stage)
{
    stage.openSample(editorHeight);
    // The menu is a long one.
    stage.dock(QStringLiteral("Viewport"))->hide();
    GuideStage::hurry();
    GuideStage::clickRow(stage.upperList(), QStringLiteral("Sparrow E3 Data Sheet"));
    askForMenu(stage, stage.upperList(), [&stage](QMenu *menu) {
        GuideStage::openSubmenus(menu, {QStringLiteral("Asset"), QStringLiteral("Modify")});
        stage.take(QStringLiteral("asset-menu"), QRect(stage.editor()->pos(), menuRoom));
    });

    StagedAssets::publish();
    auto *dock = stage.window()->findChild<AssetDock *>();
    dock->action()->trigger();
    stage.settle();
    GuideStage::clickRow(dock->panel()->list(), QStringLiteral("Wearing Part"));
    stage.take(QStringLiteral("assets"), dock);
    for (QWidget *list :
         {static_cast<QWidget *>(dock->panel()->list()), static_cast<QWidget *>(dock->panel()->versions())}) {
        askForMenu(stage, list, [&stage](QMenu *) { stage.read(); });
    }
}

void GuidePage::preferences(GuideStage &stage)
{
    stage.openSample(editorHeight);
    takePreferences(stage);
    takeCompletion(stage);
    // The question that the next start asks, about a file that is nobody's.
    const QString more = QCoreApplication::translate("Autosave", "The scene's file is %1. The copy is of %2.")
                             .arg(QStringLiteral("/home/ada/Scenes/showroom.gltf"),
                                  QStringLiteral("2 May 2024 10:14:00"));
    stage.during(
        [&stage, more] { FileQuestions::restore(stage.window(), QStringLiteral("showroom.gltf"), more); },
        [&stage](QWidget *question) {
            stage.takeDialog(QStringLiteral("restore"), question);
            QTest::keyClick(question, Qt::Key_Escape);
        });
}
