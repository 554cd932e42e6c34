#include "MainWindow.h"
#include "TestMain.h"
#include "preferences/PreferencesDialog.h"

#include "kernel/services/PreferencesService.h"

#include <nkKernelServicesGUI/nkPreferencesCategory.h>

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

/// A category with one number, which takes notes of what it is told.
class NumberPage : public QWidget, public nkPreferencesCategory
{
public:
    NumberPage(const QString &name, const QString &label) : nkPreferencesCategory(name), key(name + " Number")
    {
        auto *rows = new QVBoxLayout(this);
        rows->addWidget(new QLabel(label, this));
        rows->addWidget(number = new QSpinBox(this));
        registerCategory();
        applied.clear();
    }

    QWidget *getWidget() override { return this; }
    void setDefaults(bool overwrite) override { nkPreferencesService::the().setIntValue(key, 5, overwrite); }
    void loadToPage() override { number->setValue(nkPreferencesService::the().getIntValue(key)); }
    void storeFromPage() override { nkPreferencesService::the().setIntValue(key, number->value(), true); }
    void apply() override { applied.append(isChanged(key) ? stored() : -1); }
    int stored() const { return nkPreferencesService::the().getIntValue(key); }

    const QString key;
    QSpinBox *number;
    /// For each time: the number, or -1 where it was not marked changed.
    QList<int> applied;
};

} // namespace

