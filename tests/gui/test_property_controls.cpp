#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServicesGUI/nkBaseControl.h>
#include <nkKernelServicesGUI/nkPropertyEditorWidget.h>
#include <nkQt4Ext/QNKColorDialog.h>
#include <nkQt4Ext/QNKVariantListWidget.h>

#include <QComboBox>
#include <QDateTimeEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QUndoStack>

#include <limits>

using ValueType = nkMetadataTypes::ValueType;

class TestPropertyControls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = GuiScene::load();
        m_panel = std::make_unique<nkPropertyEditorWidget>(nullptr, QList<nkControlFactory *>(), false,
                                                           false);
        m_panel->show();
        m_panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    }

    void cleanup() { m_panel.reset(); }

    void an_untouched_value_is_never_written_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariant>("value");
        const auto add = [](const char *name, ValueType type, const QVariant &value) {
            QTest::newRow(name) << int(type) << value;
        };
        add("empty text", nkMetadataTypes::String, QString());
        add("text with breaks", nkMetadataTypes::String, QStringLiteral("a\nb\tc"));
        add("long text", nkMetadataTypes::String, QString(40000, QLatin1Char('x')));
        add("largest integer", nkMetadataTypes::Integer, std::numeric_limits<int>::max());
        add("smallest integer", nkMetadataTypes::Integer, std::numeric_limits<int>::min());
        add("long float", nkMetadataTypes::Float, 0.123456789012345);
        add("small float", nkMetadataTypes::Float, 1e-300);
        add("large float", nkMetadataTypes::Float, 1e300);
        add("true", nkMetadataTypes::Boolean, true);
        add("late time", nkMetadataTypes::Time, QTime(23, 59, 59, 999));
        add("early date", nkMetadataTypes::Date, QDate(1, 1, 1));
        add("date before the stock minimum", nkMetadataTypes::Date, QDate(1600, 2, 29));
        add("moment", nkMetadataTypes::DateTime, QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3, 4)));
        add("nested list", nkMetadataTypes::List, QVariantList{1, QVariantList{2.5, QStringLiteral("x")}});
    }
    void an_untouched_value_is_never_written()
    {
        QFETCH(int, type);
        QFETCH(QVariant, value);
        const nkdMetadataEntry entry = show(ValueType(type), value);
        const int before = undoCount();
        QWidget *control = m_panel->getControl(QStringLiteral("value"));
        control->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        m_panel->getControl(QStringLiteral("key"))->setFocus();
        QCOMPARE(undoCount(), before);
        QCOMPARE(entry.getValue(), value);
        QCOMPARE(entry.getValue().userType(), value.userType());
    }

    void a_typed_integer_is_written_when_it_is_whole()
    {
        const nkdMetadataEntry entry = show(nkMetadataTypes::Integer, 3);
        QSpinBox *box = editor<QSpinBox>();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("123"));
        QCOMPARE(entry.getValue(), QVariant(3));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(entry.getValue(), QVariant(123));
        QCOMPARE(undoCount(), 1);
    }

    void a_step_is_written_at_once()
    {
        const nkdMetadataEntry entry = show(nkMetadataTypes::Integer, 3);
        QTest::keyClick(editor<QSpinBox>(), Qt::Key_Up);
        QCOMPARE(entry.getValue(), QVariant(4));
        QCOMPARE(undoCount(), 1);
    }

    void escape_restores_a_number()
    {
        const nkdMetadataEntry entry = show(nkMetadataTypes::Integer, 3);
        QSpinBox *box = editor<QSpinBox>();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("123"));
        QTest::keyClick(box, Qt::Key_Escape);
        m_panel->getControl(QStringLiteral("key"))->setFocus();
        QCOMPARE(entry.getValue(), QVariant(3));
        QCOMPARE(box->text(), QStringLiteral("3"));
    }

    void the_first_objects_number_can_be_given_to_all()
    {
        showTwoNumbers(3, 5);
        startTyping(QStringLiteral("3"));
        QTest::keyClick(editor<QSpinBox>(), Qt::Key_Return);
        QCOMPARE(GuiScene::entry(m_scene.second, "count").getValue(), QVariant(3));
    }

    void a_typed_float_is_written()
    {
        const nkdMetadataEntry entry = show(nkMetadataTypes::Float, 0.5);
        QDoubleSpinBox *box = editor<QDoubleSpinBox>();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("0.1"));
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(entry.getValue().toFloat(), 0.1f);
    }

    void a_chosen_boolean_is_written_as_a_boolean()
    {
        const nkdMetadataEntry entry = show(nkMetadataTypes::Boolean, false);
        QTest::keyClick(editor<QComboBox>(), Qt::Key_Down);
        QCOMPARE(entry.getValue(), QVariant(true));
        QCOMPARE(entry.getValue().userType(), int(QMetaType::Bool));
    }

    void typed_times_and_dates_are_written()
    {
        const nkdMetadataEntry time = show(nkMetadataTypes::Time, QTime(10, 20, 30));
        type(editor<QDateTimeEdit>(), QStringLiteral("1122"));
        QCOMPARE(time.getValue(), QVariant(QTime(11, 22)));
        const nkdMetadataEntry date = show(nkMetadataTypes::Date, QDate(2024, 2, 29));
        QTest::keyClick(editor<QDateTimeEdit>(), Qt::Key_Up);
        QCOMPARE(date.getValue().toDate().month(), 3);
    }

    void an_edited_moment_keeps_its_time_zone_data()
    {
        QTest::addColumn<QDateTime>("moment");
        const QDate date(2024, 2, 29);
        const QTime time(1, 2, 3);
        QTest::newRow("local") << QDateTime(date, time);
        QTest::newRow("universal") << QDateTime(date, time, Qt::UTC);
        QTest::newRow("offset") << QDateTime(date, time, Qt::OffsetFromUTC, 3600);
    }
    void an_edited_moment_keeps_its_time_zone()
    {
        QFETCH(QDateTime, moment);
        const nkdMetadataEntry entry = show(nkMetadataTypes::DateTime, moment);
        const QDateTime stored = entry.getValue().toDateTime();
        QDateTimeEdit *box = editor<QDateTimeEdit>();
        QCOMPARE(box->time(), stored.time());
        box->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClick(box, Qt::Key_Up);
        const QDateTime edited = entry.getValue().toDateTime();
        QCOMPARE(edited.time().hour(), stored.time().hour() + 1);
        QCOMPARE(edited.timeSpec(), stored.timeSpec());
        QCOMPARE(edited.offsetFromUtc(), stored.offsetFromUtc());
    }

    void a_list_is_edited_in_a_pop_up()
    {
        const nkdMetadataEntry entry = show(nkMetadataTypes::List, QVariantList{1, QStringLiteral("a&b")});
        QPushButton *button = listButton();
        QCOMPARE(button->text(), QStringLiteral("1, a&&b"));
        QTest::mouseClick(button, Qt::LeftButton);
        auto *list = m_panel->findChild<QNKVariantListWidget *>();
        QTRY_VERIFY(list && list->isVisible());
        list->setValues({2});
        Q_EMIT list->finished(true);
        QCOMPARE(entry.getValue(), QVariant(QVariantList{2}));
        QTRY_VERIFY(!m_panel->findChild<QNKVariantListWidget *>());
    }

    void a_list_that_was_given_up_stays()
    {
        const nkdMetadataEntry entry = show(nkMetadataTypes::List, QVariantList{1});
        QTest::mouseClick(listButton(), Qt::LeftButton);
        auto *list = m_panel->findChild<QNKVariantListWidget *>();
        QTRY_VERIFY(list && list->isVisible());
        list->setValues({2});
        Q_EMIT list->finished(false);
        QCOMPARE(entry.getValue(), QVariant(QVariantList{1}));
        QCOMPARE(undoCount(), 0);
    }

    void a_colour_is_chosen_in_the_dialog()
    {
        nkdMetadataSet(m_scene.common).setColor(Qt::red);
        m_panel->setCurrentObjects({nkPropertyEditorNkdObjectWrapper(nkdMetadataSet(m_scene.common))}, false);
        auto *button = m_panel->getControl(QStringLiteral("color"))->findChildren<QPushButton *>().last();
        QCOMPARE(button->text(), QStringLiteral("#ff0000"));
        const ModalAnswer answer([](QDialog *dialog) {
            QNKColor blue;
            blue.setGammaRGB(0, 0, 1);
            static_cast<QNKColorDialog *>(dialog)->reinit(blue);
            dialog->accept();
        });
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(nkdMetadataSet(m_scene.common).getColor(), QColor(Qt::blue));
    }

    void every_editor_has_a_name_for_screen_readers()
    {
        show(nkMetadataTypes::Integer, 3);
        QCOMPARE(editor<QSpinBox>()->accessibleName(), QStringLiteral("Value"));
    }

