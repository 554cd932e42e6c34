#include "TestMain.h"

#include <nkQt4Ext/QNKListWidget.h>
#include <nkQt4Ext/QNKSpiner.h>
#include <nkQt4Ext/QNKVariantDelegate.h>
#include <nkQt4Ext/QNKVariantListWidget.h>

#include <QLineEdit>
#include <QMenu>
#include <QShortcut>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QToolButton>

#include <cstring>
#include <limits>

namespace {

bool same(const QVariant &left, const QVariant &right)
{
    if (left.userType() != right.userType())
        return false;
    if (left.userType() == QMetaType::Double) {
        const double a = left.toDouble();
        const double b = right.toDouble();
        return std::memcmp(&a, &b, sizeof a) == 0;
    }
    if (left.userType() != QMetaType::QVariantList)
        return left == right;
    const QVariantList a = left.toList();
    const QVariantList b = right.toList();
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), &same);
}

/// The editor in a window, as a page of something larger or as a pop-up.
struct Editor
{
    explicit Editor(const QVariantList &values, Qt::WindowFlags flags = {}) : widget(&window, flags)
    {
        widget.setValues(values);
        window.resize(300, 300);
        window.show();
        usable = QTest::qWaitForWindowActive(&window);
        widget.setGeometry(flags == Qt::Popup ? QRect(window.mapToGlobal(QPoint(20, 20)), QSize(180, 100))
                                              : window.rect());
        widget.show();
        widget.setFocus();
        changed.clear();
    }

    QNKListWidget *list() const { return widget.list(); }

    QToolButton *button(const QString &name) const
    {
        const auto buttons = widget.findChildren<QToolButton *>();
        for (QToolButton *button : buttons) {
            if (button->accessibleName() == name)
                return button;
        }
        return nullptr;
    }

    QAction *addEntry(const QString &name) const
    {
        const auto actions = button(QStringLiteral("Add an element"))->menu()->actions();
        for (QAction *action : actions) {
            if (action->text() == name)
                return action;
        }
        return nullptr;
    }

    template <typename InPlace>
    InPlace *openEditor() const
    {
        return list()->viewport()->findChild<InPlace *>(QString(), Qt::FindDirectChildrenOnly);
    }

    QWidget window;
    QNKVariantListWidget widget;
    bool usable = false;
    QSignalSpy changed{&widget, &QNKVariantListWidget::valuesChanged};
    QSignalSpy finished{&widget, &QNKVariantListWidget::finished};
};

const QVariantList someOfAll{QStringLiteral("text"),
                             std::numeric_limits<int>::min(),
                             Q_INT64_C(9223372036854775807),
                             0.123456789,
                             -0.0,
                             1e-300,
                             true,
                             QTime(23, 59, 59, 999),
                             QDate(1, 1, 1),
                             QDateTime(QDate(2023, 3, 2), QTime(15, 7, 9, 5), Qt::UTC),
                             QVariantList{1, QVariantList{"x", 0.1}},
                             QVariant(),
                             QRect(1, 2, 3, 4)};

} // namespace

class TestVariantListWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesBackWhatItWasGiven();
    void tellsOnlyRealChangesOfTheList();
    void itemsHoldTheirElementUnderTheUserRole();
    void editsAnElementInPlace();
    void leavingAnElementUntouchedChangesNothing();
    void escapeGivesUpTheElementOnly();
    void addsEveryType_data();
    void addsEveryType();
    void addsBehindTheCurrentElement();
    void insertKeyAddsTheSameType();
    void deleteKeyRemoves();
    void buttonsRemoveAndMove();
    void altArrowsMoveElements();
    void buttonsFollowTheCurrentElement();
    void addingWorksByKeyboardAlone();
    void everyButtonIsReachedByTab();
    void returnFinishesWithTheValues();
    void escapeFinishesWithoutThem();
    void clickedAwayAPopupKeepsWhatWasTyped();
    void clickedAwayAsTheEditorOfACellItIsReadWithWhatWasTyped();
    void finishesOnceAShowing();
    void asAPopupItKeepsItsKeysFromTheTable();
    void aForeignDelegateEdits();
};

