#include "TestMain.h"

#include <nkQt4Ext/QNKSpiner.h>

#include <QLineEdit>

#include <limits>

namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

} // namespace

class TestSpiner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void holdsEveryInt_data();
    void holdsEveryInt();
    void refusesWhatNoIntHolds();
    void typedTextCountsWhenInterpreted();
    void stepsStopAtTheLimits();
    void stepsWrapWhereAsked();
    void groupsDigitsOnlyWhereAsked();
    void wheelTurnsItOnlyWithFocus();
};

void TestSpiner::holdsEveryInt_data()
{
    QTest::addColumn<int>("value");
    for (const int value :
         {least, least + 1, -16777217, -1000, -1, 0, 1, 999, 1000, 16777217, greatest - 1, greatest})
        QTest::newRow(qPrintable(QString::number(value))) << value;
}

void TestSpiner::holdsEveryInt()
{
    QFETCH(int, value);
    QNKSpiner spiner;
    spiner.setValue(value);
    QCOMPARE(spiner.text(), QString::number(value));
    spiner.interpretText();
    QCOMPARE(spiner.value(), value);

    QNKSpiner typed;
    typed.setValue(5);
    auto *edit = typed.findChild<QLineEdit *>();
    edit->selectAll();
    QTest::keyClicks(edit, QString::number(value));
    typed.interpretText();
    QCOMPARE(typed.value(), value);
}

void TestSpiner::refusesWhatNoIntHolds()
{
    QNKSpiner spiner;
    spiner.setValue(7);
    auto *edit = spiner.findChild<QLineEdit *>();
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("2147483648"));
    QCOMPARE(edit->text(), QStringLiteral("214748364"));
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("-"));
    spiner.interpretText();
    QCOMPARE(spiner.value(), 214748364);
}

void TestSpiner::typedTextCountsWhenInterpreted()
{
    QNKSpiner spiner;
    spiner.setKeyboardTracking(false);
    auto *edit = spiner.findChild<QLineEdit *>();
    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("42"));
    QCOMPARE(spiner.value(), 0);
    spiner.interpretText();
    QCOMPARE(spiner.value(), 42);
}

void TestSpiner::stepsStopAtTheLimits()
{
    QNKSpiner spiner;
    spiner.setValue(greatest - 3);
    QTest::keyClick(&spiner, Qt::Key_PageUp);
    QCOMPARE(spiner.value(), greatest);
    QTest::keyClick(&spiner, Qt::Key_Up);
    QCOMPARE(spiner.value(), greatest);
    spiner.setValue(least + 3);
    QTest::keyClick(&spiner, Qt::Key_PageDown);
    QCOMPARE(spiner.value(), least);
    QTest::keyClick(&spiner, Qt::Key_Down);
    QCOMPARE(spiner.value(), least);
    QTest::keyClick(&spiner, Qt::Key_Up);
    QCOMPARE(spiner.value(), least + 1);
}

void TestSpiner::stepsWrapWhereAsked()
{
    QNKSpiner spiner;
    spiner.setWrapping(true);
    spiner.setValue(greatest);
    spiner.stepUp();
    QCOMPARE(spiner.value(), least);
    spiner.stepDown();
    QCOMPARE(spiner.value(), greatest);
}

void TestSpiner::groupsDigitsOnlyWhereAsked()
{
    QNKSpiner spiner;
    spiner.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    spiner.setValue(least);
    QCOMPARE(spiner.text(), QStringLiteral("-2147483648"));
    spiner.setGroupSeparatorShown(true);
    spiner.setValue(1234567);
    QCOMPARE(spiner.text(), QStringLiteral("1,234,567"));
}

void TestSpiner::wheelTurnsItOnlyWithFocus()
{
    QWidget window;
    QNKSpiner spiner(&window);
    QLineEdit other(&window);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const auto turn = [&spiner] {
        QWheelEvent event(QPointF(5, 5), spiner.mapToGlobal(QPoint(5, 5)), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&spiner, &event);
    };
    QVERIFY2(spiner.focusPolicy() == Qt::StrongFocus, "the wheel gives no focus");
    other.setFocus();
    turn();
    QCOMPARE(spiner.value(), 0);
    QVERIFY(!spiner.hasFocus());
    spiner.setFocus();
    turn();
    QCOMPARE(spiner.value(), 1);
}

NK_TEST_MAIN(TestSpiner)

#include "test_spiner.moc"
