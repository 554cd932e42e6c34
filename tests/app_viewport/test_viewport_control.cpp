#include "ViewportFixture.h"

#include <TestMain.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

using Tool = ViewportControl::Tool;

/// What the mouse and the keys do in the viewport. Needs no picture.
class TestViewportControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looksAtTheWholeSceneFirst();
    void keepsLookingAtAllUntilSomebodyMovesTheEye();
    void aClickSelectsWhatIsThere();
    void aClickBesideEverythingSelectsNothing();
    void controlTogglesAndShiftAdds();
    void aRubberBandSelectsWhatItTouches();
    void aRubberBandAddsWithShift();
    void escapeEndsTheRubberBandBeforeItClearsTheSelection();
    void theToolSaysWhatTheLeftButtonDoes();
    void theMiddleButtonAndAltTurnWithEveryTool();
    void theWheelComesCloser();
    void keysMoveTheEye_data();
    void keysMoveTheEye();
    void keysFitAndSelect();
    void otherKeysAreLeftToOthers();
    void gizmosThatAreHiddenAreNotHit();
    void anotherSceneIsLookedAtAnew();
};

namespace {

constexpr QSizeF size(600, 400);

struct Stage
{
    Stage() : control(&scene, &selection)
    {
        control.setSize(size);
        scene.setActive(true);
        scene.setSource(f.source);
        isReady = QTest::qWaitFor([this] { return scene.state() == ViewportScene::State::Ready; });
    }

    QPoint seen(const QVector3D &point) const { return ViewportFixture::seenAt(control.camera(), point); }

    void press(const QPoint &place, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        control.press(QMouseEvent(QEvent::MouseButtonPress, place, button, button, modifiers));
    }
    void move(const QPoint &place)
    {
        control.move(QMouseEvent(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton, Qt::NoModifier));
    }
    void release(const QPoint &place, Qt::MouseButton button = Qt::LeftButton)
    {
        control.release(QMouseEvent(QEvent::MouseButtonRelease, place, button, Qt::NoButton, Qt::NoModifier));
    }
    void click(const QPoint &place, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        press(place, Qt::LeftButton, modifiers);
        release(place);
    }
    void drag(const QPoint &from, const QPoint &to, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        press(from, button, modifiers);
        move(from + QPoint(1, 0)); // not yet a drag
        move((from + to) / 2);
        move(to);
        release(to, button);
    }
    bool key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        return control.key(QKeyEvent(QEvent::KeyPress, key, modifiers));
    }

    ViewportFixture f;
    ViewportScene scene;
    ViewportSelection selection;
    ViewportControl control;
    bool isReady = false;
};

const QVector3D atLeft(-2, 0, 0);
const QVector3D atRight(2, 0, 0);
const QPoint corner(3, 3); // nothing is there

} // namespace

void TestViewportControl::looksAtTheWholeSceneFirst()
{
    const Stage s;
    QVERIFY(s.isReady);
    for (const QVector3D &corner : s.scene.bounds().corners()) {
        QVERIFY(QRect(QPoint(), size.toSize()).contains(s.seen(corner)));
    }
    QCOMPARE(s.control.camera().target(), QVector3D());
}

void TestViewportControl::keepsLookingAtAllUntilSomebodyMovesTheEye()
{
    Stage s;
    const float before = s.control.camera().distance();
    s.control.setSize({100, 400});
    QVERIFY(s.control.camera().distance() > before * 2);
    s.control.setSize(size);
    s.key(Qt::Key_Plus);
    const float chosen = s.control.camera().distance();
    s.control.setSize({100, 400});
    QCOMPARE(s.control.camera().distance(), chosen);
}

void TestViewportControl::aClickSelectsWhatIsThere()
{
    Stage s;
    s.click(s.seen(atLeft));
    QCOMPARE(s.f.selection(), QStringList{"Left"});
    QCOMPARE(s.f.last(), 0);
    s.click(s.seen(atRight));
    QCOMPARE(s.f.selection(), QStringList{"Right"});
}

void TestViewportControl::aClickBesideEverythingSelectsNothing()
{
    Stage s;
    s.f.select({"Left"});
    s.click(corner, Qt::ShiftModifier);
    s.click(corner, Qt::ControlModifier);
    QCOMPARE(s.f.selection(), QStringList{"Left"});
    s.click(corner);
    QCOMPARE(s.f.selection(), QStringList());
    QCOMPARE(s.f.last(), 0);
}

