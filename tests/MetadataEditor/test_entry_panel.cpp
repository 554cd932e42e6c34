#include "EditingFixture.h"

#include "actions/nkMetadataActions.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServicesGUI/nkBaseControl.h>
#include <nkKernelServicesGUI/nkPropertyEditorWidget.h>

#include <QFrame>
#include <QPushButton>

/// The panel of the selected entries below the table, in the window.
class TestEntryPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        kernel::Document::the().clear();
        m_editor = std::make_unique<EditingFixture>();
        m_editor->show();
        m_editor->select({m_editor->alpha, m_editor->beta, m_editor->locked});
    }
    void cleanup()
    {
        QNKViewBase::commitOpenEditors();
        m_editor.reset();
    }

    void is_there_exactly_while_the_table_has_a_selection()
    {
        QVERIFY(frame()->isHidden());
        selectRows({{m_editor->alpha, "name"}});
        QVERIFY(frame()->isVisible());
        view()->selectionModel()->clear();
        QVERIFY(frame()->isHidden());
        QCOMPARE(panel()->getCurrentObjects().size(), 0);
    }

    void is_part_of_the_window_and_keeps_the_table_as_wide()
    {
        QCOMPARE(panel()->parentWidget(), frame());
        QCOMPARE(frame()->layout()->contentsMargins(), QMargins());
        QCOMPARE(panel()->layout()->contentsMargins(), QMargins());
        const auto *table = m_editor->window->findChild<QFrame *>(QStringLiteral("m_keyValueFrame"));
        QVERIFY(panel()->minimumWidth() > 0);
        QCOMPARE(table->minimumWidth(), panel()->minimumWidth());
    }

    void is_as_high_as_its_controls()
    {
        selectRows({{m_editor->alpha, "name"}});
        WindowFixture::settle();
        QCOMPARE(frame()->minimumHeight(), frame()->maximumHeight());
        QCOMPARE(frame()->height(), panel()->height());
        QVERIFY(panel()->height() >= panel()->minimumSizeHint().height());
    }

    void shows_the_selected_entry()
    {
        selectRows({{m_editor->alpha, "name"}});
        QCOMPARE(edit("key")->text(), QStringLiteral("name"));
        QCOMPARE(edit("value")->text(), QStringLiteral("first"));
        QCOMPARE(control("valueType")->findChild<QComboBox *>()->currentText(), QStringLiteral("String"));
    }

    void marks_what_differs_and_edits_all_in_one_step()
    {
        selectRows({{m_editor->alpha, "name"}, {m_editor->beta, "name"}});
        QVERIFY(!mark("key")->isVisible());
        QVERIFY(mark("value")->isVisible());
        auto *button = control("value")->findChild<QPushButton *>(QStringLiteral("DifferingButton"));
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::keyClicks(edit("value"), QStringLiteral("both"));
        QTest::keyClick(edit("value"), Qt::Key_Return);
        QCOMPARE(valueOf(m_editor->alpha), QStringLiteral("both"));
        QCOMPARE(valueOf(m_editor->beta), QStringLiteral("both"));
        QCOMPARE(EditingFixture::undoStack()->count(), 1);
        WindowFixture::settle();
        QVERIFY(!mark("value")->isVisible());
        QCOMPARE(selectedRowCount(), 2);
    }

    void offers_what_the_selection_allows_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QStringList>("enabled");
        QTest::addColumn<bool>("panelEnabled");
        const QStringList all{"key", "value", "valueType"};
        QTest::newRow("one entry") << QStringList{"Alpha name"} << all << true;
        QTest::newRow("of two sets") << QStringList{"Alpha name", "Beta name"} << all << true;
        QTest::newRow("two of one set")
            << QStringList{"Alpha name", "Alpha count"} << QStringList{"value", "valueType"} << true;
        QTest::newRow("a tag") << QStringList{"Alpha checked"} << QStringList{"key"} << true;
        QTest::newRow("a tag and another's entry")
            << QStringList{"Alpha checked", "Beta name"} << QStringList{"key"} << true;
        QTest::newRow("a tag and its set's entry")
            << QStringList{"Alpha checked", "Alpha name"} << QStringList() << true;
        QTest::newRow("locked") << QStringList{"Locked fixed"} << all << false;
        QTest::newRow("locked and not") << QStringList{"Locked fixed", "Beta name"} << all << false;
    }
    void offers_what_the_selection_allows()
    {
        QFETCH(QStringList, keys);
        QFETCH(bool, panelEnabled);
        QList<QPair<nkdMetadataSet, QString>> rows;
        for (const QString &key : keys) {
            rows.append({setNamed(key.section(QLatin1Char(' '), 0, 0)), key.section(QLatin1Char(' '), 1)});
        }
        selectRows(rows);
        QStringList enabled;
        for (const char *property : {"key", "value", "valueType"}) {
            if (control(property)->isEnabledTo(panel())) {
                enabled.append(QLatin1String(property));
            }
        }
        QTEST(enabled, "enabled");
        QCOMPARE(panel()->isEnabled(), panelEnabled);
    }

    void a_smaller_selection_gives_the_controls_back()
    {
        selectRows({{m_editor->alpha, "checked"}, {m_editor->alpha, "name"}, {m_editor->locked, "fixed"}});
        selectRows({{m_editor->beta, "name"}});
        QVERIFY(control("key")->isEnabled() && control("value")->isEnabled());
        QVERIFY(control("valueType")->isEnabled());
    }

    void locking_the_set_closes_the_panel_to_edits()
    {
        selectRows({{m_editor->alpha, "name"}});
        m_editor->alpha.setLocked(true);
        // A lock of a set is no change of an entry.
        m_editor->window->onUpdateScheduled(nkMetadataUpdate::PropertyPanel);
        QVERIFY(!panel()->isEnabled());
    }

    void follows_the_entry_with_the_next_delivery()
    {
        selectRows({{m_editor->alpha, "name"}});
        WindowFixture::entry(m_editor->alpha, "name").setValue(QStringLiteral("other"));
        QCOMPARE(edit("value")->text(), QStringLiteral("first"));
        WindowFixture::settle();
        QCOMPARE(edit("value")->text(), QStringLiteral("other"));
    }

    void is_not_refreshed_by_deliveries_while_it_is_not_seen()
    {
        selectRows({{m_editor->alpha, "name"}});
        m_editor->window->hide();
        WindowFixture::entry(m_editor->alpha, "name").setValue(QStringLiteral("other"));
        m_editor->window->updatePropertyEditor(false);
        QCOMPARE(edit("value")->text(), QStringLiteral("first"));
        m_editor->window->updatePropertyEditor(true);
        QCOMPARE(edit("value")->text(), QStringLiteral("other"));
    }

    void catches_up_when_the_window_is_shown_again()
    {
        selectRows({{m_editor->alpha, "name"}});
        m_editor->window->hide();
        WindowFixture::entry(m_editor->alpha, "name").setValue(QStringLiteral("other"));
        WindowFixture::settle();
        QCOMPARE(edit("value")->text(), QStringLiteral("first"));
        m_editor->window->show();
        WindowFixture::settle();
        QCOMPARE(edit("value")->text(), QStringLiteral("other"));
    }

    void goes_with_the_deleted_entries()
    {
        selectRows({{m_editor->alpha, "name"}, {m_editor->beta, "name"}});
        m_editor->window->deleteEntries();
        WindowFixture::settle();
        QVERIFY(frame()->isHidden());
    }

    void typed_text_is_committed_first_data()
    {
        QTest::addColumn<int>("event");
        QTest::newRow("another row") << 0;
        QTest::newRow("another set") << 1;
        QTest::newRow("saving or closing") << 2;
        QTest::newRow("deselecting") << 3;
        QTest::newRow("a command of the window") << 4;
    }
    void typed_text_is_committed_first()
    {
        QFETCH(int, event);
        selectRows({{m_editor->alpha, "name"}});
        type("value", QStringLiteral("typed"));
        QCOMPARE(valueOf(m_editor->alpha), QStringLiteral("first"));
        happen(event);
        QCOMPARE(valueOf(m_editor->alpha), QStringLiteral("typed"));
        QCOMPARE(EditingFixture::undoStack()->count(), 1);
        QCOMPARE(valueOf(m_editor->beta), QStringLiteral("second"));
    }

    void escape_restores()
    {
        selectRows({{m_editor->alpha, "name"}});
        type("value", QStringLiteral("typed"));
        QTest::keyClick(edit("value"), Qt::Key_Escape);
        happen(0);
        QCOMPARE(valueOf(m_editor->alpha), QStringLiteral("first"));
        QCOMPARE(EditingFixture::undoStack()->count(), 0);
    }

    void typed_text_outlives_deliveries()
    {
        selectRows({{m_editor->alpha, "name"}});
        type("value", QStringLiteral("typ"));
        WindowFixture::entry(m_editor->beta, "name").setValue(QStringLiteral("elsewhere"));
        m_editor->gamma.setName(QStringLiteral("Delta"));
        WindowFixture::settle();
        QVERIFY(edit("value")->hasFocus());
        QTest::keyClicks(edit("value"), QStringLiteral("ed"));
        QTest::keyClick(edit("value"), Qt::Key_Return);
        QCOMPARE(valueOf(m_editor->alpha), QStringLiteral("typed"));
    }

    void keys_typed_in_the_panel_are_no_commands()
    {
        selectRows({{m_editor->alpha, "name"}});
        edit("value")->setFocus();
        edit("value")->selectAll();
        QTest::keyClick(edit("value"), Qt::Key_Delete);
        QTest::keyClick(edit("value"), Qt::Key_Backspace);
        QVERIFY(!WindowFixture::entry(m_editor->alpha, "name").isNull());
        QCOMPARE(edit("value")->text(), QString());
        QTest::keyClick(edit("value"), Qt::Key_Escape);
    }

    void a_new_key_keeps_the_row_selected()
    {
        selectRows({{m_editor->alpha, "name"}});
        type("key", QStringLiteral("title"));
        QTest::keyClick(edit("key"), Qt::Key_Return);
        WindowFixture::settle();
        QVERIFY(!WindowFixture::entry(m_editor->alpha, "title").isNull());
        QCOMPARE(selectedRowCount(), 1);
        QCOMPARE(edit("key")->text(), QStringLiteral("title"));
    }

    void leaves_the_current_row_in_sight_when_it_appears()
    {
        for (int i = 0; i < 60; ++i) {
            m_editor->gamma.setValue(QStringLiteral("key %1").arg(i), i);
        }
        m_editor->select({m_editor->gamma});
        WindowFixture::settle();
        nkMetadataActions::instance()->createTagEntryAction()->trigger();
        WindowFixture::settle();
        QTRY_VERIFY(view()->viewport()->rect().contains(view()->visualRect(view()->currentIndex())));
        QVERIFY(m_editor->editor());
        QVERIFY(frame()->isVisible());
    }

    void the_window_may_end_while_rows_are_selected()
    {
        selectRows({{m_editor->alpha, "name"}, {m_editor->beta, "name"}});
        type("key", QStringLiteral("title"));
        m_editor.reset();
        QVERIFY(!nkMetadataEditorModule::instance());
    }

