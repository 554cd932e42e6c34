#include "TestMain.h"

#include <nkQt4Ext/QNKComboBox.h>
#include <nkQt4Ext/QNKDoubleSpiner.h>
#include <nkQt4Ext/QNKListWidget.h>
#include <nkQt4Ext/QNKSpiner.h>
#include <nkQt4Ext/QNKVariantDelegate.h>
#include <nkQt4Ext/QNKVariantListWidget.h>

#include <QCalendarWidget>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QListView>
#include <QSignalSpy>
#include <QStandardItemModel>

#include <cfloat>
#include <cstring>
#include <limits>

Q_DECLARE_METATYPE(QVariant)

namespace {

/// A list of one value under Qt::UserRole, shown, with the delegate.
struct View
{
    explicit View(const QVariant &value)
    {
        model.appendRow(new QStandardItem);
        model.setData(index(), value, Qt::UserRole);
        view.setModel(&model);
        view.setItemDelegate(&delegate);
        view.resize(300, 200);
        view.show();
        usable = QTest::qWaitForWindowActive(&view);
        QObject::connect(&model, &QStandardItemModel::itemChanged, &model, [this] { ++writes; });
    }

    QModelIndex index() const { return model.index(0, 0); }
    QVariant value() const { return index().data(Qt::UserRole); }

    template <typename Editor>
    Editor *open()
    {
        view.edit(index());
        return view.viewport()->findChild<Editor *>(QString(), Qt::FindDirectChildrenOnly);
    }

    QWidget *openAny() { return open<QWidget>(); }

    QStandardItemModel model;
    QNKVariantDelegate delegate;
    QListView view;
    bool usable = false;
    int writes = 0;
};

bool sameBits(double left, double right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

bool same(const QVariant &left, const QVariant &right)
{
    if (left.userType() != right.userType())
        return false;
    if (left.userType() == QMetaType::Double || left.userType() == QMetaType::Float)
        return sameBits(left.toDouble(), right.toDouble());
    return left == right;
}

/// Return commits through the event loop.
void commit(QWidget *editor)
{
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
}

} // namespace

class TestVariantDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsValuesAsText_data();
    void showsValuesAsText();
    void showsTheValueUnderTheUserRole();
    void showsOneLineOfAHugeText();
    void openedAndCommittedUntouchedNothingIsWritten_data();
    void openedAndCommittedUntouchedNothingIsWritten();
    void escapeRestores();
    void editsText();
    void editsIntegers();
    void editsSingles();
    void editsLongIntegersAsTextOfTheirType();
    void editsBooleans();
    void editsTimes();
    void editsDates();
    void editsDatesAndTimesInTheirTimeZone();
    void editsNestedLists();
    void escapeInANestedListWritesNothing();
    void aNestedListThatIsClickedAwayKeepsWhatWasTyped();
    void rowsAreHighEnoughForTheirEditors();
    void typedTextSurvivesAnAnnouncementOfTheRow();
    void typesThatCannotBeWrittenBackHaveNoEditor();
};

void TestVariantDelegate::showsValuesAsText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << QVariant("a <b>b</b> & c") << "a <b>b</b> & c";
    QTest::newRow("lines") << QVariant(QStringLiteral("a\nb\tc\u2028d\u0001e")) << "a b c d e";
    QTest::newRow("int") << QVariant(-7) << "-7";
    QTest::newRow("long") << QVariant(Q_INT64_C(9007199254740993)) << "9007199254740993";
    QTest::newRow("double") << QVariant(0.1) << "0.1";
    QTest::newRow("float") << QVariant(0.1F) << "0.1";
    QTest::newRow("bool") << QVariant(true) << "true";
    QTest::newRow("time") << QVariant(QTime(13, 45, 30)) << "13:45";
    QTest::newRow("date") << QVariant(QDate(2023, 3, 2)) << "March 02, 2023";
    QTest::newRow("date and time") << QVariant(QDateTime(QDate(2023, 3, 2), QTime(15, 7, 9)))
                                   << "March 02, 2023 15:07:09";
    QTest::newRow("list") << QVariant(QVariantList{"a", QDate(2023, 3, 2), QVariantList{"b", 0.5}})
                          << "a, March 02, 2023, b, 0.5";
    QTest::newRow("empty list") << QVariant(QVariantList()) << "";
    QTest::newRow("nothing") << QVariant() << "";
}

