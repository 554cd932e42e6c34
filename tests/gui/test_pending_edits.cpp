#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServicesGUI/nkBaseControl.h>
#include <nkKernelServicesGUI/nkPropertyEditorWidget.h>
#include <nkQt4Ext/QNKColorDialog.h>
#include <nkQt4Ext/QNKTreeView.h>
#include <nkQt4Ext/QNKVariantListWidget.h>
#include <nkQt4Ext/QNKViewBase.h>

#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QUndoStack>

/// What is being typed in a property panel is reached by whoever has open editors committed.
class TestPendingEdits : public QObject
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

    void typed_text_is_committed_with_the_open_editors()
    {
        show({colour()});
        type(edit("value"), QStringLiteral("green"));
        QCOMPARE(colour().getValue().toString(), QStringLiteral("red"));
        QNKViewBase::commitOpenEditors();
        QCOMPARE(colour().getValue().toString(), QStringLiteral("green"));
        QCOMPARE(undoCount(), 1);
        QVERIFY(edit("value")->hasFocus());
        QNKViewBase::commitOpenEditors();
        QCOMPARE(undoCount(), 1);
    }

    void a_control_can_be_typed_into_again_after_the_commit()
    {
        show({colour()});
        type(edit("value"), QStringLiteral("green"));
        QNKViewBase::commitOpenEditors();
        type(edit("value"), QStringLiteral("black"));
        QNKViewBase::commitOpenEditors();
        QCOMPARE(colour().getValue().toString(), QStringLiteral("black"));
    }

    void nothing_is_written_where_nothing_was_typed()
    {
        show({colour()});
        edit("value")->setFocus();
        QNKViewBase::commitOpenEditors();
        QCOMPARE(undoCount(), 0);
    }

    void text_given_up_with_escape_is_not_committed()
    {
        show({colour()});
        type(edit("value"), QStringLiteral("green"));
        QTest::keyClick(edit("value"), Qt::Key_Escape);
        QNKViewBase::commitOpenEditors();
        QCOMPARE(edit("value")->text(), QStringLiteral("red"));
        QCOMPARE(undoCount(), 0);
    }

    void an_undo_undoes_what_was_just_typed()
    {
        show({colour()});
        type(edit("value"), QStringLiteral("green"));
        // As the host does on its undo command.
        QNKViewBase::commitOpenEditors();
        QVERIFY(kernel::Document::the().undo());
        show({colour()});
        QCOMPARE(edit("value")->text(), QStringLiteral("red"));
    }

    void a_selection_elsewhere_commits_first()
    {
        QStandardItemModel rows(2, 1);
        QNKTreeView view;
        view.setModel(&rows);
        show({colour()});
        type(edit("value"), QStringLiteral("green"));
        QString valueThen;
        connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, m_panel.get(),
                [&] { valueThen = colour().getValue().toString(); });
        view.setCurrentIndex(rows.index(1, 0));
        QCOMPARE(valueThen, QStringLiteral("green"));
    }

    void typed_numbers_are_committed_in_one_step()
    {
        const nkdMetadataEntry count = GuiScene::entry(m_scene.common, "count");
        show({count});
        auto *box = control("value")->findChild<QSpinBox *>();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, QStringLiteral("12"));
        QNKViewBase::commitOpenEditors();
        QCOMPARE(count.getValue(), QVariant(12));
        QCOMPARE(undoCount(), 1);
    }

    void text_for_all_is_one_step()
    {
        show({colour(), GuiScene::entry(m_scene.second, "colour")});
        auto *button = control("value")->findChild<QPushButton *>(QStringLiteral("DifferingButton"));
        button->setFocus();
        QTest::keyClick(button, Qt::Key_X);
        QNKViewBase::commitOpenEditors();
        QCOMPARE(colour().getValue().toString(), QStringLiteral("x"));
        QCOMPARE(GuiScene::entry(m_scene.second, "colour").getValue().toString(), QStringLiteral("x"));
        QCOMPARE(undoCount(), 1);
    }

    void a_typed_key_asks_once_where_it_is_taken()
    {
        show({colour()});
        type(edit("key"), QStringLiteral("count"));
        const ModalAnswer answer([](QDialog *box) {
            // Somebody saves while the question stands.
            QNKViewBase::commitOpenEditors();
            box->reject();
        });
        QNKViewBase::commitOpenEditors();
        QVERIFY(answer.given());
        QCOMPARE(GuiScene::keys(m_scene.common), (QStringList{"colour", "count", "checked"}));
        QCOMPARE(edit("key")->text(), QStringLiteral("colour"));
    }

    void objects_given_under_the_question_are_the_ones_shown()
    {
        show({colour()});
        type(edit("key"), QStringLiteral("count"));
        const nkdMetadataEntry newest = GuiScene::entry(m_scene.second, "colour");
        const ModalAnswer answer([&](QDialog *box) {
            show({newest});
            box->reject();
        });
        show({GuiScene::entry(m_scene.common, "count")});
        QVERIFY(answer.given());
        QCOMPARE(m_panel->getCurrentObjects().first().getObject(), nkdObject(newest));
        QCOMPARE(edit("value")->text(), QStringLiteral("blue"));
    }

    void a_commit_that_ends_the_panel_is_survived()
    {
        show({colour()});
        type(edit("key"), QStringLiteral("count"));
        const ModalAnswer answer([this](QDialog *box) {
            m_panel.reset();
            box->reject();
        });
        QNKViewBase::commitOpenEditors();
        QVERIFY(answer.given());
        QVERIFY(!m_panel);
    }

    void other_controls_take_what_was_typed_with_them()
    {
        show({colour()});
        type(edit("value"), QStringLiteral("12"));
        GuiScene::entry(m_scene.common, "colour").setValueType(nkMetadataTypes::Integer);
        show({colour()});
        QVERIFY(control("value")->findChild<QSpinBox *>());
        QCOMPARE(colour().getValue(), QVariant(12));
    }

    void controls_made_anew_take_what_was_typed_with_them()
    {
        show({colour()});
        type(edit("value"), QStringLiteral("green"));
        m_panel->setCurrentObjects(m_panel->getCurrentObjects(), true);
        QCOMPARE(colour().getValue().toString(), QStringLiteral("green"));
        QCOMPARE(edit("value")->text(), QStringLiteral("green"));
    }

    void an_open_list_is_committed_to_the_entry_it_belongs_to()
    {
        nkdMetadataEntry list = GuiScene::entry(m_scene.common, "count");
        list.setValueType(nkMetadataTypes::List);
        list.setValue(QVariantList{1});
        nkdMetadataEntry other = GuiScene::entry(m_scene.second, "colour");
        other.setValueType(nkMetadataTypes::List);
        other.setValue(QVariantList{7});
        show({list});
        QTest::mouseClick(control("value")->findChildren<QPushButton *>().last(), Qt::LeftButton);
        auto *popup = m_panel->findChild<QNKVariantListWidget *>();
        QTRY_VERIFY(popup && popup->isVisible());
        popup->setValues({2});
        show({other});
        QCOMPARE(list.getValue(), QVariant(QVariantList{2}));
        QCOMPARE(other.getValue(), QVariant(QVariantList{7}));
        QVERIFY(!popup->isVisible());
    }

    void a_colour_chosen_for_former_objects_is_not_given_to_others()
    {
        nkdMetadataSet first(m_scene.common);
        nkdMetadataSet second(m_scene.second);
        first.setColor(Qt::red);
        second.setColor(Qt::green);
        show({first});
        const ModalAnswer answer([&](QDialog *dialog) {
            show({second});
            QNKColor blue;
            blue.setGammaRGB(0, 0, 1);
            static_cast<QNKColorDialog *>(dialog)->reinit(blue);
            dialog->accept();
        });
        QTest::mouseClick(control("color")->findChildren<QPushButton *>().last(), Qt::LeftButton);
        QCOMPARE(first.getColor(), QColor(Qt::red));
        QCOMPARE(second.getColor(), QColor(Qt::green));
    }

    void what_stands_for_the_panel_is_never_seen_nor_reached()
    {
        show({colour()});
        type(edit("value"), QStringLiteral("green"));
        auto *view = m_panel->findChild<QListView *>(QStringLiteral("PendingEdits"));
        QVERIFY(view && !view->isVisible());
        QCOMPARE(view->focusPolicy(), Qt::NoFocus);
    }

private:
    void show(const QList<nkdObject> &objects)
    {
        QList<nkPropertyEditorNkdObjectWrapper> wrappers;
        for (const nkdObject &object : objects) {
            wrappers.append(nkPropertyEditorNkdObjectWrapper(object));
        }
        m_panel->setCurrentObjects(wrappers, false);
    }

    static void type(QLineEdit *edit, const QString &text)
    {
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }

    nkdMetadataEntry colour() const { return GuiScene::entry(m_scene.common, "colour"); }
    nkBaseControl *control(const char *property) const
    {
        return m_panel->getControl(QLatin1String(property));
    }
    QLineEdit *edit(const char *property) const { return control(property)->findChild<QLineEdit *>(); }

    static int undoCount() { return kernel::Document::the().undoStack()->count(); }

    GuiScene m_scene;
    std::unique_ptr<nkPropertyEditorWidget> m_panel;
};

NK_TEST_MAIN(TestPendingEdits)
#include "test_pending_edits.moc"