private:
    // Gives Common's "count" that type and value, and shows it.
    nkdMetadataEntry show(ValueType type, const QVariant &value)
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        const quint64 id = loader.addEntry(m_scene.common, QStringLiteral("shown"), type, value);
        loader.commit();
        const nkdMetadataEntry entry(id);
        m_panel->setCurrentObjects({nkPropertyEditorNkdObjectWrapper(entry)}, false);
        return entry;
    }

    void showTwoNumbers(int first, int second)
    {
        kernel::DocumentLoader loader(kernel::DocumentLoader::Mode::Add);
        const quint64 id = loader.addEntry(m_scene.second, QStringLiteral("count"), nkMetadataTypes::Integer,
                                           second);
        loader.commit();
        nkdMetadataEntry one = GuiScene::entry(m_scene.common, "count");
        one.setValue(first);
        m_panel->setCurrentObjects(
            {nkPropertyEditorNkdObjectWrapper(one), nkPropertyEditorNkdObjectWrapper(nkdMetadataEntry(id))},
            false);
    }

    void startTyping(const QString &text)
    {
        auto *button = m_panel->getControl(QStringLiteral("value"))
                           ->findChild<QPushButton *>(QStringLiteral("DifferingButton"));
        button->setFocus();
        QTest::keyClicks(button, text);
    }

    static void type(QDateTimeEdit *box, const QString &text)
    {
        box->setFocus();
        box->setSelectedSection(QDateTimeEdit::HourSection);
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
    }

    template <typename Widget>
    Widget *editor() const
    {
        const nkBaseControl *control = m_panel->getControl(QStringLiteral("value"));
        return control->findChild<Widget *>();
    }

    QPushButton *listButton() const
    {
        return m_panel->getControl(QStringLiteral("value"))->findChildren<QPushButton *>().last();
    }

    static int undoCount() { return kernel::Document::the().undoStack()->count(); }

    GuiScene m_scene;
    std::unique_ptr<nkPropertyEditorWidget> m_panel;
};

NK_TEST_MAIN(TestPropertyControls)
#include "test_property_controls.moc"