private:
    nkMetadataKeyValueTreeView *view() const { return m_editor->view(); }
    QFrame *frame() const { return m_editor->window->findChild<QFrame *>(QStringLiteral("m_propertyFrame")); }
    nkPropertyEditorWidget *panel() const { return m_editor->window->findChild<nkPropertyEditorWidget *>(); }
    nkBaseControl *control(const char *property) const
    {
        return panel()->getControl(QLatin1String(property));
    }
    QLineEdit *edit(const char *property) const { return control(property)->findChild<QLineEdit *>(); }
    QWidget *mark(const char *property) const
    {
        return control(property)->findChild<QWidget *>(QStringLiteral("DifferingMark"));
    }

    static QString valueOf(const nkdMetadataSet &set)
    {
        return WindowFixture::entry(set, "name").getValue().toString();
    }

    nkdMetadataSet setNamed(const QString &name) const
    {
        return name == QLatin1String("Alpha")  ? m_editor->alpha
               : name == QLatin1String("Beta") ? m_editor->beta
                                               : m_editor->locked;
    }

    int selectedRowCount() const { return view()->selectionModel()->selectedRows(1).size(); }

    void selectRows(const QList<QPair<nkdMetadataSet, QString>> &rows)
    {
        QItemSelection selection;
        for (const auto &row : rows) {
            const QModelIndex index = rowOf(row.first, row.second);
            QVERIFY(index.isValid());
            selection.select(index, index);
        }
        view()->selectionModel()->select(selection,
                                         QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        QCOMPARE(selectedRowCount(), rows.size());
    }

    QModelIndex rowOf(const nkdMetadataSet &set, const QString &key) const
    {
        const QAbstractItemModel *model = view()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, 1);
            if (index.data(Qt::UserRole + 6).value<nkdMetadataSet>() == set
                && model->index(row, 2).data().toString() == key) {
                return index;
            }
        }
        return QModelIndex();
    }

    void type(const char *property, const QString &text)
    {
        edit(property)->setFocus();
        edit(property)->selectAll();
        QTest::keyClicks(edit(property), text);
    }

    void happen(int event)
    {
        switch (event) {
        case 0:
            return selectRows({{m_editor->beta, "name"}});
        case 1:
            return m_editor->select({m_editor->beta});
        case 2:
            return QNKViewBase::commitOpenEditors();
        case 3:
            return view()->selectionModel()->clearSelection();
        default:
            // As a click on a tree does before any command.
            m_editor->tree()->getTreeView()->setFocus();
            return nkMetadataActions::instance()->selectAllAction()->trigger();
        }
    }

    std::unique_ptr<EditingFixture> m_editor;
};

NK_TEST_MAIN(TestEntryPanel)
#include "test_entry_panel.moc"
