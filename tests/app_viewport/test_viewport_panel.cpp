#include "ViewportFixture.h"

#include "MainWindow.h"
#include "files/SceneSession.h"
#include "viewport/OpenGlCheck.h"
#include "viewport/ViewportDock.h"
#include "viewport/ViewportWidget.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServices/nkInternalUiService.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

/// The viewport as a person has it. Where there is no OpenGL, the same with a message in place of the picture.
class TestViewportPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhatToDoWithoutAScene();
    void saysWhereThereIsNothingToDraw();
    void drawsTheSceneOrSaysWhyNot();
    void outlinesWhatIsSelected();
    void drawsSceneplatesBehindAndInFront();
    void aClickInThePictureSelects();
    void drawsAgainInAnotherWindow();
    void tellsWhatIsNotDrawnAsPlainText();
    void everyToolHasANameAndIsReachedByKeys();
    void theToolBarChoosesToolsAndGizmos();
    void theMenuOffersWhatCanBeDone();
    void theDockShowsTheSessionsScene();
    void theViewMenuHidesAndShowsIt();

private:
    struct Shown
    {
        explicit Shown(const ViewportFixture &f)
        {
            panel.resize(600, 450);
            panel.show();
            panel.setSource(f.source);
            isReady = QTest::qWaitForWindowExposed(&panel) && QTest::qWaitFor([this] {
                          return panel.scene()->state() == ViewportScene::State::Ready;
                      });
        }

        /// The picture's colour where a point of the scene is seen.
        QColor at(const QVector3D &point)
        {
            const QImage image = panel.canvas()->grabFramebuffer();
            const QPoint place = ViewportFixture::seenAt(panel.control()->camera(), point);
            return image.pixelColor(place * image.devicePixelRatio());
        }

        /// Pixels of the outline's colour in the row in which a point of the scene is seen, near it.
        int outlineBeside(const QVector3D &point)
        {
            const QImage image = panel.canvas()->grabFramebuffer();
            const QPoint place = ViewportFixture::seenAt(panel.control()->camera(), point);
            int found = 0;
            for (int x = -150; x <= 150; ++x) {
                const QPoint at = (place + QPoint(x, 0)) * image.devicePixelRatio();
                found += image.rect().contains(at) && isOutline(image.pixelColor(at)) ? 1 : 0;
            }
            return found;
        }

        ViewportPanel panel;
        /// The same in a row of pixels, counted from the top.
        int outlineInRow(int y)
        {
            const QImage image = panel.canvas()->grabFramebuffer();
            int found = 0;
            for (int x = 0; x < image.width(); ++x) {
                found += isOutline(image.pixelColor(x, y)) ? 1 : 0;
            }
            return found;
        }

        bool isReady = false;
    };

    static bool isOutline(const QColor &color) { return color.red() > 240 && color.blue() < 60; }
    static bool hasGraphics() { return OpenGlCheck::missing().isEmpty(); }
};

namespace {

bool isReddish(const QColor &color)
{
    return color.red() > 90 && color.green() < 40 && color.blue() < 40;
}
bool isBluish(const QColor &color)
{
    return color.blue() > 90 && color.green() < 40 && color.red() < 40;
}

} // namespace

void TestViewportPanel::saysWhatToDoWithoutAScene()
{
    const ViewportFixture f;
    ViewportPanel panel;
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    QVERIFY(panel.message().contains(QLatin1String("File > Open")));
    QVERIFY2(!panel.message().contains(QLatin1String("No scene")), "a new one is a scene, too");
    QVERIFY(!panel.findChild<QToolBar *>()->isEnabled());
    QVERIFY(!panel.canvas());
}

void TestViewportPanel::saysWhereThereIsNothingToDraw()
{
    const ViewportFixture f;
    auto source = std::make_shared<interchange::SceneSource>(*f.source);
    source->geometry = std::make_shared<interchange::SceneGeometry>();
    ViewportPanel panel;
    panel.show();
    panel.setSource(source);
    QCOMPARE(panel.message(), QStringLiteral("Reading the scene's geometry…"));
    QTRY_VERIFY(panel.message().startsWith(QLatin1String("There is nothing to draw in this scene.")));
    QVERIFY(!panel.canvas());
}

