#include "TestMain.h"

#include <nkQt4Ext/QNKFilterBar.h>
#include <nkQt4Ext/QNKInlineButton.h>
#include <nkQt4Ext/QNKTypeMenu.h>

#include <QLineEdit>
#include <QSignalSpy>

namespace {

class StateBar : public QNKFilterBar
{
public:
    StateBar() { addTypesToMenu({1, 2, 3, 4}); }

protected:
    QString getLabel(int number) const override
    {
        return QStringList{"", "Locked", "Unlocked", "Asset", "Unassigned"}.value(number);
    }
    int getCategory(int number) const override { return number <= 2 ? 1 : 2; }
};

struct Bar
{
    StateBar bar;
    QSignalSpy name{&bar, &QNKFilterBar::nameFilterChanged};
    QSignalSpy recursive{&bar, &QNKFilterBar::recursiveFilteringToggled};
    QSignalSpy enabled{&bar, &QNKFilterBar::typeFilteringToggled};
    QSignalSpy types{&bar, &QNKFilterBar::typeFilterChanged};

    int signalCount() const { return name.count() + recursive.count() + enabled.count() + types.count(); }

    QAction *entry(const QString &text) const
    {
        const auto actions = bar.typeMenu()->actions();
        for (QAction *action : actions) {
            if (action->text() == text)
                return action;
        }
        return nullptr;
    }

    QNKInlineButton *menuButton() const
    {
        const auto buttons = bar.findChildren<QNKInlineButton *>();
        for (QNKInlineButton *button : buttons) {
            if (button->menu())
                return button;
        }
        return nullptr;
    }

    QNKInlineButton *depthButton() const
    {
        const auto buttons = bar.findChildren<QNKInlineButton *>();
        for (QNKInlineButton *button : buttons) {
            if (!button->menu())
                return button;
        }
        return nullptr;
    }
};

} // namespace

class TestFilterBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmptyWithTypesEnabled();
    void nameIsToldOnChange();
    void depthIsToldOnChange();
    void typesAreToldOnChange();
    void enablingIsToldOnChange();
    void theMenuHoldsTheSwitchAndTheGroups();
    void entriesOfTheMenuTell();
    void hidingTheSearchClearsItOnlyWhereAsked();
    void partsHide();
    void clearKeepsTheSwitches();
    void menuOpensByKeyboard();
    void theButtonSaysWhatIsShown();
    void theBaseHasOneGroup();
};

void TestFilterBar::startsEmptyWithTypesEnabled()
{
    Bar bar;
    QCOMPARE(bar.bar.nameFilter(), QString());
    QVERIFY(!bar.bar.isRecursiveFilteringEnabled());
    QVERIFY(bar.bar.isTypeFilteringEnabled());
    QVERIFY(bar.bar.typeFilter().isEmpty());
    QCOMPARE(bar.signalCount(), 0);
}

void TestFilterBar::nameIsToldOnChange()
{
    Bar bar;
    QTest::keyClicks(bar.bar.searchLineEdit(), QStringLiteral("ab"));
    bar.bar.searchLineEdit()->setText(QStringLiteral("ab"));
    bar.bar.searchLineEdit()->setText(QStringLiteral("x"));
    QCOMPARE(bar.name.count(), 3);
    QCOMPARE(bar.name.last().first().toString(), QStringLiteral("x"));
    QCOMPARE(bar.bar.nameFilter(), QStringLiteral("x"));
    QCOMPARE(bar.signalCount(), 3);
}

void TestFilterBar::depthIsToldOnChange()
{
    Bar bar;
    bar.bar.setRecursiveFilteringEnabled(true);
    bar.bar.setRecursiveFilteringEnabled(true);
    QCOMPARE(bar.recursive.count(), 1);
    QCOMPARE(bar.recursive.last().first().toBool(), true);
    QTest::mouseClick(bar.depthButton(), Qt::LeftButton);
    QCOMPARE(bar.recursive.count(), 2);
    QVERIFY(!bar.bar.isRecursiveFilteringEnabled());
    QCOMPARE(bar.signalCount(), 2);
}

void TestFilterBar::typesAreToldOnChange()
{
    Bar bar;
    bar.bar.setTypeFilter({3, 1});
    bar.bar.setTypeFilter({1, 3});
    QCOMPARE(bar.types.count(), 1);
    QCOMPARE(bar.types.last().first().value<QList<int>>(), (QList<int>{1, 3}));
    QCOMPARE(bar.bar.typeFilter(), (QList<int>{1, 3}));
    bar.bar.setTypeFilter({});
    QCOMPARE(bar.types.count(), 2);
    QCOMPARE(bar.signalCount(), 2);
}

