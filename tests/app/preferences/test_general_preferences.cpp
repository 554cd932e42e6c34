#include "PageCheck.h"
#include "TestMain.h"
#include "preferences/Options.h"
#include "preferences/Preferences.h"
#include "preferences/Theme.h"

#include <ModalAnswer.h>
#include <nkKernelServices/nkLogService.h>
#include <nkKernelServices/nkMetadataService.h>
#include <nkKernelServices/nkPreferencesService.h>
#include <nkKernelServicesGUI/nkMetadataGUIUtils.h>
#include <nkQt4Ext/QNKStringCompleterLineEdit.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QFile>
#include <QMenu>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStyle>
#include <QTemporaryDir>

#include <cmath>

/// The workbench's own page, and what stands behind the preferences from the start on.
class TestGeneralPreferences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        nkPreferencesService::the().setIntValue(key(), 0, true);
        nkMetadataService::the().setStringLibraries({});
        nkMetadataService::the().setActiveStringLibraryIndex(-1);
    }
    void cleanup() { applyTheme(Theme::System); }

    void the_first_start_looks_as_the_system()
    {
        const QPalette before = QApplication::palette();
        GeneralPreferences page;
        page.loadToPage();
        QCOMPARE(page.getName(), QStringLiteral("General"));
        QCOMPARE(combo(page)->currentText(), QStringLiteral("As the system"));
        QCOMPARE(nkPreferencesService::the().getIntValue(key(), 9), 0);
        QCOMPARE(QApplication::palette(), before);
    }

    void a_theme_takes_effect_when_it_is_applied()
    {
        GeneralPreferences page;
        page.loadToPage();
        combo(page)->setCurrentIndex(combo(page)->findText("Dark"));
        QVERIFY(!isDark());
        page.storeFromPage();
        QVERIFY(!isDark());
        page.apply();
        QVERIFY2(!isDark(), "not marked changed");
        page.setChangedKeys({key()});
        page.apply();
        QVERIFY(isDark());
    }

    void a_stored_theme_takes_effect_at_the_start()
    {
        nkPreferencesService::the().setIntValue(key(), int(Theme::Dark), true);
        const GeneralPreferences page;
        QVERIFY(isDark());
    }

    void the_system_s_look_comes_back()
    {
        const QPalette before = QApplication::palette();
        const QString style = QApplication::style()->objectName();
        applyTheme(Theme::Dark);
        applyTheme(Theme::Light);
        QVERIFY(!isDark());
        QVERIFY(QApplication::palette() != before);
        applyTheme(Theme::System);
        QCOMPARE(QApplication::palette(), before);
        QCOMPARE(QApplication::style()->objectName(), style);
    }

    void texts_stand_out_in_every_theme()
    {
        for (const Theme theme : {Theme::Light, Theme::Dark}) {
            applyTheme(theme);
            const QPalette colours = QApplication::palette();
            for (const auto &pair : QList<QPair<QPalette::ColorRole, QPalette::ColorRole>>{
                     {QPalette::Window, QPalette::WindowText},
                     {QPalette::Base, QPalette::Text},
                     {QPalette::Button, QPalette::ButtonText},
                     {QPalette::Highlight, QPalette::HighlightedText},
                     {QPalette::ToolTipBase, QPalette::ToolTipText},
                     {QPalette::Base, QPalette::Link}}) {
                const double contrast = contrastOf(colours.color(pair.first), colours.color(pair.second));
                QVERIFY2(contrast >= 3.5,
                         qPrintable(QStringLiteral("%1: %2").arg(pair.second).arg(contrast)));
            }
        }
    }

    void a_theme_that_does_not_exist_is_the_system_s()
    {
        nkPreferencesService::the().setIntValue(key(), 77, true);
        GeneralPreferences page;
        page.loadToPage();
        QCOMPARE(combo(page)->currentIndex(), 0);
        QVERIFY(!isDark());
    }

    void autosave_and_its_minutes_are_stored_and_come_back()
    {
        GeneralPreferences page;
        page.setDefaults(true);
        page.loadToPage();
        auto *autosave = page.findChild<QCheckBox *>();
        auto *minutes = page.findChild<QSpinBox *>();
        QVERIFY(autosave->isChecked() && minutes->isEnabled());
        QCOMPARE(minutes->value(), 5);
        minutes->setValue(17);
        autosave->setChecked(false);
        QVERIFY(!minutes->isEnabled());
        QCOMPARE(Options::autosave.value(), 1);
        page.storeFromPage();
        QCOMPARE(Options::autosave.value(), 0);
        QCOMPARE(Options::autosaveMinutes.value(), 17);
        Options::autosaveMinutes.store(0);
        page.setDefaults(false);
        page.loadToPage();
        QVERIFY(!autosave->isChecked() && !minutes->isEnabled());
        QCOMPARE(minutes->value(), 5);
    }

    void every_control_has_a_name_and_is_reached_by_keyboard()
    {
        GeneralPreferences page;
        QCOMPARE(PageCheck::unnamed(page), QStringList());
        QCOMPARE(PageCheck::unreached(page), QStringList());
    }

    void the_workbench_s_pages_come_in_order()
    {
        const Preferences preferences;
        QStringList names;
        for (const nkPreferencesCategory *category : nkPreferencesCategory::categories()) {
            names.append(category->getName());
        }
        QCOMPARE(names, (QStringList{"General", "Files", "Assets"}));
    }

    void libraries_are_read_after_the_first_paint_and_not_before()
    {
        QSignalSpy reports(&nkLogService::the(), &nkLogService::reported);
        Preferences preferences;
        nkMetadataService::the().setStringLibraries({"/missing/words.txt"});
        nkMetadataService::the().setActiveStringLibraryIndex(0);
        QWidget window;
        preferences.readAfterPaintOf(&window);
        QCoreApplication::processEvents();
        QCOMPARE(reports.size(), 0);
        window.show();
        QTRY_COMPARE(reports.size(), 1);
        QVERIFY(reports.first().at(2).toString().contains("/missing/words.txt"));
    }

    void line_edits_are_fed_from_the_active_library()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath("words.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("oak\n") == 4);
        file.close();
        Preferences preferences;
        nkMetadataService::the().setStringLibraries({file.fileName()});
        nkMetadataService::the().setActiveStringLibraryIndex(0);
        QWidget window;
        preferences.readAfterPaintOf(&window);
        window.show();
        const std::unique_ptr<QNKStringCompleterLineEdit> edit(
            nkMetadataGUIUtils::createMetadataLineEdit(nullptr));
        edit->show();
        const QAbstractItemView *popup = edit->findChild<QCompleter *>()->popup();
        QTRY_VERIFY((edit->clear(), QTest::keyClicks(edit.get(), "oa"), popup->isVisible()));
        QCOMPARE(popup->model()->index(0, 0).data().toString(), QStringLiteral("oak"));
    }

    void a_word_is_written_to_the_active_library_where_it_was_asked_for_and_nowhere_else()
    {
        QTemporaryDir folder;
        const QString active = write(folder, "active.txt", "oak\n");
        const QString other = write(folder, "other.txt", "elm\n");
        Preferences preferences;
        nkMetadataService::the().setStringLibraries({other, active});
        nkMetadataService::the().setActiveStringLibraryIndex(1);
        QWidget window;
        preferences.readAfterPaintOf(&window);
        window.show();
        const std::unique_ptr<QNKStringCompleterLineEdit> edit(
            nkMetadataGUIUtils::createMetadataLineEdit(nullptr));
        edit->show();
        const QAbstractItemView *popup = edit->findChild<QCompleter *>()->popup();
        QTRY_VERIFY((edit->clear(), QTest::keyClicks(edit.get(), "oa"), popup->isVisible()));
        // Typed and committed, and nothing more: no library takes it.
        edit->clear();
        QTest::keyClicks(edit.get(), "ash");
        QTest::keyClick(edit.get(), Qt::Key_Return);
        QCOMPARE(read(active), QByteArray("oak\n"));
        QCOMPARE(lastOffer(edit.get(), true), QStringLiteral("Add \"ash\" to \"active.txt\""));
        QCOMPARE(read(active), QByteArray("oak\nash\n"));
        QCOMPARE(read(other), QByteArray("elm\n"));
        // The library is read again before long.
        QTRY_VERIFY2(!lastOffer(edit.get(), false).startsWith("Add"), "it is in the library now");
        // No library is the one to write to.
        nkMetadataService::the().setActiveStringLibraryIndex(-1);
        edit->setText("birch");
        QVERIFY(!lastOffer(edit.get(), false).startsWith("Add"));
        QCOMPARE(read(active), QByteArray("oak\nash\n"));
    }