void TestViewportPanel::drawsTheSceneOrSaysWhyNot()
{
    const ViewportFixture f;
    Shown s(f);
    QVERIFY(s.isReady);
    if (!hasGraphics()) {
        QVERIFY(!s.panel.canvas());
        QVERIFY(s.panel.message().startsWith(QLatin1String("The scene cannot be drawn here. ")));
        return;
    }
    QCOMPARE(s.panel.message(), QString());
    QVERIFY(isReddish(s.at({-2, 0, 0})));
    QVERIFY(isBluish(s.at({2, 0, 0})));
    const QColor between = s.at({});
    QVERIFY(!isReddish(between) && !isBluish(between));
}

void TestViewportPanel::outlinesWhatIsSelected()
{
    const ViewportFixture f;
    Shown s(f);
    if (!hasGraphics()) {
        return;
    }
    QCOMPARE(s.outlineBeside({-2, 0, 0}), 0);
    f.select({"Left"});
    QVERIFY(s.outlineBeside({-2, 0, 0}) >= 3); // two lines of two pixels, or nearly so
    QVERIFY(isReddish(s.at({-2, 0, 0})));
    f.select({});
    QCOMPARE(s.outlineBeside({-2, 0, 0}), 0);
    f.select({"Left"});
    kernel::Document::the().deleteObjects(f.idsOf({"Left"}));
    QTRY_COMPARE(s.outlineBeside({-2, 0, 0}), 0);
}

void TestViewportPanel::drawsSceneplatesBehindAndInFront()
{
    const ViewportFixture f;
    Shown s(f);
    if (!hasGraphics()) {
        return;
    }
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::green);
    const QString path = f.folder.filePath(QStringLiteral("green.png"));
    QVERIFY(image.save(path));
    auto &document = kernel::Document::the();
    const quint64 plate = document.createSceneplate(QStringLiteral("Plate"), path,
                                                    kernel::SceneplatePlacement::Behind);
    QTRY_COMPARE(s.at({0, 0, 0}), QColor(Qt::green));
    QVERIFY(isReddish(s.at({-2, 0, 0})));
    const int before = s.outlineInRow(1);
    nkScenegraphService::the().setSelection({nkdNode(nkdObject(plate))});
    QVERIFY(s.outlineInRow(1) > before + 200);
    // Half transparent: the scene is seen through it.
    document.setSceneplatePlacement(plate, kernel::SceneplatePlacement::InFront);
    QTRY_VERIFY(s.at({-2, 0, 0}).green() > 100);
    QVERIFY(s.at({-2, 0, 0}).red() > s.at({2, 0, 0}).red());
    document.deleteObjects({plate});
    QTRY_VERIFY(isReddish(s.at({-2, 0, 0})));
}

void TestViewportPanel::aClickInThePictureSelects()
{
    const ViewportFixture f;
    Shown s(f);
    if (!hasGraphics()) {
        return;
    }
    QTest::mouseClick(s.panel.canvas(), Qt::LeftButton, {},
                      ViewportFixture::seenAt(s.panel.control()->camera(), {2, 0, 0}));
    QCOMPARE(f.selection(), QStringList{"Right"});
    QTest::keyClick(s.panel.canvas(), Qt::Key_Escape);
    QCOMPARE(f.selection(), QStringList());
}

void TestViewportPanel::drawsAgainInAnotherWindow()
{
    const ViewportFixture f;
    auto s = std::make_unique<Shown>(f);
    if (!hasGraphics()) {
        return;
    }
    QVERIFY(isReddish(s->at({-2, 0, 0})));
    QWidget other;
    other.resize(600, 450);
    other.show();
    s->panel.setParent(&other);
    s->panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    QVERIFY(isReddish(s->at({-2, 0, 0})));
    s->panel.setParent(nullptr);
}

void TestViewportPanel::tellsWhatIsNotDrawnAsPlainText()
{
    const ViewportFixture f;
    auto source = std::make_shared<interchange::SceneSource>(*f.source);
    auto geometry = std::make_shared<interchange::SceneGeometry>();
    geometry->troubles = QStringList{QStringLiteral("<b>One</b> is missing."),
                                     QStringLiteral("Another, too.")};
    source->geometry = geometry;
    ViewportPanel panel;
    panel.show();
    panel.setSource(source);
    QTRY_COMPARE(panel.notice(),
                 QStringLiteral("Not everything is drawn, for 2 reasons: <b>One</b> is missing."));
    const auto *label = panel.findChild<QLabel *>(QStringLiteral("notice"));
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QVERIFY(label->toolTip().contains(QLatin1String("&lt;b&gt;One&lt;/b&gt; is missing.\nAnother, too.")));
    panel.setSource(f.source);
    QCOMPARE(panel.notice(), QString());
}

