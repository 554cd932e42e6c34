#include "TestMain.h"

#include <nkQt4Ext/QNKComboBox.h>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalSpy>
#include <QTableWidget>

class TestComboBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wheelTurnsItOnlyWithFocus();
    void keysInTheOpenListSetOffNoShortcutOfTheTable_data();
    void keysInTheOpenListSetOffNoShortcutOfTheTable();
    void keysSetOffNoShortcutOfTheTableWhileItEditsACell();
    void theListIsUsedByKeyboard();
    void outsideOfATableShortcutsWork();
};

namespace {

void addItems(QNKComboBox *box)
{
    box->addItems({QStringLiteral("false"), QStringLiteral("true")});
}

} // namespace

void TestComboBox::wheelTurnsItOnlyWithFocus()
{
    QWidget window;
    QNKComboBox box(&window);
    QLineEdit other(&window);
    addItems(&box);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto turn = [&box] {
        QWheelEvent event(QPointF(5, 5), box.mapToGlobal(QPoint(5, 5)), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&box, &event);
        return event.isAccepted();
    };
    QVERIFY2(box.focusPolicy() == Qt::StrongFocus, "the wheel gives no focus");
    other.setFocus();
    QVERIFY(!turn());
    QCOMPARE(box.currentIndex(), 0);
    QVERIFY(!box.hasFocus());
    box.setFocus();
    turn();
    QCOMPARE(box.currentIndex(), 1);
}

void TestComboBox::keysInTheOpenListSetOffNoShortcutOfTheTable_data()
{
    QTest::addColumn<QKeySequence>("keys");
    QTest::newRow("delete") << QKeySequence(Qt::Key_Delete);
    QTest::newRow("copy") << QKeySequence(Qt::CTRL + Qt::Key_C);
    QTest::newRow("paste") << QKeySequence(Qt::CTRL + Qt::Key_V);
}

void TestComboBox::keysInTheOpenListSetOffNoShortcutOfTheTable()
{
    QFETCH(QKeySequence, keys);
    QTableWidget table(1, 1);
    QShortcut shortcut(keys, &table, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    QSignalSpy activated(&shortcut, &QShortcut::activated);
    auto *box = new QNKComboBox(table.viewport());
    addItems(box);
    table.show();
    QVERIFY(QTest::qWaitForWindowActive(&table));
    QTest::keySequence(&table, keys);
    QCOMPARE(activated.count(), 1);
    box->show();
    box->setFocus();
    box->showPopup();
    QTRY_VERIFY(box->view()->isVisible());
    QTest::keySequence(box->view(), keys);
    QCOMPARE(activated.count(), 1);
    QTest::keyClick(box->view(), Qt::Key_Escape);
}

void TestComboBox::keysSetOffNoShortcutOfTheTableWhileItEditsACell()
{
    QTableWidget table(1, 1);
    QShortcut shortcut(Qt::Key_Delete, &table, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    QSignalSpy activated(&shortcut, &QShortcut::activated);
    auto *box = new QNKComboBox(table.viewport());
    addItems(box);
    table.show();
    QVERIFY(QTest::qWaitForWindowActive(&table));
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Delete);
    QCOMPARE(activated.count(), 0);
}

void TestComboBox::theListIsUsedByKeyboard()
{
    QNKComboBox box;
    addItems(&box);
    QSignalSpy activated(&box, QOverload<int>::of(&QComboBox::activated));
    box.show();
    QVERIFY(QTest::qWaitForWindowActive(&box));
    box.showPopup();
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    QCOMPARE(box.currentIndex(), 1);
    QCOMPARE(activated.count(), 1);
    QTRY_VERIFY(!box.view()->isVisible());
    box.showPopup();
    QTest::keyClick(box.view(), Qt::Key_Up);
    QTest::keyClick(box.view(), Qt::Key_Escape);
    QTRY_VERIFY(!box.view()->isVisible());
    QCOMPARE(box.currentIndex(), 1);
    QCOMPARE(activated.count(), 1);
}

void TestComboBox::outsideOfATableShortcutsWork()
{
    QWidget window;
    QShortcut shortcut(Qt::Key_Delete, &window, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    QSignalSpy activated(&shortcut, &QShortcut::activated);
    QNKComboBox box(&window);
    addItems(&box);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Delete);
    QCOMPARE(activated.count(), 1);
}

NK_TEST_MAIN(TestComboBox)

#include "test_combo_box.moc"
