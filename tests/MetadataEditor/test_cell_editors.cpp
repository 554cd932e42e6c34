#include "EditingFixture.h"

#include <TestMain.h>
#include <nkKernelServicesGUI/nkMetadataVariantDelegate.h>
#include <nkQt4Ext/QNKComboBox.h>
#include <nkQt4Ext/QNKDoubleSpiner.h>
#include <nkQt4Ext/QNKListWidget.h>
#include <nkQt4Ext/QNKSpiner.h>
#include <nkQt4Ext/QNKStringCompleterLineEdit.h>
#include <nkQt4Ext/QNKVariantListWidget.h>

#include <QDateTimeEdit>
#include <QHeaderView>
#include <QSortFilterProxyModel>
#include <QStyledItemDelegate>

/// The editors of keys, values and types: which, how they look, what they write and what they leave alone.
class TestCellEditors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_editor = std::make_unique<EditingFixture>();
        m_editor->showTypes();
    }
    void cleanup()
    {
        QNKViewBase::commitOpenEditors();
        m_editor.reset();
    }

    void every_type_has_its_editor_data()
    {
        QTest::addColumn<QByteArray>("className");
        QTest::newRow("string") << QByteArray("QNKStringCompleterLineEdit");
        QTest::newRow("integer") << QByteArray("QNKSpiner");
        QTest::newRow("float") << QByteArray("QNKDoubleSpiner");
        QTest::newRow("boolean") << QByteArray("QNKComboBox");
        QTest::newRow("time") << QByteArray("QTimeEdit");
        QTest::newRow("date") << QByteArray("QDateEdit");
        QTest::newRow("moment") << QByteArray("QDateTimeEdit");
        QTest::newRow("list") << QByteArray("QNKVariantListWidget");
    }
    void every_type_has_its_editor()
    {
        const QWidget *editor = m_editor->open(QTest::currentDataTag(), 3);
        QVERIFY(editor);
        QTEST(QByteArray(editor->metaObject()->className()), "className");
    }

    void spinners_have_no_frame()
    {
        const auto *integer = qobject_cast<QNKSpiner *>(m_editor->open("integer", 3));
        QVERIFY(!integer->hasFrame());
        QCOMPARE(integer->value(), -42);
        m_editor->press(Qt::Key_Escape);
        const auto *number = qobject_cast<QNKDoubleSpiner *>(m_editor->open("float", 3));
        QVERIFY(!number->hasFrame());
        QCOMPARE(number->alignment(), Qt::AlignLeft);
        QCOMPARE(static_cast<const QAbstractSpinBox *>(number)->text(), QStringLiteral("0.1"));
    }

    void spinners_hide_the_highlighted_cell_below_them_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::newRow("integer") << QByteArray("integer");
        QTest::newRow("float") << QByteArray("float");
    }
    void spinners_hide_the_highlighted_cell_below_them()
    {
        QFETCH(QByteArray, key);
        QWidget *editor = m_editor->open(key.constData(), 3);
        QImage ground(editor->size(), QImage::Format_RGB32);
        ground.fill(Qt::magenta);
        editor->render(&ground, QPoint(), QRegion(), QWidget::DrawChildren);
        for (int x = 0; x < ground.width(); ++x) {
            for (int y = 0; y < ground.height(); ++y) {
                QVERIFY(ground.pixelColor(x, y) != QColor(Qt::magenta));
            }
        }
    }

    void times_and_dates_have_their_formats()
    {
        QCOMPARE(qobject_cast<QDateTimeEdit *>(m_editor->open("time", 3))->text(), QStringLiteral("13:45"));
        m_editor->press(Qt::Key_Escape);
        const auto *date = qobject_cast<QDateTimeEdit *>(m_editor->open("date", 3));
        QCOMPARE(date->displayFormat(), QStringLiteral("MMMM dd, yyyy"));
        QVERIFY(date->calendarPopup());
        m_editor->press(Qt::Key_Escape);
        const auto *moment = qobject_cast<QDateTimeEdit *>(m_editor->open("moment", 3));
        QCOMPARE(moment->displayFormat(), QStringLiteral("MMMM dd, yyyy hh:mm:ss"));
        QCOMPARE(moment->text(), QStringLiteral("March 02, 2023 15:07:09"));
        QVERIFY(moment->calendarPopup());
    }

    void a_boolean_opens_its_list_at_once_and_one_click_chooses()
    {
        const QPointer<QNKComboBox> combo = qobject_cast<QNKComboBox *>(m_editor->open("boolean", 3));
        QVERIFY(combo->view()->isVisible());
        QCOMPARE(combo->count(), 2);
        QCOMPARE(combo->itemText(0), QStringLiteral("false"));
        QCOMPARE(combo->itemData(1), QVariant(true));
        QVERIFY(combo->itemIcon(0).isNull());
        choose(combo, 1);
        QVERIFY(!combo || !combo->isVisible());
        QCOMPARE(m_editor->of("boolean").getValue().userType(), int(QMetaType::Bool));
        QCOMPARE(m_editor->of("boolean").getValue(), QVariant(true));
    }

    void a_boolean_is_chosen_by_keyboard()
    {
        const QPointer<QNKComboBox> combo = qobject_cast<QNKComboBox *>(m_editor->open("boolean", 3));
        QTest::keyClick(combo->view(), Qt::Key_Down);
        QTest::keyClick(combo->view(), Qt::Key_Return);
        QCoreApplication::processEvents();
        QCOMPARE(m_editor->of("boolean").getValue(), QVariant(true));
        QVERIFY(!m_editor->editor());
        QCOMPARE(m_editor->window->focusWidget(), m_editor->view());
    }

    void a_type_is_chosen_from_eight()
    {
        const QPointer<QNKComboBox> combo = qobject_cast<QNKComboBox *>(m_editor->open("integer", 4));
        QVERIFY(combo->view()->isVisible());
        QStringList names;
        for (int i = 0; i < combo->count(); ++i) {
            names.append(combo->itemText(i));
            QCOMPARE(combo->itemData(i).value<nkMetadataTypes::ValueType>(), nkMetadataTypes::ValueType(i));
        }
        QCOMPARE(names, (QStringList{"String", "Integer", "Float", "Boolean", "Time", "Date", "Date and Time",
                                     "List"}));
        QCOMPARE(combo->currentIndex(), 1);
        choose(combo, 2);
        QCOMPARE(m_editor->of("integer").getValueType(), nkMetadataTypes::Float);
        QCOMPARE(m_editor->of("integer").getValue(), QVariant(-42.0));
        QCOMPARE(EditingFixture::undoStack()->count(), 1);
    }

    void the_type_that_is_there_makes_no_step()
    {
        choose(qobject_cast<QComboBox *>(m_editor->open("integer", 4)), 1);
        QCOMPARE(EditingFixture::undoStack()->count(), 0);
    }

    void a_list_opens_below_its_cell()
    {
        auto *list = qobject_cast<QNKVariantListWidget *>(m_editor->open("list", 3));
        QVERIFY(list->isWindow());
        QCOMPARE(list->windowType(), Qt::Popup);
        QVERIFY(qobject_cast<nkMetadataVariantDelegate *>(list->list()->itemDelegate()));
        QCOMPARE(list->values(), (QVariantList{QStringLiteral("a"), 1}));
        const QRect cell = m_editor->view()->visualRect(m_editor->cellOf("list", 3));
        const QPoint corner = m_editor->view()->viewport()->mapToGlobal(cell.topLeft());
        QCOMPARE(
            list->geometry(),
            QRect(corner.x() + 1, corner.y() + m_editor->view()->header()->height() + 1, cell.width(), 100));
    }

    void a_list_is_written_when_it_is_done()
    {
        auto *list = qobject_cast<QNKVariantListWidget *>(m_editor->open("list", 3));
        list->setValues({QStringLiteral("b"), 2.5});
        Q_EMIT list->finished(true);
        QCOMPARE(m_editor->of("list").getValue(), QVariant(QVariantList{QStringLiteral("b"), 2.5}));
        QVERIFY(!m_editor->editor());
        list = qobject_cast<QNKVariantListWidget *>(m_editor->open("list", 3));
        list->setValues({});
        Q_EMIT list->finished(false);
        QCOMPARE(m_editor->of("list").getValue().toList().size(), 2);
        QCOMPARE(EditingFixture::undoStack()->count(), 1);
    }

    void an_element_that_only_changed_its_type_is_written()
    {
        auto *list = qobject_cast<QNKVariantListWidget *>(m_editor->open("list", 3));
        list->setValues({QStringLiteral("a"), QStringLiteral("1")});
        Q_EMIT list->finished(true);
        QCOMPARE(m_editor->of("list").getValue().toList().last().userType(), int(QMetaType::QString));
    }

    void other_editors_take_their_cell()
    {
        for (const char *key : {"string", "integer", "boolean", "date"}) {
            const QWidget *editor = m_editor->open(key, 3);
            QCOMPARE(editor->geometry(), m_editor->view()->visualRect(m_editor->cellOf(key, 3)));
            QNKViewBase::commitOpenEditors();
        }
    }

    void tags_and_locked_rows_open_no_editor_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("column");
        QTest::newRow("tag value") << "tag" << 3;
        QTest::newRow("tag type") << "tag" << 4;
        QTest::newRow("locked key") << "fixed" << 2;
        QTest::newRow("locked value") << "fixed" << 3;
        QTest::newRow("locked type") << "fixed" << 4;
        QTest::newRow("assignment") << "string" << 1;
    }
    void tags_and_locked_rows_open_no_editor()
    {
        QFETCH(QString, key);
        QFETCH(int, column);
        QVERIFY(!m_editor->open(m_editor->cell(key, column)));
    }

    void typed_text_is_written_by_return()
    {
        m_editor->open("string", 3);
        QTest::keyClicks(m_editor->editor(), QStringLiteral("typed"));
        m_editor->press(Qt::Key_Return);
        QCOMPARE(m_editor->of("string").getValue(), QVariant(QStringLiteral("typed")));
        QCOMPARE(EditingFixture::undoStack()->count(), 1);
    }

    void unconfirmed_numbers_count()
    {
        auto *spiner = qobject_cast<QNKSpiner *>(m_editor->open("integer", 3));
        spiner->setKeyboardTracking(false);
        spiner->selectAll();
        QTest::keyClicks(spiner, QStringLiteral("17"));
        QNKViewBase::commitOpenEditors();
        QCOMPARE(m_editor->of("integer").getValue(), QVariant(17));
        auto *number = qobject_cast<QNKDoubleSpiner *>(m_editor->open("float", 3));
        number->selectAll();
        QTest::keyClicks(number, QStringLiteral("2.5"));
        QNKViewBase::commitOpenEditors();
        QCOMPARE(m_editor->of("float").getValue().userType(), int(QMetaType::Double));
        QCOMPARE(m_editor->of("float").getValue(), QVariant(2.5));
    }

    void a_changed_time_loses_its_seconds()
    {
        auto *edit = qobject_cast<QTimeEdit *>(m_editor->open("time", 3));
        edit->stepUp();
        QNKViewBase::commitOpenEditors();
        QCOMPARE(m_editor->of("time").getValue(), QVariant(QTime(14, 45)));
    }

    void escape_restores()
    {
        for (const char *key : {"string", "integer", "float", "time", "date", "moment"}) {
            const QVariant before = m_editor->of(key).getValue();
            m_editor->open(key, 3);
            QTest::keyClicks(m_editor->editor(), QStringLiteral("1"));
            m_editor->press(Qt::Key_Escape);
            QCOMPARE(m_editor->of(key).getValue(), before);
        }
        QCOMPARE(EditingFixture::undoStack()->count(), 0);
    }

    void an_empty_key_cannot_be_committed()
    {
        auto *edit = qobject_cast<QLineEdit *>(m_editor->open("string", 2));
        QCOMPARE(edit->text(), QStringLiteral("string"));
        edit->clear();
        m_editor->press(Qt::Key_Return);
        QVERIFY(m_editor->editor());
        QNKViewBase::commitOpenEditors();
        QCOMPARE(m_editor->of("string").getKey(), QStringLiteral("string"));
        QCOMPARE(EditingFixture::undoStack()->count(), 0);
    }

    void a_key_is_renamed()
    {
        m_editor->open("string", 2);
        QTest::keyClicks(m_editor->editor(), QStringLiteral("title"));
        m_editor->press(Qt::Key_Return);
        QCOMPARE(m_editor->of("title").getValue(), QVariant(QStringLiteral("some text")));
        QCOMPARE(EditingFixture::undoStack()->undoText(), QStringLiteral("Change key name"));
    }

    void what_is_typed_survives_a_reload_and_a_notification()
    {
        m_editor->open("string", 3);
        QTest::keyClicks(m_editor->editor(), QStringLiteral("half"));
        m_editor->of("integer").setValue(5);
        WindowFixture::settle();
        QCOMPARE(qobject_cast<QLineEdit *>(m_editor->editor())->text(), QStringLiteral("half"));
        m_editor->of("string").setValue(QStringLiteral("changed elsewhere"));
        WindowFixture::settle();
        QCOMPARE(qobject_cast<QLineEdit *>(m_editor->editor())->text(), QStringLiteral("half"));
        m_editor->press(Qt::Key_Return);
        QCOMPARE(m_editor->of("string").getValue(), QVariant(QStringLiteral("half")));
    }

    void an_untouched_editor_follows_its_value_and_writes_nothing()
    {
        m_editor->open("string", 3);
        m_editor->of("string").setValue(QStringLiteral("changed elsewhere"));
        const int steps = EditingFixture::undoStack()->count();
        WindowFixture::settle();
        QCOMPARE(qobject_cast<QLineEdit *>(m_editor->editor())->text(), QStringLiteral("changed elsewhere"));
        m_editor->press(Qt::Key_Return);
        QCOMPARE(EditingFixture::undoStack()->count(), steps);
    }

    void what_is_typed_survives_a_filter()
    {
        m_editor->open("string", 3);
        QTest::keyClicks(m_editor->editor(), QStringLiteral("half"));
        auto *proxy = qobject_cast<QSortFilterProxyModel *>(m_editor->view()->model());
        QVERIFY(QMetaObject::invokeMethod(proxy, "setKeyFilter", Q_ARG(QString, QStringLiteral("ri"))));
        QVERIFY(m_editor->editor());
        QCOMPARE(qobject_cast<QLineEdit *>(m_editor->editor())->text(), QStringLiteral("half"));
    }

    void a_reload_while_a_cell_is_written_is_survived_data()
    {
        QTest::addColumn<bool>("isEmptied");
        QTest::newRow("reloaded") << false;
        QTest::newRow("emptied") << true;
    }
    void a_reload_while_a_cell_is_written_is_survived()
    {
        QFETCH(bool, isEmptied);
        QObject context;
        connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, &context, [&] {
            if (isEmptied) {
                m_editor->window->onMetadataSelectionChanged({});
            }
            m_editor->window->onUpdateScheduled(31);
        });
        m_editor->open("string", 3);
        QTest::keyClicks(m_editor->editor(), QStringLiteral("new"));
        m_editor->press(Qt::Key_Return);
        QCOMPARE(m_editor->of("string").getValue(), QVariant(QStringLiteral("new")));
    }

    void texts_of_any_length_open_in_full()
    {
        const QString text = QString(100000, QLatin1Char('x')) + QStringLiteral("\nend");
        m_editor->of("string").setValue(text);
        WindowFixture::settle();
        const int steps = EditingFixture::undoStack()->count();
        auto *edit = qobject_cast<QLineEdit *>(m_editor->open("string", 3));
        QCOMPARE(edit->text().size(), text.size());
        m_editor->press(Qt::Key_Return);
        QCOMPARE(m_editor->of("string").getValue(), QVariant(text));
        QCOMPARE(EditingFixture::undoStack()->count(), steps);
    }

    void cells_show_one_line_of_plain_text()
    {
        m_editor->of("string").setValue(QStringLiteral("a\nb\tc\x01<b>d</b>"));
        WindowFixture::settle();
        const QModelIndex cell = m_editor->cellOf("string", 3);
        auto *delegate = qobject_cast<QStyledItemDelegate *>(m_editor->view()->itemDelegate(cell));
        QCOMPARE(delegate->displayText(cell.data(), QLocale()), QStringLiteral("a b c <b>d</b>"));
        const QString huge(1 << 20, QLatin1Char('y'));
        QVERIFY(delegate->displayText(huge, QLocale()).size() < 2000);
    }

private:
    static void choose(QComboBox *combo, int item)
    {
        QAbstractItemView *list = combo->view();
        const QModelIndex index = list->model()->index(item, combo->modelColumn(), combo->rootModelIndex());
        list->scrollTo(index);
        const QPoint place = list->visualRect(index).center();
        QTest::mouseMove(list->viewport(), place);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<EditingFixture> m_editor;
};

NK_TEST_MAIN(TestCellEditors)
#include "test_cell_editors.moc"
