#include "TestMain.h"

#include <nkQt4Ext/QNKTypeMenu.h>

#include <QSignalSpy>

namespace {

/// Four categories in two groups.
void fill(QNKTypeMenu &menu)
{
    menu.addType(1, QStringLiteral("Locked"), 1);
    menu.addType(2, QStringLiteral("Unlocked"), 1);
    menu.addType(3, QStringLiteral("Asset"), 2);
    menu.addType(4, QStringLiteral("Unassigned"), 2);
}

QPoint middleOf(const QNKTypeMenu &menu, int type)
{
    const auto actions = menu.actions();
    int seen = 0;
    for (QAction *action : actions) {
        if (!action->isSeparator() && ++seen == type)
            return menu.actionGeometry(action).center();
    }
    return {};
}

} // namespace

class TestTypeMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void separatesGroups();
    void startsWithNothingTicked();
    void tellsTicksInAscendingOrder();
    void settingTicksTellsOnce();
    void unknownAndRepeatedNumbersAreIgnored();
    void namesAreText();
    void staysOpenWhileTickedByMouse();
    void staysOpenWhileTickedByKeyboard();
    void aReleaseFromElsewhereTicksNothing();
    void plainActionsStillClose();
};

void TestTypeMenu::separatesGroups()
{
    QNKTypeMenu menu;
    fill(menu);
    QStringList texts;
    const auto actions = menu.actions();
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    QCOMPARE(texts, (QStringList{"Locked", "Unlocked", "-", "Asset", "Unassigned"}));
}

void TestTypeMenu::startsWithNothingTicked()
{
    QNKTypeMenu menu;
    fill(menu);
    QVERIFY(menu.checkedTypes().isEmpty());
}

void TestTypeMenu::tellsTicksInAscendingOrder()
{
    QNKTypeMenu menu;
    menu.addType(7, QStringLiteral("seven"), 1);
    menu.addType(-2, QStringLiteral("minus two"), 1);
    menu.addType(3, QStringLiteral("three"), 1);
    QSignalSpy changed(&menu, &QNKTypeMenu::checkedTypesChanged);
    const auto actions = menu.actions();
    for (QAction *action : actions)
        action->trigger();
    QCOMPARE(changed.count(), 3);
    QCOMPARE(changed.last().first().value<QList<int>>(), (QList<int>{-2, 3, 7}));
    QCOMPARE(menu.checkedTypes(), (QList<int>{-2, 3, 7}));
}

void TestTypeMenu::settingTicksTellsOnce()
{
    QNKTypeMenu menu;
    fill(menu);
    QSignalSpy changed(&menu, &QNKTypeMenu::checkedTypesChanged);
    menu.setCheckedTypes({4, 1, 2});
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.last().first().value<QList<int>>(), (QList<int>{1, 2, 4}));
    menu.setCheckedTypes({1, 2, 4});
    QCOMPARE(changed.count(), 1);
    menu.setCheckedTypes({});
    QCOMPARE(changed.count(), 2);
}

void TestTypeMenu::unknownAndRepeatedNumbersAreIgnored()
{
    QNKTypeMenu menu;
    fill(menu);
    menu.addType(1, QStringLiteral("Again"), 1);
    QCOMPARE(menu.actions().size(), 5);
    QSignalSpy changed(&menu, &QNKTypeMenu::checkedTypesChanged);
    menu.setCheckedTypes({99});
    QCOMPARE(changed.count(), 0);
    menu.setCheckedTypes({1, 1, 99});
    QCOMPARE(menu.checkedTypes(), QList<int>{1});
}

void TestTypeMenu::namesAreText()
{
    QNKTypeMenu menu;
    menu.addType(1, QStringLiteral("R&D"), 1);
    menu.addType(2, QString(), 1);
    QCOMPARE(menu.actions().at(0)->text(), QStringLiteral("R&&D"));
    QCOMPARE(menu.actions().at(1)->text(), QStringLiteral("2"));
}

void TestTypeMenu::staysOpenWhileTickedByMouse()
{
    QNKTypeMenu menu;
    fill(menu);
    menu.popup(QPoint(50, 50));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QTest::mouseClick(&menu, Qt::LeftButton, {}, middleOf(menu, 1));
    QTest::mouseClick(&menu, Qt::LeftButton, {}, middleOf(menu, 3));
    QVERIFY(menu.isVisible());
    QCOMPARE(menu.checkedTypes(), (QList<int>{1, 3}));
    QTest::mouseClick(&menu, Qt::LeftButton, {}, middleOf(menu, 1));
    QCOMPARE(menu.checkedTypes(), QList<int>{3});
    menu.hide();
}

void TestTypeMenu::staysOpenWhileTickedByKeyboard()
{
    QNKTypeMenu menu;
    fill(menu);
    menu.popup(QPoint(50, 50));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Space);
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Enter);
    QVERIFY(menu.isVisible());
    QCOMPARE(menu.checkedTypes(), (QList<int>{1, 2, 3}));
    QTest::keyClick(&menu, Qt::Key_Escape);
    QVERIFY(!menu.isVisible());
}

void TestTypeMenu::aReleaseFromElsewhereTicksNothing()
{
    QNKTypeMenu menu;
    fill(menu);
    menu.popup(QPoint(50, 50));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QTest::mouseRelease(&menu, Qt::LeftButton, {}, middleOf(menu, 1));
    QVERIFY(menu.checkedTypes().isEmpty());
    menu.hide();
}

void TestTypeMenu::plainActionsStillClose()
{
    QNKTypeMenu menu;
    fill(menu);
    QAction *plain = menu.addAction(QStringLiteral("Other"));
    QSignalSpy triggered(plain, &QAction::triggered);
    menu.popup(QPoint(50, 50));
    QVERIFY(QTest::qWaitForWindowExposed(&menu));
    QTest::mouseClick(&menu, Qt::LeftButton, {}, middleOf(menu, 5));
    QCOMPARE(triggered.count(), 1);
    QTRY_VERIFY(!menu.isVisible());
}

NK_TEST_MAIN(TestTypeMenu)

#include "test_type_menu.moc"