void TestVariantListWidget::givesBackWhatItWasGiven()
{
    QNKVariantListWidget widget;
    QVERIFY(widget.values().isEmpty());
    widget.setValues(someOfAll);
    QVERIFY(same(widget.values(), someOfAll));
    widget.setValues({});
    QVERIFY(widget.values().isEmpty());
}

void TestVariantListWidget::tellsOnlyRealChangesOfTheList()
{
    QNKVariantListWidget widget;
    QSignalSpy changed(&widget, &QNKVariantListWidget::valuesChanged);
    widget.setValues({});
    QCOMPARE(changed.count(), 0);
    widget.setValues({1});
    widget.setValues({1});
    QCOMPARE(changed.count(), 1);
    widget.setValues({QStringLiteral("1")});
    QCOMPARE(changed.count(), 2);
}

void TestVariantListWidget::itemsHoldTheirElementUnderTheUserRole()
{
    QNKVariantListWidget widget;
    widget.setValues({0.1, QVariantList{"a", 2}});
    QVERIFY(same(widget.list()->item(0)->data(Qt::UserRole), 0.1));
    QCOMPARE(widget.list()->item(1)->text(), QStringLiteral("a, 2"));
    QSignalSpy changed(&widget, &QNKVariantListWidget::valuesChanged);
    widget.list()->item(0)->setData(Qt::UserRole, 0.1);
    QCOMPARE(changed.count(), 0);
    widget.list()->item(0)->setData(Qt::UserRole, 0.2);
    QCOMPARE(changed.count(), 1);
    QVERIFY(same(widget.values().first(), 0.2));
    for (const QVariant &value :
         {QVariant(1), QVariant("1"), QVariant(true), QVariant(0.0), QVariant(-0.0)}) {
        changed.clear();
        widget.list()->item(0)->setData(Qt::UserRole, value);
        QCOMPARE(changed.count(), 1);
        QVERIFY(same(widget.values().first(), value));
    }
}

void TestVariantListWidget::editsAnElementInPlace()
{
    Editor editor({1, "two"});
    QVERIFY(editor.usable);
    QTest::keyClick(editor.list(), Qt::Key_F2);
    auto *spiner = editor.openEditor<QNKSpiner>();
    QVERIFY(spiner);
    QTest::keyClicks(spiner, QStringLiteral("77"));
    QTest::keyClick(spiner, Qt::Key_Return);
    QTRY_COMPARE(editor.changed.count(), 1);
    QVERIFY(same(editor.widget.values(), QVariantList{77, "two"}));
    QCOMPARE(editor.finished.count(), 0);
}

void TestVariantListWidget::leavingAnElementUntouchedChangesNothing()
{
    Editor editor(someOfAll);
    QVERIFY(editor.usable);
    for (int row = 0; row < someOfAll.size(); ++row) {
        editor.list()->setCurrentRow(row);
        QTest::keyClick(editor.list(), Qt::Key_F2);
        if (auto *open = editor.openEditor<QWidget>()) {
            QTest::keyClick(open, Qt::Key_Return);
            QCoreApplication::processEvents();
        }
        while (QApplication::activePopupWidget())
            QApplication::activePopupWidget()->close();
        editor.list()->setFocus();
    }
    QVERIFY(same(editor.widget.values(), someOfAll));
    QCOMPARE(editor.changed.count(), 0);
}

void TestVariantListWidget::escapeGivesUpTheElementOnly()
{
    Editor editor({"one"});
    QVERIFY(editor.usable);
    QTest::keyClick(editor.list(), Qt::Key_F2);
    QTest::keyClicks(editor.openEditor<QLineEdit>(), QStringLiteral("two"));
    QTest::keyClick(editor.openEditor<QLineEdit>(), Qt::Key_Escape);
    QCOMPARE(editor.finished.count(), 0);
    QVERIFY(same(editor.widget.values(), QVariantList{"one"}));
    QCOMPARE(editor.changed.count(), 0);
}