void TestFilterBar::enablingIsToldOnChange()
{
    Bar bar;
    bar.bar.setTypeFilteringEnabled(true);
    QCOMPARE(bar.enabled.count(), 0);
    bar.bar.setTypeFilteringEnabled(false);
    bar.bar.setTypeFilteringEnabled(false);
    QCOMPARE(bar.enabled.count(), 1);
    QCOMPARE(bar.enabled.last().first().toBool(), false);
    QVERIFY(!bar.bar.isTypeFilteringEnabled());
    QCOMPARE(bar.signalCount(), 1);
}

void TestFilterBar::theMenuHoldsTheSwitchAndTheGroups()
{
    Bar bar;
    QStringList texts;
    const auto actions = bar.bar.typeMenu()->actions();
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    QCOMPARE(texts, (QStringList{"Filter Enabled", "-", "Locked", "Unlocked", "-", "Asset", "Unassigned"}));
}

void TestFilterBar::entriesOfTheMenuTell()
{
    Bar bar;
    bar.entry(QStringLiteral("Asset"))->trigger();
    QCOMPARE(bar.types.last().first().value<QList<int>>(), QList<int>{3});
    bar.entry(QStringLiteral("Filter Enabled"))->trigger();
    QCOMPARE(bar.enabled.last().first().toBool(), false);
    QCOMPARE(bar.bar.typeFilter(), QList<int>{3});
    QCOMPARE(bar.signalCount(), 2);
}

void TestFilterBar::hidingTheSearchClearsItOnlyWhereAsked()
{
    Bar bar;
    bar.bar.searchLineEdit()->setText(QStringLiteral("a"));
    bar.bar.setSearchVisible(false, false);
    QVERIFY(bar.bar.searchLineEdit()->isHidden());
    QCOMPARE(bar.bar.nameFilter(), QStringLiteral("a"));
    bar.bar.setSearchVisible(true, true);
    QCOMPARE(bar.bar.nameFilter(), QStringLiteral("a"));
    QVERIFY(!bar.bar.searchLineEdit()->isHidden());
    bar.bar.setSearchVisible(false, true);
    QCOMPARE(bar.bar.nameFilter(), QString());
    QCOMPARE(bar.name.count(), 2);
}

void TestFilterBar::partsHide()
{
    Bar bar;
    bar.bar.setRecursiveFilterVisible(false);
    QVERIFY(bar.depthButton()->isHidden());
    bar.bar.setRecursiveFilterVisible(true);
    QVERIFY(!bar.depthButton()->isHidden());
    bar.bar.setNameFilterToolTip(QStringLiteral("Find"));
    QCOMPARE(bar.bar.searchLineEdit()->toolTip(), QStringLiteral("Find"));
}

void TestFilterBar::clearKeepsTheSwitches()
{
    Bar bar;
    bar.bar.searchLineEdit()->setText(QStringLiteral("a"));
    bar.bar.setTypeFilter({2});
    bar.bar.setRecursiveFilteringEnabled(true);
    bar.bar.setTypeFilteringEnabled(false);
    bar.bar.clear();
    QCOMPARE(bar.bar.nameFilter(), QString());
    QVERIFY(bar.bar.typeFilter().isEmpty());
    QVERIFY(bar.bar.isRecursiveFilteringEnabled());
    QVERIFY(!bar.bar.isTypeFilteringEnabled());
    const int before = bar.signalCount();
    bar.bar.clear();
    QCOMPARE(bar.signalCount(), before);
}

void TestFilterBar::menuOpensByKeyboard()
{
    Bar bar;
    bar.bar.show();
    QVERIFY(QTest::qWaitForWindowActive(&bar.bar));
    QVERIFY(bar.menuButton()->focusPolicy() & Qt::TabFocus);
    ModalAnswer ticks = ModalAnswer::menu([](QMenu *menu) {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Space);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Space);
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    QTest::keyClick(bar.menuButton(), Qt::Key_Space);
    QVERIFY(ticks.given());
    QCOMPARE(bar.bar.typeFilter(), (QList<int>{1, 2}));
}

void TestFilterBar::theButtonSaysWhatIsShown()
{
    Bar bar;
    QCOMPARE(bar.menuButton()->text(), QString());
    QCOMPARE(bar.menuButton()->accessibleDescription(), QStringLiteral("All"));
    bar.bar.setSearchVisible(false, true);
    QCOMPARE(bar.menuButton()->text(), QStringLiteral("All"));
    bar.bar.setTypeFilter({1, 3});
    QCOMPARE(bar.menuButton()->text(), QStringLiteral("Locked, Asset"));
    bar.bar.setTypeFilteringEnabled(false);
    QCOMPARE(bar.menuButton()->text(), QStringLiteral("All"));
}

void TestFilterBar::theBaseHasOneGroup()
{
    QNKFilterBar bar;
    bar.addTypesToMenu({5, 6});
    QStringList texts;
    const auto actions = bar.typeMenu()->actions();
    for (const QAction *action : actions)
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    QCOMPARE(texts, (QStringList{"Filter Enabled", "-", "5", "6"}));
}

NK_TEST_MAIN(TestFilterBar)

#include "test_filter_bar.moc"
