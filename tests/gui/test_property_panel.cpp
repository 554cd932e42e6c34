#include "GuiScene.h"

#include <TestMain.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServicesGUI/nkBaseControl.h>
#include <nkKernelServicesGUI/nkControlFactory.h>
#include <nkKernelServicesGUI/nkPropertyEditorWidget.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSignalSpy>
#include <QSpinBox>
#include <QUndoStack>

namespace {

class PlainControl : public nkBaseControl
{
public:
    using nkBaseControl::nkBaseControl;
    void setValue(const QVariant &value, bool) override { shown = value; }
    QVariant shown;
};

class KeyFactory : public nkControlFactory
{
public:
    nkBaseControl *createControl(const QString &property, int valueType, QWidget *parent) override
    {
        asked.append(property);
        lastType = valueType;
        return property == QLatin1String("key") ? new PlainControl(property, parent) : nullptr;
    }
    QStringList asked;
    int lastType = -1;
};

} // namespace

class TestPropertyPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = GuiScene::load();
        makePanel(false, false);
    }

    void cleanup() { m_panel.reset(); }

    void wrappers_answer_the_properties_of_their_kind()
    {
        const nkPropertyEditorNkdObjectWrapper entry(GuiScene::entry(m_scene.common, "count"));
        QCOMPARE(entry.getProperties(), (QStringList{"key", "value", "valueType"}));
        QCOMPARE(entry.getProperty(QStringLiteral("key")), QVariant(QStringLiteral("count")));
        QCOMPARE(entry.getProperty(QStringLiteral("value")), QVariant(3));
        QCOMPARE(entry.getProperty(QStringLiteral("valueType")).toInt(), 1);
        const nkPropertyEditorNkdObjectWrapper set{nkdMetadataSet(m_scene.common)};
        QCOMPARE(set.getProperties(), (QStringList{"name", "color", "locked"}));
        const nkPropertyEditorNkdObjectWrapper node{nkdObject(m_scene.root)};
        QCOMPARE(node.getProperties(), (QStringList{"name", "locked"}));
        QVERIFY(nkPropertyEditorNkdObjectWrapper().getProperties().isEmpty());
    }

    void wrappers_write_what_the_host_accepts()
    {
        const nkPropertyEditorNkdObjectWrapper entry(GuiScene::entry(m_scene.common, "count"));
        entry.setProperty(QStringLiteral("value"), 4);
        QCOMPARE(entry.getProperty(QStringLiteral("value")), QVariant(4));
        entry.setProperty(QStringLiteral("valueType"), 2);
        QCOMPARE(entry.getProperty(QStringLiteral("value")), QVariant(4.0));
        entry.setProperty(QStringLiteral("colour"), 4);
        QVERIFY(!entry.getProperty(QStringLiteral("colour")).isValid());
        const nkPropertyEditorNkdObjectWrapper locked(GuiScene::entry(m_scene.locked, "note"));
        locked.setProperty(QStringLiteral("value"), QStringLiteral("new"));
        QCOMPARE(locked.getProperty(QStringLiteral("value")).toString(), QStringLiteral("fixed"));
        nkPropertyEditorNkdObjectWrapper().setProperty(QStringLiteral("value"), 4);
    }

    void shows_one_control_a_property()
    {
        show({GuiScene::entry(m_scene.common, "count")});
        QVERIFY(m_panel->getControl(QStringLiteral("key")));
        QVERIFY(m_panel->getControl(QStringLiteral("value")));
        QVERIFY(m_panel->getControl(QStringLiteral("valueType")));
        QVERIFY(!m_panel->getControl(QStringLiteral("name")));
        QCOMPARE(edit("key")->text(), QStringLiteral("count"));
        QCOMPARE(m_panel->getControl(QStringLiteral("value"))->findChild<QSpinBox *>()->value(), 3);
    }

    void shows_nothing_for_nothing()
    {
        show({GuiScene::entry(m_scene.common, "count")});
        show({});
        QVERIFY(!m_panel->getControl(QStringLiteral("key")));
        QVERIFY(m_panel->getCurrentObjects().isEmpty());
    }

    void shows_only_what_all_objects_have()
    {
        show({nkdMetadataSet(m_scene.common), nkdObject(m_scene.root)});
        QVERIFY(m_panel->getControl(QStringLiteral("name")));
        QVERIFY(m_panel->getControl(QStringLiteral("locked")));
        QVERIFY(!m_panel->getControl(QStringLiteral("color")));
    }

    void equal_values_are_shown_and_differing_ones_marked()
    {
        showBothColours();
        QVERIFY(!isMarked("key"));
        QVERIFY(isMarked("value"));
        QVERIFY(!isMarked("valueType"));
        QCOMPARE(edit("key")->text(), QStringLiteral("colour"));
        QVERIFY(!edit("value")->isVisible());
        QVERIFY(differingButton("value")->isVisible());
    }

    void a_mark_goes_when_the_values_become_equal()
    {
        showBothColours();
        GuiScene::entry(m_scene.second, "colour").setValue(QStringLiteral("red"));
        showBothColours();
        QVERIFY(!isMarked("value"));
        QCOMPARE(edit("value")->text(), QStringLiteral("red"));
        QVERIFY(edit("value")->isVisible());
    }

    void values_of_different_types_differ()
    {
        GuiScene::entry(m_scene.common, "colour").setValue(QStringLiteral("3"));
        show({GuiScene::entry(m_scene.common, "colour"), GuiScene::entry(m_scene.common, "count")});
        QVERIFY(isMarked("value"));
        QVERIFY(isMarked("valueType"));
    }

    void an_edit_is_written_to_all_objects_as_one_step()
    {
        showBothColours();
        QTest::mouseClick(differingButton("value"), Qt::LeftButton);
        QTest::keyClicks(edit("value"), QStringLiteral("green"));
        QTest::keyClick(edit("value"), Qt::Key_Return);
        QCOMPARE(valueOf(m_scene.common, "colour"), QStringLiteral("green"));
        QCOMPARE(valueOf(m_scene.second, "colour"), QStringLiteral("green"));
        QCOMPARE(undoCount(), 1);
        QVERIFY(!isMarked("value"));
        QVERIFY(kernel::Document::the().undo());
        QCOMPARE(valueOf(m_scene.common, "colour"), QStringLiteral("red"));
        QCOMPARE(valueOf(m_scene.second, "colour"), QStringLiteral("blue"));
    }

    void typing_over_differing_values_begins_the_edit()
    {
        showBothColours();
        differingButton("value")->setFocus();
        QTest::keyClick(differingButton("value"), Qt::Key_G);
        QVERIFY(edit("value")->hasFocus());
        QTest::keyClicks(edit("value"), QStringLiteral("reen"));
        QTest::keyClick(edit("value"), Qt::Key_Return);
        QCOMPARE(valueOf(m_scene.second, "colour"), QStringLiteral("green"));
    }

    void differing_values_that_are_only_looked_at_stay()
    {
        showBothColours();
        QTest::mouseClick(differingButton("value"), Qt::LeftButton);
        QVERIFY(edit("value")->isVisible());
        edit("key")->setFocus();
        QVERIFY(differingButton("value")->isVisible());
        QCOMPARE(valueOf(m_scene.second, "colour"), QStringLiteral("blue"));
        QCOMPARE(undoCount(), 0);
    }

    void escape_restores()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        QTest::keyClicks(edit("value"), QStringLiteral("green"));
        QTest::keyClick(edit("value"), Qt::Key_Escape);
        QCOMPARE(edit("value")->text(), QStringLiteral("red"));
        edit("key")->setFocus();
        QCOMPARE(undoCount(), 0);
    }

    void leaving_a_control_commits_it_and_only_it()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        edit("value")->setFocus();
        QTest::keyClicks(edit("value"), QStringLiteral("dish"));
        edit("key")->setFocus();
        QCOMPARE(undoCount(), 1);
        QCOMPARE(GuiScene::keys(m_scene.common).first(), QStringLiteral("colour"));
    }

    void typed_text_outlives_a_refresh()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        edit("value")->setFocus();
        edit("value")->selectAll();
        QTest::keyClicks(edit("value"), QStringLiteral("gre"));
        GuiScene::entry(m_scene.common, "colour").setValue(QStringLiteral("black"));
        show({GuiScene::entry(m_scene.common, "colour")});
        QCOMPARE(edit("value")->text(), QStringLiteral("gre"));
        QTest::keyClick(edit("value"), Qt::Key_Return);
        QCOMPARE(valueOf(m_scene.common, "colour"), QStringLiteral("gre"));
    }

    void other_objects_commit_what_was_typed_for_the_former()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        edit("value")->setFocus();
        edit("value")->selectAll();
        QTest::keyClicks(edit("value"), QStringLiteral("green"));
        show({GuiScene::entry(m_scene.second, "colour")});
        QCOMPARE(valueOf(m_scene.common, "colour"), QStringLiteral("green"));
        QCOMPARE(valueOf(m_scene.second, "colour"), QStringLiteral("blue"));
        QCOMPARE(edit("value")->text(), QStringLiteral("blue"));
    }

    void controls_stay_for_objects_of_the_same_kind_unless_forced()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        const QPointer<nkBaseControl> control = m_panel->getControl(QStringLiteral("value"));
        show({GuiScene::entry(m_scene.second, "colour")});
        QCOMPARE(m_panel->getControl(QStringLiteral("value")), control.data());
        m_panel->setCurrentObjects(m_panel->getCurrentObjects(), true);
        QVERIFY(m_panel->getControl(QStringLiteral("value")) != control.data());
    }

    void a_new_type_brings_its_editor()
    {
        show({GuiScene::entry(m_scene.common, "count")});
        QComboBox *types = m_panel->getControl(QStringLiteral("valueType"))->findChild<QComboBox *>();
        QCOMPARE(types->currentText(), QStringLiteral("Integer"));
        chooseType(types, 0);
        QCOMPARE(edit("value")->text(), QStringLiteral("3"));
        QCOMPARE(valueOf(m_scene.common, "count"), QStringLiteral("3"));
        QCOMPARE(undoCount(), 1);
    }

    void a_taken_key_asks_and_cancel_changes_nothing()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        const ModalAnswer answer = ModalAnswer::button(QMessageBox::Cancel);
        rename(QStringLiteral("count"));
        QCOMPARE(answer.record().title, QStringLiteral("Change key name"));
        QCOMPARE(answer.record().text,
                 QStringLiteral("The key name is already assigned.\nPress \"Cancel\" for no change. Press "
                                "\"Replace\" to overwrite the existing entry."));
        QCOMPARE(answer.record().icon, QMessageBox::Warning);
        QCOMPARE(GuiScene::keys(m_scene.common), (QStringList{"colour", "count", "checked"}));
        QCOMPARE(edit("key")->text(), QStringLiteral("colour"));
        QCOMPARE(undoCount(), 0);
    }

    void a_taken_key_is_replaced_on_request()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        const ModalAnswer answer = ModalAnswer::button(QStringLiteral("Replace"));
        rename(QStringLiteral("count"));
        QCOMPARE(GuiScene::keys(m_scene.common), (QStringList{"count", "checked"}));
        QCOMPARE(valueOf(m_scene.common, "count"), QStringLiteral("red"));
        QCOMPARE(undoCount(), 1);
        QCOMPARE(kernel::Document::the().undoStack()->undoText(), QStringLiteral("Change key name"));
        QVERIFY(kernel::Document::the().undo());
        QCOMPARE(GuiScene::keys(m_scene.common), (QStringList{"colour", "count", "checked"}));
    }

    void a_free_key_is_given_to_all_without_a_question()
    {
        showBothColours();
        rename(QStringLiteral("paint"));
        QVERIFY(!GuiScene::entry(m_scene.common, "paint").isNull());
        QVERIFY(!GuiScene::entry(m_scene.second, "paint").isNull());
        QCOMPARE(undoCount(), 1);
    }

    void two_entries_of_one_set_are_not_given_one_key()
    {
        show({GuiScene::entry(m_scene.common, "colour"), GuiScene::entry(m_scene.common, "count")});
        QTest::mouseClick(differingButton("key"), Qt::LeftButton);
        rename(QStringLiteral("paint"));
        QCOMPARE(GuiScene::keys(m_scene.common), (QStringList{"colour", "count", "checked"}));
    }

    void an_empty_key_is_not_taken()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        rename(QString());
        QCOMPARE(edit("key")->text(), QStringLiteral("colour"));
        QCOMPARE(undoCount(), 0);
    }

    void the_question_survives_the_end_of_the_panel()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        const ModalAnswer answer([this](QDialog *box) {
            m_panel.reset();
            box->reject();
        });
        nkBaseControl *key = m_panel->getControl(QStringLiteral("key"));
        // By its signal alone: the control goes with the panel while it tells.
        Q_EMIT key->valueEdited(QStringLiteral("count"));
        QVERIFY(!m_panel);
    }

    void an_edit_survives_new_objects_from_inside()
    {
        show({GuiScene::entry(m_scene.common, "colour")});
        connect(&nkMetadataService::the(), &nkMetadataService::metadataChanged, m_panel.get(), [this] {
            m_panel->setCurrentObjects(
                {nkPropertyEditorNkdObjectWrapper(GuiScene::entry(m_scene.common, "count"))}, true);
        });
        edit("value")->selectAll();
        QTest::keyClicks(edit("value"), QStringLiteral("green"));
        QTest::keyClick(edit("value"), Qt::Key_Return);
        QCOMPARE(valueOf(m_scene.common, "colour"), QStringLiteral("green"));
        QCOMPARE(edit("key")->text(), QStringLiteral("count"));
    }

    void dead_objects_show_nothing()
    {
        const nkdMetadataEntry colour = GuiScene::entry(m_scene.second, "colour");
        nkMetadataService::the().deleteSets({nkdMetadataSet(m_scene.second)});
        show({colour});
        QVERIFY(!m_panel->getControl(QStringLiteral("key")));
    }

    void factories_are_asked_first()
    {
        KeyFactory factory;
        m_panel = std::make_unique<nkPropertyEditorWidget>(nullptr, QList<nkControlFactory *>{&factory},
                                                           false, false);
        show({GuiScene::entry(m_scene.common, "count")});
        auto *key = dynamic_cast<PlainControl *>(m_panel->getControl(QStringLiteral("key")));
        QVERIFY(key);
        QCOMPARE(key->shown, QVariant(QStringLiteral("count")));
        QCOMPARE(factory.lastType, 1);
        Q_EMIT key->valueEdited(QStringLiteral("number"));
        QVERIFY(!GuiScene::entry(m_scene.common, "number").isNull());
        m_panel.reset();
    }

    void the_header_tells_kind_and_number()
    {
        makePanel(true, false);
        showBothColours();
        const auto *header = m_panel->findChild<QLabel *>(QStringLiteral("PropertyHeader"));
        QCOMPARE(header->text(), QStringLiteral("2 entries"));
        show({nkdMetadataSet(m_scene.common)});
        QCOMPARE(header->text(), QStringLiteral("1 set"));
    }

    void takes_the_height_its_controls_need()
    {
        m_panel->setDocumentMode(true);
        show({GuiScene::entry(m_scene.common, "count")});
        m_panel->resize();
        const int three = m_panel->height();
        show({nkdObject(m_scene.root)});
        m_panel->resize();
        QVERIFY(m_panel->height() < three);
        show({});
        m_panel->resize();
        QVERIFY(m_panel->height() < three);
    }

    void scrolls_where_asked()
    {
        makePanel(false, true);
        show({GuiScene::entry(m_scene.common, "count")});
        QVERIFY(m_panel->findChild<QScrollArea *>());
        QVERIFY(m_panel->getControl(QStringLiteral("key"))->isVisible());
    }

