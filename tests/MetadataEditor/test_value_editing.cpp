#include "TableFixture.h"
#include "ValueSamples.h"

#include "table/nkMetadataKeyValueTreeView.h"
#include "table/nkMetadataValueDelegate.h"
#include "table/nkMetadataValueEditors.h"

#include <TestMain.h>
#include <nkQt4Ext/QNKComboBox.h>

#include <QDateTimeEdit>

using namespace nkMetadataKeyValue;

/// Values of every type through editors in the table: opened and left with Enter or Escape, edited, undone and
/// redone. Compared by type and bits.
class TestValueEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_table = std::make_unique<TableFixture>();
        m_table->show({m_table->alpha});
        // It reads the whole model at every step, which is another test's business.
        m_table->tester.reset();
        m_view = std::make_unique<nkMetadataKeyValueTreeView>();
        m_view->setModel(m_table->model.get());
        m_view->setItemDelegateForColumn(ValueColumn, &m_delegate);
        m_view->resize(500, 300);
        m_view->show();
        QCoreApplication::processEvents();
    }
    void cleanupTestCase()
    {
        m_view.reset();
        m_table.reset();
    }

    void values_stay_through_their_editors_data() { addTypes(); }
    void values_stay_through_their_editors()
    {
        QFETCH(int, type);
        QRandomGenerator source(7);
        m_entry = m_table->alpha.createEntry(nkMetadataTypes::ValueType(type));
        m_table->model->reload();
        const QVariantList boundaries = ValueSamples::boundaries(type);
        for (const QVariant &value : boundaries) {
            walk(type, value, ValueSamples::random(type, source));
        }
        for (int i = 0; i < Rounds && !QTest::currentTestFailed(); ++i) {
            walk(type, ValueSamples::random(type, source), ValueSamples::random(type, source));
        }
    }

private:
    /// Ten thousand a type go through the delegate alone in TestValueRoundTrips; a view takes two milliseconds for each.
    static constexpr int Rounds = 200;

    static void addTypes()
    {
        QTest::addColumn<int>("type");
        const char *const names[] = {"string", "integer", "float",  "boolean",
                                     "time",   "date",    "moment", "list"};
        for (int type = 0; type < 8; ++type) {
            QTest::newRow(names[type]) << type;
        }
    }

    void walk(int kind, const QVariant &given, const QVariant &typed)
    {
        m_entry.setValue(given);
        // The document keeps no difference between an empty text and none.
        const QVariant value = m_entry.getValue();
        QCOMPARE(value.userType(), given.userType());
        QCOMPARE(value, given);
        QUndoStack *stack = TableFixture::undoStack();
        stack->clear();
        m_table->model->reloadIndices({cell()});

        open();
        press(Qt::Key_Return);
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), ValueSamples::bits(value));

        open();
        type(typed);
        press(Qt::Key_Escape);
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), ValueSamples::bits(value));
        QCOMPARE(stack->count(), 0);

        edit(kind, value, typed);
    }

    void edit(int kind, const QVariant &value, const QVariant &typed)
    {
        open();
        const QByteArray shown = ValueSamples::bits(nkMetadataValueEditors::shown(m_editor));
        type(typed);
        auto *combo = qobject_cast<QComboBox *>(m_editor.data());
        const bool isTouched = combo || ValueSamples::bits(nkMetadataValueEditors::shown(m_editor)) != shown;
        press(Qt::Key_Return);
        const QVariant edited = isTouched ? ValueSamples::asEdited(kind, typed) : value;
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), ValueSamples::bits(edited));
        QUndoStack *stack = TableFixture::undoStack();
        QCOMPARE(stack->count(), ValueSamples::bits(edited) == ValueSamples::bits(value) ? 0 : 1);
        stack->undo();
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), ValueSamples::bits(value));
        stack->redo();
        QCOMPARE(ValueSamples::bits(m_entry.getValue()), ValueSamples::bits(edited));
    }

    QModelIndex cell() const { return m_table->cell(m_entry, ValueColumn); }

    void open()
    {
        m_view->setCurrentIndex(cell());
        m_view->edit(cell());
        m_editor = m_view->indexWidget(cell());
        QVERIFY(m_editor);
    }

    /// Makes the editor show a value; in an open list its item becomes the current one.
    void type(const QVariant &value)
    {
        if (auto *combo = qobject_cast<QComboBox *>(m_editor.data())) {
            combo->view()->setCurrentIndex(combo->model()->index(int(value.toBool()), 0));
        } else {
            nkMetadataValueEditors::fill(m_editor, value);
        }
    }

    /// Presses a key where a person's key press would arrive, until the editor is closed.
    void press(Qt::Key key)
    {
        const QPointer<QWidget> editor = m_editor;
        for (int i = 0; i < 2 && editor && m_view->indexWidget(cell()); ++i) {
            auto *combo = qobject_cast<QComboBox *>(m_editor);
            const bool isInList = combo && combo->view()->isVisible();
            QWidget *target = isInList ? combo->view() : m_editor;
            QTest::keyClick(target, key);
            // Editors commit and go by queued calls.
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        QVERIFY(!editor);
    }

    std::unique_ptr<TableFixture> m_table;
    std::unique_ptr<nkMetadataKeyValueTreeView> m_view;
    nkMetadataValueDelegate m_delegate;
    nkdMetadataEntry m_entry;
    QPointer<QWidget> m_editor;
};

NK_TEST_MAIN(TestValueEditing)
#include "test_value_editing.moc"
