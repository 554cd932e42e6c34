#include "TestMain.h"

#include <nkQt4Ext/QNKCollapsibleFrame.h>
#include <nkQt4Ext/QNKInlineButton.h>
#include <nkQt4Ext/QNKToolBar.h>
#include <nkQt4Ext/QNKTreeExpandSlider.h>

#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QToolButton>
#include <QTreeView>

namespace {

/// Two rows at each of three levels.
void fill(QStandardItemModel &model)
{
    for (int top = 0; top < 2; ++top) {
        auto *parent = new QStandardItem(QStringLiteral("top"));
        auto *child = new QStandardItem(QStringLiteral("child"));
        child->appendRow(new QStandardItem(QStringLiteral("grandchild")));
        parent->appendRow(child);
        model.appendRow(parent);
    }
}

} // namespace

class TestFramesAndButtons : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFrameFoldsItsContent();
    void aFrameFoldsByMouseAndKeyboard();
    void aFrameShowsItsTitleAsText();
    void aFrameOwnsItsContent();
    void contentMayGoByItself();
    void theSliderExpandsToADepth();
    void theSliderOutlivesItsView();
    void theSliderTurnsByKeyboardAndByWheelWithFocus();
    void aTerminatedButtonIsClosedAtItsEnd();
    void anInlineButtonIsAToggle();
    void toolBarIconsAre24();
    void toolBarButtonsAreReachedByKeyboard();
};

void TestFramesAndButtons::aFrameFoldsItsContent()
{
    QNKCollapsibleFrame frame;
    auto *content = new QLabel(QStringLiteral("content"));
    frame.setWidget(content);
    frame.show();
    QSignalSpy changed(&frame, &QNKCollapsibleFrame::expandedChanged);
    QVERIFY(frame.isExpanded());
    QVERIFY(content->isVisible());
    frame.setExpanded(true);
    QCOMPARE(changed.count(), 0);
    const int open = frame.sizeHint().height();
    frame.setExpanded(false);
    QVERIFY(!content->isVisible());
    QVERIFY(frame.sizeHint().height() < open);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.last().first().toBool(), false);
    auto *other = new QLabel(QStringLiteral("other"));
    frame.setWidget(other);
    QVERIFY(!other->isVisible());
    frame.setExpanded(true);
    QVERIFY(other->isVisible());
}

void TestFramesAndButtons::aFrameFoldsByMouseAndKeyboard()
{
    QNKCollapsibleFrame frame;
    frame.show();
    auto *button = frame.findChild<QToolButton *>();
    QTest::mouseClick(button, Qt::LeftButton);
    QVERIFY(!frame.isExpanded());
    QVERIFY(button->focusPolicy() & Qt::TabFocus);
    QTest::keyClick(button, Qt::Key_Space);
    QVERIFY(frame.isExpanded());
}

void TestFramesAndButtons::aFrameShowsItsTitleAsText()
{
    QNKCollapsibleFrame frame;
    frame.setTitle(QStringLiteral("<b>R&D</b>"));
    QCOMPARE(frame.title(), QStringLiteral("<b>R&D</b>"));
    QCOMPARE(frame.findChild<QToolButton *>()->text(), QStringLiteral("<b>R&&D</b>"));
    QCOMPARE(frame.findChild<QToolButton *>()->accessibleName(), QStringLiteral("<b>R&D</b>"));
}

void TestFramesAndButtons::aFrameOwnsItsContent()
{
    QPointer<QLabel> first = new QLabel;
    QPointer<QLabel> second = new QLabel;
    {
        QNKCollapsibleFrame frame;
        frame.setWidget(first);
        QCOMPARE(frame.widget(), first.data());
        frame.setWidget(first);
        QVERIFY(first);
        frame.setWidget(second);
        QVERIFY(!first);
    }
    QVERIFY(!second);
}

void TestFramesAndButtons::contentMayGoByItself()
{
    QNKCollapsibleFrame frame;
    auto *content = new QLabel;
    frame.setWidget(content);
    delete content;
    QVERIFY(!frame.widget());
    frame.setExpanded(false);
    frame.setWidget(nullptr);
    QVERIFY(!frame.widget());
}