private:
    static QString write(const QTemporaryDir &folder, const char *name, const QByteArray &content)
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                        : QString();
    }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    /// The last entry of the edit's context menu. @param isTaken whether it is chosen
    static QString lastOffer(QWidget *edit, bool isTaken)
    {
        QString shown;
        const ModalAnswer answer = ModalAnswer::menu(ModalAnswer::MenuAction([&](QMenu *menu) {
            QAction *last = menu->actions().constLast();
            shown = last->text();
            if (isTaken) {
                last->trigger();
            }
            menu->close();
        }));
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), edit->mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(edit, &event);
        const bool isClosed = QTest::qWaitFor([] { return !QApplication::activePopupWidget(); });
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return isClosed ? shown : QStringLiteral("a menu that stays open");
    }
    static QString key() { return QStringLiteral("Workbench Theme"); }
    static QComboBox *combo(const QWidget &page) { return page.findChild<QComboBox *>(); }
    static bool isDark() { return QApplication::palette().color(QPalette::Base).lightness() < 100; }

    static double luminance(const QColor &colour)
    {
        const auto linear = [](double part) {
            return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
               + 0.0722 * linear(colour.blueF());
    }

    static double contrastOf(const QColor &a, const QColor &b)
    {
        const double lighter = qMax(luminance(a), luminance(b));
        return (lighter + 0.05) / (qMin(luminance(a), luminance(b)) + 0.05);
    }
};

NK_TEST_MAIN(TestGeneralPreferences)
#include "test_general_preferences.moc"
