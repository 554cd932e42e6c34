#include "MainWindow.h"
#include "panels/EditorPanel.h"

#include <TestMain.h>
#include <nkKernelServices/nkPreferencesService.h>

#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QScreen>
#include <QTabBar>

using Place = DockLayout::Place;

namespace {

const QString key = QStringLiteral("workbench.layout");

/// The main window with a view of the scene, a module and a strip, as the workbench puts them together.
struct FullWindow
{
    FullWindow()
    {
        middle = add(QStringLiteral("Viewport"), Place::Middle, false);
        front = qobject_cast<QDockWidget *>(window.panels().constFirst()->parentWidget());
        lists = qobject_cast<QDockWidget *>(window.panels().at(1)->parentWidget());
        beside = add(QStringLiteral("History"), Place::SceneGraph, false);
        strip = add(QStringLiteral("Log"), Place::Bottom, true);
        window.addModule(QStringLiteral("Module"), QStringLiteral("Scene"), &module, QIcon(),
                         QStringLiteral("Mod"), false);
        frame = window.findChild<QDockWidget *>(QStringLiteral("Module"));
    }
    ~FullWindow() { window.releaseModules(); }

    QDockWidget *add(const QString &name, Place place, bool startHidden)
    {
        auto *dock = new QDockWidget(name, &window);
        dock->setObjectName(name);
        dock->setWidget(new QLabel(name));
        window.addPanel(dock, new QAction(name, dock), place, startHidden);
        return dock;
    }
    void show()
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
    void reset() const { window.findChild<QAction *>(QStringLiteral("viewResetLayout"))->trigger(); }
    /// Somebody has moved everything.
    void mess()
    {
        window.resize(1210, 760);
        window.addDockWidget(Qt::BottomDockWidgetArea, front);
        frame->setFloating(true);
        middle->hide();
        strip->show();
    }
    bool isMessed() const
    {
        return window.dockWidgetArea(front) == Qt::BottomDockWidgetArea && frame->isFloating()
               && middle->isHidden() && !strip->isHidden();
    }
    bool isAsLaidOut() const
    {
        return window.dockWidgetArea(front) == Qt::LeftDockWidgetArea && !frame->isFloating()
               && !middle->isHidden() && strip->isHidden();
    }

    QLabel module;
    MainWindow window;
    QDockWidget *middle;
    QDockWidget *front;
    QDockWidget *lists;
    QDockWidget *beside;
    QDockWidget *strip;
    QDockWidget *frame = nullptr;
};

} // namespace