void TestVariantDelegate::showsValuesAsText()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    const QNKVariantDelegate delegate;
    QCOMPARE(delegate.displayText(value, QLocale::c()), text);
}

void TestVariantDelegate::showsTheValueUnderTheUserRole()
{
    class Delegate : public QNKVariantDelegate
    {
    public:
        using QNKVariantDelegate::initStyleOption;
    };
    QStandardItemModel model;
    model.appendRow(new QStandardItem(QStringLiteral("display")));
    model.setData(model.index(0, 0), 0.1, Qt::UserRole);
    QStyleOptionViewItem option;
    Delegate().initStyleOption(&option, model.index(0, 0));
    QCOMPARE(option.text, QStringLiteral("0.1"));
    QVERIFY(option.features & QStyleOptionViewItem::HasDisplay);
}

void TestVariantDelegate::showsOneLineOfAHugeText()
{
    const QString huge(1024 * 1024, QLatin1Char('x'));
    View view(huge);
    QVERIFY(view.view.sizeHintForIndex(view.index()).height() < 3 * view.view.fontMetrics().height());
    auto *edit = view.open<QLineEdit>();
    QVERIFY(edit);
    QCOMPARE(edit->text().size(), huge.size());
}

void TestVariantDelegate::openedAndCommittedUntouchedNothingIsWritten_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("empty text") << QVariant(QString());
    QTest::newRow("text of 32,768") << QVariant(QString(32768, QLatin1Char('x')));
    QTest::newRow("text with lines") << QVariant(QStringLiteral("a\nb"));
    QTest::newRow("least int") << QVariant(std::numeric_limits<int>::min());
    QTest::newRow("greatest int") << QVariant(std::numeric_limits<int>::max());
    QTest::newRow("least long") << QVariant(std::numeric_limits<qint64>::min());
    QTest::newRow("greatest unsigned long") << QVariant(std::numeric_limits<quint64>::max());
    QTest::newRow("nine digits") << QVariant(0.123456789);
    QTest::newRow("1e-300") << QVariant(1e-300);
    QTest::newRow("1e300") << QVariant(1e300);
    QTest::newRow("least double") << QVariant(DBL_TRUE_MIN);
    QTest::newRow("negative zero") << QVariant(-0.0);
    QTest::newRow("no number") << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("infinity") << QVariant(std::numeric_limits<double>::infinity());
    QTest::newRow("float") << QVariant(0.1F);
    QTest::newRow("true") << QVariant(true);
    QTest::newRow("time to the millisecond") << QVariant(QTime(23, 59, 59, 999));
    QTest::newRow("no time") << QVariant(QTime());
    QTest::newRow("year 1") << QVariant(QDate(1, 1, 1));
    QTest::newRow("year 10000") << QVariant(QDate(10000, 1, 1));
    QTest::newRow("no date") << QVariant(QDate());
    QTest::newRow("world time") << QVariant(QDateTime(QDate(1, 1, 1), QTime(23, 59, 59, 999), Qt::UTC));
    QTest::newRow("offset") << QVariant(QDateTime(QDate(2023, 3, 26), QTime(2, 30), Qt::OffsetFromUTC, 3600));
    QTest::newRow("nested") << QVariant(QVariantList{1, QVariantList{0.1, QVariantList()}, "x"});
    QTest::newRow("texts") << QVariant(QStringList{"a", "b"});
}

void TestVariantDelegate::openedAndCommittedUntouchedNothingIsWritten()
{
    QFETCH(QVariant, value);
    View view(value);
    QVERIFY(view.usable);
    view.writes = 0;
    QWidget *editor = view.openAny();
    QVERIFY(editor);
    Q_EMIT view.delegate.commitData(editor);
    commit(editor);
    QCOMPARE(view.writes, 0);
    QVERIFY(value.userType() == QMetaType::Double || same(view.value(), value));
    QCOMPARE(view.value().userType(), value.userType());
}