void TestViewportControl::controlTogglesAndShiftAdds()
{
    Stage s;
    s.click(s.seen(atRight));
    s.click(s.seen(atLeft), Qt::ShiftModifier);
    QCOMPARE(s.f.selection(), QStringList({"Right", "Left"}));
    s.click(s.seen(atLeft), Qt::ShiftModifier);
    QCOMPARE(s.f.selection(), QStringList({"Right", "Left"}));
    s.click(s.seen(atRight), Qt::ControlModifier);
    QCOMPARE(s.f.selection(), QStringList{"Left"});
    s.click(s.seen(atRight), Qt::ControlModifier);
    QCOMPARE(s.f.selection(), QStringList({"Left", "Right"}));
}

void TestViewportControl::aRubberBandSelectsWhatItTouches()
{
    Stage s;
    const QPoint middle = s.seen(atRight);
    s.press(corner);
    s.move(middle);
    QCOMPARE(s.control.band(), QRectF(corner, middle).normalized());
    s.release(middle);
    QVERIFY(s.control.band().isEmpty());
    QVERIFY(s.f.selection().contains(QStringLiteral("Right")));
    s.drag(s.seen(atLeft) - QPoint(3, 3), s.seen(atLeft) + QPoint(12, 12));
    QCOMPARE(s.f.selection(), QStringList{"Left"});
    s.drag(corner, corner + QPoint(15, 15));
    QCOMPARE(s.f.selection(), QStringList());
}

void TestViewportControl::aRubberBandAddsWithShift()
{
    Stage s;
    s.f.select({"Right"});
    s.drag(s.seen(atLeft) - QPoint(3, 3), s.seen(atLeft) + QPoint(12, 12), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(s.f.selection(), QStringList({"Right", "Left"}));
}

void TestViewportControl::escapeEndsTheRubberBandBeforeItClearsTheSelection()
{
    Stage s;
    s.f.select({"Right"});
    s.press(corner);
    s.move(s.seen(atLeft));
    QVERIFY(s.key(Qt::Key_Escape));
    QVERIFY(s.control.band().isEmpty());
    s.release(s.seen(atLeft));
    QCOMPARE(s.f.selection(), QStringList{"Right"});
    QVERIFY(s.key(Qt::Key_Escape));
    QCOMPARE(s.f.selection(), QStringList());
}

void TestViewportControl::theToolSaysWhatTheLeftButtonDoes()
{
    Stage s;
    s.control.setTool(Tool::Orbit);
    QVector3D eye = s.control.camera().eye();
    s.drag(corner, {100, 100});
    QVERIFY((s.control.camera().eye() - eye).length() > 0.5F);
    QCOMPARE(s.control.camera().target(), QVector3D());
    s.control.setTool(Tool::Pan);
    s.drag(corner, {100, 100});
    QVERIFY(s.control.camera().target().length() > 0.5F);
    QCOMPARE(s.f.last(), 1); // moving the eye selects nothing
    s.click(s.seen(atLeft));
    QCOMPARE(s.f.selection(), QStringList{"Left"});
}

void TestViewportControl::theMiddleButtonAndAltTurnWithEveryTool()
{
    for (const Tool tool : {Tool::Select, Tool::Orbit, Tool::Pan}) {
        Stage s;
        s.control.setTool(tool);
        const QVector3D eye = s.control.camera().eye();
        s.drag(corner, {100, 3}, Qt::MiddleButton);
        const QVector3D turned = s.control.camera().eye();
        QVERIFY((turned - eye).length() > 0.5F);
        s.drag({100, 3}, corner, Qt::LeftButton, Qt::AltModifier);
        QVERIFY((s.control.camera().eye() - eye).length() < 0.1F);
        QCOMPARE(s.control.camera().target(), QVector3D());
        s.drag(corner, {100, 3}, Qt::MiddleButton, Qt::ShiftModifier);
        QVERIFY(s.control.camera().target().length() > 0.1F);
        QCOMPARE(s.f.last(), 1);
    }
}

void TestViewportControl::theWheelComesCloser()
{
    Stage s;
    const float before = s.control.camera().distance();
    const auto turn = [&s](int by) {
        s.control.wheel(QWheelEvent(QPointF(100, 100), QPointF(100, 100), QPoint(), QPoint(0, by),
                                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false));
    };
    turn(120);
    QVERIFY(s.control.camera().distance() < before * 0.9F);
    turn(-120);
    QVERIFY(qAbs(s.control.camera().distance() - before) < 0.01F);
}

void TestViewportControl::keysMoveTheEye_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("back");
    QTest::addColumn<bool>("shift");
    QTest::newRow("turn across") << int(Qt::Key_Left) << int(Qt::Key_Right) << false;
    QTest::newRow("turn up") << int(Qt::Key_Up) << int(Qt::Key_Down) << false;
    QTest::newRow("move across") << int(Qt::Key_Left) << int(Qt::Key_Right) << true;
    QTest::newRow("move up") << int(Qt::Key_Up) << int(Qt::Key_Down) << true;
    QTest::newRow("closer") << int(Qt::Key_Plus) << int(Qt::Key_Minus) << false;
}

