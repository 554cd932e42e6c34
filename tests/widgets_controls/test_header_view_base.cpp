#include "TestMain.h"

#include <nkQt4Ext/nkHeaderView.h>

#include <QMenu>
#include <QStandardItemModel>
#include <QToolButton>
#include <QTreeView>

namespace {

QStandardItemModel *makeModel(QObject *parent)
{
    auto *model = new QStandardItemModel(0, 4, parent);
    model->setHorizontalHeaderLabels({QString(), QStringLiteral("Key"), QStringLiteral("A & B"), QString()});
    model->setHeaderData(0, Qt::Horizontal, QStringLiteral("Icon"), Qt::UserRole);
    for (const auto &key : {"b", "a", "c"})
        model->appendRow({new QStandardItem, new QStandardItem(QLatin1String(key))});
    return model;
}

/// A tree with a header of ours, shown.
struct Table
{
    Table() : header(new nkHeaderViewBase(&view))
    {
        view.setModel(makeModel(&view));
        view.setHeader(header);
        header->setShowToolButton(true);
        view.resize(400, 200);
        view.show();
    }

    QStringList menuTexts() const
    {
        QStringList texts;
        const auto actions = shownMenu()->actions();
        for (const QAction *action : actions)
            texts.append(action->text());
        return texts;
    }

    /// The menu as it is filled for showing.
    QMenu *shownMenu() const
    {
        QMenu *menu = header->toolButton()->menu();
        Q_EMIT menu->aboutToShow();
        return menu;
    }

    QTreeView view;
    nkHeaderViewBase *header;
};

} // namespace

class TestHeaderViewBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void toolButtonIsHiddenAtFirst();
    void toolButtonStandsAtTheRightEnd();
    void menuNamesColumnsByUserDataFirst();
    void menuHidesAndShowsColumns();
    void menuGoesThroughTheVirtualOperation();
    void columnsComeBackWhenAllAreHidden();
    void columnsThatDoNotExistAreIgnored();
    void withoutAModelTheMenuIsEmpty();
    void menuOpensByKeyboard();
    void menuOpensByTheRightButton();
    void rowsStayInTheModelsOrderUntilAColumnIsClicked();
    void theTemplateKnowsItsView();
};

void TestHeaderViewBase::toolButtonIsHiddenAtFirst()
{
    nkHeaderViewBase header;
    QVERIFY(header.toolButton());
    QVERIFY(header.toolButton()->isHidden());
    header.setShowToolButton(true);
    QVERIFY(!header.toolButton()->isHidden());
    header.setShowToolButton(false);
    QVERIFY(header.toolButton()->isHidden());
}

void TestHeaderViewBase::toolButtonStandsAtTheRightEnd()
{
    Table table;
    QVERIFY(QTest::qWaitForWindowExposed(&table.view));
    const QToolButton *button = table.header->toolButton();
    QCOMPARE(button->geometry().right(), table.header->width() - 1);
    QCOMPARE(button->height(), table.header->height());
    table.view.resize(700, 200);
    QCoreApplication::processEvents();
    QCOMPARE(button->geometry().right(), table.header->width() - 1);
}

void TestHeaderViewBase::menuNamesColumnsByUserDataFirst()
{
    Table table;
    QCOMPARE(table.menuTexts(), (QStringList{"Icon", "Key", "A && B", "Column 4"}));
}

void TestHeaderViewBase::menuHidesAndShowsColumns()
{
    Table table;
    QAction *action = table.shownMenu()->actions().at(1);
    QVERIFY(action->isChecked());
    action->trigger();
    QVERIFY(table.view.isColumnHidden(1));
    QVERIFY(!table.header->isColumnVisible(1));
    action = table.shownMenu()->actions().at(1);
    QVERIFY(!action->isChecked());
    action->trigger();
    QVERIFY(!table.view.isColumnHidden(1));
}