void TestVariantDelegate::escapeRestores()
{
    View view(QStringLiteral("old"));
    auto *edit = view.open<QLineEdit>();
    QTest::keyClicks(edit, QStringLiteral("new"));
    QTest::keyClick(edit, Qt::Key_Escape);
    QCoreApplication::processEvents();
    QCOMPARE(view.value(), QVariant("old"));
    QCOMPARE(view.writes, 0);
}

void TestVariantDelegate::editsText()
{
    View view(QStringLiteral("old"));
    auto *edit = view.open<QLineEdit>();
    QTest::keyClicks(edit, QStringLiteral("42"));
    commit(edit);
    QVERIFY(same(view.value(), QStringLiteral("42")));
    QCOMPARE(view.writes, 1);
}

void TestVariantDelegate::editsIntegers()
{
    View view(5);
    auto *spiner = view.open<QNKSpiner>();
    QVERIFY(spiner);
    QTest::keyClicks(spiner, QStringLiteral("-2147483648"));
    commit(spiner);
    QVERIFY(same(view.value(), std::numeric_limits<int>::min()));
}

void TestVariantDelegate::editsSingles()
{
    View view(0.5);
    auto *spiner = view.open<QNKDoubleSpiner>();
    QVERIFY(spiner);
    QTest::keyClicks(spiner, QStringLiteral("0.1"));
    commit(spiner);
    QVERIFY(same(view.value(), 0.1));

    View single(0.5F);
    spiner = single.open<QNKDoubleSpiner>();
    QTest::keyClicks(spiner, QStringLiteral("0.1"));
    commit(spiner);
    QVERIFY(same(single.value(), 0.1F));
}

void TestVariantDelegate::editsLongIntegersAsTextOfTheirType()
{
    View view(Q_INT64_C(9007199254740993));
    auto *edit = view.open<QLineEdit>();
    QVERIFY(edit);
    QTest::keyClicks(edit, QStringLiteral("9007199254740995"));
    commit(edit);
    QVERIFY(same(view.value(), Q_INT64_C(9007199254740995)));
    edit = view.open<QLineEdit>();
    QTest::keyClicks(edit, QStringLiteral("no number"));
    commit(edit);
    QVERIFY(same(view.value(), Q_INT64_C(9007199254740995)));
}

void TestVariantDelegate::editsBooleans()
{
    View view(false);
    QVERIFY(view.usable);
    auto *box = view.open<QNKComboBox>();
    QVERIFY(box);
    QVERIFY2(box->view()->isVisible(), "the list opens at once");
    QTest::keyClick(box->view(), Qt::Key_Down);
    QTest::keyClick(box->view(), Qt::Key_Return);
    QTRY_VERIFY(same(view.value(), true));
    QTRY_VERIFY(!view.view.viewport()->findChild<QNKComboBox *>());
}

void TestVariantDelegate::editsTimes()
{
    View view(QTime(13, 45, 30));
    auto *edit = view.open<QTimeEdit>();
    QVERIFY(edit);
    QCOMPARE(edit->text(), QStringLiteral("13:45"));
    edit->setSelectedSection(QDateTimeEdit::HourSection);
    QTest::keyClick(edit, Qt::Key_Up);
    commit(edit);
    QCOMPARE(view.value().userType(), int(QMetaType::QTime));
    QCOMPARE(view.value().toTime().hour(), 14);
    QCOMPARE(view.value().toTime().minute(), 45);
}

void TestVariantDelegate::editsDates()
{
    View view(QDate(1, 1, 1));
    auto *edit = view.open<QDateEdit>();
    QVERIFY(edit);
    QVERIFY(edit->calendarPopup());
    QCOMPARE(edit->text(), QStringLiteral("January 01, 0001"));
    edit->setSelectedSection(QDateTimeEdit::DaySection);
    QTest::keyClick(edit, Qt::Key_Up);
    commit(edit);
    QVERIFY(same(view.value(), QDate(1, 1, 2)));
}

