#include "MainWindow.h"
#include "Workbench.h"
#include "panels/EditorPanel.h"
#include "panels/SceneObjectView.h"

#include <TestMain.h>
#include <kernel/document/DocumentLoader.h>

#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>

/// The panels of the editors in the main window.
class TestPanelDocks : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void thePanelsStandAtTheLeftBesideTheModules();
    void theViewMenuHidesThemAndBringsThemToTheFront();
    void noTwoEntriesOfTheViewMenuShareAMnemonic();
    void askingForMetadataBringsTheModuleBack();

private:
    static QDockWidget *dockOf(const MainWindow &window, int panel)
    {
        return qobject_cast<QDockWidget *>(window.panels().at(panel)->parentWidget());
    }
    static QMenu *viewMenu(const MainWindow &window)
    {
        for (QAction *action : window.menuBar()->actions()) {
            if (action->text() == QLatin1String("&View")) {
                return action->menu();
            }
        }
        return nullptr;
    }
};

void TestPanelDocks::thePanelsStandAtTheLeftBesideTheModules()
{
    MainWindow window;
    QLabel module;
    window.addModule(QStringLiteral("Module"), QStringLiteral("Scene"), &module, QIcon(),
                     QStringLiteral("Mod"), false);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.width() <= 1440 && window.height() <= 900);
    QCOMPARE(window.panels().size(), 5);
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(window.dockWidgetArea(dockOf(window, i)), Qt::LeftDockWidgetArea);
        QVERIFY(!dockOf(window, i)->objectName().isEmpty());
    }
    QCOMPARE(window.tabifiedDockWidgets(dockOf(window, 1)).size(), 3);
    QVERIFY(module.mapTo(&window, QPoint()).x() > dockOf(window, 0)->geometry().right());
    QVERIFY(module.width() > dockOf(window, 0)->width());
    window.releaseModules();
}

void TestPanelDocks::theViewMenuHidesThemAndBringsThemToTheFront()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QStringList texts;
    const QList<QAction *> toggles = viewMenu(window)->actions().mid(0, 5);
    for (const QAction *toggle : toggles) {
        texts.append(toggle->text());
    }
    QCOMPARE(texts, QStringList({"Scene &Graph", "&Materials", "&Cameras", "&Lights", "Scene&plates"}));
    for (const QAction *toggle : toggles) {
        QVERIFY(toggle->isChecked());
    }
    const QWidget *lights = window.panels().at(3);
    QVERIFY(lights->visibleRegion().isEmpty()); // behind the materials
    toggles.at(3)->trigger();
    QTRY_VERIFY(!lights->visibleRegion().isEmpty());
    QCOMPARE(window.focusWidget(), window.panels().at(3)->view());
    QVERIFY(toggles.at(3)->isChecked());
    toggles.at(3)->trigger();
    QVERIFY(!dockOf(window, 3)->isVisible());
    QVERIFY(!toggles.at(3)->isChecked());
    toggles.at(3)->trigger();
    QTRY_VERIFY(!lights->visibleRegion().isEmpty());
    QVERIFY(toggles.at(3)->isChecked());
}

void TestPanelDocks::noTwoEntriesOfTheViewMenuShareAMnemonic()
{
    Workbench workbench;
    QLabel modules[2];
    workbench.window()->addModule(QStringLiteral("Module"), QStringLiteral("Scene"), &modules[0], QIcon(),
                                  QStringLiteral("Mod"), false);
    workbench.window()->addModule(QStringLiteral("Other"), QStringLiteral("Scene & Tree"), &modules[1],
                                  QIcon(), QStringLiteral("Oth"), false);
    QStringList keys;
    for (const QAction *action : viewMenu(*workbench.window())->actions()) {
        const QString key = QKeySequence::mnemonic(action->text()).toString();
        QVERIFY2(action->isSeparator() || !key.isEmpty(), qPrintable(action->text()));
        QVERIFY2(key.isEmpty() || !keys.contains(key), qPrintable(action->text()));
        keys.append(key);
    }
    QVERIFY(keys.contains(QStringLiteral("Alt+V")) && keys.contains(QStringLiteral("Alt+S")));
    workbench.window()->releaseModules();
}

void TestPanelDocks::askingForMetadataBringsTheModuleBack()
{
    kernel::DocumentLoader loader;
    loader.addObject(nkObjectType::Node, QStringLiteral("Node"));
    loader.commit();
    MainWindow window;
    QLabel module;
    window.addModule(QStringLiteral("Module"), QStringLiteral("Scene"), &module, QIcon(),
                     QStringLiteral("Mod"), true);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!module.isVisible());
    SceneObjectView *view = window.panels().constFirst()->view();
    view->selectAll();
    ModalAnswer answer = ModalAnswer::menu(QStringLiteral("Show Metadata"));
    Q_EMIT view->customContextMenuRequested(QPoint(5, 5));
    QVERIFY(module.isVisible());
    window.releaseModules();
}

NK_TEST_MAIN(TestPanelDocks)
#include "test_panel_docks.moc"
