#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>
#include <nkKernelServicesGUI/nkMetadataVariantDelegate.h>
#include <nkQt4Ext/QNKStringCompleterLineEdit.h>

#include <QPushButton>
#include <QStandardItemModel>
#include <QTreeWidget>

class TestConflicts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_scene = GuiScene::load(); }

    void entries_with_the_same_keys_conflict_in_the_sets_order()
    {
        const QList<nkdMetadataEntry> conflicts = nkMetadataGUIUtils::getConflictingEntries(
            nkdMetadataSet(m_scene.common),
            {GuiScene::entry(m_scene.common, "checked"), GuiScene::entry(m_scene.second, "colour"),
             GuiScene::entry(m_scene.locked, "note")});
        QCOMPARE(conflicts, (QList<nkdMetadataEntry>{GuiScene::entry(m_scene.common, "colour"),
                                                     GuiScene::entry(m_scene.common, "checked")}));
    }

    void keys_are_compared_case_sensitively()
    {
        GuiScene::entry(m_scene.second, "colour").setKey(QStringLiteral("Colour"));
        QVERIFY(conflictsOfCommon({GuiScene::entry(m_scene.second, "Colour")}).isEmpty());
    }

    void nothing_conflicts_in_a_set_that_takes_nothing()
    {
        const nkdMetadataEntry note = GuiScene::entry(m_scene.locked, "note");
        QVERIFY(nkMetadataGUIUtils::getConflictingEntries(nkdMetadataSet(m_scene.locked), {note}).isEmpty());
        QVERIFY(nkMetadataGUIUtils::getConflictingEntries(nkdMetadataSet(), {note}).isEmpty());
    }

    void null_and_dead_entries_conflict_with_nothing()
    {
        const nkdMetadataEntry colour = GuiScene::entry(m_scene.second, "colour");
        nkMetadataService::the().deleteSets({nkdMetadataSet(m_scene.second)});
        QVERIFY(conflictsOfCommon({nkdMetadataEntry(), colour}).isEmpty());
    }

    void clipboard_entries_conflict()
    {
        nkMetadataService::the().copyEntries({GuiScene::entry(m_scene.second, "colour")});
        QCOMPARE(conflictsOfCommon(nkMetadataService::the().getClipboardEntries()).size(), 1);
    }

    void the_warning_lists_set_key_present_and_pasted_value()
    {
        nkMetadataService::the().copyEntries({GuiScene::entry(m_scene.second, "colour")});
        QStringList listed;
        const ModalAnswer answer([&](QDialog *dialog) {
            listed = listedBy(dialog);
            dialog->reject();
        });
        QCOMPARE(warn(), nkMetadataGUIUtils::Cancel);
        QCOMPARE(listed, (QStringList{"Common", "colour", "red", "blue"}));
    }

    void the_buttons_answer_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("result");
        QTest::newRow("cancel") << QStringLiteral("Cancel") << 0;
        QTest::newRow("keep both") << QStringLiteral("Paste anyway") << 1;
        QTest::newRow("replace") << QStringLiteral("Replace") << 2;
    }
    void the_buttons_answer()
    {
        QFETCH(QString, button);
        const ModalAnswer answer([&](QDialog *dialog) {
            for (QPushButton *candidate : dialog->findChildren<QPushButton *>()) {
                if (candidate->text().remove(QLatin1Char('&')) == button) {
                    candidate->click();
                }
            }
        });
        QTEST(int(warn()), "result");
    }

    void return_cancels()
    {
        const ModalAnswer answer([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
        QCOMPARE(warn(), nkMetadataGUIUtils::Cancel);
    }

    void nothing_to_ask_asks_nothing()
    {
        QCOMPARE(nkMetadataGUIUtils::showConflictingEntriesWarning({}), nkMetadataGUIUtils::Cancel);
    }

    void foreign_text_is_shown_as_text()
    {
        nkdMetadataSet(m_scene.common).setName(QStringLiteral("<img src='file:///x'>"));
        GuiScene::entry(m_scene.common, "colour").setValue(QStringLiteral("<b>\nbold"));
        QStringList listed;
        QString toolTip;
        const ModalAnswer answer([&](QDialog *dialog) {
            listed = listedBy(dialog);
            toolTip = dialog->findChild<QTreeWidget *>()->topLevelItem(0)->toolTip(2);
            dialog->reject();
        });
        warn();
        QCOMPARE(listed.at(0), QStringLiteral("<img src='file:///x'>"));
        QCOMPARE(listed.at(2), QStringLiteral("<b> bold"));
        QVERIFY(toolTip.contains(QStringLiteral("&lt;b&gt;")));
    }

    void the_line_edit_belongs_to_its_parent_and_takes_long_texts()
    {
        QWidget parent;
        QNKStringCompleterLineEdit *edit = nkMetadataGUIUtils::createMetadataLineEdit(&parent);
        QCOMPARE(edit->parentWidget(), &parent);
        const QString text(100000, QLatin1Char('x'));
        edit->setText(text);
        QCOMPARE(edit->text(), text);
    }

    void texts_in_lists_are_edited_with_completion()
    {
        QStandardItemModel model(2, 1);
        model.setData(model.index(0, 0), QStringLiteral("text"), Qt::UserRole);
        model.setData(model.index(1, 0), 7, Qt::UserRole);
        QWidget parent;
        const nkMetadataVariantDelegate delegate;
        QWidget *text = delegate.createEditor(&parent, QStyleOptionViewItem(), model.index(0, 0));
        QVERIFY(qobject_cast<QNKStringCompleterLineEdit *>(text));
        QWidget *number = delegate.createEditor(&parent, QStyleOptionViewItem(), model.index(1, 0));
        QVERIFY(number && !qobject_cast<QLineEdit *>(number));
        delegate.setEditorData(text, model.index(0, 0));
        static_cast<QLineEdit *>(text)->setText(QStringLiteral("other"));
        delegate.setModelData(text, &model, model.index(0, 0));
        QCOMPARE(model.index(0, 0).data(Qt::UserRole), QVariant(QStringLiteral("other")));
    }

private:
    QList<nkdMetadataEntry> conflictsOfCommon(const QList<nkdMetadataEntry> &entries) const
    {
        return nkMetadataGUIUtils::getConflictingEntries(nkdMetadataSet(m_scene.common), entries);
    }

    nkMetadataGUIUtils::ConflictResult warn() const
    {
        return nkMetadataGUIUtils::showConflictingEntriesWarning(
            {{m_scene.common, {GuiScene::entry(m_scene.common, "colour")}}});
    }

    static QStringList listedBy(const QDialog *dialog)
    {
        const QTreeWidgetItem *row = dialog->findChild<QTreeWidget *>()->topLevelItem(0);
        return {row->text(0), row->text(1), row->text(2), row->text(3)};
    }

    GuiScene m_scene;
};

NK_TEST_MAIN(TestConflicts)
#include "test_conflicts.moc"