void TestFramesAndButtons::theSliderExpandsToADepth()
{
    QStandardItemModel model;
    fill(model);
    QTreeView view;
    view.setModel(&model);
    QNKTreeExpandSlider slider(&view);
    QCOMPARE(slider.minimum(), 0);
    QCOMPARE(slider.maximum(), 1);
    slider.setMaximum(2);
    const QModelIndex top = model.index(1, 0);
    const QModelIndex child = model.index(0, 0, top);
    slider.setValue(1);
    QVERIFY(view.isExpanded(top));
    QVERIFY(!view.isExpanded(child));
    slider.setValue(2);
    QVERIFY(view.isExpanded(top) && view.isExpanded(child));
    slider.setValue(1);
    QVERIFY(view.isExpanded(top) && !view.isExpanded(child));
    slider.setValue(0);
    QVERIFY(!view.isExpanded(top));
}

void TestFramesAndButtons::theSliderOutlivesItsView()
{
    auto *view = new QTreeView;
    QNKTreeExpandSlider slider(view);
    delete view;
    slider.setValue(1);
    QNKTreeExpandSlider alone(nullptr);
    alone.setValue(1);
    QCOMPARE(alone.value(), 1);
}

void TestFramesAndButtons::theSliderTurnsByKeyboardAndByWheelWithFocus()
{
    QWidget window;
    QTreeView view(&window);
    QNKTreeExpandSlider slider(&view, &window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto turn = [&slider] {
        QWheelEvent event(QPointF(5, 5), slider.mapToGlobal(QPoint(5, 5)), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&slider, &event);
    };
    view.setFocus();
    turn();
    QCOMPARE(slider.value(), 0);
    slider.setFocus();
    turn();
    QCOMPARE(slider.value(), 1);
    QTest::keyClick(&slider, Qt::Key_Left);
    QCOMPARE(slider.value(), 0);
}

void TestFramesAndButtons::aTerminatedButtonIsClosedAtItsEnd()
{
    QWidget line;
    line.resize(60, 24);
    QNKInlineButton button(&line);
    button.setGeometry(20, 0, 24, 24);
    QVERIFY(!button.isTerminated());
    const QColor outline = button.palette().color(QPalette::Window).darker(140);
    const auto edge = [&button] { return button.grab().toImage().pixelColor(button.width() - 1, 12); };
    const QColor open = edge();
    button.setTerminated(true);
    QVERIFY(button.isTerminated());
    QVERIFY(edge() != open);
    QVERIFY(qAbs(edge().lightness() - outline.lightness()) < 12);
}

void TestFramesAndButtons::anInlineButtonIsAToggle()
{
    QNKInlineButton button;
    QVERIFY(button.isCheckable());
    QSignalSpy toggled(&button, &QNKInlineButton::toggled);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(toggled.count(), 2);
    QVERIFY(button.focusPolicy() & Qt::TabFocus);
}

void TestFramesAndButtons::toolBarIconsAre24()
{
    QCOMPARE(QNKToolBar(QStringLiteral("Actions")).iconSize(), QSize(24, 24));
    QCOMPARE(QNKToolBar(QStringLiteral("Actions")).windowTitle(), QStringLiteral("Actions"));
    QCOMPARE(QNKToolBar().iconSize(), QSize(24, 24));
}

void TestFramesAndButtons::toolBarButtonsAreReachedByKeyboard()
{
    QNKToolBar bar;
    QAction *action = bar.addAction(QStringLiteral("Copy"));
    bar.addSeparator();
    QSignalSpy triggered(action, &QAction::triggered);
    auto *button = qobject_cast<QToolButton *>(bar.widgetForAction(action));
    QVERIFY(button);
    QCOMPARE(button->focusPolicy(), Qt::TabFocus);
    QTest::keyClick(button, Qt::Key_Space);
    QCOMPARE(triggered.count(), 1);
}

NK_TEST_MAIN(TestFramesAndButtons)

#include "test_frames_and_buttons.moc"
