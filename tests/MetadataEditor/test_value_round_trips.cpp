#include "TableFixture.h"
#include "ValueSamples.h"

#include "table/nkMetadataEditorMemory.h"
#include "table/nkMetadataValueDelegate.h"
#include "table/nkMetadataValueEditors.h"

#include <TestMain.h>

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QStyleOptionViewItem>

#include <cmath>
#include <limits>

using namespace nkMetadataKeyValue;

/// Values through their editors: opened and left, opened and edited, undone and redone. Same type, same bits.
class TestValueRoundTrips : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        connect(&m_delegate, &QAbstractItemDelegate::commitData, this, [this](QWidget *editor) {
            ++m_commits;
            commit(editor, m_entry);
        });
        connect(&m_delegate, &QAbstractItemDelegate::closeEditor, this, [this] { ++m_closings; });
    }
    void init()
    {
        m_table = std::make_unique<TableFixture>();
        m_table->show({m_table->alpha});
        m_table->tester.reset();
        m_parent = std::make_unique<QWidget>();
    }
    void cleanup()
    {
        m_typedLast = QVariant();
        m_parent.reset();
        m_table.reset();
    }

    void values_that_nobody_touches_stay_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariantList>("values");
        const QDate date(2023, 3, 2);
        const QVariantList nested{QStringLiteral("a"), 1, QVariant(QVariantList{2.5, true, date})};
        using T = nkMetadataTypes;
        const double smallest = std::numeric_limits<double>::denorm_min();
        QTest::newRow("string") << int(T::String)
                                << QVariantList{QString(),
                                                QString(QLatin1String("")),
                                                QString(32768, QLatin1Char('x')),
                                                QStringLiteral("a\nb\tc"),
                                                QStringLiteral("<b>&amp;%1"),
                                                QString(QChar(0x202E)),
                                                QString(1 << 20, QLatin1Char('y'))};
        QTest::newRow("integer") << int(T::Integer)
                                 << QVariantList{0, -1, std::numeric_limits<int>::max(),
                                                 std::numeric_limits<int>::min()};
        QTest::newRow("float") << int(T::Float) << QVariantList{0.0,        -0.0,   0.1,   0.123456789,
                                                                16777217.0, 1e-300, 1e300, 9007199254740993.0,
                                                                smallest,   -1e-7};
        QTest::newRow("boolean") << int(T::Boolean) << QVariantList{true, false};
        QTest::newRow("time") << int(T::Time)
                              << QVariantList{QTime(0, 0), QTime(23, 59, 59, 999), QTime(12, 0, 0, 1)};
        QTest::newRow("date") << int(T::Date)
                              << QVariantList{date, QDate(1, 1, 1), QDate(1752, 9, 13), QDate(9999, 12, 31)};
        QTest::newRow("moment") << int(T::DateTime)
                                << QVariantList{QDateTime(date, QTime(23, 59, 59, 999)),
                                                QDateTime(QDate(1, 1, 1), QTime(0, 0)),
                                                QDateTime(date, QTime(1, 2, 3), Qt::UTC),
                                                QDateTime(date, QTime(1, 2, 3), Qt::OffsetFromUTC, 3600)};
        QTest::newRow("list") << int(T::List)
                              << QVariantList{QVariant(QVariantList()), QVariant(nested),
                                              QVariant(QVariantList{QString(), QTime(1, 2, 3, 4)})};
    }
    void values_that_nobody_touches_stay()
    {
        QFETCH(int, type);
        QFETCH(QVariantList, values);
        nkdMetadataEntry entry = entryOf(type);
        for (const QVariant &value : qAsConst(values)) {
            entry.setValue(value);
            m_table->model->reload();
            const QVariant stored = entry.getValue();
            const int steps = TableFixture::undoStack()->count();
            leaveUntouched(entry);
            QVERIFY2(nkMetadataEditorMemory::areEqual(entry.getValue(), stored),
                     qPrintable(value.toString().left(60)));
            QCOMPARE(TableFixture::undoStack()->count(), steps);
        }
    }

    void random_values_come_through_enter_escape_edit_undo_and_redo_data() { addTypes(); }
    void random_values_come_through_enter_escape_edit_undo_and_redo()
    {
        QFETCH(int, type);
        QRandomGenerator source(7);
        m_entry = entryOf(type);
        for (int i = 0; i < Rounds && !QTest::currentTestFailed(); ++i) {
            m_entry.setValue(ValueSamples::random(type, source));
            m_table->model->reloadIndices({m_table->cell(m_entry, ValueColumn)});
            TableFixture::undoStack()->clear();
            leaveAlone();
            edit(type, ValueSamples::random(type, source));
            // A widget that goes looks through all events that wait.
            QCoreApplication::sendPostedEvents();
        }
    }

    void types_and_values_are_told_apart()
    {
        using nkMetadataEditorMemory::areEqual;
        QVERIFY(!areEqual(QStringLiteral("1"), 1));
        QVERIFY(!areEqual(QVariant(), QString()));
        QVERIFY(areEqual(std::nan(""), std::nan("")));
        QVERIFY(!areEqual(QVariantList{1}, QVariantList{QStringLiteral("1")}));
        QVERIFY(areEqual(QVariantList{1, 2.5}, QVariantList{1, 2.5}));
    }

    void an_editor_of_another_kind_is_left_alone()
    {
        QWidget other;
        nkMetadataValueEditors::fill(&other, 1);
        QVERIFY(!nkMetadataValueEditors::value(&other).isValid());
    }

    void values_of_other_types_are_converted_or_left_out_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("read");
        using T = nkMetadataTypes;
        const QVariant list = QVariantList{1, 2};
        QTest::newRow("text of a number") << int(T::String) << QVariant(5) << QVariant(QStringLiteral("5"));
        QTest::newRow("text of a list") << int(T::String) << list << QVariant(QString(QLatin1String("")));
        QTest::newRow("number of a text")
            << int(T::Integer) << QVariant(QStringLiteral("12")) << QVariant(12);
        QTest::newRow("number of a word") << int(T::Integer) << QVariant(QStringLiteral("x")) << QVariant(0);
        QTest::newRow("float of a word") << int(T::Float) << QVariant(QStringLiteral("x")) << QVariant(0.0);
        QTest::newRow("boolean of a word")
            << int(T::Boolean) << QVariant(QStringLiteral("true")) << QVariant(true);
        QTest::newRow("boolean of nothing") << int(T::Boolean) << QVariant() << QVariant(false);
        QTest::newRow("time of a text")
            << int(T::Time) << QVariant(QStringLiteral("13:45:30")) << QVariant(QTime(13, 45));
        QTest::newRow("list of a number") << int(T::List) << QVariant(5) << QVariant(QVariantList());
    }
    void values_of_other_types_are_converted_or_left_out()
    {
        QFETCH(int, type);
        QFETCH(QVariant, value);
        QFETCH(QVariant, read);
        QWidget *editor = nkMetadataValueEditors::create(nkMetadataTypes::ValueType(type), m_parent.get());
        nkMetadataValueEditors::fill(editor, value);
        QVERIFY(nkMetadataEditorMemory::areEqual(nkMetadataValueEditors::value(editor), read));
    }