void TestViewportControl::keysMoveTheEye()
{
    QFETCH(int, key);
    QFETCH(int, back);
    QFETCH(bool, shift);
    Stage s;
    const QVector3D eye = s.control.camera().eye();
    const Qt::KeyboardModifiers modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
    QSignalSpy changed(&s.control, &ViewportControl::changed);
    QVERIFY(s.key(key, modifiers));
    QCOMPARE(changed.count(), 1);
    QVERIFY((s.control.camera().eye() - eye).length() > 0.2F);
    QCOMPARE(s.control.camera().target().length() > 0.01F, shift);
    QVERIFY(s.key(back, modifiers));
    QVERIFY((s.control.camera().eye() - eye).length() < 0.01F);
}

void TestViewportControl::keysFitAndSelect()
{
    Stage s;
    const float all = s.control.camera().distance();
    s.f.select({"Right"});
    QVERIFY(s.key(Qt::Key_F));
    QCOMPARE(s.control.camera().target(), atRight);
    QVERIFY(s.control.camera().distance() < all / 2);
    QVERIFY(s.key(Qt::Key_Home));
    QCOMPARE(s.control.camera().target(), QVector3D());
    s.f.select({"Empty"}); // nothing to look at
    QVERIFY(s.key(Qt::Key_F));
    QCOMPARE(s.control.camera().target(), QVector3D());
    QVERIFY(s.key(Qt::Key_A, Qt::ControlModifier));
    QCOMPARE(s.f.selection(), QStringList({"Left", "Right", "Eye", "Lamp"}));
}

void TestViewportControl::otherKeysAreLeftToOthers()
{
    Stage s;
    QVERIFY(!s.key(Qt::Key_F, Qt::ControlModifier));
    QVERIFY(!s.key(Qt::Key_Left, Qt::AltModifier));
    QVERIFY(!s.key(Qt::Key_Delete));
}

void TestViewportControl::gizmosThatAreHiddenAreNotHit()
{
    Stage s;
    s.key(Qt::Key_Minus);
    s.key(Qt::Key_Minus);
    s.key(Qt::Key_Minus);
    const QPoint lamp = s.seen({0, 4, 0});
    const QRect around(lamp - QPoint(20, 20), lamp + QPoint(20, 20));
    s.drag(around.topLeft(), around.bottomRight());
    QCOMPARE(s.f.selection(), QStringList{"Lamp"});
    s.control.setShown(SceneGizmos::Lights, false);
    s.drag(around.topLeft(), around.bottomRight());
    QCOMPARE(s.f.selection(), QStringList());
    s.drag({0, 0}, {600, 400});
    QVERIFY(s.f.selection().contains(QStringLiteral("Eye")));
}

void TestViewportControl::anotherSceneIsLookedAtAnew()
{
    Stage s;
    const QVector3D eye = s.control.camera().eye();
    s.key(Qt::Key_Left);
    s.key(Qt::Key_Plus);
    kernel::Document::the().deleteObjects(s.f.idsOf({"Left"})); // a change is no other scene
    QCoreApplication::processEvents();
    QVERIFY((s.control.camera().eye() - eye).length() > 0.2F);
    const ViewportFixture other;
    s.scene.setSource(other.source);
    QTRY_COMPARE(s.scene.state(), ViewportScene::State::Ready);
    QVERIFY((s.control.camera().eye() - eye).length() < 0.01F);
}

NK_TEST_MAIN(TestViewportControl)
#include "test_viewport_control.moc"