void TestViewportPanel::everyToolHasANameAndIsReachedByKeys()
{
    ViewportPanel panel;
    QStringList names;
    const auto buttons = panel.findChild<QToolBar *>()->findChildren<QToolButton *>();
    for (const QToolButton *button : buttons) {
        if (button->defaultAction()) {
            names.append(button->accessibleName());
            QVERIFY(button->focusPolicy() & Qt::TabFocus);
            QVERIFY(!button->icon().isNull() && !button->toolTip().isEmpty());
        }
    }
    QCOMPARE(names, QStringList({"Select", "Orbit", "Pan", "Fit Selection", "Fit All", "Show Cameras",
                                 "Show Lights"}));
}

void TestViewportPanel::theToolBarChoosesToolsAndGizmos()
{
    const ViewportFixture f;
    Shown s(f);
    const auto action = [&s](const QString &text) {
        for (QAction *each : s.panel.findChild<QToolBar *>()->actions()) {
            if (each->text() == text)
                return each;
        }
        return static_cast<QAction *>(nullptr);
    };
    action(QStringLiteral("Pan"))->trigger();
    QCOMPARE(s.panel.control()->tool(), ViewportControl::Tool::Pan);
    QVERIFY(!action(QStringLiteral("Select"))->isChecked());
    action(QStringLiteral("Show Lights"))->trigger();
    QCOMPARE(s.panel.control()->gizmos(), SceneGizmos::Kinds(SceneGizmos::Cameras));
}

void TestViewportPanel::theMenuOffersWhatCanBeDone()
{
    const ViewportFixture f;
    Shown s(f);
    const auto open = [&s] {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 50}, s.panel.mapToGlobal({50, 50}));
        QCoreApplication::sendEvent(&s.panel, &event);
    };
    ModalAnswer all = ModalAnswer::menu(QStringLiteral("Select All"));
    open();
    QCOMPARE(all.record().buttons,
             QStringList({"Show &Metadata", "&Fit Selection", "Fit &All", "&Select All", "Select &None"}));
    QCOMPARE(f.selection(), QStringList({"Left", "Right", "Eye", "Lamp"}));
    QSignalSpy asked(&nkInternalUiService::the(),
                     &nkInternalUiService::requestMetadataEditorSelectionModeInLowerTree);
    ModalAnswer metadata = ModalAnswer::menu(QStringLiteral("Show Metadata"));
    open();
    QCOMPARE(asked.count(), 1);
    ModalAnswer none = ModalAnswer::menu(QStringLiteral("Select None"));
    open();
    QCOMPARE(f.selection(), QStringList());
    ModalAnswer disabled = ModalAnswer::menu([](QMenu *menu) {
        QVERIFY(!menu->actions().constFirst()->isEnabled());
        menu->close();
    });
    open();
}

void TestViewportPanel::theDockShowsTheSessionsScene()
{
    const ViewportFixture f;
    MainWindow window;
    SceneSession session;
    auto *dock = new ViewportDock(&window, &session);
    QCOMPARE(dock->objectName(), QStringLiteral("Viewport"));
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(session.open(f.folder.filePath(QStringLiteral("scene.gltf"))), QString());
    QTRY_COMPARE(f.shown(*dock->panel()->scene()), QStringList({"Left", "Right", "Eye", "Lamp"}));
    session.clear();
    QTRY_VERIFY(dock->panel()->message().startsWith(QLatin1String("There is nothing to draw yet.")));
}

void TestViewportPanel::theViewMenuHidesAndShowsIt()
{
    const ViewportFixture f;
    MainWindow window;
    SceneSession session;
    auto *dock = new ViewportDock(&window, &session);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(dock->action()->isChecked());
    dock->action()->trigger();
    QVERIFY(!dock->isVisible() && !dock->action()->isChecked());
    QCOMPARE(session.open(f.folder.filePath(QStringLiteral("scene.gltf"))), QString());
    QVERIFY(dock->panel()->scene()->isBlank()); // nobody sees it
    dock->action()->trigger();
    QVERIFY(dock->isVisible() && dock->action()->isChecked());
    QTRY_VERIFY(!dock->panel()->scene()->isBlank());
}

NK_TEST_MAIN(TestViewportPanel)
#include "test_viewport_panel.moc"
