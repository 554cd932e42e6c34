#include "TableFixture.h"

#include <ModalAnswer.h>
#include <TestMain.h>
#include <nkKernelServices/nkMetadataService.h>

#include <QAbstractButton>
#include <QDateTime>

using namespace nkMetadataKeyValue;

class TestCellCommit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_table = std::make_unique<TableFixture>();
        m_table->show({m_table->alpha, m_table->beta});
    }
    void cleanup() { m_table.reset(); }

    void a_value_is_written_unchanged_in_one_step()
    {
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        QVERIFY(commit(name, ValueColumn, QStringLiteral("new")));
        QCOMPARE(name.getValue(), QVariant(QStringLiteral("new")));
        QCOMPARE(m_table->undoStack()->count(), 1);
        QCOMPARE(m_table->cell(name, ValueColumn).data().toString(), QStringLiteral("new"));
        m_table->undoStack()->undo();
        QCOMPARE(name.getValue(), QVariant(QStringLiteral("first")));
    }

    void the_value_a_cell_has_makes_no_step()
    {
        QVERIFY(commit(TableFixture::entry(m_table->alpha, "count"), ValueColumn, 7));
        QCOMPARE(m_table->undoStack()->count(), 0);
    }

    void a_value_the_host_converts_shows_as_stored()
    {
        const nkdMetadataEntry count = TableFixture::entry(m_table->alpha, "count");
        QVERIFY(commit(count, ValueColumn, QStringLiteral("42")));
        const QVariant datum = m_table->cell(count, ValueColumn).data(Qt::UserRole);
        QCOMPARE(datum.userType(), int(QMetaType::Int));
        QCOMPARE(datum, QVariant(42));
    }

    void a_value_the_host_refuses_leaves_the_cell_as_it_was()
    {
        const nkdMetadataEntry count = TableFixture::entry(m_table->alpha, "count");
        QVERIFY(commit(count, ValueColumn, QStringLiteral("no number")));
        QCOMPARE(count.getValue(), QVariant(7));
        QCOMPARE(m_table->cell(count, ValueColumn).data(Qt::UserRole), QVariant(7));
        QCOMPARE(m_table->undoStack()->count(), 0);
    }

    void a_type_is_written_and_brings_its_value()
    {
        const nkdMetadataEntry count = TableFixture::entry(m_table->alpha, "count");
        QVERIFY(commit(count, TypeColumn, QVariant::fromValue(nkMetadataTypes::String)));
        QCOMPARE(count.getValueType(), nkMetadataTypes::String);
        QCOMPARE(m_table->cell(count, TypeColumn).data().toString(), QStringLiteral("String"));
        QCOMPARE(m_table->cell(count, ValueColumn).data(Qt::UserRole).userType(), int(QMetaType::QString));
    }

    void a_type_that_cannot_be_read_counts_as_string()
    {
        const nkdMetadataEntry count = TableFixture::entry(m_table->alpha, "count");
        QVERIFY(commit(count, TypeColumn, QVariantList{1, 2}));
        QCOMPARE(count.getValueType(), nkMetadataTypes::String);
    }

    void a_colour_goes_to_the_set_and_only_under_its_role()
    {
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        QVERIFY(m_table->model->setData(m_table->cell(name, IconColumn), QColor(Qt::green), ColorRole));
        QCOMPARE(m_table->alpha.getColor(), QColor(Qt::green));
        QCOMPARE(m_table->undoStack()->count(), 1);
        QVERIFY(commit(name, IconColumn, QColor(Qt::black)));
        QCOMPARE(m_table->alpha.getColor(), QColor(Qt::green));
    }

    void the_assignment_writes_nothing()
    {
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        commit(name, AssignmentColumn, QStringLiteral("Renamed"));
        QCOMPARE(m_table->alpha.getName(), QStringLiteral("Alpha"));
        QCOMPARE(m_table->cell(name, AssignmentColumn).data().toString(), QStringLiteral("Alpha"));
        QCOMPARE(m_table->undoStack()->count(), 0);
    }

    void a_key_is_renamed_in_one_step_with_its_title()
    {
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        QVERIFY(commit(name, KeyColumn, QStringLiteral("title")));
        QCOMPARE(name.getKey(), QStringLiteral("title"));
        QCOMPARE(m_table->undoStack()->count(), 1);
        QCOMPARE(m_table->undoStack()->undoText(), QStringLiteral("Change key name"));
    }

    void its_own_key_changes_nothing()
    {
        QVERIFY(commit(TableFixture::entry(m_table->alpha, "name"), KeyColumn, QStringLiteral("name")));
        QCOMPARE(m_table->undoStack()->count(), 0);
    }

    void the_key_of_another_set_is_free()
    {
        nkdMetadataEntry entry = m_table->beta.createEntry(nkMetadataTypes::String);
        m_table->model->reload();
        const int steps = m_table->undoStack()->count();
        QVERIFY(commit(entry, KeyColumn, QStringLiteral("count")));
        QCOMPARE(entry.getKey(), QStringLiteral("count"));
        QCOMPARE(m_table->undoStack()->count(), steps + 1);
    }

    void an_empty_key_leaves_the_cell_as_it_was()
    {
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        QVERIFY(commit(name, KeyColumn, QString()));
        QCOMPARE(name.getKey(), QStringLiteral("name"));
        QCOMPARE(m_table->cell(name, KeyColumn).data(Qt::UserRole).toString(), QStringLiteral("name"));
        QCOMPARE(m_table->undoStack()->count(), 0);
    }

    void a_taken_key_asks()
    {
        const ModalAnswer cancel = ModalAnswer::button(QMessageBox::Cancel);
        commit(TableFixture::entry(m_table->alpha, "name"), KeyColumn, QStringLiteral("count"));
        const ModalRecord box = cancel.record();
        QCOMPARE(box.icon, QMessageBox::Warning);
        QCOMPARE(box.title, QStringLiteral("Change key name"));
        QCOMPARE(box.text, QStringLiteral("The key name is already assigned.\nPress \"Cancel\" for no "
                                          "change. Press \"Replace\" to overwrite the existing entry."));
        QCOMPARE(QSet<QString>(box.buttons.begin(), box.buttons.end()), (QSet<QString>{"Cancel", "Replace"}));
        QCOMPARE(box.defaultButton, QStringLiteral("Cancel"));
    }

    void the_question_is_a_modal_box_of_plain_text_without_parent()
    {
        Qt::TextFormat format = Qt::AutoText;
        bool isModal = false;
        QWidget *parent = nullptr;
        QMessageBox::ButtonRole role = QMessageBox::InvalidRole;
        const ModalAnswer look([&](QDialog *dialog) {
            auto *box = qobject_cast<QMessageBox *>(dialog);
            format = box->textFormat();
            isModal = box->isModal();
            parent = box->parentWidget();
            role = roleOfReplace(box);
            box->reject();
        });
        commit(TableFixture::entry(m_table->alpha, "name"), KeyColumn, QStringLiteral("count"));
        QCOMPARE(format, Qt::PlainText);
        QVERIFY(isModal);
        QVERIFY(!parent);
        QCOMPARE(role, QMessageBox::AcceptRole);
    }

    void cancel_keeps_both_entries_and_the_old_key_data()
    {
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("Cancel") << false;
        QTest::newRow("closed") << true;
    }
    void cancel_keeps_both_entries_and_the_old_key()
    {
        QFETCH(bool, isClosed);
        const ModalAnswer answer = isClosed ? ModalAnswer::reject()
                                            : ModalAnswer::button(QMessageBox::Cancel);
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        commit(name, KeyColumn, QStringLiteral("count"));
        QVERIFY(answer.given());
        QCOMPARE(TableFixture::keys(m_table->alpha), (QStringList{"name", "count", "checked"}));
        QCOMPARE(m_table->cell(name, KeyColumn).data(Qt::UserRole).toString(), QStringLiteral("name"));
        QCOMPARE(m_table->cell(name, KeyColumn).data().toString(), QStringLiteral("name"));
        QCOMPARE(m_table->undoStack()->count(), 0);
    }

    void replace_leaves_the_edited_entry_and_undoes_as_one()
    {
        const ModalAnswer replace = ModalAnswer::button(QStringLiteral("Replace"));
        const nkdMetadataEntry name = TableFixture::entry(m_table->alpha, "name");
        commit(name, KeyColumn, QStringLiteral("count"));
        QVERIFY(replace.given());
        QCOMPARE(TableFixture::keys(m_table->alpha), (QStringList{"count", "checked"}));
        QCOMPARE(TableFixture::entry(m_table->alpha, "count"), name);
        QCOMPARE(name.getValue(), QVariant(QStringLiteral("first")));
        QCOMPARE(name.getValueType(), nkMetadataTypes::String);
        QCOMPARE(m_table->undoStack()->count(), 1);
        QCOMPARE(m_table->undoStack()->undoText(), QStringLiteral("Change key name"));
        m_table->undoStack()->undo();
        QCOMPARE(TableFixture::keys(m_table->alpha), (QStringList{"name", "count", "checked"}));
        QCOMPARE(TableFixture::entry(m_table->alpha, "count").getValue(), QVariant(7));
    }

    void a_set_that_is_not_editable_takes_no_edit()
    {
        m_table->show({m_table->locked});
        const nkdMetadataEntry note = TableFixture::entry(m_table->locked, "note");
        for (int column = 0; column < ColumnCount; ++column) {
            QVERIFY(!commit(note, column, QStringLiteral("x")));
        }
        QCOMPARE(note.getValue(), QVariant(QStringLiteral("fixed")));
    }

private:
    static QMessageBox::ButtonRole roleOfReplace(const QMessageBox *box)
    {
        const QList<QAbstractButton *> buttons = box->buttons();
        for (QAbstractButton *button : buttons) {
            if (button->text() == QLatin1String("Replace")) {
                return box->buttonRole(button);
            }
        }
        return QMessageBox::InvalidRole;
    }

    bool commit(const nkdMetadataEntry &entry, int column, const QVariant &value)
    {
        return m_table->model->setData(m_table->cell(entry, column), value, Qt::UserRole);
    }

    std::unique_ptr<TableFixture> m_table;
};

NK_TEST_MAIN(TestCellCommit)
#include "test_cell_commit.moc"