void TestVariantListWidget::addsEveryType_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::newRow("string") << "String" << int(QMetaType::QString);
    QTest::newRow("integer") << "Integer" << int(QMetaType::Int);
    QTest::newRow("float") << "Float" << int(QMetaType::Double);
    QTest::newRow("boolean") << "Boolean" << int(QMetaType::Bool);
    QTest::newRow("time") << "Time" << int(QMetaType::QTime);
    QTest::newRow("date") << "Date" << int(QMetaType::QDate);
    QTest::newRow("date and time") << "Date and Time" << int(QMetaType::QDateTime);
    QTest::newRow("list") << "List" << int(QMetaType::QVariantList);
}

void TestVariantListWidget::addsEveryType()
{
    QFETCH(QString, name);
    QFETCH(int, type);
    Editor editor({});
    QVERIFY(editor.usable);
    editor.addEntry(name)->trigger();
    QTRY_COMPARE(editor.widget.values().size(), 1);
    QCOMPARE(editor.widget.values().first().userType(), type);
    QCOMPARE(editor.changed.count(), 1);
    QVERIFY2(editor.openEditor<QWidget>(), "the new element is being edited");
    while (QApplication::activePopupWidget())
        QApplication::activePopupWidget()->close();
}

void TestVariantListWidget::addsBehindTheCurrentElement()
{
    Editor editor({"a", "b"});
    editor.list()->setCurrentRow(0);
    editor.addEntry(QStringLiteral("Integer"))->trigger();
    QTRY_VERIFY(same(editor.widget.values(), QVariantList{"a", 0, "b"}));
    QCOMPARE(editor.list()->currentRow(), 1);
}

void TestVariantListWidget::insertKeyAddsTheSameType()
{
    Editor editor({1.5, "b"});
    QVERIFY(editor.usable);
    QTest::keyClick(editor.list(), Qt::Key_Insert);
    QVERIFY(same(editor.widget.values(), QVariantList{1.5, 0.0, "b"}));
    Editor empty({});
    QVERIFY(empty.usable);
    QTest::keyClick(empty.list(), Qt::Key_Insert);
    QVERIFY(same(empty.widget.values(), QVariantList{QString()}));
}

void TestVariantListWidget::deleteKeyRemoves()
{
    Editor editor({1, 2, 3});
    QVERIFY(editor.usable);
    editor.list()->setCurrentRow(2);
    QTest::keyClick(editor.list(), Qt::Key_Delete);
    QVERIFY(same(editor.widget.values(), QVariantList{1, 2}));
    QCOMPARE(editor.list()->currentRow(), 1);
    QTest::keyClick(editor.list(), Qt::Key_Delete);
    QTest::keyClick(editor.list(), Qt::Key_Delete);
    QTest::keyClick(editor.list(), Qt::Key_Delete);
    QVERIFY(editor.widget.values().isEmpty());
    QCOMPARE(editor.changed.count(), 3);
}

void TestVariantListWidget::buttonsRemoveAndMove()
{
    Editor editor({1, 2, 3});
    QTest::mouseClick(editor.button(QStringLiteral("Move down")), Qt::LeftButton);
    QVERIFY(same(editor.widget.values(), QVariantList{2, 1, 3}));
    QTest::mouseClick(editor.button(QStringLiteral("Move up")), Qt::LeftButton);
    QVERIFY(same(editor.widget.values(), QVariantList{1, 2, 3}));
    QTest::mouseClick(editor.button(QStringLiteral("Remove the element")), Qt::LeftButton);
    QVERIFY(same(editor.widget.values(), QVariantList{2, 3}));
    QCOMPARE(editor.changed.count(), 3);
}