/// The layout of the main window: designed, remembered, brought back.
class TestWindowLayout : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { nkPreferencesService::the().setStringListValue(key, {}, true); }

    void everything_has_its_place()
    {
        FullWindow full;
        full.show();
        const QRect middle = full.middle->geometry();
        const QRect front = full.front->geometry();
        QVERIFY(full.window.width() <= 1440 && full.window.height() <= 900);
        QVERIFY(front.right() < middle.left());
        QVERIFY(full.lists->geometry().top() > front.bottom());
        QVERIFY(full.frame->geometry().top() > middle.bottom());
        QCOMPARE(full.frame->geometry().left(), middle.left());
        QVERIFY(full.frame->width() >= 960 && full.frame->height() >= 440);
        QVERIFY(middle.height() >= 200);
        QCOMPARE(full.window.tabifiedDockWidgets(full.front), QList<QDockWidget *>{full.beside});
        QVERIFY(full.beside->widget()->visibleRegion().isEmpty());
        QVERIFY(full.strip->isHidden());
        full.strip->show();
        QTRY_VERIFY(full.strip->geometry().top() > full.frame->geometry().bottom());
        QCOMPARE(full.strip->geometry().left(), middle.left());
    }

    void the_left_column_is_wide_enough_for_its_tabs()
    {
        FullWindow full;
        full.show();
        int bars = 0;
        for (const QTabBar *tabs :
             full.window.findChildren<QTabBar *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (tabs->isVisible()) {
                ++bars;
                QTRY_VERIFY(tabs->width() >= tabs->sizeHint().width());
            }
        }
        QCOMPARE(bars, 2);
    }

    void a_short_window_has_tabs_instead_of_rows()
    {
        FullWindow full;
        full.window.resize(960, 560);
        full.reset();
        full.show();
        QCOMPARE(full.window.size(), QSize(960, 560));
        QCOMPARE(full.window.tabifiedDockWidgets(full.frame), QList<QDockWidget *>{full.middle});
        QVERIFY(!full.module.visibleRegion().isEmpty());
        QVERIFY(full.lists->geometry().top() > full.front->geometry().bottom());
        full.window.resize(720, 430);
        full.reset();
        QTRY_COMPARE(full.window.size(), QSize(720, 430));
        QVERIFY(full.window.tabifiedDockWidgets(full.front).contains(full.lists));
        QVERIFY(!full.front->widget()->visibleRegion().isEmpty());
    }

    void a_module_that_needs_more_room_is_scrolled()
    {
        FullWindow full;
        full.module.setMinimumSize(1300, 1100);
        full.show();
        QVERIFY(full.window.height() <= 900);
        QTRY_COMPARE(full.module.size(), QSize(1300, 1100));
        QVERIFY(full.frame->height() < 600);
    }

    void reset_layout_brings_everything_back()
    {
        FullWindow full;
        full.show();
        const QRect middle = full.middle->geometry();
        const QRect frame = full.frame->geometry();
        const QSize size = full.window.size();
        full.mess();
        QVERIFY(full.isMessed());
        full.reset();
        QVERIFY(full.isAsLaidOut());
        full.window.resize(size);
        full.reset();
        QTRY_COMPARE(full.middle->geometry(), middle);
        QTRY_COMPARE(full.frame->geometry(), frame);
    }

    void it_is_remembered()
    {
        {
            FullWindow full;
            full.window.rememberLayout();
            full.show();
            full.mess();
            full.window.close();
        }
        FullWindow full;
        full.window.rememberLayout();
        QCOMPARE(full.window.size(), QSize(1210, 760));
        full.show();
        QVERIFY(full.isMessed());
        full.reset();
        QVERIFY(full.isAsLaidOut());
    }

    void a_picture_shows_none_of_it_and_leaves_none()
    {
        {
            FullWindow full;
            full.window.rememberLayout();
            full.show();
            full.mess();
            full.window.close();
        }
        const QStringList stored = nkPreferencesService::the().getStringListValue(key);
        QVERIFY(!stored.isEmpty());
        FullWindow full;
        full.show();
        QVERIFY(full.isAsLaidOut());
        full.window.close();
        QCOMPARE(nkPreferencesService::the().getStringListValue(key), stored);
    }

    void what_is_damaged_is_left_alone_data()
    {
        QTest::addColumn<int>("place");
        QTest::addColumn<QString>("text");
        QTest::newRow("version") << 0 << "2";
        QTest::newRow("geometry") << 1 << "AdnQywADAAAAAP//";
        QTest::newRow("state") << 2 << "AAAA/wAAAAD9AAAA";
        QTest::newRow("docks") << 3 << "Elsewhere";
        QTest::newRow("cut off") << -1 << "";
    }

    void what_is_damaged_is_left_alone()
    {
        QFETCH(int, place);
        QFETCH(QString, text);
        {
            FullWindow full;
            full.window.rememberLayout();
            full.show();
            full.mess();
            full.window.close();
        }
        QStringList stored = nkPreferencesService::the().getStringListValue(key);
        if (place >= 0) {
            stored[place] = text;
        } else {
            stored = stored.mid(0, 2);
        }
        nkPreferencesService::the().setStringListValue(key, stored, true);
        FullWindow full;
        full.window.rememberLayout();
        full.show();
        QVERIFY(full.isAsLaidOut());
    }

    void that_of_a_window_with_other_panels_is_left_alone()
    {
        {
            FullWindow full;
            full.add(QStringLiteral("One More"), Place::Editors, false);
            full.window.rememberLayout();
            full.show();
            full.mess();
            full.window.close();
        }
        FullWindow full;
        full.window.rememberLayout();
        full.show();
        QVERIFY(full.isAsLaidOut());
    }

    void what_floated_on_a_vanished_screen_is_reachable()
    {
        {
            FullWindow full;
            full.window.rememberLayout();
            full.show();
            full.middle->setFloating(true);
            full.middle->setGeometry(9000, 9000, 400, 300);
            full.window.close();
        }
        FullWindow full;
        full.window.rememberLayout();
        full.show();
        const QRect screen = full.window.screen()->availableGeometry();
        QVERIFY(!full.middle->isFloating() || screen.intersects(full.middle->frameGeometry()));
    }
};

NK_TEST_MAIN(TestWindowLayout)
#include "test_window_layout.moc"
