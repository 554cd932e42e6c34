#include "TestMain.h"

#include <nkQt4Ext/QNKListWidget.h>

#include <QSignalSpy>
#include <QTimer>
#include <QWindow>

namespace {

/// Plays the rest of a drag inside the event loop that the drag runs.
class DraggedList : public QNKListWidget
{
public:
    /// Drags the item of a row to just below the item of another row.
    void drag(int from, int below)
    {
        QWindow *window = windowHandle();
        const QPoint start = inWindow(visualItemRect(item(from)).center());
        const QRect target = visualItemRect(item(below));
        m_end = inWindow(QPoint(target.center().x(), target.bottom()));
        QTest::mousePress(window, Qt::LeftButton, {}, start);
        QTest::mouseMove(window, start + QPoint(0, QApplication::startDragDistance() + 1));
        QTest::mouseMove(window, start + QPoint(0, QApplication::startDragDistance() + 2));
        QTRY_VERIFY(m_ended);
    }

protected:
    void startDrag(Qt::DropActions actions) override
    {
        QTimer::singleShot(0, this, [this] {
            QTest::mouseMove(windowHandle(), m_end - QPoint(0, 1));
            QTest::mouseMove(windowHandle(), m_end);
            QTest::mouseRelease(windowHandle(), Qt::LeftButton, {}, m_end);
        });
        QNKListWidget::startDrag(actions);
        m_ended = true;
    }

private:
    QPoint inWindow(const QPoint &position) const { return viewport()->mapTo(window(), position); }

    QPoint m_end;
    bool m_ended = false;
};

struct List
{
    List() { list.addItems({"a", "b", "c", "d"}); }

    QString order() const
    {
        QString texts;
        for (int row = 0; row < list.count(); ++row)
            texts += list.item(row)->text();
        return texts;
    }

    DraggedList list;
    QSignalSpy reordered{&list, &QNKListWidget::reordered};
};

/// The offscreen platform ends every drag at once; what follows is tested by the run on a display.
bool platformHasDrags()
{
    return QGuiApplication::platformName() != QLatin1String("offscreen");
}

} // namespace

class TestListWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void movesTheCurrentItem();
    void movesAsFarAsThereIsRoom();
    void withoutACurrentItemNothingMoves();
    void altAndArrowsMove();
    void arrowsAloneOnlyWalk();
    void draggingReorders();
    void draggingBackToTheSamePlaceIsNoChange();
};

void TestListWidget::movesTheCurrentItem()
{
    List list;
    list.list.setCurrentRow(1);
    const QListWidgetItem *item = list.list.currentItem();
    list.list.moveCurrent(1);
    QCOMPARE(list.order(), QStringLiteral("acbd"));
    QCOMPARE(list.list.currentItem(), item);
    QVERIFY(item->isSelected());
    list.list.moveCurrent(-2);
    QCOMPARE(list.order(), QStringLiteral("bacd"));
    QCOMPARE(list.list.currentRow(), 0);
    QCOMPARE(list.reordered.count(), 2);
}

void TestListWidget::movesAsFarAsThereIsRoom()
{
    List list;
    list.list.setCurrentRow(1);
    list.list.moveCurrent(std::numeric_limits<int>::max());
    QCOMPARE(list.order(), QStringLiteral("acdb"));
    list.list.moveCurrent(1);
    QCOMPARE(list.reordered.count(), 1);
    list.list.moveCurrent(std::numeric_limits<int>::min());
    QCOMPARE(list.order(), QStringLiteral("bacd"));
    list.list.moveCurrent(-1);
    list.list.moveCurrent(0);
    QCOMPARE(list.reordered.count(), 2);
}

void TestListWidget::withoutACurrentItemNothingMoves()
{
    List list;
    list.list.setCurrentRow(-1);
    list.list.moveCurrent(1);
    QCOMPARE(list.order(), QStringLiteral("abcd"));
    QNKListWidget empty;
    empty.moveCurrent(1);
    QCOMPARE(list.reordered.count(), 0);
}

void TestListWidget::altAndArrowsMove()
{
    List list;
    list.list.setCurrentRow(0);
    QTest::keyClick(&list.list, Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&list.list, Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(list.order(), QStringLiteral("bcad"));
    QTest::keyClick(&list.list, Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(list.order(), QStringLiteral("bacd"));
}

void TestListWidget::arrowsAloneOnlyWalk()
{
    List list;
    list.list.setCurrentRow(0);
    QTest::keyClick(&list.list, Qt::Key_Down);
    QCOMPARE(list.list.currentRow(), 1);
    QCOMPARE(list.order(), QStringLiteral("abcd"));
    QCOMPARE(list.reordered.count(), 0);
}

void TestListWidget::draggingReorders()
{
    if (!platformHasDrags())
        return;
    List list;
    list.list.show();
    QVERIFY(QTest::qWaitForWindowActive(&list.list));
    list.list.drag(0, 2);
    QCOMPARE(list.order(), QStringLiteral("bcad"));
    QCOMPARE(list.reordered.count(), 1);
    QCOMPARE(list.list.currentItem()->text(), QStringLiteral("a"));
}

void TestListWidget::draggingBackToTheSamePlaceIsNoChange()
{
    if (!platformHasDrags())
        return;
    List list;
    list.list.show();
    QVERIFY(QTest::qWaitForWindowActive(&list.list));
    list.list.drag(1, 0);
    QCOMPARE(list.order(), QStringLiteral("abcd"));
    QCOMPARE(list.reordered.count(), 0);
}

NK_TEST_MAIN(TestListWidget)

#include "test_list_widget.moc"