private:
    void makePanel(bool header, bool scrollable)
    {
        m_panel = std::make_unique<nkPropertyEditorWidget>(nullptr, QList<nkControlFactory *>(), header,
                                                           scrollable);
        m_panel->show();
        m_panel->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_panel.get()));
    }

    void show(const QList<nkdObject> &objects)
    {
        QList<nkPropertyEditorNkdObjectWrapper> wrappers;
        for (const nkdObject &object : objects) {
            wrappers.append(nkPropertyEditorNkdObjectWrapper(object));
        }
        m_panel->setCurrentObjects(wrappers, false);
    }

    void showBothColours()
    {
        show({GuiScene::entry(m_scene.common, "colour"), GuiScene::entry(m_scene.second, "colour")});
    }

    QLineEdit *edit(const char *property) const
    {
        return m_panel->getControl(QLatin1String(property))->findChild<QLineEdit *>();
    }

    QPushButton *differingButton(const char *property) const
    {
        return m_panel->getControl(QLatin1String(property))
            ->findChild<QPushButton *>(QStringLiteral("DifferingButton"));
    }

    bool isMarked(const char *property) const
    {
        return m_panel->getControl(QLatin1String(property))
            ->findChild<QWidget *>(QStringLiteral("DifferingMark"))
            ->isVisible();
    }

    void rename(const QString &key)
    {
        edit("key")->setFocus();
        edit("key")->selectAll();
        QTest::keyClick(edit("key"), Qt::Key_Delete);
        QTest::keyClicks(edit("key"), key);
        QTest::keyClick(edit("key"), Qt::Key_Return);
    }

    static void chooseType(QComboBox *types, int type)
    {
        types->setCurrentIndex(type);
        Q_EMIT types->activated(type);
    }

    static QString valueOf(quint64 set, const char *key)
    {
        return GuiScene::entry(set, key).getValue().toString();
    }

    static int undoCount() { return kernel::Document::the().undoStack()->count(); }

    GuiScene m_scene;
    std::unique_ptr<nkPropertyEditorWidget> m_panel;
};

NK_TEST_MAIN(TestPropertyPanel)
#include "test_property_panel.moc"