void TestHeaderViewBase::menuGoesThroughTheVirtualOperation()
{
    class Header : public nkHeaderViewBase
    {
    public:
        using nkHeaderViewBase::nkHeaderViewBase;
        void setColumnVisibility(int column, bool visible) override { asked.append({column, visible}); }
        bool isColumnVisible(int column) const override { return column != 2; }
        QAbstractItemModel *getModel() const override { return names; }

        QAbstractItemModel *names = nullptr;
        QVector<QPair<int, bool>> asked;
    };
    QTreeView view;
    view.setModel(makeModel(&view));
    auto *header = new Header(&view);
    QStandardItemModel names(0, 4);
    names.setHorizontalHeaderLabels({"w", "x", "y", "z"});
    header->names = &names;
    view.setHeader(header);
    Q_EMIT header->toolButton()->menu()->aboutToShow();
    const auto actions = header->toolButton()->menu()->actions();
    QCOMPARE(actions.at(3)->text(), QStringLiteral("z"));
    QVERIFY(!actions.at(2)->isChecked());
    actions.at(2)->trigger();
    actions.at(0)->trigger();
    QCOMPARE(header->asked, (QVector<QPair<int, bool>>{{2, true}, {0, false}}));
}

void TestHeaderViewBase::columnsComeBackWhenAllAreHidden()
{
    Table table;
    QVERIFY(QTest::qWaitForWindowExposed(&table.view));
    for (int column = 0; column < 4; ++column)
        table.header->setColumnVisibility(column, false);
    table.view.resize(500, 300);
    QTest::qWait(0);
    QVERIFY(table.header->sizeHint().height() >= table.header->fontMetrics().height());
    QVERIFY(table.header->height() >= table.header->fontMetrics().height());
    QVERIFY(table.header->toolButton()->isVisible());
    QVERIFY(!table.header->toolButton()->visibleRegion().isEmpty());
    table.shownMenu()->actions().at(1)->trigger();
    QVERIFY(!table.view.isColumnHidden(1));
}

void TestHeaderViewBase::columnsThatDoNotExistAreIgnored()
{
    Table table;
    table.header->setColumnVisibility(-1, false);
    table.header->setColumnVisibility(4, false);
    QVERIFY(!table.header->isColumnVisible(-1));
    QVERIFY(!table.header->isColumnVisible(4));
    QCOMPARE(table.header->hiddenSectionCount(), 0);
}

void TestHeaderViewBase::withoutAModelTheMenuIsEmpty()
{
    nkHeaderViewBase header;
    Q_EMIT header.toolButton()->menu()->aboutToShow();
    QVERIFY(header.toolButton()->menu()->isEmpty());
    QVERIFY(!header.getModel());
}

void TestHeaderViewBase::menuOpensByKeyboard()
{
    Table table;
    QVERIFY(QTest::qWaitForWindowActive(&table.view));
    QToolButton *button = table.header->toolButton();
    QVERIFY(button->focusPolicy() & Qt::TabFocus);
    button->setFocus(Qt::TabFocusReason);
    ModalAnswer hidesKey = ModalAnswer::menu(QStringLiteral("Key"));
    QTest::keyClick(button, Qt::Key_Space);
    QVERIFY(hidesKey.given());
    QTRY_VERIFY(table.view.isColumnHidden(1));
}

void TestHeaderViewBase::menuOpensByTheRightButton()
{
    Table table;
    QVERIFY(QTest::qWaitForWindowActive(&table.view));
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), table.header->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(table.header->viewport(), &event);
    QVERIFY(event.isAccepted());
    QTRY_VERIFY(table.header->toolButton()->menu()->isVisible());
    table.header->toolButton()->menu()->hide();
}

void TestHeaderViewBase::rowsStayInTheModelsOrderUntilAColumnIsClicked()
{
    Table table;
    QVERIFY(QTest::qWaitForWindowExposed(&table.view));
    table.view.setSortingEnabled(true);
    const QAbstractItemModel *model = table.view.model();
    QCOMPARE(table.header->sortIndicatorSection(), -1);
    QCOMPARE(model->index(0, 1).data().toString(), QStringLiteral("b"));
    const QPoint key(table.header->sectionViewportPosition(1) + 20, table.header->height() / 2);
    QTest::mouseClick(table.header->viewport(), Qt::LeftButton, {}, key);
    QCOMPARE(table.header->sortIndicatorSection(), 1);
    QCOMPARE(model->index(0, 1).data().toString(), QStringLiteral("a"));
}

void TestHeaderViewBase::theTemplateKnowsItsView()
{
    auto *view = new QTreeView;
    nkHeaderView<QTreeView> header(view);
    QCOMPARE(header.view(), view);
    delete view;
    QVERIFY(!header.view());
    nkHeaderView<QTreeView> alone(nullptr);
    QVERIFY(!alone.view());
}

NK_TEST_MAIN(TestHeaderViewBase)

#include "test_header_view_base.moc"