void TestVariantListWidget::altArrowsMoveElements()
{
    Editor editor(someOfAll);
    QVERIFY(editor.usable);
    QTest::keyClick(editor.list(), Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(editor.list(), Qt::Key_Down, Qt::AltModifier);
    QVariantList moved = someOfAll;
    moved.move(0, 2);
    QVERIFY(same(editor.widget.values(), moved));
    QCOMPARE(editor.changed.count(), 2);
}

void TestVariantListWidget::buttonsFollowTheCurrentElement()
{
    Editor editor({1, 2});
    const auto enabled = [&editor](const char *name) {
        return editor.button(QLatin1String(name))->isEnabled();
    };
    QVERIFY(!enabled("Move up") && enabled("Move down") && enabled("Remove the element"));
    editor.list()->setCurrentRow(1);
    QVERIFY(enabled("Move up") && !enabled("Move down"));
    editor.widget.setValues({});
    QVERIFY(!enabled("Move up") && !enabled("Move down") && !enabled("Remove the element"));
    QVERIFY(enabled("Add an element"));
}

void TestVariantListWidget::addingWorksByKeyboardAlone()
{
    Editor editor({});
    QVERIFY(editor.usable);
    QToolButton *add = editor.button(QStringLiteral("Add an element"));
    add->setFocus(Qt::TabFocusReason);
    ModalAnswer integer = ModalAnswer::menu([](QMenu *menu) {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QTest::keyClick(add, Qt::Key_Space);
    QVERIFY(integer.given());
    // The offscreen platform does not give the activation back after a menu.
    editor.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&editor.window));
    QTRY_VERIFY(editor.openEditor<QNKSpiner>());
    auto *spiner = editor.openEditor<QNKSpiner>();
    QTRY_VERIFY(spiner->hasFocus());
    QTest::keyClicks(spiner, QStringLiteral("8"));
    QTest::keyClick(spiner, Qt::Key_Return);
    QTRY_VERIFY(same(editor.widget.values(), QVariantList{8}));
    QTRY_VERIFY(editor.list()->hasFocus());
}

void TestVariantListWidget::everyButtonIsReachedByTab()
{
    Editor editor({1, 2, 3});
    QVERIFY(editor.usable);
    editor.list()->setCurrentRow(1);
    QStringList reached;
    for (int step = 0; step < 4; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        reached.append(QApplication::focusWidget()->accessibleName());
    }
    QCOMPARE(reached, (QStringList{"Add an element", "Remove the element", "Move up", "Move down"}));
}

void TestVariantListWidget::returnFinishesWithTheValues()
{
    Editor editor({1}, Qt::Popup);
    QVERIFY(editor.usable);
    QTest::keyClick(editor.list(), Qt::Key_Return);
    QCOMPARE(editor.finished.count(), 1);
    QCOMPARE(editor.finished.first().first().toBool(), true);
}

void TestVariantListWidget::escapeFinishesWithoutThem()
{
    Editor editor({1}, Qt::Popup);
    QVERIFY(editor.usable);
    QTest::keyClick(editor.list(), Qt::Key_Delete);
    QTest::keyClick(editor.list(), Qt::Key_Escape);
    QCOMPARE(editor.finished.count(), 1);
    QCOMPARE(editor.finished.first().first().toBool(), false);
    editor.widget.hide();
    QCOMPARE(editor.finished.count(), 1);
}

void TestVariantListWidget::clickedAwayAPopupKeepsWhatWasTyped()
{
    Editor editor({"one"}, Qt::Popup);
    QVERIFY(editor.usable);
    QTest::keyClick(editor.list(), Qt::Key_F2);
    auto *edit = editor.openEditor<QLineEdit>();
    QVERIFY(edit);
    QTest::keyClicks(edit, QStringLiteral("two"));
    QVariantList atTheEnd;
    connect(&editor.widget, &QNKVariantListWidget::finished, &editor.widget,
            [&editor, &atTheEnd] { atTheEnd = editor.widget.values(); });
    QTest::mouseClick(&editor.widget, Qt::LeftButton, {}, QPoint(-10, -10));
    QVERIFY(!editor.widget.isVisible());
    QVERIFY(same(atTheEnd, QVariantList{"two"}));
    QCOMPARE(editor.finished.count(), 1);
    QCOMPARE(editor.finished.first().first().toBool(), true);
}

void TestVariantListWidget::clickedAwayAsTheEditorOfACellItIsReadWithWhatWasTyped()
{
    class Delegate : public QStyledItemDelegate
    {
    public:
        QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &,
                              const QModelIndex &) const override
        {
            return new QNKVariantListWidget(parent, Qt::Popup);
        }
        void setEditorData(QWidget *editor, const QModelIndex &index) const override
        {
            static_cast<QNKVariantListWidget *>(editor)->setValues(index.data(Qt::UserRole).toList());
        }
        void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override
        {
            model->setData(index, static_cast<QNKVariantListWidget *>(editor)->values(), Qt::UserRole);
        }
    };
    Delegate delegate;
    QTableWidget table(1, 1);
    table.setItemDelegate(&delegate);
    table.setItem(0, 0, new QTableWidgetItem);
    table.item(0, 0)->setData(Qt::UserRole, QVariantList{"one"});
    table.show();
    QVERIFY(QTest::qWaitForWindowActive(&table));
    table.editItem(table.item(0, 0));
    auto *widget = table.findChild<QNKVariantListWidget *>();
    QVERIFY(widget);
    QTest::keyClick(widget->list(), Qt::Key_F2);
    QTest::keyClicks(widget->list()->viewport()->findChild<QLineEdit *>(), QStringLiteral("two"));
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(-10, -10));
    QTRY_VERIFY(same(table.item(0, 0)->data(Qt::UserRole), QVariantList{"two"}));
}