void TestVariantDelegate::editsDatesAndTimesInTheirTimeZone()
{
    const QDateTime before(QDate(2023, 3, 26), QTime(2, 30), Qt::OffsetFromUTC, 3600);
    View view(before);
    auto *edit = view.open<QDateTimeEdit>();
    QVERIFY(edit);
    QCOMPARE(edit->text(), QStringLiteral("March 26, 2023 02:30:00"));
    edit->setSelectedSection(QDateTimeEdit::MinuteSection);
    QTest::keyClick(edit, Qt::Key_Up);
    commit(edit);
    const QDateTime after = view.value().toDateTime();
    QCOMPARE(after.time(), QTime(2, 31));
    QCOMPARE(after.timeSpec(), Qt::OffsetFromUTC);
    QCOMPARE(after.offsetFromUtc(), 3600);
}

void TestVariantDelegate::editsNestedLists()
{
    View view(QVariantList{1, "two"});
    QVERIFY(view.usable);
    auto *list = view.open<QNKVariantListWidget>();
    QVERIFY(list);
    QVERIFY(list->isWindow());
    QCOMPARE(list->geometry().top(),
             view.view.viewport()->mapToGlobal(view.view.visualRect(view.index()).bottomLeft()).y());
    QTest::keyClick(list->list(), Qt::Key_Delete);
    QTest::keyClick(list->list(), Qt::Key_Return);
    QTRY_VERIFY(same(view.value(), QVariantList{"two"}));
    QTRY_VERIFY(!view.view.viewport()->findChild<QNKVariantListWidget *>());
}

void TestVariantDelegate::escapeInANestedListWritesNothing()
{
    View view(QVariantList{1, "two"});
    QVERIFY(view.usable);
    auto *list = view.open<QNKVariantListWidget>();
    QTest::keyClick(list->list(), Qt::Key_Delete);
    QTest::keyClick(list->list(), Qt::Key_Escape);
    QTRY_VERIFY(!view.view.viewport()->findChild<QNKVariantListWidget *>());
    QVERIFY(same(view.value(), QVariantList{1, "two"}));
    QCOMPARE(view.writes, 0);
}

void TestVariantDelegate::aNestedListThatIsClickedAwayKeepsWhatWasTyped()
{
    View view(QVariantList{"one"});
    QVERIFY(view.usable);
    auto *list = view.open<QNKVariantListWidget>();
    QTest::keyClick(list->list(), Qt::Key_F2);
    auto *edit = list->list()->viewport()->findChild<QLineEdit *>();
    QVERIFY(edit);
    QTest::keyClicks(edit, QStringLiteral("two"));
    QTest::mouseClick(list, Qt::LeftButton, {}, QPoint(-10, -10));
    QTRY_VERIFY(same(view.value(), QVariantList{"two"}));
}

void TestVariantDelegate::rowsAreHighEnoughForTheirEditors()
{
    for (const QVariant &value : {QVariant(1), QVariant(0.5), QVariant(QDate(2023, 3, 2)), QVariant("a")}) {
        View view(value);
        QWidget *editor = view.openAny();
        QVERIFY(editor);
        QVERIFY(editor->height() >= editor->minimumSizeHint().height() - 2);
    }
}

void TestVariantDelegate::typedTextSurvivesAnAnnouncementOfTheRow()
{
    View view(QStringLiteral("old"));
    auto *edit = view.open<QLineEdit>();
    QTest::keyClicks(edit, QStringLiteral("new"));
    Q_EMIT view.model.dataChanged(view.index(), view.index());
    QCOMPARE(edit->text(), QStringLiteral("new"));
    view.delegate.setEditorData(edit, view.index());
    QCOMPARE(edit->text(), QStringLiteral("new"));
}

void TestVariantDelegate::typesThatCannotBeWrittenBackHaveNoEditor()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem);
    model.setData(model.index(0, 0), QVariant(QRect(1, 2, 3, 4)), Qt::UserRole);
    QWidget parent;
    QVERIFY(!QNKVariantDelegate().createEditor(&parent, {}, model.index(0, 0)));
}

NK_TEST_MAIN(TestVariantDelegate)

#include "test_variant_delegate.moc"