/// The dialog around the pages: what is stored, applied and shown when.
class TestPreferencesDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_first = std::make_unique<NumberPage>("First", "&Size of things:");
        m_second = std::make_unique<NumberPage>("Second", "Depth of <b>it</b>:");
        nkPreferencesService::the().setIntValue(m_first->key, 1, true);
        nkPreferencesService::the().setIntValue(m_second->key, 2, true);
        QVERIFY(service().flush());
        m_bytes = bytes();
        QVERIFY(m_bytes.contains("\"First Number\": 1"));
        m_dialog = std::make_unique<PreferencesDialog>();
        m_dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    void cleanup()
    {
        m_dialog.reset();
        m_first.reset();
        m_second.reset();
    }

    void shows_the_categories_in_order_and_the_page_of_the_chosen_one()
    {
        QCOMPARE(shownCategories(), (QStringList{"First", "Second"}));
        QVERIFY(m_first->isVisible() && !m_second->isVisible());
        QCOMPARE(m_first->number->value(), 1);
        QTest::keyClick(list(), Qt::Key_Down);
        QVERIFY(!m_first->isVisible() && m_second->isVisible());
        QCOMPARE(m_second->number->value(), 2);
    }

    void cancel_changes_nothing_not_a_byte_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("escape") << true;
    }
    void cancel_changes_nothing_not_a_byte()
    {
        QFETCH(bool, byKey);
        m_first->number->setValue(77);
        button(QDialogButtonBox::RestoreDefaults)->click();
        m_first->number->setValue(78);
        if (byKey) {
            QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        } else {
            button(QDialogButtonBox::Cancel)->click();
        }
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_first->stored(), 1);
        QVERIFY(m_first->applied.isEmpty() && m_second->applied.isEmpty());
        QVERIFY(service().flush());
        QCOMPARE(bytes(), m_bytes);
    }

    void apply_stores_applies_and_stays()
    {
        m_first->number->setValue(77);
        QCOMPARE(m_first->stored(), 1);
        button(QDialogButtonBox::Apply)->click();
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(m_first->applied, QList<int>{77});
        QVERIFY2(bytes().contains("\"First Number\": 77"), "written at once");
    }

    void ok_stores_applies_and_closes()
    {
        m_second->number->setValue(88);
        button(QDialogButtonBox::Ok)->click();
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(m_second->applied, QList<int>{88});
        QVERIFY(bytes().contains("\"Second Number\": 88"));
    }

    void each_category_is_told_what_has_changed()
    {
        m_second->number->setValue(88);
        button(QDialogButtonBox::Apply)->click();
        QCOMPARE(m_first->applied, QList<int>{-1});
        QCOMPARE(m_second->applied, QList<int>{88});
        QVERIFY2(!m_second->isChanged(m_second->key), "forgotten after each time");
        button(QDialogButtonBox::Apply)->click();
        QCOMPARE(m_second->applied, (QList<int>{88, -1}));
    }

    void ok_without_a_change_changes_not_a_byte()
    {
        button(QDialogButtonBox::Ok)->click();
        QVERIFY(service().flush());
        QCOMPARE(bytes(), m_bytes);
    }

    void restore_defaults_shows_those_of_the_page_until_ok()
    {
        button(QDialogButtonBox::RestoreDefaults)->click();
        QCOMPARE(m_first->number->value(), 5);
        QCOMPARE(m_second->number->value(), 2);
        QCOMPARE(m_first->stored(), 1);
        QVERIFY(service().flush());
        QCOMPARE(bytes(), m_bytes);
        button(QDialogButtonBox::Ok)->click();
        QCOMPARE(m_first->applied, QList<int>{5});
        QCOMPARE(m_first->stored(), 5);
        QCOMPARE(m_second->stored(), 2);
    }

    void the_search_finds_categories_by_name_and_by_words_of_the_page_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("found");
        QTest::newRow("name") << "sec" << QStringList{"Second"};
        QTest::newRow("word of a page") << "size of" << QStringList{"First"};
        QTest::newRow("plain text") << "<B>" << QStringList{"Second"};
        QTest::newRow("both") << "of" << QStringList{"First", "Second"};
        QTest::newRow("empty") << "" << QStringList{"First", "Second"};
        QTest::newRow("none") << "nowhere" << QStringList();
    }
    void the_search_finds_categories_by_name_and_by_words_of_the_page()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, found);
        search()->setText(text);
        QCOMPARE(shownCategories(), found);
        QCOMPARE(m_first->isVisible() || m_second->isVisible(), !found.isEmpty());
        QVERIFY(found.isEmpty() || list()->currentItem()->text() == found.first());
        search()->clear();
        QCOMPARE(shownCategories(), (QStringList{"First", "Second"}));
    }

    void what_is_hidden_by_the_search_is_stored_all_the_same()
    {
        m_first->number->setValue(77);
        search()->setText("second");
        button(QDialogButtonBox::Ok)->click();
        QCOMPARE(m_first->stored(), 77);
    }

    void pages_outlive_the_dialog()
    {
        const QPointer<QWidget> page = m_first.get();
        m_dialog.reset();
        QVERIFY(page);
        QVERIFY(!page->parent() && !page->isVisible());
        m_dialog = std::make_unique<PreferencesDialog>();
        m_dialog->show();
        QVERIFY(page->isVisible());
    }

    void a_category_that_goes_meanwhile_is_left_alone()
    {
        m_first.reset();
        m_second->number->setValue(88);
        search()->setText("second");
        search()->clear();
        list()->setCurrentRow(0);
        button(QDialogButtonBox::RestoreDefaults)->click();
        button(QDialogButtonBox::Ok)->click();
        QCOMPARE(m_second->stored(), 88);
    }

    void a_category_that_comes_meanwhile_keeps_its_values()
    {
        NumberPage late("Late", "Late");
        nkPreferencesService::the().setIntValue(late.key, 9, true);
        button(QDialogButtonBox::Ok)->click();
        QCOMPARE(late.stored(), 9);
        QVERIFY(late.applied.isEmpty());
    }

    void every_control_is_reached_by_keyboard_and_has_a_name()
    {
        QSet<QWidget *> reached;
        for (int i = 0; i < 20; ++i) {
            reached.insert(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        for (QWidget *control : QList<QWidget *>{search(), list(), m_first->number}) {
            QVERIFY2(reached.contains(control), qPrintable(control->objectName()));
        }
        for (QAbstractButton *each : m_dialog->findChild<QDialogButtonBox *>()->buttons()) {
            QVERIFY2(reached.contains(each), qPrintable(each->text()));
        }
        QVERIFY(!search()->accessibleName().isEmpty() && !list()->accessibleName().isEmpty());
    }

    void the_edit_menu_opens_it()
    {
        m_dialog.reset();
        MainWindow window;
        QAction *entry = nullptr;
        for (QAction *action : window.menuBar()->actions().at(1)->menu()->actions()) {
            entry = action->text() == "&Preferences..." ? action : entry;
        }
        QVERIFY(entry);
        QCOMPARE(entry->shortcut(), QKeySequence("Ctrl+,"));
        QString title;
        const ModalAnswer answer(ModalAnswer::DialogAction([&title](QDialog *dialog) {
            title = dialog->windowTitle();
            dialog->reject();
        }));
        entry->trigger();
        QCOMPARE(title, QStringLiteral("Preferences"));
        QVERIFY(!m_first->parent());
    }

private:
    static kernel::PreferencesService &service()
    {
        return static_cast<kernel::PreferencesService &>(nkPreferencesService::the());
    }

    static QByteArray bytes()
    {
        QFile file(service().file());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    QListWidget *list() const { return m_dialog->findChild<QListWidget *>(); }
    QLineEdit *search() const { return list()->parentWidget()->findChild<QLineEdit *>(); }
    QPushButton *button(QDialogButtonBox::StandardButton which) const
    {
        return m_dialog->findChild<QDialogButtonBox *>()->button(which);
    }

    QStringList shownCategories() const
    {
        QStringList names;
        for (int row = 0; row < list()->count(); ++row) {
            names.append(list()->item(row)->isHidden() ? QStringList()
                                                       : QStringList{list()->item(row)->text()});
        }
        return names;
    }

    std::unique_ptr<NumberPage> m_first;
    std::unique_ptr<NumberPage> m_second;
    std::unique_ptr<PreferencesDialog> m_dialog;
    QByteArray m_bytes;
};

NK_TEST_MAIN(TestPreferencesDialog)
#include "test_preferences_dialog.moc"