void TestVariantListWidget::finishesOnceAShowing()
{
    Editor editor({1}, Qt::Popup);
    QTest::keyClick(editor.list(), Qt::Key_Return);
    editor.widget.hide();
    QCOMPARE(editor.finished.count(), 1);
    editor.widget.show();
    editor.widget.hide();
    QCOMPARE(editor.finished.count(), 2);
}

void TestVariantListWidget::asAPopupItKeepsItsKeysFromTheTable()
{
    QTableWidget table(1, 1);
    QShortcut deletes(Qt::Key_Delete, &table, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    QShortcut pastes(Qt::CTRL + Qt::Key_V, &table, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
    QSignalSpy deleted(&deletes, &QShortcut::activated);
    QSignalSpy pasted(&pastes, &QShortcut::activated);
    table.show();
    QVERIFY(QTest::qWaitForWindowActive(&table));
    auto *widget = new QNKVariantListWidget(table.viewport(), Qt::Popup);
    widget->setValues({1, 2});
    widget->show();
    widget->setFocus();
    QTest::keyClick(widget->list(), Qt::Key_Delete);
    QTest::keyClick(widget->list(), Qt::Key_V, Qt::ControlModifier);
    QVERIFY(same(widget->values(), QVariantList{2}));
    QCOMPARE(deleted.count(), 0);
    QCOMPARE(pasted.count(), 0);
    widget->hide();
}

void TestVariantListWidget::aForeignDelegateEdits()
{
    class Delegate : public QNKVariantDelegate
    {
    public:
        QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override
        {
            if (index.data(Qt::UserRole).userType() != QMetaType::QString)
                return QNKVariantDelegate::createEditor(parent, option, index);
            auto *edit = new QLineEdit(parent);
            edit->setObjectName(QStringLiteral("special"));
            return edit;
        }
    };
    Delegate delegate;
    Editor editor({"one"});
    QVERIFY(editor.usable);
    editor.widget.setItemDelegate(&delegate);
    QTest::keyClick(editor.list(), Qt::Key_F2);
    auto *edit = editor.openEditor<QLineEdit>();
    QVERIFY(edit);
    QCOMPARE(edit->objectName(), QStringLiteral("special"));
    QCOMPARE(edit->text(), QStringLiteral("one"));
    QTest::keyClicks(edit, QStringLiteral("two"));
    QTest::keyClick(edit, Qt::Key_Return);
    QTRY_VERIFY(same(editor.widget.values(), QVariantList{"two"}));
}

NK_TEST_MAIN(TestVariantListWidget)

#include "test_variant_list_widget.moc"