private:
    static void addTypes()
    {
        QTest::addColumn<int>("type");
        for (int type = 0; type < 8; ++type) {
            QTest::addRow("%d", type) << type;
        }
    }

#ifdef __SANITIZE_ADDRESS__
    static constexpr int Rounds = 1000; // more take longer than Qt Test lets a function run
#else
    static constexpr int Rounds = 10000;
#endif

    nkdMetadataEntry entryOf(int type)
    {
        const nkdMetadataEntry entry = m_table->alpha.createEntry(nkMetadataTypes::ValueType(type));
        m_table->model->reload();
        return entry;
    }

    std::unique_ptr<QWidget> open(const nkdMetadataEntry &entry)
    {
        const QModelIndex cell = m_table->cell(entry, ValueColumn);
        std::unique_ptr<QWidget> editor(
            m_delegate.createEditor(m_parent.get(), QStyleOptionViewItem(), cell));
        m_delegate.setEditorData(editor.get(), cell);
        return editor;
    }

    void commit(QWidget *editor, const nkdMetadataEntry &entry)
    {
        m_delegate.setModelData(editor, m_table->model.get(), m_table->cell(entry, ValueColumn));
    }

    void leaveUntouched(const nkdMetadataEntry &entry)
    {
        const std::unique_ptr<QWidget> editor = open(entry);
        commit(editor.get(), entry);
    }

    /// Enter in an editor in which nothing was typed, and Escape in one in which something was.
    void leaveAlone()
    {
        const QByteArray before = ValueSamples::bits(m_entry.getValue());
        press(open(m_entry).get(), Qt::Key_Return);
        QVERIFY(m_commits > 0);
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), before);
        const std::unique_ptr<QWidget> editor = open(m_entry);
        nkMetadataValueEditors::fill(editor.get(), m_typedLast);
        press(editor.get(), Qt::Key_Escape);
        QCOMPARE(m_commits, 0);
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), before);
        QCOMPARE(TableFixture::undoStack()->count(), 0);
    }

    /// Puts a value into the open editor as typing would, and presses Enter.
    void edit(int type, const QVariant &typed)
    {
        m_typedLast = typed;
        const QByteArray before = ValueSamples::bits(m_entry.getValue());
        const std::unique_ptr<QWidget> editor = open(m_entry);
        const QByteArray shown = ValueSamples::bits(nkMetadataValueEditors::shown(editor.get()));
        nkMetadataValueEditors::fill(editor.get(), typed);
        const bool isTouched = ValueSamples::bits(nkMetadataValueEditors::shown(editor.get())) != shown;
        press(editor.get(), Qt::Key_Return);
        const QByteArray after = isTouched ? ValueSamples::bits(ValueSamples::asEdited(type, typed)) : before;
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), after);
        QCOMPARE(TableFixture::undoStack()->count(), after == before ? 0 : 1);
        TableFixture::undoStack()->undo();
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), before);
        TableFixture::undoStack()->redo();
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), after);
    }

    /// A key that the delegate sees before its editor does, as in a view.
    void press(QWidget *editor, Qt::Key key)
    {
        m_commits = 0;
        m_closings = 0;
        editor->installEventFilter(&m_delegate);
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(editor, &press);
        // Enter commits by a queued call.
        QCoreApplication::sendPostedEvents(&m_delegate, QEvent::MetaCall);
        // A list editor finishes by itself besides, and a view hears the first alone.
        QVERIFY(m_closings > 0);
    }

    std::unique_ptr<TableFixture> m_table;
    std::unique_ptr<QWidget> m_parent;
    nkMetadataValueDelegate m_delegate;
    nkdMetadataEntry m_entry;
    QVariant m_typedLast;
    int m_commits = 0;
    int m_closings = 0;
};

NK_TEST_MAIN(TestValueRoundTrips)
#include "test_value_round_trips.moc"
