#include "TestMain.h"

#include <nkQt4Ext/QNKInlineButton.h>
#include <nkQt4Ext/QNKSearchBox.h>

#include <QLineEdit>
#include <QSignalSpy>
#include <QToolButton>

namespace {

struct Box
{
    QNKSearchBox box;
    QSignalSpy changed{&box, &QNKSearchBox::searchChanged};
    QSignalSpy disabled{&box, &QNKSearchBox::searchDisabled};

    QStringList told() const
    {
        QStringList texts;
        for (const QList<QVariant> &arguments : changed)
            texts.append(arguments.first().toString());
        return texts;
    }

    QNKInlineButton *onOff() const { return box.findChild<QNKInlineButton *>(); }
};

} // namespace

class TestSearchBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void typingIsTold();
    void changesByProgramAreTold();
    void theSameTextIsNotToldTwice();
    void clearButtonEmptiesIt();
    void escapeEmptiesItAndThenGoesOn();
    void switchedOffItKeepsTheTextAndSearchesNothing();
    void switchedOnAgainItTellsTheText();
    void switchesWithNothingToSearch();
    void theSwitchWorksByMouseAndKeyboard();
    void inANarrowColumnTheFieldRemains();
    void foreignTextStaysText();
};

void TestSearchBox::typingIsTold()
{
    Box box;
    QTest::keyClicks(box.box.lineEdit(), QStringLiteral("ab"));
    QCOMPARE(box.told(), (QStringList{"a", "ab"}));
    QCOMPARE(box.box.text(), QStringLiteral("ab"));
}

void TestSearchBox::changesByProgramAreTold()
{
    Box box;
    box.box.lineEdit()->setText(QStringLiteral("wheel"));
    box.box.lineEdit()->clear();
    QCOMPARE(box.told(), (QStringList{"wheel", ""}));
}

void TestSearchBox::theSameTextIsNotToldTwice()
{
    Box box;
    box.box.lineEdit()->setText(QStringLiteral("a"));
    box.box.lineEdit()->setText(QStringLiteral("a"));
    box.box.setSearchEnabled(true);
    QCOMPARE(box.told(), QStringList{"a"});
    QCOMPARE(box.disabled.count(), 0);
}

void TestSearchBox::clearButtonEmptiesIt()
{
    Box box;
    box.box.lineEdit()->setText(QStringLiteral("a"));
    QVERIFY(box.box.lineEdit()->isClearButtonEnabled());
    box.box.show();
    QTest::mouseClick(box.box.lineEdit()->findChild<QToolButton *>(), Qt::LeftButton);
    QCOMPARE(box.told(), (QStringList{"a", ""}));
}

void TestSearchBox::escapeEmptiesItAndThenGoesOn()
{
    Box box;
    box.box.lineEdit()->setText(QStringLiteral("a"));
    QTest::keyClick(box.box.lineEdit(), Qt::Key_Escape);
    QCOMPARE(box.box.text(), QString());
    QKeyEvent second(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(box.box.lineEdit(), &second);
    QVERIFY(!second.isAccepted());
}

void TestSearchBox::switchedOffItKeepsTheTextAndSearchesNothing()
{
    Box box;
    box.box.lineEdit()->setText(QStringLiteral("a"));
    box.box.setSearchEnabled(false);
    QCOMPARE(box.disabled.count(), 1);
    QVERIFY(!box.box.isSearchEnabled());
    QCOMPARE(box.box.text(), QStringLiteral("a"));
    box.box.lineEdit()->setText(QStringLiteral("ab"));
    box.box.setSearchEnabled(false);
    QCOMPARE(box.told(), QStringList{"a"});
    QCOMPARE(box.disabled.count(), 1);
}

void TestSearchBox::switchedOnAgainItTellsTheText()
{
    Box box;
    box.box.lineEdit()->setText(QStringLiteral("a"));
    box.box.setSearchEnabled(false);
    box.box.setSearchEnabled(true);
    QCOMPARE(box.told(), (QStringList{"a", "a"}));
}

void TestSearchBox::switchesWithNothingToSearch()
{
    Box box;
    box.box.setSearchEnabled(false);
    box.box.setSearchEnabled(true);
    QCOMPARE(box.disabled.count(), 1);
    QCOMPARE(box.changed.count(), 0);
}

void TestSearchBox::theSwitchWorksByMouseAndKeyboard()
{
    Box box;
    box.box.show();
    QTest::mouseClick(box.onOff(), Qt::LeftButton);
    QVERIFY(!box.box.isSearchEnabled());
    QVERIFY(box.onOff()->focusPolicy() & Qt::TabFocus);
    QTest::keyClick(box.onOff(), Qt::Key_Space);
    QVERIFY(box.box.isSearchEnabled());
    box.box.setSearchEnabled(false);
    QVERIFY(!box.onOff()->isChecked());
}

void TestSearchBox::inANarrowColumnTheFieldRemains()
{
    Box box;
    box.box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box.box));
    box.box.setFixedWidth(200);
    QTRY_VERIFY(box.onOff()->isVisible()); // the window system may still answer an older size
    box.box.setFixedWidth(36);
    QTRY_VERIFY(!box.onOff()->isVisible());
    QVERIFY(box.box.lineEdit()->isVisible());
    QTRY_VERIFY(box.box.lineEdit()->width() >= 30);
}

void TestSearchBox::foreignTextStaysText()
{
    Box box;
    const QString text = QStringLiteral("<b>&x%1</b>");
    box.box.lineEdit()->setText(text);
    QCOMPARE(box.told(), QStringList{text});
    box.box.setPlaceholderText(text);
    QCOMPARE(box.box.lineEdit()->placeholderText(), text);
}

NK_TEST_MAIN(TestSearchBox)

#include "test_search_box.moc"
